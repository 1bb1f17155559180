#include "app/guion/GuionPrinter.h"

#include <cxxabi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <typeinfo>

#include "app/YesOrNo.h"
#include "toolkit/Document.h"
#include "toolkit/Text.h"

namespace FendaMaestros::guion {

namespace {

std::string nameOf(Alignment alignment) {
    if (alignment == Alignment::Right) return "derecha";
    return alignment == Alignment::Center ? "centro" : "izquierda";
}

std::string attribute(std::string_view name, std::string value) {
    return " " + std::string(name) + "=" + std::move(value);
}
std::string attribute(std::string_view name, int value) { return attribute(name, std::to_string(value)); }
std::string attribute(std::string_view name, bool value) { return attribute(name, yesOrNo(value)); }

std::string joined(const std::vector<std::string>& cells) {
    std::string line;
    for (const std::string& cell : cells) line += (line.empty() ? "" : " | ") + literal(cell);
    return line;
}

std::string columnLine(int index, const std::string& caption, Twips width, Alignment alignment) {
    return "    columna " + std::to_string(index) + attribute("título", literal(caption)) + attribute("ancho", width) +
           attribute("alineación", nameOf(alignment));
}

/// Rows from the first on, and how many there are beyond the limit.
template <class Row>
void printLimited(std::ostream& out, int count, Limits limits, Row row) {
    const int shown = std::min(count, limits.rows);
    for (int index = 0; index < shown; ++index) out << "    " << row(index) << "\n";
    if (count > shown) out << "    … y " << count - shown << " más\n";
}

void printGrid(std::ostream& out, const DataGrid& grid, Limits limits) {
    for (std::size_t index = 0; index < grid.Columns.size(); ++index) {
        const GridColumn& column = grid.Columns[index];
        out << columnLine(static_cast<int>(index), column.Caption, column.Width, column.TextAlignment)
            << attribute("formato", literal(column.NumberFormat)) << attribute("botón", column.Button)
            << attribute("visible", column.Visible) << "\n";
    }
    printLimited(out, grid.rowCount(), limits, [&](int row) {
        std::vector<std::string> cells;
        for (std::size_t index = 0; index < grid.Columns.size(); ++index)
            if (grid.Columns[index].Visible) cells.push_back(grid.cellText(row, static_cast<int>(index)));
        return "fila " + std::to_string(row + 1) + " " + joined(cells);
    });
}

void printList(std::ostream& out, const ListView& list, Limits limits) {
    for (std::size_t index = 0; index < list.Columns.size(); ++index) {
        const ListColumn& column = list.Columns[index];
        out << columnLine(static_cast<int>(index), column.Caption, column.Width, column.TextAlignment) << "\n";
    }
    printLimited(out, static_cast<int>(list.Rows.size()), limits, [&](int row) {
        return "fila " + std::to_string(row + 1) + " " + joined(list.Rows[static_cast<std::size_t>(row)].Texts);
    });
}

/// The texts of the page, those of one height in one line from left to right.
void printPage(std::ostream& out, const PageView& view) {
    if (!view.Document) return;
    std::map<Twips, std::map<Twips, std::string>> lines;
    for (const PageText& text : view.Document->page(view.Page).texts) lines[text.top][text.left] += text.text;
    for (const auto& [top, texts] : lines) {
        std::vector<std::string> cells;
        for (const auto& [left, text] : texts) cells.push_back(text);
        out << "    línea " << joined(cells) << "\n";
    }
}

std::string textBoxLine(const TextBox& box) {
    return attribute("bloqueado", box.Locked) + attribute("color", std::to_string(box.BackColor)) +
           attribute("máximo", box.MaxLength) + attribute("alineación", nameOf(box.TextAlignment));
}

/// Its kind and what it shows.
std::string headOf(const Control& control) {
    const std::string value = attribute("valor", literal(valueOf(control)));
    const std::string caption = attribute("título", literal(captionOf(control)));
    if (dynamic_cast<const TextBox*>(&control)) return "campo" + value;
    if (const auto* combo = dynamic_cast<const ComboBox*>(&control))
        return "desplegable" + value + attribute("índice", combo->ListIndex()) +
               attribute("elementos", combo->ListCount());
    if (const auto* check = dynamic_cast<const CheckBox*>(&control))
        return "casilla" + caption + attribute("valor", check->Value());
    if (const auto* option = dynamic_cast<const OptionButton*>(&control))
        return "opción" + caption + attribute("valor", option->Value());
    if (dynamic_cast<const CommandButton*>(&control)) return "mando" + caption;
    if (dynamic_cast<const Label*>(&control)) return "etiqueta" + caption;
    if (dynamic_cast<const Frame*>(&control)) return "marco" + caption;
    if (const auto* grid = dynamic_cast<const DataGrid*>(&control))
        return "rejilla" + caption + attribute("filas", grid->rowCount()) + attribute("actual", grid->currentRow() + 1);
    if (const auto* list = dynamic_cast<const ListView*>(&control))
        return "lista" + attribute("filas", static_cast<int>(list->Rows.size())) +
               attribute("actual", list->SelectedRow + 1);
    if (const auto* page = dynamic_cast<const PageView*>(&control))
        return "página" + attribute("actual", page->Page + 1) +
               attribute("de", page->Document ? page->Document->pageCount() : 0) + attribute("zoom", page->Zoom);
    return "control";
}

void printLine(std::ostream& out, const Form& form, const Control& control) {
    out << "  " << control.Name << " " << headOf(control) << attribute("activo", control.isEnabled());
    if (control.takesFocus()) out << attribute("foco", form.activeControl() == &control);
    if (const auto* box = dynamic_cast<const TextBox*>(&control)) out << textBoxLine(*box);
    if (!control.isVisible()) out << attribute("visible", false);
    out << "\n";
}

void printContents(std::ostream& out, const Control& control, Limits limits) {
    if (const auto* grid = dynamic_cast<const DataGrid*>(&control)) printGrid(out, *grid, limits);
    if (const auto* list = dynamic_cast<const ListView*>(&control)) printList(out, *list, limits);
    if (const auto* page = dynamic_cast<const PageView*>(&control)) printPage(out, *page);
}

}  // namespace

std::string literal(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            (result += '\\') += c;
        } else if (c == '\n') {
            result += "\\n";
        } else if (c == '\r') {
            result += "\\r";
        } else if (c == '\t') {
            result += "\\t";
        } else if (byte < 32 || byte == 127) {
            char code[16];
            std::snprintf(code, sizeof code, "\\u{%X}", byte);
            result += code;
        } else {
            result += c;
        }
    }
    return result + "\"";
}

