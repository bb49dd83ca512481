#include "ui/bindings/DropBinding.h"

#include "app/KPXAppDelegate.h"
#include "files/FileAddress.h"
#include "ui/views/ReceiptView.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace kpx {

namespace {

std::optional<std::filesystem::path> firstFile(const QMimeData& data) {
    const QList<QUrl> addresses = data.urls();
    // As it was sent: a name whose escapes are no text would be lost in one.
    return addresses.isEmpty() ? std::nullopt : fileOfAddress(addresses.constFirst().toEncoded().toStdString());
}

Qt::DropAction actionFor(Qt::DropActions possible) {
    return possible.testFlag(Qt::LinkAction)   ? Qt::LinkAction
           : possible.testFlag(Qt::CopyAction) ? Qt::CopyAction
                                               : Qt::IgnoreAction;
}

}  // namespace

DropBinding::DropBinding(Control& control, QWidget& widget, KPXAppDelegate& delegate)
    : m_control(control), m_widget(widget), m_delegate(delegate) {
    widget.setAcceptDrops(true);
    widget.installEventFilter(this);
}

bool DropBinding::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::DragEnter:
            dragEntered(static_cast<QDropEvent&>(*event));
            return true;
        case QEvent::DragMove:
            answer(static_cast<QDropEvent&>(*event));
            return true;
        case QEvent::DragLeave:
            dragLeft();
            return true;
        case QEvent::Drop:
            dropped(static_cast<QDropEvent&>(*event));
            return true;
        default:
            return false;
    }
}

void DropBinding::dragEntered(QDropEvent& event) {
    m_file.reset();
    const auto file = firstFile(*event.mimeData());
    if (file && actionFor(event.possibleActions()) != Qt::IgnoreAction &&
        m_delegate.draggingEntered(m_control, *file)) {
        m_file = file;
        showDragInside(true);
    }
    answer(event);
}

void DropBinding::answer(QDropEvent& event) const {
    if (m_file) {
        event.setDropAction(actionFor(event.possibleActions()));
        event.accept();
    } else {
        event.ignore();
    }
}

void DropBinding::dragLeft() {
    m_file.reset();
    showDragInside(false);
    m_delegate.draggingExited(m_control);
}

void DropBinding::dropped(QDropEvent& event) {
    answer(event);
    if (!m_file) {
        return;
    }
    showDragInside(false);
    // The other program waits for the end of this event; what the drop brings up comes after it.
    QMetaObject::invokeMethod(
        this,
        [this, file = *m_file] {
            m_delegate.performDragOperation(m_control, file);
            m_delegate.concludeDragOperation(m_control);
        },
        Qt::QueuedConnection);
    m_file.reset();
}

void DropBinding::showDragInside(bool inside) {
    if (auto* view = qobject_cast<ReceiptView*>(&m_widget)) {
        view->setDragInside(inside);
    }
}

}  // namespace kpx
