#include "app/ContextMenus.h"
#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "files/FileAddress.h"

namespace kpx {

void KPXAppDelegate::updateReceiptMenu() {
    const auto enable = [this](ReceiptItem item, bool enabled) {
        outlets.contextMenuReceipt.setItemEnabled(static_cast<std::size_t>(item), enabled);
    };
    enable(ReceiptItem::Open, m_imageFilePathURL.has_value());
    enable(ReceiptItem::ShowInFolder, m_imageFilePathURL.has_value());
    enable(ReceiptItem::Remove, outlets.dropButton.state() != KPXDropButton::State::None);
}

void KPXAppDelegate::respondToReceiptMenu(int itemIndex) {
    const auto open = [this](const std::filesystem::path& path) {
        m_ports.workspace.open(path.string(), [this, path] {
            outlets.statusText.setText(formatted(localized("%1$@ could not be opened."), {path.string()}));
        });
    };
    outlets.statusText.setText({});
    switch (static_cast<ReceiptItem>(itemIndex)) {
        case ReceiptItem::Choose:
            chooseReceipt();
            break;
        case ReceiptItem::Paste:
            pasteReceipt();
            break;
        case ReceiptItem::Open:
            if (m_imageFilePathURL) {
                open(*m_imageFilePathURL);
            }
            break;
        case ReceiptItem::ShowInFolder:
            if (m_imageFilePathURL) {
                open(m_imageFilePathURL->parent_path());
            }
            break;
        case ReceiptItem::Remove:
            removeAction();
            break;
    }
}

void KPXAppDelegate::chooseReceipt() {
    const auto folder = copyDataFolderURL();
    if (!folder) {
        return;
    }
    makeDataFolder(*folder);
    m_ports.files.chooseFile(*folder, [this](const std::filesystem::path& file) { takeReceipt(file); });
}

void KPXAppDelegate::pasteReceipt() {
    const std::string address = m_ports.clipboard.address();
    const auto file = fileOfAddress(address);
    std::error_code error;
    if (!file) {
        outlets.statusText.setText(localized("The clipboard holds no file."));
    } else if (!std::filesystem::exists(*file, error)) {
        outlets.statusText.setText(formatted(localized("%1$@ is not found."), {file->string()}));
    } else {
        takeReceipt(*file);
    }
}

void KPXAppDelegate::takeReceipt(const std::filesystem::path& file) {
    if (m_ports.workspace.typeOfFile(file) == Workspace::FileType::Other) {
        sayCannotBeTaken(file);
        return;
    }
    outlets.statusText.setText({});
    imageChanged(file);
}

void KPXAppDelegate::sayCannotBeTaken(const std::filesystem::path& file) {
    outlets.statusText.setText(
        formatted(localized("%1$@ is no picture and no PDF document."), {file.filename().string()}));
}

}  // namespace kpx
