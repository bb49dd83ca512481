#pragma once

#include <QList>
#include <QObject>

class QGridLayout;
class QToolButton;
class QWidget;

namespace kpx {

/// Folds a form to the line of its headings, labels named "labelSection…", and back: on a small screen the table
/// below gets the room. The button says what its next press does.
class FoldingForm : public QObject {
    Q_OBJECT

public:
    FoldingForm(QWidget& form, QToolButton& button);

    void setFolded(bool folded);

    /// Unfolds the form that the widget lies in; for any other widget nothing.
    static void unfold(QWidget& widget);

private:
    QWidget& m_form;
    QToolButton& m_button;
    QGridLayout& m_rows;
    int m_spacing;
    int m_spacingOfRows;
    QList<QWidget*> m_folded;
};

}  // namespace kpx
