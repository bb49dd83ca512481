#include "receipts/RelocationText.h"

namespace kpx {

RelocationText relocationText(const std::filesystem::path& file, std::string_view dataFolderName,
                              const LocalizedStrings& localized) {
    const std::string_view folder = dataFolderName;
    // The wording, its punctuation and the other product's name included, is the program's own.
    const std::string name = file.filename().string();
    const std::string path = file.string();
    const std::string informative =
        localized.sentence(
            "Receipt file:\t\"%@\",\rLocated at:\t\"%@\"\r\rneeds to be relocated inside \"%@\", with GRV's other data "
            "files, or a folder within it.\r\r",
            {name, path, folder},
            formatted(localized("Receipt file:\t\"%@\",\rLocated at:\t\"%@\"\r\r"), {name, path}) +
                formatted(
                    localized("needs to be relocated inside \"%@\", with GRV's other data files, or a folder within "
                              "it.\r\r"),
                    {folder})) +
        localized("What to do next:\r") +
        formatted(
            localized("\t1. Use KPX's Help menu item, \"Show Data Files in Finder\", to open the \"%@\", folder.\r"),
            {folder}) +
        formatted(localized("\t   It should open a Finder window showing a folder named %@ and its data files.\r\r"),
                  {folder}) +
        formatted(
            localized(
                "\t2. Create a folder( assuming one doesn't exist already ) within \"%@\" to store receipts.\r\r"),
            {folder}) +
        localized("\t3. Put receipt image files in the folder created & use them when dragging receipts to KPX\r\r") +
        localized.sentence(
            "\t•  Note: other receipt files, already used by KPX, but not inside \"%@\", will need relocation\r\t   "
            "and "
            "reattachment ( by changing maintenance in KPX ) with this same process.\r",
            {folder},
            formatted(localized("\t•  Note: other receipt files, already used by KPX, but not inside \"%@\", will need "
                                "relocation\r"),
                      {folder}) +
                localized("\t   and reattachment ( by changing maintenance in KPX ) with this same process.\r"));
    return {
        .message = formatted(localized("Receipt file is NOT stored in KPX's data folder named: \"%@\"."), {folder}),
        .informative = informative,
        .openButton = formatted(
            localized("Thank you for the reminder. Ok, I understand. Please open the \"%@\" folder for me"), {folder}),
        .openToolTip = formatted(localized("This button opens the \"%@\" folder in the Finder"), {folder}),
        .cancelButton = localized("Cancel"),
        .cancelToolTip = localized("Dismisses this dialog & aborts the receipt file's drag to KPX")};
}

}  // namespace kpx
