#include "toolkit/KeyHints.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "toolkit/Form.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr std::array<std::pair<int, const char*>, 15> namedKeys{{{key::Backspace, "Retroceso"},
                                                                 {key::Tab, "Tab"},
                                                                 {key::Enter, "Intro"},
                                                                 {key::Escape, "Esc"},
                                                                 {key::Space, "Espacio"},
                                                                 {key::PageUp, "RePág"},
                                                                 {key::PageDown, "AvPág"},
                                                                 {key::End, "Fin"},
                                                                 {key::Home, "Inicio"},
                                                                 {key::Left, "Izquierda"},
                                                                 {key::Up, "Arriba"},
                                                                 {key::Right, "Derecha"},
                                                                 {key::Down, "Abajo"},
                                                                 {key::Delete, "Supr"},
                                                                 {key::Other, ""}}};

std::string nameOf(int code) {
    if (code >= key::F(1) && code <= key::F(12)) return "F" + std::to_string(code - key::F1 + 1);
    const auto* const named = std::ranges::find(namedKeys, code, &std::pair<int, const char*>::first);
    return named == namedKeys.end() ? std::string(1, static_cast<char>(code)) : named->second;
}

/// Names of keys joined for those that do the same.
void joinTo(std::string& list, const std::string& item) { list += (list.empty() ? "" : ", ") + item; }

/// What a label says without the keys that it has in brackets, and without a colon.
std::string placeOf(const Form& form, const Control& control) {
    const Label* const label = form.arrangement().labelOf(control);
    if (!label) return {};
    std::string place = text::trim(label->Caption.substr(0, label->Caption.find(" (")));
    if (place.ends_with(':')) place.pop_back();
    return place;
}

/// The key list as it grows: keys that do the same share a line, and so do the places where a key does the same.
class Lines {
public:
    void add(const KeyHint& hint, const std::string& place = {}) {
        const std::string name = keyName(hint.stroke);
        if (name.empty()) return;
        for (Line& line : lines_) {
            if (line.does != hint.does) continue;
            const bool sameKey = line.keys == name;
            if (sameKey && !place.empty() && line.places != place) joinTo(line.places, place);
            if (!sameKey && line.places == place) joinTo(line.keys, name);
            if (sameKey || line.places == place) return;
        }
        lines_.push_back({name, hint.does, place});
    }
    std::string text() const {
        std::string all;
        for (const Line& line : lines_) {
            all += (all.empty() ? "" : "\r\n") + line.keys + ": " + line.does;
            if (!line.places.empty()) all += " (" + line.places + ")";
        }
        return all;
    }

private:
    struct Line {
        std::string keys, does, places;
    };
    std::vector<Line> lines_;
};

bool isFunctionKey(const KeyHint& hint) { return hint.stroke.code >= key::F(1) && hint.stroke.code <= key::F(12); }

bool sorts(Control& control) {
    const auto* const grid = dynamic_cast<const DataGrid*>(&control);
    return grid && grid->HeadClick;
}

}  // namespace

std::string keyName(KeyStroke stroke) {
    const std::string name = nameOf(stroke.code);
    if (name.empty()) return {};
    std::string held;
    if (stroke.shift & shift::Control) held += "Ctrl+";
    if (stroke.shift & shift::Alt) held += "Alt+";
    if (stroke.shift & shift::Shift) held += "Mayús+";
    return held + name;
}

std::string toolTipOf(const Control& control) {
    struct Line {
        std::string does, keys;
    };
    std::vector<Line> lines;
    for (const KeyHint& hint : control.keys()) {
        if (lines.empty() || lines.back().does != hint.does) lines.push_back({hint.does, {}});
        joinTo(lines.back().keys, keyName(hint.stroke));
    }
    // A tooltip of its own says better what the one thing is that the keys do.
    if (!control.ToolTip.empty() && lines.size() == 1) lines.front().does = control.ToolTip;
    std::string all = lines.size() == 1 ? std::string() : control.ToolTip;
    for (const Line& line : lines) all += (all.empty() ? "" : "\n") + line.does + " (" + line.keys + ")";
    return all;
}

std::string keyList(const Form& form) {
    std::vector<Control*> visible;
    std::ranges::copy_if(form.controls(), std::back_inserter(visible), &Control::isVisible);
    const auto any = [&](auto is) { return std::ranges::any_of(visible, is); };
    const auto isForms = [&](const KeyHint& hint) {
        return std::ranges::find(form.Keys, hint.stroke, &KeyHint::stroke) != form.Keys.end();
    };

    Lines lines;
    for (Control* control : visible)
        if (!control->asButton())
            for (const KeyHint& hint : control->keys())
                if (!isForms(hint)) lines.add(hint, placeOf(form, *control));
    for (const KeyHint& hint : form.Keys)
        if (isFunctionKey(hint)) lines.add(hint);
    for (Control* control : visible)
        if (control->asButton())
            for (const KeyHint& hint : control->keys()) lines.add(hint);
    for (const KeyHint& hint : form.Keys)
        if (!isFunctionKey(hint)) lines.add(hint);

    lines.add({{key::Tab, shift::None}, "Ir al campo siguiente; con Mayús, al anterior"});
    if (any([](Control* control) { return control->asButton(); }))
        lines.add({{key::Space, shift::None}, "Pulsar el botón o marcar la casilla que tiene el foco"});
    if (any([](Control* control) { return control->asList(); }))
        lines.add({{key::Down, shift::Alt}, "Abrir la lista; una letra lleva al elemento que empieza por ella"});
    if (any([](Control* control) { return sorts(*control); }))
        lines.add({{'1', shift::Control}, "Ordenar la rejilla por su primera columna; Ctrl+2, por la segunda..."});
    lines.add({{key::F(1), shift::Shift}, "Esta lista"});

    std::string all = lines.text();
    if (any([](Control* control) { return control->asTable(); }))
        all += "\r\nLetras o cifras en una lista de filas: ir a la fila que empieza así";
    for (const std::string& hint : form.TypingHints) all += "\r\n" + hint;
    return all;
}

}  // namespace FendaMaestros
