#pragma once

#include <optional>
#include <string>

#include "toolkit/Desktop.h"

class QWidget;

namespace FendaMaestros::qt {

class TypeAhead;

/// Shows a message over a window and waits for its answer. With a `scripted` reply, its key or the mouse gives it as a
/// person would. The keys that Reply tells are Enter, Esc and the letters of the buttons; for the mouse it is 0.
/// What a person types on after answering is left to `typeAhead`.
Reply askInDialog(const Message& message, const std::string& title, QWidget* parent,
                  const std::optional<Reply>& scripted, TypeAhead& typeAhead);

}  // namespace FendaMaestros::qt
