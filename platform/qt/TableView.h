#pragma once

#include "platform/qt/ControlView.h"

class QLabel;
class QTableView;

namespace FendaMaestros::qt {

class TableModel;

/// A table with its caption above. Cells are read as they are painted: a table of any length costs what is on the
/// screen.
class TableView : public ControlView {
public:
    TableView(Table& table, FormWindow& window);

    QWidget& widget() override { return box_; }
    QWidget& keyWidget() override;
    void pull() override;
    /// The character leads to a row.
    bool wants(const QKeyEvent& event) override {
        handTyped(window_, event);
        return false;
    }
    bool stretches() const override { return true; }
    bool isTall() const override { return true; }

protected:
    QTableView& rows() { return rows_; }
    /// What a column needs besides the width that it asks for, in pixels.
    virtual int extraWidth(int /*column*/) const { return 0; }

private:
    void pullCaption();
    void pullColumns();
    void pullCurrentRow(bool rowsChanged);
    void pullMarkedRow();
    int firstShownColumn() const;

    /// A person has made a column that wide.
    void dragged(int section, int width);

    Table& table_;
    FormWindow& window_;
    QWidget& box_;
    QLabel& caption_;
    QTableView& rows_;
    TableModel& model_;
    int markedRow_ = -1;
};

/// Header clicks, double clicks and cell buttons besides.
class GridView final : public TableView {
public:
    GridView(DataGrid& grid, FormWindow& window);

protected:
    /// The button of a cell covers no text.
    int extraWidth(int column) const override;

private:
    DataGrid& grid_;
};

}  // namespace FendaMaestros::qt
