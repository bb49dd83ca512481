#include "ui/ports/QtFileChooser.h"

#include "ui/Conversions.h"

#include <QFileDialog>

#include <utility>

namespace kpx {

void QtFileChooser::chooseFile(const std::filesystem::path& folder,
                               std::function<void(const std::filesystem::path& file)> chosen) {
    auto* dialog = new QFileDialog(m_window, QFileDialog::tr("Choose a Receipt"), qstring(folder.string()));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setMimeTypeFilters({QStringLiteral("application/octet-stream"), QStringLiteral("application/pdf"),
                                QStringLiteral("image/jpeg"), QStringLiteral("image/png")});
    QObject::connect(dialog, &QFileDialog::fileSelected, dialog,
                     [chosen = std::move(chosen)](const QString& file) { chosen(utf8(file)); });
    dialog->open();
}

}  // namespace kpx
