#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/operations/Arguments.h"
#include "component/FendaMaes.h"
#include "toolkit/Operator.h"

namespace FendaMaestros {

/// What an operation gives back.
struct Outcome {
    /// Null for an operation that has none; a Boolean is "sí" or "no".
    Variant result = {};
    /// The arguments that it has rewritten, by name.
    std::vector<std::pair<std::string, std::string>> rewritten = {};
};

enum class ArgumentKind { Text, Flag, Number, Identity };

/// An entry operation of the component: how a person finds it and how a script calls it.
struct Operation {
    std::string name;
    /// Menu and entry, with "&" before the letter that chooses it.
    std::string group;
    std::string caption;
    KeyStroke key;
    /// Those that it takes, in order; each may be left out if those behind it are, too.
    std::vector<ArgumentKind> arguments = {};
    /// As a person starts it: operations that take arguments ask for them on a screen.
    std::function<void(FendaMaes&)> open;
    /// Throws std::invalid_argument, in Spanish, for an argument that does not fit.
    std::function<Outcome(FendaMaes&, const Arguments&)> call;
};

/// An operation that takes no arguments and shows a screen.
Operation screenOperation(std::string name, std::string group, std::string caption, KeyStroke key,
                          void (FendaMaes::*show)());

}  // namespace FendaMaestros
