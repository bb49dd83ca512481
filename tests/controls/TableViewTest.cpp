#include "controls/TableView.h"

#include <gtest/gtest.h>

namespace kpx {
namespace {

/// Rows of one column, which are told what happens to them.
struct Rows : TableViewDataSource {
    int numberOfRowsInTableView(const TableView&) const override { return static_cast<int>(values.size()); }
    const Value* tableView(const TableView&, const std::string& column, int row) const override {
        return column == "name" ? &values[static_cast<std::size_t>(row)] : nullptr;
    }
    void tableView(TableView&, const Value& value, const std::string&, int row) override {
        values[static_cast<std::size_t>(row)] = value;
    }
    void sortDescriptorsDidChange(TableView& table) override {
        ++sorts;
        table.reloadData();
    }
    bool willDisplayCell(const TableView&, const std::string&, int) const override { return false; }
    std::optional<CellGauge> gaugeOfCell(const TableView&, const std::string&, int) const override { return {}; }

    std::vector<Value> values = {"a", "b", "c"};
    int sorts = 0;
};

struct Table {
    Table() {
        table.dataSource = &rows;
        table.action = [this] { acts += "click "; };
        table.doubleAction = [this] { acts += "double "; };
    }

    ControlRegistry registry;
    Rows rows;
    TableView table{registry, "table", Place::Tab1, {{"name", "Name"}, {"other", "Other"}}};
    std::string acts;
};

TEST(TableView, IsEmptyWithoutADataSource) {
    ControlRegistry registry;
    TableView table(registry, "table", Place::Tab1, {{"name", "Name"}});
    EXPECT_EQ(table.numberOfRows(), 0);
    EXPECT_EQ(table.objectValue("name", 0), nullptr);
    table.userSort("name", true);
    table.userEdit(0, "name", "x");
    EXPECT_FALSE(table.isSorted());
    EXPECT_EQ(table.sortDescriptors().size(), 1U);
}

TEST(TableView, SelectsTheRowUnderTheClick) {
    struct Row {
        int clicked;
        int row;
    };
    for (const Row& row : std::vector<Row>{{0, 0}, {2, 2}, {3, -1}, {-1, -1}}) {
        SCOPED_TRACE(row.clicked);
        Table one;
        one.table.selectRow(1);
        one.table.userClickRow(row.clicked);
        EXPECT_EQ(one.table.clickedRow(), row.row);
        EXPECT_EQ(one.table.selectedRow(), row.row);
        EXPECT_EQ(one.acts, "click ");
    }
    Table one;
    one.table.selectRow(3);
    EXPECT_EQ(one.table.selectedRow(), -1);
}

TEST(TableView, ADoubleClickIsAClickFirst) {
    Table one;
    one.table.userDoubleClickRow(1);
    EXPECT_EQ(one.acts, "click double ");
    EXPECT_EQ(one.table.selectedRow(), 1);
}

TEST(TableView, RowsBuiltAnewHaveNoSelectionAndNoMark) {
    Table one;
    one.table.userClickRow(2);
    one.table.markRow(1);
    one.table.redrawRows();
    EXPECT_EQ(one.table.selectedRow(), 2);
    EXPECT_EQ(one.table.markedRow(), 1);
    one.table.reloadData();
    EXPECT_EQ(one.table.selectedRow(), -1);
    EXPECT_EQ(one.table.clickedRow(), -1);
    EXPECT_EQ(one.table.markedRow(), -1);
}

TEST(TableView, AClickTakesTheMarkAway) {
    Table one;
    one.table.markRow(1);
    one.table.userClickRow(1);
    EXPECT_EQ(one.table.markedRow(), -1);
}

TEST(TableView, TheLatestHeaderComesFirstAndEachColumnOnce) {
    Table one;
    one.table.userSort("name", true);
    one.table.userSort("other", true);
    one.table.userSort("name", false);
    const std::vector<SortDescriptor> expected = {{"name", false, Comparison::LocalizedCaseInsensitive},
                                                  {"other", true, Comparison::LocalizedCaseInsensitive}};
    EXPECT_EQ(one.table.sortDescriptors(), expected);
    EXPECT_EQ(one.rows.sorts, 3);
    EXPECT_TRUE(one.table.isSorted());
    one.table.reloadData();
    EXPECT_FALSE(one.table.isSorted()) << "rows built anew stand in an order of their own";
}

TEST(TableView, AnEditGoesToTheDataSource) {
    Table one;
    one.table.userEdit(1, "name", "x");
    ASSERT_TRUE(one.table.objectValue("name", 1));
    EXPECT_EQ(*one.table.objectValue("name", 1), Value("x"));
    EXPECT_EQ(one.table.objectValue("other", 1), nullptr);
}

}  // namespace
}  // namespace kpx
