#include "app/guion/GuionPrinter.h"

#include <cxxabi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
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

std::string columnLine(int index, const TableColumn& column) {
    return "    columna " + std::to_string(index) + attribute("título", literal(column.Caption)) +
           attribute("ancho", column.Width) + attribute("alineación", nameOf(column.TextAlignment));
}

/// Rows from the first on, and how many there are beyond the limit.
template <class Row>
void printLimited(std::ostream& out, int count, Limits limits, Row row) {
    const int shown = std::min(count, limits.rows);
    for (int index = 0; index < shown; ++index) out << "    " << row(index) << "\n";
    if (count > shown) out << "    … y " << count - shown << " más\n";
}

void printRows(std::ostream& out, const Table& table, Limits limits) {
    printLimited(out, table.rowCount(), limits, [&](int row) {
        std::vector<std::string> cells;
        for (int column = 0; column < table.columnCount(); ++column)
            if (table.column(column).Visible) cells.push_back(table.cellText(row, column));
        return "fila " + std::to_string(row + 1) + " " + joined(cells);
    });
}

void printGrid(std::ostream& out, const DataGrid& grid, Limits limits) {
    for (int index = 0; index < grid.columnCount(); ++index) {
        const GridColumn& column = grid.column(index);
        out << columnLine(index, column) << attribute("formato", literal(column.NumberFormat))
            << attribute("botón", column.Button) << attribute("visible", column.Visible) << "\n";
    }
    printRows(out, grid, limits);
}

void printList(std::ostream& out, const ListView& list, Limits limits) {
    for (int index = 0; index < list.columnCount(); ++index) out << columnLine(index, list.column(index)) << "\n";
    printRows(out, list, limits);
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

std::string rowsOf(const Table& table) {
    const int marked = table.markedRow();
    return attribute("filas", table.rowCount()) + attribute("actual", table.currentRow() + 1) +
           (marked < 0 ? std::string() : attribute("marcada", marked + 1));
}

/// What there is to say of a control, by its kind.
class Description final : public ControlVisitor {
public:
    explicit Description(Control& control) : value(control.caption()) { control.accept(*this); }

    /// What it shows as one text.
    std::string value;
    std::string_view kind;
    /// What follows the name: kind and contents.
    std::string head;
    /// Further attributes, behind those that every control has.
    std::string tail;
    /// The lines below; null when it has none.
    std::function<void(std::ostream&, Limits)> contents;

    void visit(TextBox& box) override {
        value = box.Text;
        begin("campo", shownValue());
        tail = attribute("bloqueado", box.Locked) + attribute("color", std::to_string(box.BackColor)) +
               attribute("máximo", box.MaxLength) + attribute("alineación", nameOf(box.TextAlignment));
    }
    void visit(ComboBox& combo) override {
        value = combo.Text();
        begin("desplegable",
              shownValue() + attribute("índice", combo.ListIndex()) + attribute("elementos", combo.ListCount()));
    }
    void visit(CheckBox& check) override { describeChoice(guion::kind::check, check, check.Value()); }
    void visit(OptionButton& option) override { describeChoice(guion::kind::option, option, option.Value()); }
    void visit(CommandButton& button) override { begin(guion::kind::button, captionOf(button)); }
    void visit(Label& label) override { begin("etiqueta", captionOf(label)); }
    void visit(Frame& frame) override { begin("marco", captionOf(frame)); }
    void visit(DataGrid& grid) override {
        begin("rejilla", captionOf(grid) + rowsOf(grid));
        contents = [&grid](std::ostream& out, Limits limits) { printGrid(out, grid, limits); };
    }
    void visit(ListView& list) override {
        begin("lista", rowsOf(list));
        contents = [&list](std::ostream& out, Limits limits) { printList(out, list, limits); };
    }
    void visit(PageView& pages) override {
        begin("página", attribute("actual", pages.Page + 1) +
                            attribute("de", pages.Document ? pages.Document->pageCount() : 0) +
                            attribute("zoom", pages.Zoom));
        contents = [&pages](std::ostream& out, Limits) { printPage(out, pages); };
    }
    void visit(ProgressBar& progress) override {
        value = std::to_string(progress.Value) + " de " + std::to_string(progress.Max);
        kind = "progreso";
        head = ": " + value;
    }

private:
    void begin(std::string_view word, const std::string& attributes) {
        kind = word;
        head = " " + std::string(word) + attributes;
    }
    static std::string captionOf(const Control& control) { return attribute("título", literal(control.caption())); }
    std::string shownValue() const { return attribute("valor", literal(value)); }
    void describeChoice(std::string_view word, const Control& control, bool chosen) {
        value = yesOrNo(chosen);
        begin(word, captionOf(control) + attribute("valor", chosen));
    }
};

void print(std::ostream& out, const Form& form, Control& control, Limits limits) {
    const Description description(control);
    out << "  " << control.Name << description.head << attribute("activo", control.isEnabled());
    if (control.takesFocus()) out << attribute("foco", form.activeControl() == &control);
    out << description.tail;
    if (!control.isVisible()) out << attribute("visible", false);
    out << "\n";
    if (description.contents) description.contents(out, limits);
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

std::string_view kindOf(Control& control) { return Description(control).kind; }

std::string valueOf(Control& control) { return Description(control).value; }

void printScreen(std::ostream& out, const Form& form, int pointer, Limits limits) {
    out << "pantalla " << formName(form) << attribute("título", literal(form.Caption))
        << attribute("activa", form.Enabled) << attribute("marca", literal(form.Tag)) << attribute("puntero", pointer)
        << "\n";
    for (Control* control : form.controls())
        if (control->isVisible()) print(out, form, *control, limits);
    Label* const status = form.statusLine();
    if (status && !status->Caption.empty()) print(out, form, *status, limits);
}

void printControl(std::ostream& out, const Form& form, Control& control, Limits limits) {
    print(out, form, control, limits);
    if (const ComboBox* const combo = control.asList())
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
