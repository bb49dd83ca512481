#include "tests/runner/Show.h"

#include "tests/runner/Commands.h"

#include <filesystem>
#include <variant>

namespace kpx::runner {

namespace {

Json state(const char* kind) { return Json{{"ok", true}, {"kind", kind}}; }

/// Only the name: where a bundled image or a receipt lies is no part of a transcript.
Json fileName(const std::string& path) {
    return path.empty() ? Json() : Json(std::filesystem::path(path).filename().string());
}

Json describe(const PopUpButton& popUp) {
    Json items = Json::array();
    for (const PopUpButton::Item& item : popUp.items()) {
        items.push_back(item ? Json(*item) : Json());
    }
    Json json = state("popup");
    json["items"] = std::move(items);
    json["selected"] = popUp.indexOfSelectedItem();
    const PopUpButton::Item title = popUp.titleOfSelectedItem();
    json["title"] = title ? Json(*title) : Json();
    json["enabled"] = popUp.isEnabled();
    return json;
}

Json describe(const Matrix& matrix) {
    if (matrix.kind() == Matrix::Kind::Radio) {
        Json json = state("radio");
        json["selected"] = matrix.selectedTag() ? Json(*matrix.selectedTag()) : Json();
        return json;
    }
    Json on = Json::array();
    for (const Matrix::Cell& cell : matrix.cells()) {
        if (cell.on) {
            on.push_back(cell.tag);
        }
    }
    Json json = state("checks");
    json["on"] = std::move(on);
    return json;
}

/// The rows of a table, each with what is left of its supply where the table shows that.
Json describeRows(const TableView& table, const Records& rows, const test::LocalTime& localTime) {
    Json described = test::toJson(rows, localTime);
    for (std::size_t row = 0; row < described.size(); ++row) {
        if (const auto supply = table.dataSource->gaugeOfCell(table, "nextdate", static_cast<int>(row))) {
            described[row]["supply"] = Json{{"days", supply->whole}, {"left", supply->left}};
        }
    }
    return described;
}

Json describe(const TableView& table, const Records* rows, const test::LocalTime& localTime) {
    Json columns = Json::array();
    Json titles = Json::array();
    Json red = Json::array();
    for (const TableView::Column& column : table.columns()) {
        columns.push_back(column.identifier);
        titles.push_back(column.title);
    }
    for (int row = 0; row < table.numberOfRows(); ++row) {
        for (const TableView::Column& column : table.columns()) {
            if (table.dataSource->willDisplayCell(table, column.identifier, row)) {
                red.push_back(Json::array({row, column.identifier}));
            }
        }
    }
    Json json = state("table");
    json["columns"] = std::move(columns);
    json["titles"] = std::move(titles);
    json["rows"] = rows ? describeRows(table, *rows, localTime) : Json::array();
    json["selected"] = table.selectedRow();
    json["red"] = std::move(red);
    return json;
}

Json describe(const KPXReceiptView& view) {
    Json json = state("view");
    json["content"] = view.content() == KPXReceiptView::Content::Image ? Json("image")
                      : view.content() == KPXReceiptView::Content::PDF ? Json("pdf")
                                                                       : Json();
    json["file"] = fileName(view.file());
    return json;
}

Json describe(const TextField& field) {
    Json json = state("text");
    json["text"] = field.text();
    json["enabled"] = field.isEnabled();
    return json;
}

Json describe(const DateField& field, const test::LocalTime& localTime) {
    Json json = state("date");
    json["date"] = localTime.format(field.date());
    json["enabled"] = field.isEnabled();
    return json;
}

Json describe(const Button& button) {
    Json json = state("button");
    json["title"] = button.title();
    json["enabled"] = button.isEnabled();
    json["image"] = fileName(button.image());
    return json;
}

Json describe(const ChartView& view) {
    const Chart& chart = view.chart();
    Json bars = Json::array();
    for (const ChartBar& bar : chart.bars) {
        bars.push_back(Json{{"label", bar.label}, {"amount", test::numberToJson(bar.amount)}});
    }
    Json json = state("chart");
    json["bars"] = std::move(bars);
    json["average"] = chart.average ? test::numberToJson(chart.average->amount) : Json();
    return json;
}

Json describe(const KPXDropButton& button) {
    Json json = describe(static_cast<const Button&>(button));
    json["text"] = button.text();
    return json;
}

Json describe(const Popover& popover) {
    Json json = state("popover");
    json["open"] = popover.isOpen();
    json["anchor"] = popover.isOpen() ? Json(popover.anchor()->name()) : Json();
    return json;
}

template <typename Member>
Json stateWith(const char* kind, const char* key, Member value) {
    Json json = state(kind);
    json[key] = std::move(value);
    return json;
}

Json describe(const Control& control, const Records* rows, const test::LocalTime& localTime) {
    if (const auto* popUp = dynamic_cast<const PopUpButton*>(&control)) {
        return describe(*popUp);
    }
    if (const auto* field = dynamic_cast<const TextField*>(&control)) {
        return describe(*field);
    }
    if (const auto* field = dynamic_cast<const DateField*>(&control)) {
        return describe(*field, localTime);
    }
    if (const auto* button = dynamic_cast<const KPXDropButton*>(&control)) {
        return describe(*button);
    }
    if (const auto* button = dynamic_cast<const Button*>(&control)) {
        return describe(*button);
    }
    if (const auto* matrix = dynamic_cast<const Matrix*>(&control)) {
        return describe(*matrix);
    }
    if (const auto* table = dynamic_cast<const TableView*>(&control)) {
        return describe(*table, rows, localTime);
    }
    if (const auto* popover = dynamic_cast<const Popover*>(&control)) {
        return describe(*popover);
    }
    if (const auto* view = dynamic_cast<const KPXReceiptView*>(&control)) {
        return describe(*view);
    }
    if (const auto* chart = dynamic_cast<const ChartView*>(&control)) {
        return describe(*chart);
    }
    if (const auto* bar = dynamic_cast<const Bar*>(&control)) {
        Json state = stateWith("bar", "open", bar->isOpen());
        state["text"] = bar->text();
        return state;
    }
    if (const auto* steps = dynamic_cast<const Steps*>(&control)) {
        Json state = stateWith("steps", "open", steps->isOpen());
        state["done"] = steps->done();
        return state;
    }
    if (const auto* sheet = dynamic_cast<const Sheet*>(&control)) {
        return stateWith("sheet", "open", sheet->isOpen());
    }
    if (const auto* tabs = dynamic_cast<const TabView*>(&control)) {
        return stateWith("tabs", "selected", tabs->selectedTab());
    }
    if (const auto* label = dynamic_cast<const Label*>(&control)) {
        return stateWith("label", "text", label->text());
    }
    if (const auto* menu = dynamic_cast<const Menu*>(&control)) {
        return stateWith("menu", "items", itemsOf(*menu));
    }
    return refused(control.name() + " cannot be shown");
}

Json describe(const DrawText& text) {
    Json json;
    json["text"] = text.text;
    json["font"] = text.font;
    json["size"] = test::numberToJson(text.size);
    json["underline"] = text.underline;
    json["x"] = test::numberToJson(text.x);
    json["y"] = test::numberToJson(text.y);
    if (text.alignment != Alignment::Left) {
        json["align"] = text.alignment == Alignment::Center ? "center" : "right";
    }
    return json;
}

Json describe(const DrawLine& line) {
    Json json;
    json["line"] = Json::array({test::numberToJson(line.x1), test::numberToJson(line.y1), test::numberToJson(line.x2),
                                test::numberToJson(line.y2)});
    json["width"] = line.width;
    return json;
}

}  // namespace

Json itemsOf(const Menu& menu) {
    Json items = Json::array();
    for (const Menu::Item& item : menu.items()) {
        items.push_back(Json{{"title", item.title}, {"enabled", item.enabled}});
    }
    return items;
}

Json describe(const Document& document) {
    Json pages = Json::array();
    for (const Page& page : document.pages) {
        Json operations = Json::array();
        for (const DrawingOperation& operation : page.operations) {
            operations.push_back(std::visit([](const auto& drawn) { return describe(drawn); }, operation));
        }
        pages.push_back(Json{{"ops", std::move(operations)}});
    }
    Json json;
    json["type"] = document.type;
    json["pages"] = std::move(pages);
    return json;
}

Json showControl(Session& session, const std::string& name) {
    if (name == mainWindow) {
        return stateWith("window", "open", session.isWindowOpen());
    }
    const Control* control = session.outlets().find(name);
    if (!control) {
        return refused("no control is called " + name);
    }
    const auto* table = dynamic_cast<const TableView*>(control);
    return describe(*control, table ? session.rowsOf(*table) : nullptr, session.platform.localTime);
}

}  // namespace kpx::runner
