#pragma once

#include <QCalendarWidget>

namespace kpx {

/// A month to pick a day from, in the colours of the window: weekends quiet, arrows drawn.
class DayCalendar : public QCalendarWidget {
    Q_OBJECT

public:
    explicit DayCalendar(QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void paintCell(QPainter* painter, const QRect& rect, QDate date) const override;

private:
    void takeColors();
    /// For assistive technology: the toolkit gives its parts no names.
    void nameParts();
    /// As everything else here and in the fields, whatever digits the region's own texts have.
    void writeYearInLatinDigits();
    /// Where dates begin with it. The toolkit puts the month first everywhere.
    void putYearFirst();
};

}  // namespace kpx
