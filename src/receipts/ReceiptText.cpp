#include "receipts/ReceiptText.h"

namespace kpx {

namespace {

std::string withName(std::string_view name, const char* named, const char* unnamed, const LocalizedStrings& localized) {
    return name.empty() ? localized(unnamed) : formatted(localized(named), {name});
}

}  // namespace

std::string cannotBeShownText(std::string_view name, const LocalizedStrings& localized) {
    return withName(name, localizable("%1$@: cannot be shown"), localizable("Receipt: cannot be shown"), localized);
}

std::string notFoundText(std::string_view name, const LocalizedStrings& localized) {
    return withName(name, localizable("%1$@: not found"), localizable("Receipt: not found"), localized);
}

std::string cannotBeShownMessage(std::string_view name, const LocalizedStrings& localized) {
    return withName(name, localizable("The receipt %1$@ is attached but cannot be shown."),
                    localizable("A receipt is attached but cannot be shown."), localized);
}

std::string notFoundMessage(std::string_view name, const LocalizedStrings& localized) {
    return withName(name, localizable("The receipt %1$@ is attached, but its file is not found."),
                    localizable("A receipt is attached, but its file is not found."), localized);
}

}  // namespace kpx
