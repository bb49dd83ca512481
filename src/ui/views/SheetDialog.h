#pragma once

#include <QDialog>

namespace kpx {

/// A sheet of the main window. Escape and its title bar's button close it as its Close button would, and ask first
/// when something typed would be lost. Return presses the button that has the focus, and in a field the main one. Each
/// time it opens, its first field has the focus, and again once an entry was stored and its fields stand empty for the
/// next one.
class SheetDialog : public QDialog {
    Q_OBJECT

public:
    explicit SheetDialog(QWidget* parent);

    void reject() override;
    /// Hides it without asking the Close button.
    void endSheet();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* firstField() const;
    bool holdsTypedText() const;
    bool userGivesUpTypedText();
    void returnToAnEmptyFirstField();

    bool m_wasShown = false;
};

}  // namespace kpx
