#include "platform/qt/KeyCodes.h"

#include <QKeyEvent>
#include <algorithm>
#include <iterator>

namespace FendaMaestros::qt {

namespace {

struct Pair {
    int qtKey;
    int code;
};

/// The first pair of a code is the one that qtKeyOf() gives.
constexpr Pair pairs[] = {
    {Qt::Key_Backspace, key::Backspace},
    {Qt::Key_Tab, key::Tab},
    {Qt::Key_Backtab, key::Tab},
    {Qt::Key_Return, key::Enter},
    {Qt::Key_Enter, key::Enter},
    {Qt::Key_Escape, key::Escape},
    {Qt::Key_Space, key::Space},
    {Qt::Key_PageUp, key::PageUp},
    {Qt::Key_PageDown, key::PageDown},
    {Qt::Key_End, key::End},
    {Qt::Key_Home, key::Home},
    {Qt::Key_Left, key::Left},
    {Qt::Key_Up, key::Up},
    {Qt::Key_Right, key::Right},
    {Qt::Key_Down, key::Down},
    {Qt::Key_Delete, key::Delete},
    {Qt::Key_unknown, key::Other},
};

constexpr int functionKeys = 12;

int codeOf(int qtKey) {
    const bool own = (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) || (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z);
    if (own) return qtKey;
    if (qtKey >= Qt::Key_F1 && qtKey < Qt::Key_F1 + functionKeys) return qtKey - Qt::Key_F1 + key::F1;
    const auto* found = std::ranges::find(pairs, qtKey, &Pair::qtKey);
    return found == std::end(pairs) ? key::Other : found->code;
}

}  // namespace

KeyStroke strokeOf(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers();
    const bool altGr = (held & Qt::ControlModifier) && (held & Qt::AltModifier) && !event.text().isEmpty();
    KeyStroke stroke{codeOf(event.key()), shift::None};
    if ((held & Qt::ShiftModifier) || event.key() == Qt::Key_Backtab) stroke.shift |= shift::Shift;
    if ((held & Qt::ControlModifier) && !altGr) stroke.shift |= shift::Control;
    if ((held & Qt::AltModifier) && !altGr) stroke.shift |= shift::Alt;
    return stroke;
}

int qtKeyOf(int code) {
    if (code >= key::F1 && code < key::F1 + functionKeys) return code - key::F1 + Qt::Key_F1;
    const auto* found = std::ranges::find(pairs, code, &Pair::code);
    return found == std::end(pairs) ? code : found->qtKey;
}

}  // namespace FendaMaestros::qt
