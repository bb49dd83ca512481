#include "ui/style/CalmStyle.h"

#include "ui/style/AlertIcons.h"
#include "ui/style/Colors.h"
#include "ui/style/ControlDrawing.h"
#include "ui/style/ScrollBars.h"
#include "ui/style/Strokes.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyleOption>
#include <QTabBar>
#include <QToolButton>

namespace kpx {

namespace {

constexpr int fieldHeight = 30;

/// One height for all that stands in a line of a form, whatever the font.
int heightOfField(const QStyleOption* option) { return qMax(option->fontMetrics.height() + 14, fieldHeight); }

}  // namespace

CalmStyle::CalmStyle(bool headingsAreBold)
    : QProxyStyle(QStringLiteral("Fusion")), m_headingsAreBold(headingsAreBold) {}

void CalmStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) || qobject_cast<QTabBar*>(widget) ||
        qobject_cast<QAbstractSpinBox*>(widget)) {
        widget->setAttribute(Qt::WA_Hover);
    }
    if (auto* toolTip = qobject_cast<QLabel*>(widget); toolTip && toolTip->inherits("QTipLabel")) {
        // They show what people typed: a name is a text, whatever it looks like, and never fetches a picture.
        toolTip->setTextFormat(Qt::PlainText);
    }
    if (qobject_cast<QLabel*>(widget) && widget->property("hint").toBool()) {
        widget->setForegroundRole(QPalette::PlaceholderText);
    }
}

void CalmStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    switch (element) {
        case PE_PanelButtonCommand:
            drawPushButton(option, painter, widget);
            return;
        case PE_PanelButtonTool:
            if (isOn(option, State_Enabled) && (option->state & (State_MouseOver | State_Sunken | State_On))) {
                const QColor ground =
                    mixed(option->palette.color(QPalette::Base), option->palette.color(QPalette::Highlight), 0.18);
                drawBox(*painter, option->rect, ground, ground, false, ground);
            }
            if (isOn(option, State_HasFocus) && isOn(option, State_KeyboardFocusChange)) {
                drawBox(*painter, option->rect, Qt::transparent, Qt::transparent, true,
                        option->palette.color(QPalette::Highlight));
            }
            return;
        case PE_FrameLineEdit:
            drawBox(*painter, option->rect, Qt::transparent, edgeColor(option), isOn(option, State_HasFocus),
                    option->palette.color(QPalette::Highlight));
            return;
        case PE_PanelLineEdit: {
            const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            if (frame && frame->lineWidth > 0) {
                drawField(option, painter, isOn(option, State_HasFocus), isOn(option, State_ReadOnly));
            }
            return;
        }
        case PE_IndicatorCheckBox:
            drawIndicator(option, painter, false);
            return;
        case PE_IndicatorRadioButton:
            drawIndicator(option, painter, true);
            return;
        case PE_Frame:
            if (widget && widget->inherits("QComboBoxPrivateContainer")) {
                drawSquareField(option, painter);
                return;
            }
            if (widget && (widget->inherits("QFrame") || widget->inherits("QAbstractScrollArea"))) {
                drawPanel(option, painter, widget);
                return;
            }
            break;
        case PE_FrameFocusRect:
            // Buttons, tabs and fields show their focus themselves; what is left gets a quiet line.
            if (qobject_cast<const QPushButton*>(widget) || qobject_cast<const QToolButton*>(widget) ||
                qobject_cast<const QComboBox*>(widget)) {
                return;
            }
            break;
        case PE_PanelScrollAreaCorner:
            painter->fillRect(option->rect, option->palette.color(QPalette::Base));
            return;
        case PE_FrameTabBarBase:
            painter->fillRect(QRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1),
                              option->palette.color(QPalette::Midlight));
            return;
        case PE_IndicatorHeaderArrow: {
            const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
            if (header && header->sortIndicator != QStyleOptionHeader::None) {
                drawChevron(*painter, option->rect, option->palette.color(QPalette::Highlight),
                            header->sortIndicator == QStyleOptionHeader::SortDown);
            }
            return;
        }
        default:
            break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void CalmStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    switch (element) {
        case CE_PushButtonLabel:
            if (isMainButton(widget, option) && isOn(option, State_Enabled)) {
                QStyleOptionButton label(*qstyleoption_cast<const QStyleOptionButton*>(option));
                label.palette.setColor(QPalette::ButtonText, label.palette.color(QPalette::HighlightedText));
                QProxyStyle::drawControl(element, &label, painter, widget);
                return;
            }
            break;
        case CE_TabBarTabShape:
            drawTab(option, painter);
            return;
        case CE_TabBarTabLabel:
            if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) {
                drawTabLabel(proxy(), tab, painter);
                return;
            }
            break;
        case CE_HeaderSection:
            painter->fillRect(option->rect, option->palette.color(QPalette::Window));
            painter->fillRect(QRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1),
                              option->palette.color(QPalette::Midlight));
            painter->fillRect(
                visualRect(option->direction, option->rect,
                           QRect(option->rect.right(), option->rect.top() + 7, 1, option->rect.height() - 14)),
                option->palette.color(QPalette::Midlight));
            return;
        case CE_HeaderEmptyArea:
            painter->fillRect(option->rect, option->palette.color(QPalette::Window));
            painter->fillRect(QRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1),
                              option->palette.color(QPalette::Midlight));
            return;
        case CE_ComboBoxLabel:
            if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option); combo && !combo->editable) {
                const QRect field = subControlRect(CC_ComboBox, combo, SC_ComboBoxEditField, widget);
                const QString text = combo->fontMetrics.elidedText(
                    inItsOwnDirection(combo->currentText, combo->direction), Qt::ElideRight, field.width());
                painter->setPen(combo->palette.color(isOn(combo, State_Enabled) ? QPalette::Active : QPalette::Disabled,
                                                     QPalette::Text));
                painter->drawText(field, Qt::AlignLeft | Qt::AlignVCenter, text);
                return;
            }
            break;
        case CE_ItemViewItem:
            if (const auto* shown = qstyleoption_cast<const QStyleOptionViewItem*>(option);
                shown && shown->direction == Qt::RightToLeft) {
                QStyleOptionViewItem item(*shown);
                item.text = inItsOwnDirection(item.text, item.direction);
                QProxyStyle::drawControl(element, &item, painter, widget);
                return;
            }
            break;
        case CE_MenuItem:
            // "Ctrl+?" behind its tab.
            if (const auto* shown = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
                shown && shown->direction == Qt::RightToLeft && shown->text.contains(QLatin1Char('\t'))) {
                QStyleOptionMenuItem item(*shown);
                const auto keys = item.text.indexOf(QLatin1Char('\t')) + 1;
                item.text.replace(keys, item.text.size(), inItsOwnDirection(item.text.mid(keys), item.direction));
                QProxyStyle::drawControl(element, &item, painter, widget);
                return;
            }
            break;
        default:
            break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void CalmStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const {
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        control == CC_ComboBox && combo && !combo->editable) {
        const bool focus = isOn(option, State_HasFocus);
        drawBox(*painter, option->rect, buttonFill(option, false), edgeColor(option), focus,
                option->palette.color(QPalette::Highlight));
        const QRect arrow = subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget);
        drawChevron(*painter, arrow,
                    option->palette.color(isOn(option, State_Enabled) ? QPalette::Active : QPalette::Disabled,
                                          QPalette::ButtonText));
        return;
    }
    if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
        control == CC_SpinBox && spin && spin->buttonSymbols == QAbstractSpinBox::NoButtons) {
        drawField(option, painter, isOn(option, State_HasFocus));
        return;
    }
    if (const auto* tool = qstyleoption_cast<const QStyleOptionToolButton*>(option);
        control == CC_ToolButton && tool && widget &&
        widget->objectName() == QStringLiteral("qt_calendar_monthbutton")) {
        // The arrow of its menu would lie in its name. Like the year beside it, it lights up under the mouse.
        QStyleOptionToolButton plain(*tool);
        plain.features &= ~QStyleOptionToolButton::HasMenu;
        QProxyStyle::drawComplexControl(control, &plain, painter, widget);
        return;
    }
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option); control == CC_ScrollBar && bar) {
        drawScrollBar(*bar, scrollBarPart(*bar, SC_ScrollBarSlider), *painter);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

int CalmStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_LayoutHorizontalSpacing:
        case PM_LayoutVerticalSpacing:
            return 8;
        case PM_LayoutLeftMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutBottomMargin:
            return 16;
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return 16;
        case PM_CheckBoxLabelSpacing:
        case PM_RadioButtonLabelSpacing:
            return 8;
        case PM_TabBarTabHSpace:
            return 40;
        case PM_TabBarTabVSpace:
            return 20;
        case PM_TabBarTabShiftVertical:
        case PM_TabBarTabOverlap:
        case PM_TabBarTabShiftHorizontal:
            return 0;
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        case PM_HeaderMargin:
            return 6;
        case PM_FocusFrameHMargin:
            return qobject_cast<const QAbstractItemView*>(widget) ? 5 : 2;
        case PM_ScrollBarExtent:
            return 14;
        case PM_ScrollBarSliderMin:
            return 32;
        case PM_ToolTipLabelFrameWidth:
            return 6;
        case PM_MessageBoxIconSize:
            return 40;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int CalmStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returnData) const {
    switch (hint) {
        case SH_ComboBox_Popup:
            return 0;
        case SH_DialogButtonLayout:
            return QDialogButtonBox::GnomeLayout;
        case SH_DialogButtonBox_ButtonsHaveIcons:
            return 0;
        case SH_ItemView_ShowDecorationSelected:
            return 1;
        case SH_TabBar_Alignment:
            return Qt::AlignLeft;
        case SH_Table_GridLineColor:
            return static_cast<int>(option->palette.color(QPalette::Midlight).rgba());
        case SH_FormLayoutLabelAlignment:
            return Qt::AlignLeft | Qt::AlignVCenter;
        case SH_EtchDisabledText:
            return 0;
        case SH_UnderlineShortcut:
            // An underlined letter is drawn by itself: within an Arabic word it would not join its neighbours.
            return QGuiApplication::isLeftToRight() ? 1 : 0;
        case SH_ToolTip_WakeUpDelay:
            return m_toolTipDelay;
        // Selecting a tab is an act with consequences, such as a warning; scrolling across it is none.
        case SH_TabBar_AllowWheelScrolling:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QSize CalmStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
    if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option); header && widget) {
        // Titles are measured as they are drawn, where the toolkit has them in bold; and those that nobody sees yet not
        // at all. Either would have the window wait for letters that it does not show.
        QStyleOptionHeader drawn(*header);
        drawn.fontMetrics = widget->fontMetrics();
        if (!widget->isVisible()) {
            drawn.text.clear();
        }
        const QSize title = QProxyStyle::sizeFromContents(type, &drawn, size, widget);
        return title.expandedTo(QSize(0, fieldHeight));
    }
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    switch (type) {
        case CT_PushButton:
            result.setHeight(qMax(result.height(), fieldHeight));
            result.setWidth(qMax(result.width() + 16, 88));
            break;
        case CT_LineEdit:
        case CT_ComboBox:
        case CT_SpinBox:
            result.setHeight(heightOfField(option));
            break;
        case CT_ToolButton:
            result = result.boundedTo(QSize(result.width(), heightOfField(option)));
            break;
        case CT_CheckBox:
        case CT_RadioButton:
            result.setHeight(qMax(result.height(), 24));
            break;
        case CT_ItemViewItem:
            if (widget && widget->inherits("QComboBoxListView")) {
                result.setHeight(qMax(result.height(), 26));
            }
            break;
        default:
            break;
    }
    return result;
}

