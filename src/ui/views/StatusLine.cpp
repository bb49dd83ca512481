#include "ui/views/StatusLine.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace kpx {

namespace {

/// A plain label's text reads as its name already; only what it is differs.
class StatusLineInterface : public QAccessibleWidget {
public:
    explicit StatusLineInterface(StatusLine* line) : QAccessibleWidget(line, QAccessible::StatusBar) {}

    QString text(QAccessible::Text kind) const override {
        const auto* line = static_cast<const StatusLine*>(widget());
        return kind == QAccessible::Name ? line->text() : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    auto* line = qobject_cast<StatusLine*>(object);
    return line ? new StatusLineInterface(line) : nullptr;
}

}  // namespace

StatusLine::StatusLine(QWidget* parent) : ElidedLabel(parent) {
    static const bool installed = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(installed);
}

}  // namespace kpx
