#include "ui/views/AccessibleChoices.h"

#include "ui/views/PopUpCombo.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>

#include <map>

namespace kpx {

namespace {

class Choice : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Choice(PopUpCombo& combo, int row) : m_combo(combo), m_row(row) {}

    int row() const { return m_row; }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    /// Items go and come; the choice stands for a place among them.
    bool isValid() const override { return m_row < m_combo.count(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return parent()->window(); }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_combo.view()); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? m_combo.itemText(m_row) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        const QAbstractItemView& view = *m_combo.view();
        return view.isVisible() ? view.visualRect(index()).translated(view.viewport()->mapToGlobal(QPoint())) : QRect();
    }
    QAccessible::Role role() const override { return isSeparator() ? QAccessible::Separator : QAccessible::ListItem; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.disabled = !m_combo.isEnabled();
        state.invisible = !m_combo.view()->isVisible();
        if (!isSeparator()) {
            state.selectable = state.focusable = true;
            state.selected = m_combo.currentIndex() == m_row;
            state.focused = m_combo.view()->isVisible() && m_combo.view()->currentIndex() == index();
        }
        return state;
    }

    QStringList actionNames() const override { return isSeparator() ? QStringList{} : QStringList{pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction() && isValid() && !isSeparator()) {
            m_combo.chooseItem(m_row);
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QModelIndex index() const { return m_combo.model()->index(m_row, m_combo.modelColumn(), m_combo.rootModelIndex()); }
    bool isSeparator() const { return !index().flags().testFlag(Qt::ItemIsEnabled); }

    PopUpCombo& m_combo;
    int m_row;
};

class Choices : public QAccessibleWidget {
public:
    Choices(QAbstractItemView* view, PopUpCombo& combo) : QAccessibleWidget(view, QAccessible::List), m_combo(combo) {}
    ~Choices() override {
        for (const auto& [row, id] : m_choices) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&m_combo); }
    int childCount() const override { return m_combo.count(); }
    QAccessibleInterface* child(int row) const override {
        if (row < 0 || row >= m_combo.count()) {
            return nullptr;
        }
        QAccessible::Id& id = m_choices[row];
        if (id == 0) {
            id = QAccessible::registerAccessibleInterface(new Choice(m_combo, row));
        }
        return QAccessible::accessibleInterface(id);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* choice = dynamic_cast<const Choice*>(child);
        return choice ? choice->row() : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QAbstractItemView& view = *m_combo.view();
        return child(view.indexAt(view.viewport()->mapFromGlobal(QPoint(x, y))).row());
    }
    QAccessibleInterface* focusChild() const override {
        return m_combo.view()->isVisible() ? child(m_combo.view()->currentIndex().row()) : nullptr;
    }

private:
    PopUpCombo& m_combo;
    /// Made when they are first asked for.
    mutable std::map<int, QAccessible::Id> m_choices;
};

QAccessibleInterface* accessibleChoices(const QString&, QObject* object) {
    auto* view = qobject_cast<QAbstractItemView*>(object);
    for (QObject* around = view ? view->parent() : nullptr; around; around = around->parent()) {
        auto* combo = qobject_cast<PopUpCombo*>(around);
        if (combo) {
            return combo->view() == view ? new Choices(view, *combo) : nullptr;
        }
    }
    return nullptr;
}

}  // namespace

void installAccessibleChoices() {
    // A second time changes nothing.
    QAccessible::installFactory(accessibleChoices);
}

}  // namespace kpx
