#include "platform/qt/TableView.h"

#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/CellButton.h"
#include "platform/qt/FormWindow.h"
#include "platform/qt/Look.h"
#include "platform/qt/TableModel.h"

namespace FendaMaestros::qt {

namespace {

class GridContent final : public TableContent {
public:
    explicit GridContent(const DataGrid& grid) : grid_(grid) {}

    std::vector<Column> columns() const override {
        std::vector<Column> columns;
        for (const GridColumn& column : grid_.Columns)
            columns.push_back({column.Caption, column.Width, column.TextAlignment, column.Visible, column.Button});
        return columns;
    }
    int rowCount() const override { return grid_.rowCount(); }
    int currentRow() const override { return grid_.currentRow(); }
    std::string text(int row, int column) const override {
        return column < static_cast<int>(grid_.Columns.size()) ? grid_.cellText(row, column) : std::string();
    }

private:
    const DataGrid& grid_;
};

class ListContent final : public TableContent {
public:
    explicit ListContent(const ListView& list) : list_(list) {}

    std::vector<Column> columns() const override {
        std::vector<Column> columns;
        for (const ListColumn& column : list_.Columns)
            columns.push_back({column.Caption, column.Width, column.TextAlignment});
        return columns;
    }
    int rowCount() const override { return static_cast<int>(list_.Rows.size()); }
    int currentRow() const override { return list_.SelectedRow; }
    std::string text(int row, int column) const override {
        const auto& texts = list_.Rows[static_cast<std::size_t>(row)].Texts;
        return column < static_cast<int>(texts.size()) ? texts[static_cast<std::size_t>(column)] : std::string();
    }

private:
    const ListView& list_;
};

/// A table as wide as its columns and a screenful of rows tall, when there is room.
class Table final : public QTableView {
public:
    using QTableView::QTableView;

    QSize sizeHint() const override {
        constexpr int rows = 11;
        int width = 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
        for (int column = 0; column < horizontalHeader()->count(); ++column) width += columnWidth(column);
        return {std::clamp(width, leastWidth, mostWidth), heightOf(rows)};
    }
    QSize minimumSizeHint() const override {
        constexpr int rows = 4;
        return {leastWidth / 2, heightOf(rows)};
    }

protected:
    /// Dragging over the rows selects nothing.
    void mouseMoveEvent(QMouseEvent* event) override {
        if (event->buttons() == Qt::NoButton) QTableView::mouseMoveEvent(event);
    }

private:
    static constexpr int leastWidth = 420;
    static constexpr int mostWidth = 1040;

    int heightOf(int rows) const {
        return horizontalHeader()->sizeHint().height() + rows * verticalHeader()->defaultSectionSize() +
               2 * frameWidth();
    }
};

void dress(QTableView& table) {
    constexpr int airOverText = 9;
    table.setFocusPolicy(Qt::NoFocus);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.setAlternatingRowColors(true);
    table.setShowGrid(false);
    table.setWordWrap(false);
    table.setTabKeyNavigation(false);
    table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table.verticalHeader()->hide();
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + airOverText);
    table.horizontalHeader()->setFocusPolicy(Qt::NoFocus);
    table.horizontalHeader()->setHighlightSections(false);
    table.horizontalHeader()->setSectionsClickable(true);
    table.horizontalHeader()->setStretchLastSection(true);
}

}  // namespace

TableView::TableView(std::unique_ptr<TableContent> content, FormWindow& window)
    : content_(std::move(content)),
      box_(*new QWidget(&window)),
      caption_(*new QLabel(&box_)),
      table_(*new Table(&box_)),
      model_(*new TableModel(*content_, &table_)) {
    auto* layout = new QVBoxLayout(&box_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&caption_);
    layout->addWidget(&table_, 1);
    caption_.hide();
    dress(table_);
    table_.setModel(&model_);
}

TableView::~TableView() = default;

QWidget& TableView::keyWidget() { return table_; }

void TableView::showCaption(const std::string& caption) {
    const QString shown = QString::fromStdString(caption);
    if (caption_.text() == shown) return;
    caption_.setText(shown);
    caption_.setVisible(!shown.isEmpty());
}

void TableView::pull() {
    pullColumns();
    const bool rowsChanged = model_.refreshRows();
    pullCurrentRow(rowsChanged);
    table_.viewport()->update();
}

/// Widths that a person has dragged stay until the columns change.
void TableView::pullColumns() {
    if (!model_.refreshColumns()) return;
    int section = 0;
    for (const TableContent::Column& column : model_.columns()) {
        table_.setColumnHidden(section, !column.visible);
        table_.setColumnWidth(section++, pixels(column.width));
    }
    table_.updateGeometry();
}

void TableView::pullCurrentRow(bool rowsChanged) {
    const int row = content_->currentRow();
    const QModelIndex shown = table_.currentIndex();
    if (row < 0) {
        table_.clearSelection();
        table_.selectionModel()->clearCurrentIndex();
        return;
    }
    if (shown.isValid() && shown.row() == row && table_.selectionModel()->isRowSelected(row) && !rowsChanged) return;
    int column = 0;
    while (column + 1 < model_.columnCount() && table_.isColumnHidden(column)) ++column;
    const QModelIndex current = model_.index(row, shown.isValid() ? shown.column() : column);
    table_.selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    table_.scrollTo(model_.index(row, column));
}

GridView::GridView(DataGrid& grid, FormWindow& window)
    : TableView(std::make_unique<GridContent>(grid), window), grid_(grid) {
    QTableView& rows = table();
    const auto shownIn = [&grid](int row, int column) {
        return row == grid.currentRow() && column < static_cast<int>(grid.Columns.size()) &&
               grid.Columns[static_cast<std::size_t>(column)].Button;
    };
    auto* buttons = new CellButton(
        &rows, shownIn, [&](int column) { window.hand([&] { window.form().clickCellButton(grid, column); }); });
    rows.setItemDelegate(buttons);
    QObject::connect(&rows, &QTableView::pressed, &window, [&](const QModelIndex& index) {
        window.hand([&] { window.form().selectRow(grid, index.row()); });
    });
    QObject::connect(&rows, &QTableView::doubleClicked, &window,
                     [&] { window.hand([&] { window.form().doubleClick(grid); }); });
    const auto headerClicked = [&](int column) {
        if (column >= 0) window.hand([&] { window.form().clickHeader(grid, column); });
    };
    // Of two quick clicks the second comes as a double one.
    for (const auto click : {&QHeaderView::sectionClicked, &QHeaderView::sectionDoubleClicked})
        QObject::connect(rows.horizontalHeader(), click, &window, headerClicked);
}

void GridView::pull() {
    showCaption(grid_.Caption);
    TableView::pull();
}

ListTableView::ListTableView(ListView& list, FormWindow& window)
    : TableView(std::make_unique<ListContent>(list), window) {
    table().setItemDelegate(new CellButton(&table(), [](int, int) { return false; }, {}));
    QObject::connect(&table(), &QTableView::pressed, &window, [&](const QModelIndex& index) {
        window.hand([&] { window.form().selectRow(list, index.row()); });
    });
}

}  // namespace FendaMaestros::qt
