#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "component/FendaMaes.h"
#include "toolkit/Operator.h"

namespace FendaMaestros {

/// The arguments of an operation as a script writes them, in the operation's order; those left out take their default.
class Arguments {
public:
    Arguments() = default;
    explicit Arguments(std::vector<std::string> texts) : texts_(std::move(texts)) {}

    std::size_t count() const { return texts_.size(); }
    std::string text(std::size_t index, std::string absent = {}) const;
    /// "sí" or "no", whatever case and accent, or 1 or 0. Throws std::invalid_argument, in Spanish, for anything else.
    bool flag(std::size_t index, bool absent) const;
    /// A whole number of 16 bits. Throws std::invalid_argument, in Spanish, for anything else.
    std::int16_t number(std::size_t index, std::int16_t absent) const;
    /// The identity of a row, 0 when it is left out. Throws as number().
    std::int32_t identity(std::size_t index) const;

private:
    std::vector<std::string> texts_;
};

/// What an operation gives back.
struct Outcome {
    /// Null for an operation that has none; a Boolean is "sí" or "no".
    Variant result;
    /// The arguments that it has rewritten, by name.
    std::vector<std::pair<std::string, std::string>> rewritten;
};

enum class ArgumentKind { Text, Flag, Number, Identity };

/// An entry operation of the component: how a person finds it and how a script calls it.
struct Operation {
    std::string name;
    /// Menu and entry, with "&" before the letter that chooses it.
    std::string group;
    std::string caption;
    KeyStroke key;
    std::size_t maxArguments = 0;
    /// As a person starts it: operations that take arguments ask for them on a screen.
    std::function<void(FendaMaes&)> open;
    /// Throws std::invalid_argument, in Spanish, for an argument that does not fit.
    std::function<Outcome(FendaMaes&, const Arguments&)> call;
    /// What each argument is; those behind the last one are texts.
    std::vector<ArgumentKind> kinds;
};

/// Throws std::invalid_argument, in Spanish, for arguments that the operation cannot take, without calling it.
void checkArguments(const Operation& operation, const Arguments& arguments);
/// Every entry operation that works, in the order of the menus; those of one group together.
const std::vector<Operation>& operations();
/// Null when there is none of that name; case does not matter.
const Operation* findOperation(std::string_view name);

}  // namespace FendaMaestros
