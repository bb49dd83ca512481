#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

/// Where a control stands. A control on a tab can be reached while that tab is selected, one on a sheet
/// or popover while that is open, the others always.
enum class Place {
    Window,
    Tab1,
    Tab2,
    Tab3,
    Tab4,
    FilterSheet,
    DrugSheet,
    PatientSheet,
    PharmacySheet,
    PrescriberSheet,
    RemindersSheet,
    EarlierStatesSheet,
    DatePopover,
    ReceiptPopover,
    MenuBar,
};

/// Whether text typed there is text typed in the main window.
constexpr bool liesInMainWindow(Place place) { return place <= Place::Tab4; }

class Control;

/// The controls of an interface, each under its outlet's name.
class ControlRegistry {
public:
    ControlRegistry() = default;
    ControlRegistry(const ControlRegistry&) = delete;
    ControlRegistry& operator=(const ControlRegistry&) = delete;

    /// Null when there is none of that name.
    Control* find(std::string_view name) const;
    const std::vector<Control*>& controls() const { return m_controls; }

private:
    friend class Control;
    std::vector<Control*> m_controls;
};

/// What the logic needs of a widget: a plain value that the interface shows. The program changes it
/// through setters; a user's act comes in through methods named user…, so that a change made by the
/// program is never mistaken for a keystroke.
class Control {
public:
    /// Adds itself to the registry, which it must not outlive.
    Control(ControlRegistry& registry, std::string_view name, Place place);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const std::string& name() const { return m_name; }
    Place place() const { return m_place; }

    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    /// Called after every change, whoever made it; set by the interface that shows the control.
    std::function<void()> changed;

protected:
    void notify() const;

private:
    std::string m_name;
    Place m_place;
    bool m_enabled = true;
};

}  // namespace kpx