std::string literalOf(const Variant& value) {
    if (value.isNull()) return "NULL";
    return std::holds_alternative<std::string>(value.storage()) ? literal(value.text()) : value.text();
}

std::string formName(const Form& form) {
    const char* const mangled = typeid(form).name();
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> plain(abi::__cxa_demangle(mangled, nullptr, nullptr, &status),
                                                       std::free);
    const std::string name = status == 0 ? plain.get() : mangled;
    return name.substr(name.rfind(':') + 1);
}

std::string nameOf(Answer answer) {
    if (answer == Answer::Ok) return "Aceptar";
    return answer == Answer::Yes ? "Sí" : "No";
}

std::string describe(const Message& message) {
    std::string icon = "ninguno";
    if (message::icon(message.style) == message::Critical) icon = "crítico";
    if (message::icon(message.style) == message::Question) icon = "pregunta";
    if (message::icon(message.style) == message::Exclamation) icon = "exclamación";
    if (message::icon(message.style) == message::Information) icon = "información";
    const std::string buttons = message.offers(Answer::Yes) ? "Sí/No" : "Aceptar";
    return "mensaje " + literal(message.text) + attribute("icono", icon) + attribute("botones", buttons) +
           attribute("defecto", nameOf(message.defaultAnswer())) + attribute("título", literal(message.title));
}

std::string valueOf(const Control& control) {
    if (const auto* box = dynamic_cast<const TextBox*>(&control)) return box->Text;
    if (const auto* combo = dynamic_cast<const ComboBox*>(&control)) return combo->Text();
    if (const auto* check = dynamic_cast<const CheckBox*>(&control)) return yesOrNo(check->Value());
    if (const auto* option = dynamic_cast<const OptionButton*>(&control)) return yesOrNo(option->Value());
    return captionOf(control);
}

std::string captionOf(const Control& control) {
    if (const auto* check = dynamic_cast<const CheckBox*>(&control)) return check->Caption;
    if (const auto* option = dynamic_cast<const OptionButton*>(&control)) return option->Caption;
    if (const auto* button = dynamic_cast<const CommandButton*>(&control)) return button->Caption;
    if (const auto* label = dynamic_cast<const Label*>(&control)) return label->Caption;
    if (const auto* frame = dynamic_cast<const Frame*>(&control)) return frame->Caption;
    if (const auto* grid = dynamic_cast<const DataGrid*>(&control)) return grid->Caption;
    return {};
}

void printScreen(std::ostream& out, const Form& form, int pointer, Limits limits) {
    out << "pantalla " << formName(form) << attribute("título", literal(form.Caption))
        << attribute("activa", form.Enabled) << attribute("marca", literal(form.Tag)) << attribute("puntero", pointer)
        << "\n";
    for (const Control* control : form.controls()) {
        if (!control->isVisible()) continue;
        printLine(out, form, *control);
        printContents(out, *control, limits);
    }
}

void printControl(std::ostream& out, const Form& form, const Control& control, Limits limits) {
    printLine(out, form, control);
    printContents(out, control, limits);
    if (const auto* combo = dynamic_cast<const ComboBox*>(&control))
        printLimited(out, combo->ListCount(), limits,
                     [&](int item) { return "elemento " + std::to_string(item) + " " + literal(combo->List(item)); });
}

void printRows(std::ostream& out, const RowSource& rows, Limits limits) {
    const auto line = [&rows](auto cell) {
        std::string result;
        for (int column = 0; column < rows.columnCount(); ++column) result += (column ? " | " : " ") + cell(column);
        return result;
    };
    out << "sql filas=" << rows.rowCount() << line([&](int column) { return rows.columnName(column); }) << "\n";
    printLimited(out, rows.rowCount(), limits, [&](int row) {
        return "fila " + std::to_string(row + 1) + line([&](int column) { return literalOf(rows.cell(row, column)); });
    });
}

}  // namespace FendaMaestros::guion
