#pragma once

#include <algorithm>
#include <cstring>

#include "capi/Status.h"

namespace FendaMaestros::capi {

/// A structure that a host hands over, whose size it says in front: members that a host of an earlier version does not
/// know are null. Throws Refusal (FENDA_BAD_ARGUMENT) when it is null or its size makes no sense. `whole`: bytes that
/// every host has.
template <class Structure>
Structure takenStructure(const Structure* given, std::size_t whole = sizeof(Structure)) {
    constexpr std::size_t most = 65536;
    if (!given) refuseArgument("Falta una tabla de funciones.");
    if (given->size < whole || given->size > most)
        refuseArgument("El tamaño de una tabla de funciones no es el de esta interfaz.");
    Structure copy{};
    std::memcpy(&copy, given, std::min(given->size, sizeof copy));
    return copy;
}

}  // namespace FendaMaestros::capi
