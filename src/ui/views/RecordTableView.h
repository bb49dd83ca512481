#pragma once

#include <QTableView>

#include <functional>
#include <vector>

namespace kpx {

struct TableActs;

/// A table of records: whole rows, one at a time, no rules but quiet stripes; says what to do while it
/// is empty. Reports the acts of its user by row, −1 standing for below the last one.
class RecordTableView : public QTableView {
    Q_OBJECT
    Q_PROPERTY(QString emptyTitle READ emptyTitle WRITE setEmptyTitle)
    Q_PROPERTY(QString emptyText READ emptyText WRITE setEmptyText)

public:
    explicit RecordTableView(QWidget* parent = nullptr);

    QString emptyTitle() const { return m_emptyTitle; }
    void setEmptyTitle(const QString& title) { m_emptyTitle = title; }
    QString emptyText() const { return m_emptyText; }
    void setEmptyText(const QString& text) { m_emptyText = text; }

    void setModel(QAbstractItemModel* model) override;

    /// What the mouse does to a row, for those who use none.
    TableActs acts();

    /// Frames the row that was just stored and scrolls it into view; −1 for none.
    void setStoredRow(int row);

    /// The columns' widths as long as the user has not set one: the usual ones, those of texts wider
    /// while there is room to spare. Asked for when the table is first seen: they hang on many texts.
    struct ColumnWidth {
        int usual = 0;
        bool mayGrow = false;
    };
    void setColumnWidths(std::function<std::vector<ColumnWidth>()> widths);

    /// The columns' widths and their order as the user has set them; empty as long as nobody has.
    QString savedColumns() const;
    /// What savedColumns() gave once; anything else changes nothing.
    void restoreColumns(const QString& columns);

Q_SIGNALS:
    /// A click, or whatever else moves the selection: keys, assistive technology.
    void rowClicked(int row);
    /// The second click of a double click, or Return.
    void rowDoubleClicked(int row);
    void contextMenuWanted(int row, const QPoint& globalPosition);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void fitColumns();

    std::function<std::vector<ColumnWidth>()> m_usualWidths;
    std::vector<ColumnWidth> m_columnWidths;  ///< empty until the table is first seen
    int m_storedRow = -1;
    bool m_fitting = false;
    bool m_userSetWidths = false;
    QString m_emptyTitle;
    QString m_emptyText;
    bool m_hasBeenPainted = false;
};

}  // namespace kpx
