#include "tests/ui/Fit.h"

#include "ui/charts/BarChartView.h"
#include "ui/views/DropButton.h"
#include "ui/views/ElidedLabel.h"

#include <QAbstractButton>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTableView>

namespace kpx::test {

namespace {

QString nameOf(const QWidget& widget) {
    return widget.objectName().isEmpty() ? QLatin1String(widget.metaObject()->className()) : widget.objectName();
}

/// A part that the toolkit lays out by itself, with texts of its own.
bool isToolkits(const QWidget& widget) {
    for (const QWidget* above = widget.parentWidget(); above; above = above->parentWidget()) {
        if (qobject_cast<const QCalendarWidget*>(above) || qobject_cast<const QTabBar*>(above)) {
            return true;
        }
    }
    return false;
}

class Faults {
public:
    explicit Faults(const QWidget& window) : m_window(window) {}

    QStringList all() {
        for (const QWidget* widget : m_window.findChildren<QWidget*>()) {
            if (isShown(*widget)) {
                lookAtText(*widget);
                lookAtPlace(*widget);
                lookAtMnemonic(*widget);
            }
        }
        tellTwins(m_mnemonics, nameOf(m_window));
        for (const QMenu* menu : m_window.findChildren<QMenu*>()) {
            QMap<QString, QStringList> mnemonics;
            for (const QAction* action : menu->actions()) {
                addMnemonic(mnemonics, action->text());
            }
            tellTwins(mnemonics, nameOf(*menu));
        }
        return m_faults;
    }

private:
    bool isShown(const QWidget& widget) const {
        return widget.window() == &m_window && !isToolkits(widget) && widget.isVisibleTo(&m_window) &&
               !widget.size().isEmpty();
    }

    void tell(const QWidget& widget, const QString& fault) {
        m_faults.append(nameOf(widget) + QStringLiteral(": ") + fault);
    }

    void needRoom(const QWidget& widget, const QString& text, QSize needed, QSize given) {
        if (needed.width() > given.width() || needed.height() > given.height()) {
            tell(widget, QStringLiteral("“%1” needs %2 × %3 and has %4 × %5")
                             .arg(text)
                             .arg(needed.width())
                             .arg(needed.height())
                             .arg(given.width())
                             .arg(given.height()));
        }
    }

    static QSize sizeOf(const QWidget& widget, const QString& text) {
        return widget.fontMetrics().size(Qt::TextShowMnemonic, text);
    }

    void lookAtText(const QWidget& widget) {
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            lookAtLabel(*label);
        } else if (const auto* drop = qobject_cast<const DropButton*>(&widget)) {
            const QRect area = drop->textArea();
            const QRect taken = drop->fontMetrics().boundingRect(QRect(0, 0, area.width(), 1000),
                                                                 Qt::AlignHCenter | Qt::TextWordWrap, drop->text());
            needRoom(*drop, drop->text(), taken.size(), area.size());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            if (!button->text().isEmpty()) {
                needRoom(*button, button->text(), button->sizeHint(), button->size());
            }
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
            lookAtTabs(*tabs);
        } else if (const auto* menus = qobject_cast<const QMenuBar*>(&widget)) {
            for (QAction* action : menus->actions()) {
                if (!menus->rect().contains(menus->actionGeometry(action))) {
                    tell(*menus, action->text() + QStringLiteral(" has no room"));
                }
            }
        } else if (const auto* header = qobject_cast<const QHeaderView*>(&widget)) {
            lookAtHeader(*header);
        } else if (const auto* date = qobject_cast<const QDateTimeEdit*>(&widget)) {
            needRoom(*date, date->text(), date->minimumSizeHint(), date->size());
        } else if (const auto* field = qobject_cast<const QLineEdit*>(&widget)) {
            constexpr int margins = 8;
            const QString digits(field->property("digits").toInt(), QLatin1Char('0'));
            needRoom(*field, digits, sizeOf(*field, digits), field->size() - QSize(margins, 0));
            needRoom(*field, field->placeholderText(), sizeOf(*field, field->placeholderText()),
                     field->size() - QSize(field->placeholderText().isEmpty() ? 0 : margins, 0));
        }
    }

    void lookAtLabel(const QLabel& label) {
        if (label.text().isEmpty() || qobject_cast<const ElidedLabel*>(&label)) {
            return;
        }
        const QSize given = label.contentsRect().size() - QSize(2 * label.margin(), 2 * label.margin());
        if (label.wordWrap()) {
            const QSize needed(label.fontMetrics()
                                   .boundingRect(QRect(0, 0, given.width(), 10000), Qt::TextWordWrap, label.text())
                                   .width(),
                               label.heightForWidth(label.width()));
            needRoom(label, label.text(), needed, {given.width(), label.height()});
        } else {
            needRoom(label, label.text(), sizeOf(label, label.text()), given);
        }
    }

    void lookAtTabs(const QTabBar& tabs) {
        for (int index = 0; index < tabs.count(); ++index) {
            needRoom(tabs, tabs.tabText(index), sizeOf(tabs, tabs.tabText(index)), tabs.tabRect(index).size());
            if (!tabs.rect().contains(tabs.tabRect(index))) {
                tell(tabs, tabs.tabText(index) + QStringLiteral(" has no room"));
            }
        }
    }

