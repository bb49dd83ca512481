#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace kpx {

/// Where words to search for are typed: below the pages, hidden until it is wanted.
class FindBar : public QWidget {
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent = nullptr);

    QString words() const;
    /// Shows it, with the words selected to be typed over.
    void open();
    /// Says whether the words were found.
    void tell(bool found);

Q_SIGNALS:
    /// They were typed on.
    void wordsChanged();
    void nextWanted();
    void previousWanted();
    void closed();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QLineEdit* m_words;
    QLabel* m_outcome;
};

}  // namespace kpx
