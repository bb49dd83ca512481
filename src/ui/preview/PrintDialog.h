#pragma once

#include <QPrintDialog>

namespace kpx {

/// The toolkit's dialog, but for a list of pages such as "1-2,5". The toolkit hands it to the print server, forgets it,
/// and then refuses it because there is none; here the printer gets it, as it gets any range.
class PrintDialog : public QPrintDialog {
    Q_OBJECT

public:
    using QPrintDialog::QPrintDialog;

    void accept() override;
};

}  // namespace kpx
