#include "capi/Forms.h"

#include "app/guion/GuionPrinter.h"
#include "capi/Texts.h"

namespace FendaMaestros::capi {

Control& FormThing::control(const char* name) const {
    Control* const found = form_.find(taken(name));
    if (!found) refuseArgument("La pantalla no tiene ese control.");
    return *found;
}

}  // namespace FendaMaestros::capi

using namespace FendaMaestros;
using namespace FendaMaestros::capi;

namespace {

FormThing& found(fenda_form* form) { return Registry::instance().find<FormThing>(form); }

/// Looks at a screen.
template <class Look>
fenda_status look(fenda_form* form, Look&& at) noexcept {
    return guarded([&] { at(found(form)); });
}

/// Makes a gesture on a control. `Kind`: what the control must be. `check` throws Refusal when it is not to be made.
template <class Kind, class Check, class Gesture>
fenda_status gestureOn(fenda_form* form, const char* name, Check&& check, Gesture&& gesture) noexcept {
    return guarded([&] {
        FormThing& screen = found(form);
        Kind& control = screen.control<Kind>(name);
        check(control);
        screen.act([&](Form& on, Gestures& hands) { gesture(on, hands, control); });
    });
}

void requireIndex(int index, int count, const char* text) {
    if (index < 0 || index >= count) refuseArgument(text);
}

void requireRow(const Table& table, int row) { requireIndex(row, table.rowCount(), "La lista no tiene esa fila."); }

void requireColumn(const Table& table, int column) {
    requireIndex(column, table.columnCount(), "La lista no tiene esa columna.");
}

class KindOf final : public ControlVisitor {
public:
    explicit KindOf(Control& control) { control.accept(*this); }
    fenda_kind kind = FENDA_LABEL;

    void visit(Label&) override { kind = FENDA_LABEL; }
    void visit(Frame&) override { kind = FENDA_FRAME; }
    void visit(TextBox&) override { kind = FENDA_TEXT_BOX; }
    void visit(ComboBox&) override { kind = FENDA_COMBO_BOX; }
    void visit(CommandButton&) override { kind = FENDA_COMMAND_BUTTON; }
    void visit(CheckBox&) override { kind = FENDA_CHECK_BOX; }
    void visit(OptionButton&) override { kind = FENDA_OPTION_BUTTON; }
    void visit(DataGrid&) override { kind = FENDA_GRID; }
    void visit(ListView&) override { kind = FENDA_LIST; }
    void visit(PageView&) override { kind = FENDA_PAGES; }
    void visit(ProgressBar&) override { kind = FENDA_PROGRESS; }
};

}  // namespace

// --- looking

fenda_status fenda_form_name(fenda_form* form, char** name) {
    return look(form, [&](FormThing& screen) { giveRequired(name, guion::formName(screen.form())); });
}

fenda_status fenda_form_caption(fenda_form* form, char** caption) {
    return look(form, [&](FormThing& screen) { giveRequired(caption, screen.form().Caption); });
}

fenda_status fenda_form_is_open(fenda_form* form, bool* open) {
    return look(form, [&](FormThing& screen) { required(open) = screen.form().isOpen(); });
}

fenda_status fenda_form_status(fenda_form* form, char** text) {
    return look(form, [&](FormThing& screen) {
        const StatusLabel* const line = screen.form().statusLine();
        giveRequired(text, line ? line->shown() : std::string());
    });
}

fenda_status fenda_form_controls(fenda_form* form, fenda_control_sink sink, void* context) {
    return look(form, [&](FormThing& screen) {
        if (!sink) refuseArgument("Falta a quién decirlo.");
        for (Control* const control : screen.form().controls()) {
            const std::string text = guion::valueOf(*control);
            const fenda_control told = {control->Name.c_str(), KindOf(*control).kind,
                                        text.c_str(),          control->isEnabled(),
                                        control->isVisible(),  screen.form().activeControl() == control};
            callBackWith(sink, context, &told);
        }
    });
}

fenda_status fenda_form_text(fenda_form* form, const char* control, char** text) {
    return look(form, [&](FormThing& screen) { giveRequired(text, guion::valueOf(screen.control(control))); });
}

