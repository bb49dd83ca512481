#include "ui/preview/AccessiblePages.h"

#include "ui/preview/PagesView.h"

#include <QAccessibleWidget>

#include <algorithm>

namespace kpx {

namespace {

/// The pages as a text that can be read and selected but not changed.
class AccessiblePages : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit AccessiblePages(PagesView* view) : QAccessibleWidget(view, QAccessible::EditableText) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                                  : QAccessibleWidget::interface_cast(type);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        state.multiLine = true;
        state.selectableText = true;
        return state;
    }

    void selection(int selectionIndex, int* startOffset, int* endOffset) const override {
        const bool any = selectionIndex == 0 && selectionCount() == 1;
        *startOffset = any ? std::min(view().anchor(), view().cursor()) : 0;
        *endOffset = any ? std::max(view().anchor(), view().cursor()) : 0;
    }
    int selectionCount() const override { return view().anchor() == view().cursor() ? 0 : 1; }
    void addSelection(int startOffset, int endOffset) override { view().select(startOffset, endOffset); }
    void removeSelection(int) override { view().select(view().cursor(), view().cursor()); }
    void setSelection(int, int startOffset, int endOffset) override { view().select(startOffset, endOffset); }
    int cursorPosition() const override { return view().cursor(); }
    void setCursorPosition(int position) override { view().select(position, position); }

    using QAccessibleWidget::text;
    QString text(int startOffset, int endOffset) const override {
        return view().text().mid(startOffset, endOffset - startOffset);
    }
    int characterCount() const override { return static_cast<int>(view().text().size()); }
    QRect characterRect(int offset) const override {
        const QRect place = view().seenPlace(offset, offset + 1);
        return place.translated(view().viewport()->mapToGlobal(QPoint()));
    }
    int offsetAtPoint(const QPoint& point) const override {
        return view().positionAt(view().viewport()->mapFromGlobal(point));
    }
    void scrollToSubstring(int startIndex, int) override { view().ensureSeen(startIndex); }
    QString attributes(int, int* startOffset, int* endOffset) const override {
        *startOffset = 0;
        *endOffset = characterCount();
        return {};
    }

private:
    PagesView& view() const { return static_cast<PagesView&>(*widget()); }
};

QAccessibleInterface* accessiblePages(const QString&, QObject* object) {
    auto* view = qobject_cast<PagesView*>(object);
    return view ? new AccessiblePages(view) : nullptr;
}

}  // namespace

void installAccessiblePages() {
    // A second time changes nothing.
    QAccessible::installFactory(accessiblePages);
}

}  // namespace kpx
