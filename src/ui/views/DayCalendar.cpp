#include "ui/views/DayCalendar.h"

#include "ui/Conversions.h"
#include "ui/style/Strokes.h"
#include "ui/views/AccessibleTable.h"
#include "values/Unicode.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLocale>
#include <QPainter>
#include <QTextCharFormat>
#include <QToolButton>

#include <utility>

namespace kpx {

namespace {

/// The arrow of a month's neighbour, turned from one that points down.
QIcon arrow(const QColor& color, bool toTheRight) {
    QIcon icon;
    for (const int scale : {1, 2, 3}) {
        QPixmap picture(16 * scale, 16 * scale);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.scale(scale, scale);
        painter.translate(8, 8);
        painter.rotate(toTheRight ? -90 : 90);
        drawChevron(painter, QRectF(-8, -8, 16, 16), color);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

/// The week's days have short names in each language, of which some are longer than in others.
QSize smallestSize(const QCalendarWidget& calendar) {
    constexpr int days = 7;
    constexpr int room = 16;
    int widest = 0;
    for (int day = 1; day <= days; ++day) {
        const QString name = calendar.locale().dayName(day, QLocale::ShortFormat);
        widest = qMax(widest, calendar.fontMetrics().horizontalAdvance(name));
    }
    return {qMax(272, days * (widest + room)), 236};
}

}  // namespace

namespace {

/// The day that stands in the cell; invalid for the line of the weekdays.
QDate dayOfCell(const QModelIndex& cell, const QCalendarWidget& calendar) {
    const int number = cell.data().toInt();
    constexpr int middleRow = 3;
    constexpr int middleDay = 15;
    // The first weeks end the month before, the last ones begin the next.
    const bool before = cell.row() < middleRow && number > middleDay;
    const bool after = cell.row() > middleRow && number < middleDay;
    const QDate day = QDate(calendar.yearShown(), calendar.monthShown(), 1)
                          .addMonths(before  ? -1
                                     : after ? 1
                                             : 0)
                          .addDays(number - 1);
    return number > 0 ? day : QDate();
}

QString nameOfCell(const QModelIndex& cell, const QCalendarWidget& calendar) {
    const QDate day = dayOfCell(cell, calendar);
    return day.isValid() ? qstring(withLatinDigits(utf8(calendar.locale().toString(day, QLocale::LongFormat))))
                         : cell.data().toString();
}

QAccessibleInterface* accessibleDays(const QString&, QObject* object) {
    auto* view = qobject_cast<QTableView*>(object);
    auto* calendar = view ? qobject_cast<DayCalendar*>(view->parent()) : nullptr;
    if (!calendar) {
        return nullptr;
    }
    TableActs acts;
    acts.name = [calendar](const QModelIndex& cell) { return nameOfCell(cell, *calendar); };
    acts.select = [calendar](const QModelIndex& cell) {
        const QDate day = dayOfCell(cell, *calendar);
        if (day.isValid() && day >= calendar->minimumDate() && day <= calendar->maximumDate()) {
            calendar->setSelectedDate(day);
            Q_EMIT calendar->clicked(day);
        }
    };
    return new AccessibleTable(*view, std::move(acts));
}

}  // namespace

DayCalendar::DayCalendar(QWidget* parent) : QCalendarWidget(parent) {
    // A second time changes nothing.
    QAccessible::installFactory(accessibleDays);
    setVerticalHeaderFormat(NoVerticalHeader);
    // A digit would open a small window to type a date in, above the days; the field is there for that.
    setDateEditEnabled(false);
    takeColors();
    writeYearInLatinDigits();
    if (locale().dateFormat(QLocale::LongFormat).startsWith(QLatin1Char('y'))) {
        putYearFirst();
    }
    nameParts();
}

QSize DayCalendar::minimumSizeHint() const { return smallestSize(*this); }

QSize DayCalendar::sizeHint() const { return QCalendarWidget::minimumSizeHint().expandedTo(smallestSize(*this)); }

void DayCalendar::nameParts() {
    const std::pair<const char*, QString> names[] = {{"qt_calendar_prevmonth", tr("Previous month")},
                                                     {"qt_calendar_nextmonth", tr("Next month")},
                                                     {"qt_calendar_yearedit", tr("Year")},
                                                     {"qt_calendar_calendarview", tr("Days")}};
    for (const auto& [name, words] : names) {
        if (auto* part = findChild<QWidget*>(QLatin1String(name))) {
            part->setAccessibleName(words);
        }
    }
}

void DayCalendar::writeYearInLatinDigits() {
    if (auto* edit = findChild<QWidget*>(QStringLiteral("qt_calendar_yearedit"))) {
        edit->setLocale(QLocale::c());
    }
    auto* button = findChild<QToolButton*>(QStringLiteral("qt_calendar_yearbutton"));
    if (!button) {
        return;
    }
    const auto writeYear = [button](int year) { button->setText(QString::number(year)); };
    connect(this, &QCalendarWidget::currentPageChanged, button, writeYear);
    writeYear(yearShown());
}

void DayCalendar::putYearFirst() {
    auto* month = findChild<QWidget*>(QStringLiteral("qt_calendar_monthbutton"));
    auto* year = findChild<QWidget*>(QStringLiteral("qt_calendar_yearbutton"));
    auto* line = month && year ? qobject_cast<QHBoxLayout*>(month->parentWidget()->layout()) : nullptr;
    if (line) {
        const int before = line->indexOf(month);
        const int after = line->indexOf(year);
        line->insertItem(before, line->takeAt(after));
        line->insertItem(after, line->takeAt(before + 1));
    }
}

void DayCalendar::changeEvent(QEvent* event) {
    QCalendarWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        takeColors();
    }
}

void DayCalendar::takeColors() {
    QTextCharFormat header;
    header.setForeground(palette().color(QPalette::PlaceholderText));
    header.setBackground(palette().color(QPalette::Base));
    setHeaderTextFormat(header);
    setWeekdayTextFormat(Qt::Saturday, header);
    setWeekdayTextFormat(Qt::Sunday, header);
    const QColor ink = palette().color(QPalette::Text);
    if (auto* bar = findChild<QWidget*>(QStringLiteral("qt_calendar_navigationbar"))) {
        // Its buttons drop colours of their own when the mouse has been over them, and take the bar's; away
        // from the mouse they write in the colour of selected text.
        QPalette quiet = palette();
        quiet.setColor(QPalette::ButtonText, ink);
        quiet.setColor(QPalette::BrightText, ink);
        quiet.setColor(QPalette::HighlightedText, ink);
        bar->setPalette(quiet);
        bar->setBackgroundRole(QPalette::Base);
    }
    if (auto* year = findChild<QWidget*>(QStringLiteral("qt_calendar_yearedit"))) {
        // Here selected text is what it says.
        QPalette typed;
        typed.setColor(QPalette::HighlightedText, palette().color(QPalette::HighlightedText));
        year->setPalette(typed);
    }
    for (const auto& [name, forward] : {std::pair("qt_calendar_prevmonth", false), {"qt_calendar_nextmonth", true}}) {
        if (auto* button = findChild<QToolButton*>(QLatin1String(name))) {
            button->setIcon(arrow(ink, forward != isRightToLeft()));
        }
    }
}

void DayCalendar::paintCell(QPainter* painter, const QRect& rect, QDate date) const {
    const bool selected = date == selectedDate();
    const bool otherMonth = date.month() != monthShown();
    const QRectF disc = QRectF(rect).adjusted(3, 1, -3, -1);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    if (selected) {
        painter->setBrush(palette().color(QPalette::Active, QPalette::Highlight));
        painter->drawRoundedRect(disc, 5, 5);
    } else if (date == QDate::currentDate()) {
        painter->setPen(QPen(palette().color(QPalette::Mid), 1));
        painter->drawRoundedRect(disc, 5, 5);
    }
    const QPalette::ColorRole ink = selected     ? QPalette::HighlightedText
                                    : otherMonth ? QPalette::PlaceholderText
                                                 : QPalette::Text;
    painter->setPen(palette().color(QPalette::Active, ink));
    painter->drawText(rect, Qt::AlignCenter, QString::number(date.day()));
    painter->restore();
}

}  // namespace kpx
