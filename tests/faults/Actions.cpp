#include "tests/faults/Actions.h"

namespace kpx::faults {
namespace {

using Commands = std::vector<std::string>;

Commands joined(std::initializer_list<Commands> parts) {
    Commands all;
    for (const Commands& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

struct List {
    const char* name;
    const char* popUp;
    const char* maintain;
    const char* table;
    std::vector<std::string> fields;  ///< those that an add needs
    const char* changed;              ///< one that may change; a name may not
    const char* add;
    const char* change;
    const char* remove;
    const char* close;
};

const std::vector<List>& lists() {
    static const std::vector<List> all = {
        {"patients",
         "patientPopTab1",
         "Maintain Patients…",
         "tableViewpatientSheet",
         {"patientNamepatientSheet"},
         "patientAddrpatientSheet",
         "addBtnpatientSheet",
         "changeBtnpatientSheet",
         "deleteBtnpatientSheet",
         "closeBtnpatientSheet"},
        {"pharmacies",
         "pharmacyPopTab1",
         "Maintain Pharmacies…",
         "tableViewpharmacySheet",
         {"pharmacyNamepharmacySheet"},
         "pharmacyAddrpharmacySheet",
         "addBtnpharmacySheet",
         "changeBtnpharmacySheet",
         "deleteBtnpharmacySheet",
         "closeBtnpharmacySheet"},
        {"drugs",
         "drugPopTab1",
         "Maintain Drugs…",
         "tableViewDrugSheet",
         {"drugNameDrugSheet", "drugDescDrugSheet"},
         "drugDescDrugSheet",
         "addBtnDrugSheet",
         "changeBtnDrugSheet",
         "deleteBtnDrugSheet",
         "closeBtnDrugSheet"},
        {"prescribers",
         "prescriberPopTab1",
         "Maintain Prescribers…",
         "tableViewPrescriberSheet",
         {"prescriberNamePrescriberSheet"},
         "prescriberAddrPrescriberSheet",
         "addBtnPrescriberSheet",
         "changeBtnPrescriberSheet",
         "deleteBtnPrescriberSheet",
         "closeBtnPrescriberSheet"},
    };
    return all;
}

Commands open(const List& list) { return {std::string("choose ") + list.popUp + " \"" + list.maintain + "\""}; }

Commands fill(const List& list, const std::string& name) {
    Commands commands;
    for (const std::string& field : list.fields) {
        commands.push_back("paste " + field + " " + name);
    }
    return commands;
}

Commands added(const List& list, const std::string& name) {
    return joined(
        {open(list), fill(list, name), {std::string("click ") + list.add, std::string("click ") + list.close}});
}

Commands entryForm(const std::string& number, const std::string& type) {
    return {"choose patientPopTab1 @0",    "choose pharmacyPopTab1 @0",    "choose drugPopTab1 @0",
            "choose prescriberPopTab1 @0", "paste rxNumberTab1 " + number, "choose fillTypeTab1 " + type,
            "paste daysSupply 30",         "paste initialRefillsTab1 5",   "paste totalCostTab1 12.50"};
}

}  // namespace

const Commands& madeHousehold() {
    static const Commands commands = [] {
        Commands all = {"clock 2024-03-06T18:00:00", "start"};
        for (const char* name : {"One", "Two"}) {
            for (const List& list : lists()) {
                all = joined({all, {"tick 3600"}, added(list, name)});
            }
        }
        for (const char* number : {"100", "200"}) {
            all = joined({all, {"tick 3600"}, entryForm(number, "Initial"), {"click addBtnTab1"}});
        }
        return joined({all, {"tick 3600"}, entryForm("100", "Refill"), {"click addBtnTab1"}});
    }();
    return commands;
}

const std::vector<Action>& writingActions() {
    static const std::vector<Action> actions = [] {
        std::vector<Action> all = {
            {"Add an initial fill", entryForm("300", "Initial"), {"click addBtnTab1"}},
            {"Add a refill", entryForm("200", "Refill"), {"click addBtnTab1"}},
            {"Change a fill", {"dblclick tableViewTab1 1", "paste totalCostTab1 99"}, {"click changeBtnTab1"}},
            {"Delete a prescription", {"dblclick tableViewTab1 0", "click deleteBtnTab1"}, {"answer Yes"}},
            {"Bring back an earlier state",
             {"click earlierStatesMenuItem", "clickrow tableViewEarlierStates 8", "click bringBackBtn"},
             {"answer Yes"}},
        };
        const List& patients = lists().front();
        const auto addPatient = [&](const char* name, Found found) -> Action {
            return {
                name, joined({open(patients), fill(patients, "Three")}), {std::string("click ") + patients.add}, found};
        };
        all.push_back(addPatient("Add to an older household", Found::WithoutEarlierStates));
        all.push_back(addPatient("Add the first patient", Found::Nothing));
        for (const List& list : lists()) {
            const std::string second = std::string("dblclick ") + list.table + " 1";
            all.push_back({list.name + std::string(": Add"),
                           joined({open(list), fill(list, "Three")}),
                           {std::string("click ") + list.add}});
            const std::string change = std::string("paste ") + list.changed + " Other";
            all.push_back({list.name + std::string(": Change"),
                           joined({open(list), {second, change}}),
                           {std::string("click ") + list.change}});
            all.push_back({list.name + std::string(": Delete"),
                           joined({open(list), {second}}),
                           {std::string("click ") + list.remove}});
        }
        return all;
    }();
    return actions;
}

const Commands& startAndWriteAll() {
    static const Commands commands = [] {
        Commands all = {"start"};
        for (const List& list : lists()) {
            all = joined({all, added(list, "Last")});
        }
        return joined({all, entryForm("999", "Initial"), {"click addBtnTab1"}});
    }();
    return commands;
}

}  // namespace kpx::faults
