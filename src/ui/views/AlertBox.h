#pragma once

#include "controls/Alert.h"

#include <QMessageBox>

#include <vector>

namespace kpx {

/// An alert on the screen: the message bold, the informative text below it, both taken as plain text.
class AlertBox : public QMessageBox {
    Q_OBJECT

public:
    AlertBox(const Alert& alert, QWidget* parent);

    /// What the pressed button answers with; after a close by any other way, what Escape answers with.
    int returnCode() const;

Q_SIGNALS:
    /// The help button was pressed; the alert stays.
    void helpWanted();

private:
    void addButtons(const Alert& alert);

    std::vector<QAbstractButton*> m_buttons;
    int m_escapeIndex;
};

}  // namespace kpx
