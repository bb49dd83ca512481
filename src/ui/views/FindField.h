#pragma once

#include <QLineEdit>

namespace kpx {

/// The small field in which text is sought in a table, over the table's upper corner. Escape closes it.
class FindField : public QLineEdit {
    Q_OBJECT

public:
    explicit FindField(QWidget* table);

    void open();
    /// Says in colour and in words whether a row was found.
    void showFound(bool found);

Q_SIGNALS:
    void goOn(bool forward);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();
};

}  // namespace kpx
