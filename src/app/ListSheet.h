#pragma once

#include "app/Outlets.h"
#include "lists/ListRecords.h"
#include "values/Record.h"

#include <vector>

namespace kpx {

class KPXAppDelegate;

/// Where the four lists stand among the controller's.
enum ListPosition { drugSheet, patientSheet, pharmacySheet, prescriberSheet };

/// One list's controls and its two routines, beside what makes it that list. All belong to the application
/// controller.
struct ListSheet {
    const ListKind& kind;
    bool (KPXAppDelegate::*doAdd)(const Button& sender);
    void (*populate)(const Records& records, Records& tvArray);
    Sheet& sheet;
    PopUpButton& popUp;  ///< of tab 1; its last item opens the sheet
    Button& firstBtn;    ///< opens the sheet from the first steps
    TableView& table;
    Records& rows;
    Button& addBtn;
    Button& changeBtn;
    Button& deleteBtn;
    Button& closeBtn;
    std::vector<TextField*> fields;

    /// The fields' texts by tag; position 0 is empty.
    std::vector<std::string> texts() const {
        std::vector<std::string> result(fields.size() + 1);
        for (const TextField* field : fields) {
            result[static_cast<std::size_t>(field->tag())] = field->text();
        }
        return result;
    }
    /// The text of the name field.
    std::string name() const { return texts()[1]; }
};

}  // namespace kpx
