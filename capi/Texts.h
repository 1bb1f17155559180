#pragma once

#include <string>
#include <string_view>

#include "capi/Status.h"

/// Texts that cross the border of the library.
namespace FendaMaestros::capi {

/// A text that a host hands over, where it stands. Throws Refusal (FENDA_BAD_ARGUMENT) when it is null, not UTF-8 or
/// longer than FENDA_TEXT_LIMIT.
std::string_view taken(const char* text);
/// The same, "" for null.
std::string_view takenOrNone(const char* text);
/// Whether bytes are UTF-8 without zero bytes.
bool isText(std::string_view bytes);

/// A copy that the host owns. Throws std::bad_alloc.
char* given(std::string_view text);
/// The same into where the host wants it; nothing when it does not.
void give(char** to, std::string_view text);
/// The same, but a host that does not want it has made a mistake: throws Refusal (FENDA_BAD_ARGUMENT).
void giveRequired(char** to, std::string_view text);

/// Throws Refusal (FENDA_BAD_ARGUMENT) when a host has given no place for a result.
template <class T>
T& required(T* place) {
    if (!place) [[unlikely]]
        refuseArgument("Falta dónde dejar el resultado.");
    return *place;
}

}  // namespace FendaMaestros::capi
