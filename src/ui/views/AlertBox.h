#pragma once

#include "controls/Alert.h"

#include <QMessageBox>

#include <vector>

class QScrollArea;

namespace kpx {

/// An alert on the screen: the message bold, the informative text below it, both taken as plain text. It is never
/// larger than the screen: long texts scroll, and the buttons stay in sight.
class AlertBox : public QMessageBox {
    Q_OBJECT

public:
    AlertBox(const Alert& alert, QWidget* parent);

    /// What the pressed button answers with; after a close by any other way, what Escape answers with.
    int returnCode() const;
    /// How often the alert was asked for, and how the region writes that; from 2 on its last line says so.
    void setTimes(int times, const QString& written);

Q_SIGNALS:
    /// The help button was pressed; the alert stays.
    void helpWanted();

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addButtons(const Alert& alert);
    /// Puts the texts where they can be scrolled, so that the box is at most that high.
    void scrollTexts(int most);
    void moveIntoScreen();

    std::vector<QAbstractButton*> m_buttons;
    int m_escapeIndex;
    QScrollArea* m_scroll = nullptr;  ///< null as long as the texts have room
    QString m_informativeText;
    int m_times = 1;
    QString m_writtenTimes;
    int m_shownTimes = 1;
};

}  // namespace kpx
