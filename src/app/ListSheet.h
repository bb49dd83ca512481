#pragma once

#include "app/Outlets.h"
#include "core/Record.h"
#include "lists/ListRecords.h"

#include <vector>

namespace kpx {

/// One list's controls, beside what makes it that list. All belong to the application controller.
struct ListSheet {
    const ListKind& kind;
    Sheet& sheet;
    PopUpButton& popUp;  ///< of tab 1; its last item opens the sheet
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