fenda_status fenda_form_table(fenda_form* form, const char* control, int32_t* rows, int32_t* columns,
                              int32_t* current) {
    return look(form, [&](FormThing& screen) {
        const Table& table = screen.control<Table>(control);
        if (rows) *rows = table.rowCount();
        if (columns) *columns = table.columnCount();
        if (current) *current = table.currentRow();
    });
}

fenda_status fenda_form_cell(fenda_form* form, const char* control, int32_t row, int32_t column, char** text) {
    return look(form, [&](FormThing& screen) {
        const Table& table = screen.control<Table>(control);
        requireColumn(table, column);
        if (row != -1) requireRow(table, row);
        giveRequired(text, row == -1 ? table.column(column).Caption : table.cellText(row, column));
    });
}

fenda_status fenda_form_items(fenda_form* form, const char* control, fenda_text_sink sink, void* context) {
    return look(form, [&](FormThing& screen) {
        const ComboBox& combo = screen.control<ComboBox>(control);
        if (!sink) refuseArgument("Falta a quién decirlo.");
        for (int item = 0; item < combo.ListCount(); ++item) callBackWith(sink, context, combo.List(item).c_str());
    });
}

// --- gestures

fenda_status fenda_form_type(fenda_form* form, const char* text) {
    return guarded([&] {
        FormThing& screen = found(form);
        const std::string_view typed = taken(text);
        screen.act([&](Form& on, Gestures& hands) { hands.type(on, typed); });
    });
}

fenda_status fenda_form_key(fenda_form* form, int32_t code, int32_t shift) {
    return guarded([&] {
        FormThing& screen = found(form);
        constexpr int everyShift = shift::Shift | shift::Control | shift::Alt;
        if (code <= 0 || code > 255 || shift < 0 || shift > everyShift) refuseArgument("No hay ninguna tecla así.");
        screen.act([&](Form& on, Gestures& hands) { hands.key(on, {code, shift}); });
    });
}

fenda_status fenda_form_click(fenda_form* form, const char* control) {
    return gestureOn<Control>(
        form, control, [](Control&) {}, [](Form& on, Gestures& hands, Control& to) { hands.click(on, to); });
}

fenda_status fenda_form_choose(fenda_form* form, const char* control, int32_t item) {
    return gestureOn<ComboBox>(
        form, control,
        [item](ComboBox& combo) { requireIndex(item, combo.ListCount(), "La lista no tiene ese elemento."); },
        [item](Form& on, Gestures& hands, ComboBox& combo) { hands.choose(on, combo, item); });
}

fenda_status fenda_form_click_row(fenda_form* form, const char* control, int32_t row) {
    return gestureOn<Table>(
        form, control, [row](Table& table) { requireRow(table, row); },
        [row](Form& on, Gestures& hands, Table& table) { hands.clickRow(on, table, row); });
}

fenda_status fenda_form_double_click_row(fenda_form* form, const char* control, int32_t row) {
    return gestureOn<Table>(
        form, control, [row](Table& table) { requireRow(table, row); },
        [row](Form& on, Gestures& hands, Table& table) { hands.doubleClickRow(on, table, row); });
}

fenda_status fenda_form_click_header(fenda_form* form, const char* control, int32_t column) {
    return gestureOn<DataGrid>(
        form, control, [column](DataGrid& grid) { requireColumn(grid, column); },
        [column](Form& on, Gestures& hands, DataGrid& grid) {
            if (grid.column(column).Visible) hands.clickHeader(on, grid, column);
        });
}

fenda_status fenda_form_click_cell_button(fenda_form* form, const char* control, int32_t column) {
    return gestureOn<DataGrid>(
        form, control,
        [column](DataGrid& grid) {
            requireColumn(grid, column);
            const GridColumn& shown = grid.column(column);
            if (!shown.Button || !shown.Visible || grid.currentRow() < 0) refuseArgument("La celda no tiene botón.");
        },
        [column](Form& on, Gestures& hands, DataGrid& grid) { hands.clickCellButton(on, grid, column); });
}

fenda_status fenda_form_close(fenda_form* form) {
    return guarded([&] { found(form).act([](Form& on, Gestures& hands) { hands.close(on); }); });
}