QRect CalmStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                                const QWidget* widget) const {
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option); control == CC_ScrollBar && bar) {
        return scrollBarPart(*bar, subControl);
    }
    if (control == CC_ComboBox) {
        constexpr int arrowWidth = 26;
        constexpr int inset = 9;
        const QRect all = option->rect;
        if (subControl == SC_ComboBoxArrow) {
            return visualRect(option->direction, all,
                              QRect(all.right() - arrowWidth + 1, all.top(), arrowWidth, all.height()));
        }
        if (subControl == SC_ComboBoxEditField) {
            return visualRect(option->direction, all, all.adjusted(inset, 1, -arrowWidth, -1));
        }
    }
    if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
        control == CC_SpinBox && spin && spin->buttonSymbols == QAbstractSpinBox::NoButtons &&
        subControl == SC_SpinBoxEditField) {
        return option->rect.adjusted(5, 1, -3, -1);
    }
    return QProxyStyle::subControlRect(control, option, subControl, widget);
}

QRect CalmStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (element == SE_LineEditContents && frame && frame->lineWidth > 0) {
        return rect.adjusted(4, 0, -4, 0);
    }
    if (element == SE_LineEditContents && frame && isOn(option, State_ReadOnly)) {
        // A text among labels stands flush with them; the field itself keeps two pixels to its edge.
        return rect.adjusted(-2, 0, 2, 0);
    }
    const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
    if (element == SE_TabBarTabRightButton && tab) {
        return visualRect(tab->direction, tab->rect, tabButtonRect(*tab));
    }
    return rect;
}

QIcon CalmStyle::standardIcon(StandardPixmap pixmap, const QStyleOption* option, const QWidget* widget) const {
    const QPalette& palette = widget ? widget->palette() : QApplication::palette();
    const QIcon icon = alertIcon(pixmap, palette);
    return icon.isNull() ? QProxyStyle::standardIcon(pixmap, option, widget) : icon;
}

}  // namespace kpx
