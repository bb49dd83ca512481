#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "core/Keys.h"
#include "receipts/Bookmark.h"
#include "receipts/DataFolderRule.h"
#include "receipts/RelocationText.h"

namespace kpx {

bool KPXAppDelegate::draggingEntered(Control& target, const std::filesystem::path& file) {
    if (m_ports.workspace.typeOfFile(file) == Workspace::FileType::Other) {
        return false;
    }
    if (&target == &outlets.dropButton) {
        outlets.dropButton.setDragInside(true);
    }
    return true;
}

void KPXAppDelegate::draggingExited(Control& target) {
    if (&target == &outlets.dropButton) {
        outlets.dropButton.setDragInside(false);
    }
}

void KPXAppDelegate::performDragOperation([[maybe_unused]] Control& target, const std::filesystem::path& file) {
    imageChanged(file);
}

void KPXAppDelegate::concludeDragOperation(Control& target) {
    if (&target == &outlets.dropButton) {
        outlets.dropButton.userClick();
        draggingExited(target);
    }
}

void KPXAppDelegate::imageChanged(const std::filesystem::path& url) {
    if (!liesInDataFolder(url, dataFolderName)) {
        urlIsNotFoundInHZNsSandbox(url);
        return;
    }
    setImageFilePathURL(url);
    outlets.dropView.removeAllSubviews();
    buildImageViewAndSetWithURL(url);
}

void KPXAppDelegate::urlIsNotFoundInHZNsSandbox(const std::filesystem::path& url) {
    const RelocationText text = relocationText(url, dataFolderName, m_strings);
    Alert alert = copySheetAlertWithErrorString(text.informative, text.message, text.openButton, text.cancelButton,
                                                text.openToolTip, text.cancelToolTip);
    alert.style = AlertStyle::Informational;
    m_ports.alerts.beginSheet(mainWindow, alert,
                              [this](int returnCode) {
                                  if (returnCode == alertFirstButtonReturn) {
                                      showDataFilesInFinder();
                                  }
                              },
                              {});
}

void KPXAppDelegate::addReceiptImageToDict(Record& record) const {
    if (!m_imageFilePathURL) {
        return;
    }
    const auto bookmark = createBookmark(*m_imageFilePathURL, copyDataFolderURL().value_or(""));
    if (bookmark) {
        record.set(MHReceiptKey, *bookmark);
    } else {
        record.remove(MHReceiptKey);
    }
}

void KPXAppDelegate::restoreReceipt(const Record& row) {
    const Value* receipt = row.find("receiptdata");
    const Data* bookmark = receipt ? receipt->as<Data>() : nullptr;
    setImageFilePathURL(bookmark ? resolveBookmark(*bookmark, copyDataFolderURL().value_or("")) : std::nullopt);
    buildImageViewAndSetWithURL(m_imageFilePathURL);
}

void KPXAppDelegate::buildImageViewAndSetWithURL(const std::optional<std::filesystem::path>& url) {
    outlets.dropView.removeAllSubviews();
    if (!url) {
        removeAction();
        return;
    }
    const Workspace::FileType type = m_ports.workspace.typeOfFile(*url);
    if (type == Workspace::FileType::Other) {
        // The button keeps whatever image it had.
        return;
    }
    outlets.dropButton.setImage(url->string());
    outlets.dropView.setContent(
        type == Workspace::FileType::Image ? KPXReceiptView::Content::Image : KPXReceiptView::Content::PDF,
        url->string());
}

void KPXAppDelegate::removeAction() {
    setImageFilePathURL(std::nullopt);
    outlets.dropButton.setImage({});
    outlets.dropView.removeAllSubviews();
}

}  // namespace kpx
