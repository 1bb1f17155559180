#include "platform/qt/QtGestures.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QHeaderView>
#include <QTableView>

#include "platform/qt/CellButton.h"
#include "platform/qt/FormWindow.h"
#include "platform/qt/Hands.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

using qt::FormWindow;

/// Makes a gesture in the form's window and lets everything it set off be handled.
template <class Gesture>
void inWindow(Form& form, Gesture&& gesture) {
    FormWindow* const window = form.isOpen() ? FormWindow::of(form) : nullptr;
    if (!window) return;
    gesture(*window);
    window->rethrowFailure();
    QCoreApplication::processEvents();
    window->rethrowFailure();
}

/// What a key types on its own.
QString typedBy(KeyStroke stroke) {
    const bool letter = stroke.code >= 'A' && stroke.code <= 'Z';
    const bool printable = letter || (stroke.code >= '0' && stroke.code <= '9') || stroke.code == key::Space;
    if (!printable || stroke.shift > shift::Shift) return {};
    const QChar typed(static_cast<char16_t>(stroke.code));
    return stroke.shift == shift::None ? typed.toLower() : typed;
}

QTableView& tableOf(FormWindow& window, Table& table) {
    return static_cast<QTableView&>(window.viewOf(table).keyWidget());
}

int firstVisibleColumn(const QTableView& table) {
    int column = 0;
    while (column + 1 < table.model()->columnCount() && table.isColumnHidden(column)) ++column;
    return column;
}

/// Scrolls to a row and clicks on its first cell; gives where.
QPoint clickOnRow(QTableView& table, int row) {
    const QModelIndex cell = table.model()->index(row, firstVisibleColumn(table));
    table.scrollTo(cell);
    const QPoint at = table.visualRect(cell).center();
    qt::hands::click(*table.viewport(), at);
    return at;
}

}  // namespace

void QtGestures::type(Form& form, std::string_view text) {
    for (const char32_t character : text::characters(text))
        inWindow(form, [&](FormWindow& window) {
            qt::hands::strike(window, {key::ofCharacter(character), shift::None}, QString::fromUcs4(&character, 1));
        });
}

void QtGestures::key(Form& form, KeyStroke pressed) {
    inWindow(form, [&](FormWindow& window) { qt::hands::strike(window, pressed, typedBy(pressed)); });
}

void QtGestures::click(Form& form, Control& control) {
    inWindow(form, [&](FormWindow& window) { qt::hands::clickCenter(window.viewOf(control).keyWidget()); });
}

void QtGestures::choose(Form& form, ComboBox& combo, int index) {
    if (index < 0) return;
    (void)combo.List(index);
    inWindow(form, [&](FormWindow& window) {
        auto& box = static_cast<QComboBox&>(window.viewOf(combo).widget());
        qt::hands::clickCenter(box);
        if (!box.view()->isVisible()) return;
        box.view()->setCurrentIndex(box.model()->index(index, 0));
        qt::hands::pressKey(*box.view(), {key::Enter, shift::None});
    });
}

void QtGestures::clickHeader(Form& form, DataGrid& grid, int column) {
    inWindow(form, [&](FormWindow& window) {
        QHeaderView& header = *tableOf(window, grid).horizontalHeader();
        if (header.isSectionHidden(column)) return;
        const int middle = header.sectionViewportPosition(column) + header.sectionSize(column) / 2;
        qt::hands::click(*header.viewport(), {middle, header.height() / 2});
    });
}

void QtGestures::clickRow(Form& form, Table& table, int row) {
    inWindow(form, [&](FormWindow& window) {
        QTableView& rows = tableOf(window, table);
        if (row >= 0 && row < rows.model()->rowCount()) clickOnRow(rows, row);
    });
}

void QtGestures::doubleClickRow(Form& form, Table& table, int row) {
    inWindow(form, [&](FormWindow& window) {
        QTableView& rows = tableOf(window, table);
        if (row < 0 || row >= rows.model()->rowCount()) return;
        const int before = form.interruptions();
        const QPoint at = clickOnRow(rows, row);
        window.rethrowFailure();
        if (form.isOpen() && form.interruptions() == before) qt::hands::clickAgain(*rows.viewport(), at);
    });
}

void QtGestures::clickCellButton(Form& form, DataGrid& grid, int column) {
    inWindow(form, [&](FormWindow& window) {
        QTableView& table = tableOf(window, grid);
        const QModelIndex cell = table.model()->index(grid.currentRow(), column);
        if (!cell.isValid() || table.isColumnHidden(column)) return;
        table.scrollTo(cell);
        qt::hands::click(*table.viewport(), qt::CellButton::place(table.visualRect(cell)).center());
    });
}

void QtGestures::close(Form& form) {
    inWindow(form, [](FormWindow& window) { window.close(); });
}

}  // namespace FendaMaestros
