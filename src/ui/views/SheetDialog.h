#pragma once

#include <QDialog>

namespace kpx {

/// A sheet of the main window. Escape and its title bar's button close it as its Close button would;
/// Return presses nothing.
class SheetDialog : public QDialog {
    Q_OBJECT

public:
    explicit SheetDialog(QWidget* parent);

    void reject() override;
    /// Hides it without asking the Close button.
    void endSheet();
};

}  // namespace kpx
