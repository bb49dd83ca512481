#include "ui/bindings/Binder.h"

#include "ui/Conversions.h"
#include "ui/Translations.h"
#include "ui/bindings/ButtonBinding.h"
#include "ui/bindings/ChartBinding.h"
#include "ui/bindings/ChoiceMenuBinding.h"
#include "ui/bindings/DateFieldBinding.h"
#include "ui/bindings/DropBinding.h"
#include "ui/bindings/MatrixBinding.h"
#include "ui/bindings/PanelBindings.h"
#include "ui/bindings/PopUpButtonBinding.h"
#include "ui/bindings/TableBinding.h"
#include "ui/bindings/TextFieldBinding.h"
#include "ui/charts/BarChartView.h"
#include "ui/views/DayField.h"
#include "ui/views/DropButton.h"
#include "ui/views/FirstStepsView.h"
#include "ui/views/PopoverFrame.h"
#include "ui/views/ReceiptView.h"
#include "ui/views/RecordTableView.h"
#include "ui/views/SheetDialog.h"

#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTabWidget>

namespace kpx {

namespace {

/// Binds the pair if the control is a `ControlType` and the widget a `Widget`.
template <class ControlType, class Widget, class... Extra>
bool bindAs(Control& control, QObject& object, Extra... extra) {
    auto* typed = dynamic_cast<ControlType*>(&control);
    auto* widget = qobject_cast<Widget*>(&object);
    if (!typed || !widget) {
        return false;
    }
    bind(*typed, *widget, extra...);
    return true;
}

/// Whether an object of this kind, in a form of ours, must have a control.
bool needsControl(const QObject& object) {
    const QString name = object.objectName();
    if (name.isEmpty() || name.startsWith(QStringLiteral("qt_")) || object.property("ownedByWindow").toBool() ||
        qobject_cast<const QTabBar*>(object.parent())) {
        return false;
    }
    if (qobject_cast<const QLabel*>(&object)) {
        return !name.startsWith(QStringLiteral("label"));
    }
    return qobject_cast<const QComboBox*>(&object) || qobject_cast<const QLineEdit*>(&object) ||
           qobject_cast<const QDateTimeEdit*>(&object) || qobject_cast<const QCalendarWidget*>(&object) ||
           qobject_cast<const QAbstractButton*>(&object) || qobject_cast<const RecordTableView*>(&object) ||
           qobject_cast<const BarChartView*>(&object) || qobject_cast<const SheetDialog*>(&object) ||
           qobject_cast<const QTabWidget*>(&object) || qobject_cast<const QAction*>(&object) ||
           qobject_cast<const PopoverFrame*>(&object) || qobject_cast<const FirstStepsView*>(&object) ||
           qobject_cast<const ReceiptView*>(&object);
}

/// Whether the form says something else than the control. In another language it must.
bool hasAnotherTitle(const Control& control, const QObject& object) {
    const auto* button = dynamic_cast<const Button*>(&control);
    return button && !button->title().empty() && !Translations::areInstalled() &&
           object.property("text").toString().remove(QLatin1Char('&')) != qstring(button->title());
}

bool isCellOf(const Control* control, const QObject& object) {
    return dynamic_cast<const Matrix*>(control) != nullptr && qobject_cast<const QAbstractButton*>(&object);
}

}  // namespace

Binder::Binder(KPXAppDelegate& delegate, QWidget& window) : m_delegate(delegate), m_window(window) {
    for (Control* control : delegate.outlets.controls()) {
        const auto found = window.findChildren<QObject*>(qstring(control->name()));
        if (found.size() != 1) {
            m_mismatches.push_back(control->name() + (found.isEmpty() ? " has no widget" : " has several widgets"));
        } else if (!bindControl(*control, *found.constFirst())) {
            m_mismatches.push_back(control->name() + " has a widget of another kind");
        } else {
            if (hasAnotherTitle(*control, *found.constFirst())) {
                m_mismatches.push_back(control->name() + " has a widget with another title");
            }
            m_objects[control->name()] = found.constFirst();
        }
    }
    for (Control* target :
         {static_cast<Control*>(&delegate.outlets.dropButton), static_cast<Control*>(&delegate.outlets.dropView)}) {
        if (QWidget* widget = widgetForControl(*target)) {
            m_drops.push_back(std::make_unique<DropBinding>(*target, *widget, delegate));
        }
    }
    findWidgetsWithoutControl();
    for (Control* control : delegate.outlets.controls()) {
        if (control->changed) {
            control->changed();
        }
    }
}

Binder::~Binder() {
    for (Control* control : m_delegate.outlets.controls()) {
        control->changed = nullptr;
    }
}

bool Binder::bindControl(Control& control, QObject& object) {
    const std::function<void()> endsEditing = [this] { endEditing(); };
    const std::function<QWidget*(const Control&)> find = [this](const Control& sought) {
        return widgetForControl(sought);
    };
    const std::function<Environment()> environment = [this] { return m_delegate.environment(); };
    auto* matrix = dynamic_cast<Matrix*>(&control);
    if (auto* container = qobject_cast<QWidget*>(&object); matrix && container) {
        bind(*matrix, *container);
        const std::vector<std::string> found = kpx::mismatches(*matrix, *container);
        m_mismatches.insert(m_mismatches.end(), found.begin(), found.end());
        return true;
    }
    return bindAs<PopUpButton, QComboBox>(control, object) || bindAs<PopUpButton, QMenu>(control, object) ||
           bindAs<TextField, QLineEdit>(control, object) || bindAs<Label, QLabel>(control, object) ||
           bindAs<DateField, QDateTimeEdit>(control, object, environment) ||
           bindAs<DateField, QCalendarWidget>(control, object, environment) ||
           bindAs<KPXDropButton, DropButton>(control, object, endsEditing) ||
           bindAs<Button, QAbstractButton>(control, object, endsEditing) ||
           bindAs<Button, QAction>(control, object, endsEditing) ||
           bindAs<TableView, RecordTableView>(control, object, environment) ||
           bindAs<TabView, QTabWidget>(control, object) || bindAs<Bar, QFrame>(control, object) ||
           bindAs<Steps, FirstStepsView>(control, object) || bindAs<Sheet, SheetDialog>(control, object) ||
           bindAs<Popover, PopoverFrame>(control, object, find) || bindAs<Menu, QMenu>(control, object) ||
           bindAs<KPXReceiptView, ReceiptView>(control, object) || bindAs<ChartView, BarChartView>(control, object);
}

void Binder::findWidgetsWithoutControl() {
    for (const QObject* object : m_window.findChildren<QObject*>()) {
        if (!needsControl(*object)) {
            continue;
        }
        const std::string name = utf8(object->objectName());
        const std::string withoutTag = name.substr(0, name.rfind('_'));
        if (!m_delegate.outlets.find(name) && !isCellOf(m_delegate.outlets.find(withoutTag), *object)) {
            m_mismatches.push_back("the widget " + name + " has no control");
        }
    }
}

QWidget* Binder::widgetForControl(const Control& control) const {
    const auto object = m_objects.find(control.name());
    return object == m_objects.end() ? nullptr : qobject_cast<QWidget*>(object->second);
}

QWidget* Binder::widgetForWindow(const std::string& name) const {
    if (const Control* sheet = m_delegate.outlets.find(name)) {
        return widgetForControl(*sheet);
    }
    for (QDialog* sheet : m_window.findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (qobject_cast<SheetDialog*>(sheet) && sheet->isVisible()) {
            return sheet;
        }
    }
    return &m_window;
}

void Binder::endEditing() const {
    QWidget* focused = QApplication::focusWidget();
    if (!focused) {
        return;
    }
    if (auto* day = qobject_cast<DayField*>(focused)) {
        // A date typed in part is only read when its field is left.
        day->readText();
    }
    if (auto* field = dynamic_cast<TextField*>(m_delegate.outlets.find(utf8(focused->objectName())))) {
        field->userEndEditing();
    }
}

}  // namespace kpx
