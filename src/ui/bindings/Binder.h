#pragma once

#include "app/KPXAppDelegate.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class QObject;
class QWidget;

namespace kpx {

class DropBinding;

/// Pairs each control of the interface with the widget or menu item of the same name in the window and
/// its sheets, and keeps both in step. It must not outlive the controls; the widgets go when it goes, or
/// before the next event.
class Binder {
public:
    /// Binds what fits; the rest is in mismatches().
    Binder(KPXAppDelegate& delegate, QWidget& window);
    ~Binder();
    Binder(const Binder&) = delete;
    Binder& operator=(const Binder&) = delete;

    /// Null for a control that no widget shows.
    QWidget* widgetForControl(const Control& control) const;
    /// The main window for its name (the topmost sheet hanging from it, if there is one), a sheet for
    /// the sheet's.
    QWidget* widgetForWindow(const std::string& name) const;

    /// Controls without a fitting widget and widgets without a control, as sentences; empty when all is
    /// well. A widget that is the window's own affair has the property "ownedByWindow".
    const std::vector<std::string>& mismatches() const { return m_mismatches; }

    /// Ends the editing of the text field that has the focus.
    void endEditing() const;

private:
    bool bindControl(Control& control, QObject& object);
    void findWidgetsWithoutControl();

    KPXAppDelegate& m_delegate;
    QWidget& m_window;
    std::map<std::string, QObject*> m_objects;
    std::vector<std::unique_ptr<DropBinding>> m_drops;
    std::vector<std::string> m_mismatches;
};

}  // namespace kpx
