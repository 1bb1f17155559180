#pragma once

#include <memory>

#include "platform/qt/ControlView.h"

class QLabel;
class QTableView;

namespace FendaMaestros::qt {

class TableModel;

/// What a table shows, read cell by cell as it is painted: a table of any length costs what is on the screen.
class TableContent {
public:
    struct Column {
        std::string caption;
        Twips width = 0;
        Alignment alignment = Alignment::Left;
        bool visible = true;
        bool button = false;
        bool operator==(const Column&) const = default;
    };

    virtual ~TableContent() = default;
    virtual std::vector<Column> columns() const = 0;
    virtual int rowCount() const = 0;
    /// -1: none.
    virtual int currentRow() const = 0;
    virtual std::string text(int row, int column) const = 0;
};

/// A table with its caption above, over any content.
class TableView : public ControlView {
public:
    ~TableView() override;

    QWidget& widget() override { return box_; }
    QWidget& keyWidget() override;
    void pull() override;
    bool stretches() const override { return true; }
    QTableView& table() { return table_; }

protected:
    TableView(std::unique_ptr<TableContent> content, FormWindow& window);
    void showCaption(const std::string& caption);

private:
    void pullColumns();
    void pullCurrentRow(bool rowsChanged);

    std::unique_ptr<TableContent> content_;
    QWidget& box_;
    QLabel& caption_;
    QTableView& table_;
    TableModel& model_;
};

class GridView final : public TableView {
public:
    GridView(DataGrid& grid, FormWindow& window);
    void pull() override;

private:
    DataGrid& grid_;
};

class ListTableView final : public TableView {
public:
    ListTableView(ListView& list, FormWindow& window);
};

}  // namespace FendaMaestros::qt
