#pragma once

#include <QObject>

#include <filesystem>
#include <optional>

class QDropEvent;
class QWidget;

namespace kpx {

class Control;
class KPXAppDelegate;

/// Lets files be dropped on a receipt's drop target, and on whatever lies on top of it. Of several files
/// the first counts; addresses elsewhere are refused. The file stays where it is: the drag ends as a link,
/// or as a copy for a program that offers no links, but never as a move, after which it might be deleted.
class DropBinding : public QObject {
    Q_OBJECT

public:
    DropBinding(Control& control, QWidget& widget, KPXAppDelegate& delegate);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void dragEntered(QDropEvent& event);
    void dragLeft();
    void dropped(QDropEvent& event);
    void answer(QDropEvent& event) const;
    void showDragInside(bool inside);

    Control& m_control;
    QWidget& m_widget;
    KPXAppDelegate& m_delegate;
    /// What hovers over the target, if it would be taken.
    std::optional<std::filesystem::path> m_file;
};

}  // namespace kpx
