#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "core/Keys.h"
#include "core/PopUpTitles.h"
#include "history/HistoryPredicates.h"
#include "history/HistoryRecord.h"
#include "region/DateConversion.h"

namespace kpx {

std::optional<std::filesystem::path> KPXAppDelegate::copyDataFolderURL() const {
    const auto directories = m_ports.workspace.applicationSupportDirectories();
    return directories.empty() ? std::nullopt : std::optional(directories.front() / dataFolderName);
}

std::optional<Records> KPXAppDelegate::copyArrayFromDataFile(std::string_view fileName) {
    const auto folder = copyDataFolderURL();
    DataFile file = folder ? readDataFile(*folder, fileName) : DataFile{};
    m_readings.insert_or_assign(std::string(fileName), file.state);
    showUnreadableBar();
    return file.state == DataFile::State::Damaged ? std::nullopt : std::optional(std::move(file.records));
}

bool KPXAppDelegate::writeArray(const std::optional<Records>& array, std::string_view toDataFile, Replacing replacing) {
    const auto folder = copyDataFolderURL();
    const auto bytes = folder && array ? bytesFromRecords(*array) : std::nullopt;
    if (!bytes) {
        return false;
    }
    const auto reading = m_readings.find(toDataFile);
    const auto found = reading == m_readings.end() ? DataFile::State::Read : reading->second;
    return replaceKeepingEarlier(*folder, toDataFile, {.bytes = *bytes, .madeFrom = fileStateOf(found)}, replacing,
                                 environment());
}

void KPXAppDelegate::showDataFilesInFinder() {
    if (const auto folder = copyDataFolderURL()) {
        m_ports.workspace.open(folder->string(), {});
    }
}

std::optional<Records> KPXAppDelegate::copyArrayAndCheckDates(const DateField& beginDate, const DateField& andEndDate,
                                                              const PopUpButton& forPatientPop,
                                                              const PopUpButton& forPrescriptionPop,
                                                              const Matrix* forPrescripType) {
    const Date begin = beginDate.date();
    const Date end = andEndDate.date();
    if (!areBeginEndDatesOK(begin, end)) {
        return std::nullopt;
    }
    const int scriptType = forPrescripType ? forPrescripType->selectedTag().value_or(scriptTypeNone) : scriptTypeNone;
    const auto predicate =
        copyPredicateString(forPatientPop.titleOfSelectedItem(), forPrescriptionPop.titleOfSelectedItem(), begin, end,
                            scriptType, localized("All"));
    Records history = copyArrayFromDataFile(prescriptionHistoryFile).value_or(Records());
    const Environment here = environment();
    arrayToNSDate(history, MHDispenseDateKey, here);
    Records kept = filteredRecords(std::move(history), predicate);
    arrayNSDateToString(kept, MHDispenseDateKey, here);
    return kept;
}

bool KPXAppDelegate::writeToFileAndSetPopups(const InputArray& input, std::optional<Records> withArray) {
    const EntryForm form = entryForm();
    Record record = copyDictFromInputFieldsArray(input, form, environment());
    addReceiptImageToDict(record);
    record.set(MHNoteKey, form.note);
    if (withArray) {
        withArray->push_back(record);
    }
    // What was written need not be read again; after a failed write the file is what counts.
    const bool written = writeArray(withArray, prescriptionHistoryFile);
    const auto fromFile = written ? std::nullopt : copyArrayFromDataFile(prescriptionHistoryFile);
    const std::optional<Records>& stored = written ? withArray : fromFile;

    rebuildHistoryTable(withArray);
    showFirstSteps(withArray);
    setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, false);
    // The drug pop-up stands in the show button's place too: Show itself is switched by the tab only.
    enableDisableShow(nullptr, nullptr, outlets.patientPopForShowTab1, outlets.drugNamePopForShowTab1,
                      &outlets.prescriberPopTab1, outlets.drugNamePopForShowTab1, true);
    refreshPatientPopUpForShowTab1(stored ? copyUniqueKey(MHPatientKey, *stored) : std::vector<std::string>());
    patientPopUpSelected(outlets.patientPopForShowTab1, stored);
    outlets.drugNamePopForShowTab1.selectLastItem();
    for (PopUpButton* patientPop : {&outlets.patientPopTab2, &outlets.patientPopTab3, &outlets.patientPopTab4}) {
        setPaneBase(*patientPop, withArray);
        if (!written) {
            patientPopUpSelected(*patientPop, stored);
        }
    }
    return written;
}

void KPXAppDelegate::rebuildHistoryTable(const std::optional<Records>& history) {
    populateTableViewArrayFromFileArray(history, maintArrayForTVTab1);
    outlets.tableViewTab1.reloadData();
    outlets.filterText.setText({});
    putCountOnContent(maintArrayForTVTab1.size(), 0);
}

void KPXAppDelegate::refreshPatientPopUpForShowTab1(std::vector<std::string> patients) {
    loadThisPopupButton(outlets.patientPopForShowTab1, std::move(patients), false, true);
    outlets.patientPopForShowTab1.selectLastItem();
}

}  // namespace kpx
