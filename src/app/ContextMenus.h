#pragma once

namespace kpx {

/// The items of the receipt button's menu, by position.
enum class ReceiptItem { Choose, Paste, Open, ShowInFolder, Remove };

/// The items of the menu of a row of the history, by position.
enum class HistoryItem { Load, Copy, ShowReceipt, PrintTable };

}  // namespace kpx
