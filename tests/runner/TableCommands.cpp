#include "tests/runner/Commands.h"
#include "tests/runner/Find.h"
#include "tests/runner/Show.h"

#include <algorithm>

namespace kpx::runner {

namespace {

/// A table that can be reached, and one of its rows.
struct Row {
    Target<TableView> table;
    int row = -1;
};

/// The row that the words name; −1 only where `below` allows the space below the last row.
Row reachRow(Session& session, const Words& words, bool below) {
    Row found{reach<TableView>(session, words[0].text, "table")};
    if (!found.table) {
        return found;
    }
    const long long row = *integerFromWord(words[1].text);
    if (row >= found.table->numberOfRows() || row < (below ? -1 : 0)) {
        return {{nullptr, words[0].text + " has no row " + words[1].text}};
    }
    found.row = static_cast<int>(row);
    return found;
}

const TableView::Column* columnOf(const TableView& table, const std::string& identifier) {
    const auto column = std::ranges::find(table.columns(), identifier, &TableView::Column::identifier);
    return column == table.columns().end() ? nullptr : &*column;
}

Json clickRow(Session& session, const Words& words) {
    const Row row = reachRow(session, words, true);
    if (!row.table) {
        return refused(row.table.error);
    }
    session.beginAct(row.table.control);
    row.table->userClickRow(row.row);
    return done();
}

Json doubleClickRow(Session& session, const Words& words) {
    const Row row = reachRow(session, words, true);
    if (!row.table) {
        return refused(row.table.error);
    }
    session.beginAct(row.table.control);
    row.table->userDoubleClickRow(row.row);
    return done();
}

/// Null where none opens: that of the history is a row's.
Menu* menuOf(Outlets& outlets, const TableView& table, int row) {
    if (&table == &outlets.tableViewTab1) {
        return row < 0 ? nullptr : &outlets.contextMenuTab1;
    }
    return &table == &outlets.tableViewTab2 ? &outlets.contextMenuTab2 : nullptr;
}

Json openMenu(Session& session, Menu& menu) {
    if (menu.needsUpdate) {
        menu.needsUpdate();
    }
    session.setOpenMenu(&menu);
    Json result = done();
    result["items"] = itemsOf(menu);
    return result;
}

Json rightClickRow(Session& session, const Words& words) {
    const Row row = reachRow(session, words, true);
    if (!row.table) {
        return refused(row.table.error);
    }
    Menu* menu = menuOf(session.outlets(), *row.table, row.row);
    if (!menu) {
        return refused(words[0].text + " has no context menu");
    }
    session.beginAct(row.table.control);
    row.table->userClickRow(row.row);
    return openMenu(session, *menu);
}

Json rightClick(Session& session, const Words& words) {
    const auto button = reach<KPXDropButton>(session, words[0].text, "button with a context menu");
    if (!button) {
        return refused(button.error);
    }
    session.beginAct(button.control);
    return openMenu(session, session.outlets().contextMenuReceipt);
}

Json chooseMenuItem(Session& session, const Words& words) {
    const auto menu = find<Menu>(session, words[0].text, "menu");
    if (!menu) {
        return refused(menu.error);
    }
    if (session.openMenu() != menu.control) {
        return refused(words[0].text + " is not open");
    }
    const long long index = *integerFromWord(words[1].text);
    if (index < 0 || index >= static_cast<long long>(menu->items().size())) {
        return refused(words[0].text + " has no item " + words[1].text);
    }
    if (!menu->items()[static_cast<std::size_t>(index)].enabled) {
        return refused("item " + words[1].text + " of " + words[0].text + " is disabled");
    }
    session.setOpenMenu(nullptr);
    if (menu->action) {
        menu->action(static_cast<int>(index));
    }
    return done();
}

Json sortTable(Session& session, const Words& words) {
    const auto table = reach<TableView>(session, words[0].text, "table");
    if (!table) {
        return refused(table.error);
    }
    if (!columnOf(*table, words[1].text)) {
        return refused(words[0].text + " has no column " + words[1].text);
    }
    session.beginAct(table.control);
    table->userSort(words[1].text, words[2].text == "asc");
    return done();
}

Json foundRow(std::optional<int> row) {
    Json result = done();
    result["row"] = row ? Json(*row) : Json();
    return result;
}

Json findText(Session& session, const Words& words) {
    const auto table = reach<TableView>(session, words[0].text, "table");
    if (!table) {
        return refused(table.error);
    }
    session.beginAct(table.control);
    return foundRow(
        session.application().findInTable(*table, words[1].text, table->selectedRow(), SearchDirection::Forward));
}

Json findAgain(Session& session, const Words& words, SearchDirection direction) {
    const auto table = reach<TableView>(session, words[0].text, "table");
    if (!table) {
        return refused(table.error);
    }
    session.beginAct(table.control);
    return foundRow(session.application().findAgain(*table, direction));
}

Json findNext(Session& session, const Words& words) { return findAgain(session, words, SearchDirection::Forward); }

Json findPrevious(Session& session, const Words& words) { return findAgain(session, words, SearchDirection::Backward); }

/// The text as a value of the kind that the column holds; null when it is none.
std::optional<Value> valueOfKind(const Value& example, const std::string& text, const test::LocalTime& localTime) {
    if (example.as<std::int64_t>()) {
        const auto number = integerFromWord(text);
        return number ? std::optional<Value>(static_cast<std::int64_t>(*number)) : std::nullopt;
    }
    if (example.as<double>()) {
        const auto number = numberFromWord(text);
        return number ? std::optional<Value>(*number) : std::nullopt;
    }
    if (example.as<Date>()) {
        const auto date = localTime.parse(text);
        return date ? std::optional<Value>(*date) : std::nullopt;
    }
    return Value(text);
}

/// A value of the column: the cell's own, else another row's; null for an empty column.
const Value* exampleOf(const TableView& table, const std::string& column, int row) {
    const Value* example = table.objectValue(column, row);
    for (int other = 0; !example && other < table.numberOfRows(); ++other) {
        example = table.objectValue(column, other);
    }
    return example;
}

Json editCell(Session& session, const Words& words) {
    const Row row = reachRow(session, words, false);
    if (!row.table) {
        return refused(row.table.error);
    }
    const std::string& identifier = words[2].text;
    const TableView::Column* column = columnOf(*row.table, identifier);
    if (!column) {
        return refused(words[0].text + " has no column " + identifier);
    }
    const Value* example = exampleOf(*row.table, identifier, row.row);
    const auto value = valueOfKind(example ? *example : Value(""), words[3].text, session.platform.localTime);
    if (!value) {
        return refused(identifier + " does not take " + words[3].text);
    }
    session.beginAct(row.table.control);
    row.table->userEdit(row.row, identifier, *value);
    return done();
}

}  // namespace

const std::vector<CommandForm>& tableCommands() {
    static const std::vector<CommandForm> forms{
        {"clickrow TABLE INTEGER", When::Running, clickRow},
        {"dblclick TABLE INTEGER", When::Running, doubleClickRow},
        {"rightclick TABLE INTEGER", When::Running, rightClickRow},
        {"rightclick NAME", When::Running, rightClick},
        {"find TABLE TEXT", When::Running, findText},
        {"findnext TABLE", When::Running, findNext},
        {"findprevious TABLE", When::Running, findPrevious},
        {"menuitem NAME INTEGER", When::Running, chooseMenuItem},
        {"sort TABLE COLUMN asc|desc", When::Running, sortTable},
        {"edit TABLE INTEGER COLUMN TEXT", When::Running, editCell},
    };
    return forms;
}

}  // namespace kpx::runner
