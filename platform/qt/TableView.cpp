#include "platform/qt/TableView.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/qt/CellButton.h"
#include "platform/qt/FormWindow.h"
#include "platform/qt/Look.h"
#include "platform/qt/Memory.h"
#include "platform/qt/TableModel.h"

namespace FendaMaestros::qt {

namespace {

/// Of columns that do not fit side by side the widest gives way, as far as it stays a wide one.
void squeezeWidest(QTableView& table) {
    constexpr int stillWide = 220;
    const QHeaderView& header = *table.horizontalHeader();
    const int excess = header.length() - table.viewport()->width();
    if (excess <= 0) return;
    int widest = 0;
    for (int section = 1; section < header.count(); ++section)
        if (header.sectionSize(section) > header.sectionSize(widest)) widest = section;
    const int width = header.sectionSize(widest);
    if (width > stillWide) table.setColumnWidth(widest, std::max(stillWide, width - excess));
}

/// A table as wide as its columns and a screenful of rows tall, when there is room.
class RowsWidget final : public QTableView {
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
    void resizeEvent(QResizeEvent* event) override {
        QTableView::resizeEvent(event);
        squeezeWidest(*this);
    }
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

TableView::TableView(Table& table, FormWindow& window)
    : table_(table),
      window_(window),
      box_(*new QWidget(&window)),
      caption_(*new QLabel(&box_)),
      rows_(*new RowsWidget(&box_)),
      model_(*new TableModel(table, &rows_)) {
    auto* layout = new QVBoxLayout(&box_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&caption_);
    layout->addWidget(&rows_, 1);
    caption_.hide();
    dress(rows_);
    rows_.setModel(&model_);
    rows_.setItemDelegate(new CellButton(&rows_, [](int, int) { return false; }, {}));
    QObject::connect(&rows_, &QTableView::pressed, &window, [&](const QModelIndex& index) {
        window.hand([&] { window.form().selectRow(table, index.row()); });
    });
    QObject::connect(rows_.horizontalHeader(), &QHeaderView::sectionResized, &window,
                     [this](int section, int, int width) { dragged(section, width); });
    QObject::connect(&rows_, &QTableView::doubleClicked, &window,
                     [&] { window.hand([&] { window.form().doubleClick(table); }); });
}

QWidget& TableView::keyWidget() { return rows_; }

void TableView::pull() {
    pullCaption();
    pullColumns();
    const bool rowsChanged = model_.refreshRows();
    pullCurrentRow(rowsChanged);
    pullMarkedRow();
    rows_.viewport()->update();
}

void TableView::pullCaption() {
    const QString shown = QString::fromStdString(table_.caption());
    if (caption_.text() == shown) return;
    caption_.setText(shown);
    caption_.setVisible(!shown.isEmpty());
}

/// A column is as wide as its header needs, whatever less was asked for. Widths that a person has dragged stay until
/// the columns or the room for them change.
void TableView::pullColumns() {
    if (!model_.refreshColumns()) return;
    int section = 0;
    for (const TableColumn& column : model_.columns()) {
        rows_.setColumnHidden(section, !column.Visible);
        const int header = column.Visible ? rows_.horizontalHeader()->sectionSizeHint(section) : 0;
        const int wanted = std::max(pixels(column.Width) + extraWidth(section), header);
        const Memory* const memory = Memory::current();
        const auto dragged = memory ? memory->columnWidth(window_.form(), table_, column) : std::nullopt;
        rows_.setColumnWidth(section, dragged.value_or(wanted));
        ++section;
    }
    if (rows_.isVisible()) squeezeWidest(rows_);
    rows_.updateGeometry();
}

/// The last column fills what is left by itself.
void TableView::dragged(int section, int width) {
    const bool byHand = QGuiApplication::mouseButtons().testFlag(Qt::LeftButton) && !window_.isPulling();
    Memory* const memory = Memory::current();
    if (!memory || !byHand || section + 1 >= model_.columnCount()) return;
    memory->keepColumnWidth(window_.form(), table_, model_.columns().at(static_cast<std::size_t>(section)), width);
}

/// Once: whoever scrolls on may stay there.
void TableView::pullMarkedRow() {
    const int row = table_.markedRow();
    if (std::exchange(markedRow_, row) != row && row >= 0) rows_.scrollTo(model_.index(row, firstShownColumn()));
}

int TableView::firstShownColumn() const {
    int column = 0;
    while (column + 1 < model_.columnCount() && rows_.isColumnHidden(column)) ++column;
    return column;
}

void TableView::pullCurrentRow(bool rowsChanged) {
    const int row = table_.currentRow();
    const QModelIndex shown = rows_.currentIndex();
    if (row < 0) {
        rows_.clearSelection();
        rows_.selectionModel()->clearCurrentIndex();
        return;
    }
    if (shown.isValid() && shown.row() == row && rows_.selectionModel()->isRowSelected(row) && !rowsChanged) return;
    const int column = firstShownColumn();
    const QModelIndex current = model_.index(row, shown.isValid() ? shown.column() : column);
    rows_.selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    rows_.scrollTo(model_.index(row, column));
}

GridView::GridView(DataGrid& grid, FormWindow& window) : TableView(grid, window), grid_(grid) {
    const auto shownIn = [&grid](int row, int column) {
        return row == grid.currentRow() && column < grid.columnCount() && grid.column(column).Button;
    };
    rows().setItemDelegate(new CellButton(
        &rows(), shownIn, [&](int column) { window.hand([&] { window.form().clickCellButton(grid, column); }); }));
    const auto headerClicked = [&](int column) {
        if (column >= 0) window.hand([&] { window.form().clickHeader(grid, column); });
    };
    // Of two quick clicks the second comes as a double one.
    for (const auto click : {&QHeaderView::sectionClicked, &QHeaderView::sectionDoubleClicked})
        QObject::connect(rows().horizontalHeader(), click, &window, headerClicked);
}

int GridView::extraWidth(int column) const {
    return column < grid_.columnCount() && grid_.column(column).Button ? 2 * CellButton::widest : 0;
}

}  // namespace FendaMaestros::qt
