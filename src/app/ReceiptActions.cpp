#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "core/Keys.h"
#include "receipts/Bookmark.h"
#include "receipts/DataFolderRule.h"
#include "receipts/ReceiptText.h"
#include "receipts/RelocationText.h"

namespace kpx {

namespace {

/// What a tab-1 row holds where a receipt belongs, and the file that it leads to.
struct ReceiptOfRow {
    bool exists = false;
    std::string name;
    std::optional<std::filesystem::path> file;
};

ReceiptOfRow receiptOf(const Record& row, const std::filesystem::path& folder) {
    const Value* receipt = row.find("receiptdata");
    const Data* bookmark = receipt ? receipt->as<Data>() : nullptr;
    if (!bookmark) {
        return {receipt != nullptr, {}, std::nullopt};
    }
    return {true, nameInBookmark(*bookmark, folder), resolveBookmark(*bookmark, folder)};
}

}  // namespace

bool KPXAppDelegate::draggingEntered(Control& target, const std::filesystem::path& file) {
    if (m_ports.workspace.typeOfFile(file) == Workspace::FileType::Other) {
        sayCannotBeTaken(file);
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
    m_notificationCenter.post(imageChangedNotification, file);
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
    m_receiptIsAsLoaded = false;
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
    const ReceiptOfRow receipt = receiptOf(row, copyDataFolderURL().value_or(""));
    setImageFilePathURL(receipt.file);
    buildImageViewAndSetWithURL(m_imageFilePathURL);
    if (receipt.exists && !receipt.file) {
        showReceiptProblem(KPXDropButton::State::NotFound, receipt.name);
    }
    m_receiptIsAsLoaded = true;
}

void KPXAppDelegate::showReceiptOfRow(const Record& row) {
    const ReceiptOfRow receipt = receiptOf(row, copyDataFolderURL().value_or(""));
    if (receipt.file) {
        displayReceipt(*receipt.file);
    } else {
        outlets.dropView.removeAllSubviews();
        outlets.dropView.setMessage(notFoundMessage(receipt.name, m_strings));
    }
    outlets.findReceiptBtn.setEnabled(false);
    outlets.receiptPopover.show(outlets.dropButton);
}

void KPXAppDelegate::showReceiptOfForm() {
    if (m_imageFilePathURL) {
        displayReceipt(*m_imageFilePathURL);
    } else {
        outlets.dropView.removeAllSubviews();
    }
    outlets.dropView.setMessage(m_receiptMessage);
    outlets.findReceiptBtn.setEnabled(outlets.dropButton.state() == KPXDropButton::State::NotFound);
}

bool KPXAppDelegate::displayReceipt(const std::filesystem::path& file) {
    outlets.dropView.removeAllSubviews();
    const Workspace::FileType type = m_ports.workspace.typeOfFile(file);
    if (type == Workspace::FileType::Other) {
        outlets.dropView.setMessage(cannotBeShownMessage(file.filename().string(), m_strings));
        return false;
    }
    outlets.dropView.setMessage({});
    outlets.dropView.setContent(
        type == Workspace::FileType::Image ? KPXReceiptView::Content::Image : KPXReceiptView::Content::PDF,
        file.string());
    return true;
}

void KPXAppDelegate::keepUntouchedReceipt(const Record& stored, Record& changed) const {
    const Value* receipt = stored.find(MHReceiptKey);
    if (m_receiptIsAsLoaded && receipt && !changed.contains(MHReceiptKey)) {
        changed.set(MHReceiptKey, *receipt);
    }
}

void KPXAppDelegate::buildImageViewAndSetWithURL(const std::optional<std::filesystem::path>& url) {
    if (!url) {
        removeAction();
        return;
    }
    const std::string name = url->filename().string();
    if (!displayReceipt(*url)) {
        outlets.dropButton.setImage({});
        showReceiptProblem(KPXDropButton::State::CannotBeShown, name);
        return;
    }
    outlets.dropButton.setImage(url->string());
    showReceiptAttached(name);
}

void KPXAppDelegate::removeAction() {
    setImageFilePathURL(std::nullopt);
    m_receiptIsAsLoaded = false;
    m_receiptMessage.clear();
    outlets.dropButton.setImage({});
    outlets.dropButton.setReceipt(KPXDropButton::State::None, {});
    showReceiptOfForm();
}

void KPXAppDelegate::showReceiptAttached(const std::string& name) {
    m_receiptMessage.clear();
    outlets.dropButton.setReceipt(KPXDropButton::State::Attached, name);
    outlets.dropView.setMessage(m_receiptMessage);
    outlets.findReceiptBtn.setEnabled(false);
}

void KPXAppDelegate::showReceiptProblem(KPXDropButton::State state, const std::string& name) {
    const bool notFound = state == KPXDropButton::State::NotFound;
    m_receiptMessage = notFound ? notFoundMessage(name, m_strings) : cannotBeShownMessage(name, m_strings);
    outlets.dropButton.setReceipt(state, notFound ? notFoundText(name, m_strings) : cannotBeShownText(name, m_strings));
    outlets.dropView.setMessage(m_receiptMessage);
    outlets.findReceiptBtn.setEnabled(notFound);
}

}  // namespace kpx
