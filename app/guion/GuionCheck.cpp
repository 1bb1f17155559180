#include "app/guion/GuionCheck.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <stdexcept>

#include "app/YesOrNo.h"
#include "app/guion/GuionOperator.h"
#include "app/guion/GuionParser.h"
#include "app/guion/PublicProperties.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

using Arguments = std::vector<Check::Argument>;

/// What can be looked at, and how it reads as a text.
struct Subject {
    std::string_view name;
    std::size_t least;
    std::size_t most;
    enum class Kind { Value, Name, YesOrNo } kind;
    std::string (*read)(const GuionOperator&, const Arguments&);
};

/// A row or a column by its number or by its text.
guion::Place placeOf(const Check::Argument& argument) {
    const bool number = !argument.quoted && text::isNumericCode(argument.text) && argument.text.size() <= 9;
    return number ? guion::Place{std::stoi(argument.text), {}} : guion::Place{-1, argument.text};
}

const Form& top(const GuionOperator& person) { return guion::topScreen(person.host().desktop()); }

Control& control(const GuionOperator& person, const Arguments& arguments) {
    return guion::control(top(person), arguments[0].text);
}

const Table& table(const GuionOperator& person, const Arguments& arguments) {
    return guion::table(top(person), arguments[0].text);
}

std::string cell(const GuionOperator& person, const Arguments& arguments) {
    const Table& shown = table(person, arguments);
    const int row = guion::rowOf(shown, placeOf(arguments[1]));
    return shown.cellText(row, guion::columnOf(shown, placeOf(arguments[2])));
}

const TableColumn& column(const GuionOperator& person, const Arguments& arguments) {
    const Table& shown = table(person, arguments);
    return shown.column(guion::columnOf(shown, placeOf(arguments[1])));
}

std::string property(const GuionOperator& person, const Arguments& arguments) {
    return publicProperty(arguments[0].text).get(person.host().component()).text();
}

std::string firstValue(const GuionOperator& person, const Arguments& arguments) {
    std::string value;
    try {
        const auto found = person.query(arguments[0].text);
        if (found->rowCount() > 0) value = found->cell(0, 0).text();
    } catch (const std::exception& error) {
        guion::fail(error.what());
    }
    return value;
}

std::string screen(const GuionOperator& person) {
    const Form* const form = person.host().desktop().activeForm();
    return form ? guion::formName(*form) : "ninguna";
}

std::string focused(const GuionOperator& person) {
    const Control* const active = top(person).activeControl();
    return active ? active->Name : "ninguno";
}

const TextBox& field(const GuionOperator& person, const Arguments& arguments) {
    return guion::control<TextBox>(top(person), arguments[0].text, "un campo");
}

const ComboBox& combo(const GuionOperator& person, const Arguments& arguments) {
    return guion::control<ComboBox>(top(person), arguments[0].text, "un desplegable");
}

using Kind = Subject::Kind;
using Person = const GuionOperator&;
using Args = const Arguments&;

constexpr std::array<Subject, 28> subjects{{
    {"valor", 1, 1, Kind::Value, [](Person p, Args a) { return guion::valueOf(control(p, a)); }},
    {"titulo", 0, 1, Kind::Value,
     [](Person p, Args a) { return a.empty() ? top(p).Caption : control(p, a).caption(); }},
    {"pantalla", 0, 0, Kind::Name, [](Person p, Args) { return screen(p); }},
    {"foco", 0, 0, Kind::Name, [](Person p, Args) { return focused(p); }},
    {"marca", 0, 0, Kind::Value, [](Person p, Args) { return top(p).Tag; }},
    {"puntero", 0, 0, Kind::Value, [](Person p, Args) { return std::to_string(p.host().pointer()); }},
    {"color", 1, 1, Kind::Value, [](Person p, Args a) { return std::to_string(field(p, a).BackColor); }},
    {"maximo", 1, 1, Kind::Value, [](Person p, Args a) { return std::to_string(field(p, a).MaxLength); }},
    {"indice", 1, 1, Kind::Value, [](Person p, Args a) { return std::to_string(combo(p, a).ListIndex()); }},
    {"elementos", 1, 1, Kind::Value, [](Person p, Args a) { return std::to_string(combo(p, a).ListCount()); }},
    {"filas", 1, 1, Kind::Value, [](Person p, Args a) { return std::to_string(table(p, a).rowCount()); }},
    {"fila", 1, 1, Kind::Value, [](Person p, Args a) { return std::to_string(table(p, a).currentRow() + 1); }},
    {"marcada", 1, 1, Kind::Value, [](Person p, Args a) { return std::to_string(table(p, a).markedRow() + 1); }},
    {"celda", 3, 3, Kind::Value, cell},
    {"cabecera", 2, 2, Kind::Value, [](Person p, Args a) { return column(p, a).Caption; }},
    {"ancho", 2, 2, Kind::Value, [](Person p, Args a) { return std::to_string(column(p, a).Width); }},
    {"propiedad", 1, 1, Kind::Value, property},
    {"resultado", 0, 0, Kind::Value, [](Person p, Args) { return p.lastResult(); }},
    {"mensaje", 0, 0, Kind::Value, [](Person p, Args) { return p.lastMessage(); }},
    {"sql", 1, 1, Kind::Value, firstValue},
    {"activo", 1, 1, Kind::YesOrNo, [](Person p, Args a) { return yesOrNo(control(p, a).isEnabled()); }},
    {"inactivo", 1, 1, Kind::YesOrNo, [](Person p, Args a) { return yesOrNo(!control(p, a).isEnabled()); }},
    {"visible", 1, 1, Kind::YesOrNo, [](Person p, Args a) { return yesOrNo(control(p, a).isVisible()); }},
    {"oculto", 1, 1, Kind::YesOrNo, [](Person p, Args a) { return yesOrNo(!control(p, a).isVisible()); }},
    {"bloqueado", 1, 1, Kind::YesOrNo, [](Person p, Args a) { return yesOrNo(field(p, a).Locked); }},
    {"marcado", 1, 1, Kind::YesOrNo, [](Person p, Args a) { return guion::valueOf(control(p, a)); }},
    {"abierta", 0, 0, Kind::YesOrNo,
     [](Person p, Args) { return yesOrNo(p.host().desktop().activeForm() != nullptr); }},
    {"existe", 1, 1, Kind::YesOrNo, [](Person, Args a) { return yesOrNo(std::filesystem::exists(a[0].text)); }},
}};

