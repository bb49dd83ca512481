#pragma once

#include <QFrame>
#include <QLabel>

#include <vector>

namespace kpx {

/// The name of a step behind its number, which becomes a tick once the step is done.
class StepMark : public QLabel {
    Q_OBJECT
    Q_PROPERTY(int number READ number WRITE setNumber)

public:
    explicit StepMark(QWidget* parent = nullptr);

    int number() const { return m_number; }
    void setNumber(int number);
    bool isDone() const { return m_done; }
    void setDone(bool done);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF disc() const;

    int m_number = 0;
    bool m_done = false;
};

/// The way to a new household's first entry. It stands in place of the widget beside it that its property "insteadOf"
/// names.
class FirstStepsView : public QFrame {
    Q_OBJECT

public:
    using QFrame::QFrame;

    /// Which of its marks, in their order, are ticked.
    void setDone(const std::vector<bool>& done);
    void setShown(bool shown);
};

}  // namespace kpx
