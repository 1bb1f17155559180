#pragma once

#include "toolkit/Desktop.h"
#include "toolkit/Keys.h"

namespace FendaMaestros {

/// The key with which a person at the keyboard chooses an answer: Enter for the button that has the focus, else the
/// letter of the button.
inline int keyOf(const Message& message, Answer answer) {
    if (answer == message.defaultAnswer()) return key::Enter;
    return answer == Answer::Yes ? 'S' : 'N';
}

/// What leaving a message with Esc answers.
inline Answer leavingAnswer(const Message& message) { return message.offers(Answer::Ok) ? Answer::Ok : Answer::No; }

}  // namespace FendaMaestros