const Subject* subjectNamed(std::string_view name) {
    const auto found = std::ranges::find(subjects, name, &Subject::name);
    return found == subjects.end() ? nullptr : &*found;
}

bool readComparison(Words& words, Check::Comparison& comparison) {
    if (words.take("=") || words.take("es"))
        comparison = Check::Comparison::Equal;
    else if (words.take("<>"))
        comparison = Check::Comparison::Different;
    else if (words.take("contiene"))
        comparison = Check::Comparison::Contains;
    else
        return false;
    return true;
}

/// The subject and its arguments, up to the comparison.
const Subject& readSubject(Words& words, Check& check) {
    const std::string first = words.text("qué se comprueba");
    const Subject* subject = subjectNamed(text::folded(first));
    if (!subject) {
        subject = subjectNamed("valor");
        check.arguments.push_back({first, true});
    }
    check.subject = subject->name;
    return *subject;
}

void checkProperty(const Words& words, const std::string& name) {
    try {
        publicProperty(name);
    } catch (const std::invalid_argument& error) {
        words.fail(error.what());
    }
}

std::string describe(const Check& check) {
    std::string text = check.subject;
    for (const Check::Argument& argument : check.arguments) text += " " + argument.text;
    return text;
}

}  // namespace

Check readCheck(Words& words) {
    Check check;
    const bool negated = words.take("no");
    const Subject& subject = readSubject(words, check);
    bool compared = false;
    while (!words.atEnd() && !(compared = readComparison(words, check.comparison))) {
        const bool quoted = words.isQuoted();
        check.arguments.push_back({words.text("un dato"), quoted});
    }

    if (compared) {
        check.expected = words.text("el valor que se espera");
    } else if (subject.kind == Kind::YesOrNo) {
        check.expected = yesOrNo(!negated);
    } else if (check.arguments.size() > subject.least) {
        check.expected = check.arguments.back().text;
        check.arguments.pop_back();
    } else {
        words.fail("falta el valor que se espera");
    }
    if (negated && (compared || subject.kind != Kind::YesOrNo))
        words.fail("\"no\" va solo delante de lo que se contesta con sí o no; lo distinto se escribe con <>");
    if (check.arguments.size() < subject.least) words.fail("falta de qué se comprueba " + check.subject);
    if (check.arguments.size() > subject.most) words.fail("sobra \"" + check.arguments.back().text + "\"");
    if (check.subject == "propiedad") checkProperty(words, check.arguments[0].text);
    return check;
}

void carryOut(const Check& check, const GuionOperator& person) {
    const Subject& subject = *subjectNamed(check.subject);
    const std::string found = subject.read(person, check.arguments);
    const bool equal =
        subject.kind == Kind::Value ? found == check.expected : text::folded(found) == text::folded(check.expected);
    const std::string expected = guion::literal(check.expected);
    const std::string butIs = " y es " + guion::literal(found);
    if (check.comparison == Check::Comparison::Equal && !equal)
        guion::fail(describe(check) + " debía ser " + expected + butIs);
    if (check.comparison == Check::Comparison::Different && equal)
        guion::fail(describe(check) + " no debía ser " + expected);
    if (check.comparison == Check::Comparison::Contains && found.find(check.expected) == std::string::npos)
        guion::fail(describe(check) + " debía contener " + expected + butIs);
}

}  // namespace FendaMaestros