    void lookAtHeader(const QHeaderView& header) {
        const int margins = 2 * header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header);
        for (int index = 0; index < header.count(); ++index) {
            const QString title = header.model()->headerData(index, header.orientation()).toString();
            needRoom(header, title, sizeOf(header, title) + QSize(margins, 0),
                     {header.sectionSize(index), header.height()});
        }
    }

    /// Those that hold no others.
    static bool isControl(const QWidget& widget) {
        return qobject_cast<const QLabel*>(&widget) || qobject_cast<const QAbstractButton*>(&widget) ||
               qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QDateTimeEdit*>(&widget) ||
               qobject_cast<const QTableView*>(&widget) || qobject_cast<const BarChartView*>(&widget) ||
               qobject_cast<const QMenuBar*>(&widget) || qobject_cast<const QTabBar*>(&widget) ||
               (qobject_cast<const QLineEdit*>(&widget) && !qobject_cast<const QDateTimeEdit*>(widget.parentWidget()));
    }

    void lookAtPlace(const QWidget& widget) {
        if (!isControl(widget) || qobject_cast<const QTableView*>(widget.parentWidget())) {
            return;
        }
        if (!widget.parentWidget()->rect().contains(widget.geometry())) {
            tell(widget, QStringLiteral("reaches beyond ") + nameOf(*widget.parentWidget()));
        }
        // What is scrolled out of sight lies over nothing.
        const QRect seen = widget.visibleRegion().boundingRect();
        const QRect place(widget.mapTo(&m_window, seen.topLeft()), seen.size());
        for (const auto& [other, otherPlace] : m_places) {
            if (place.intersects(otherPlace) && !other->isAncestorOf(&widget) && !widget.isAncestorOf(other)) {
                tell(widget, QStringLiteral("lies over ") + nameOf(*other));
            }
        }
        m_places.append({&widget, place});
    }

    void lookAtMnemonic(const QWidget& widget) {
        if (const auto* label = qobject_cast<const QLabel*>(&widget); label && label->buddy()) {
            addMnemonic(m_mnemonics, label->text());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            addMnemonic(m_mnemonics, button->text());
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
            for (int index = 0; index < tabs->count(); ++index) {
                addMnemonic(m_mnemonics, tabs->tabText(index));
            }
        } else if (const auto* menus = qobject_cast<const QMenuBar*>(&widget)) {
            for (const QAction* action : menus->actions()) {
                addMnemonic(m_mnemonics, action->text());
            }
        }
    }

    static void addMnemonic(QMap<QString, QStringList>& mnemonics, const QString& text) {
        if (const QKeySequence keys = QKeySequence::mnemonic(text); !keys.isEmpty()) {
            mnemonics[keys.toString()].append(text);
        }
    }

    void tellTwins(const QMap<QString, QStringList>& mnemonics, const QString& place) {
        for (const QStringList& texts : mnemonics) {
            if (texts.size() > 1) {
                m_faults.append(place + QStringLiteral(": one mnemonic for ") + texts.join(QStringLiteral(", ")));
            }
        }
    }

    const QWidget& m_window;
    QStringList m_faults;
    QList<std::pair<const QWidget*, QRect>> m_places;
    QMap<QString, QStringList> m_mnemonics;
};

}  // namespace

QStringList faultsOf(const QWidget& window) { return Faults(window).all(); }

QStringList textsOf(const QWidget& window) {
    QStringList texts = {window.windowTitle()};
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() != &window || isToolkits(*widget)) {
            continue;
        }
        texts << widget->toolTip() << widget->accessibleName();
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            texts << label->text();
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            texts << button->text();
        } else if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
            texts << field->placeholderText();
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
            for (int index = 0; index < tabs->count(); ++index) {
                texts << tabs->tabText(index);
            }
        } else if (const auto* header = qobject_cast<const QHeaderView*>(widget)) {
            for (int index = 0; index < header->count() && header->isVisible(); ++index) {
                texts << header->model()->headerData(index, header->orientation()).toString();
            }
        }
    }
    for (const QMenu* menu : window.findChildren<QMenu*>()) {
        for (const QAction* action : isToolkits(*menu) ? QList<QAction*>() : menu->actions()) {
            texts << action->text();
        }
    }
    return texts;
}

QStringList wordsWithoutRoom(const QWidget& window) {
    QStringList words;
    // The names in the other pop-ups are the user's.
    for (const char* name :
         {"fillTypeTab1", "drugTypeOrMeasureTab1", "everyIntervalTab1", "whenToTakeDrugTab1", "costChartKind"}) {
        const auto* combo = window.findChild<QComboBox*>(QLatin1String(name));
        QStyleOptionComboBox option;
        option.initFrom(combo);
        const int room =
            combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo).width();
        for (int index = 0; index < combo->count(); ++index) {
            const int needed = combo->fontMetrics().horizontalAdvance(combo->itemText(index));
            if (combo->isVisible() && needed > room) {
                words.append(QStringLiteral("%1: “%2” needs %3 and has %4")
                                 .arg(QLatin1String(name), combo->itemText(index))
                                 .arg(needed)
                                 .arg(room));
            }
        }
    }
    return words;
}

}  // namespace kpx::test
