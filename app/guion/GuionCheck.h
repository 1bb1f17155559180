#pragma once

#include <string>
#include <vector>

namespace FendaMaestros {

class GuionOperator;
class Words;

/// Something that a script expects to be so.
struct Check {
    enum class Comparison { Equal, Different, Contains };

    struct Argument {
        std::string text;
        /// A number between quotes is a text.
        bool quoted = false;
    };

    /// What is looked at: a keyword of docs/guion.md.
    std::string subject;
    std::vector<Argument> arguments;
    Comparison comparison = Comparison::Equal;
    std::string expected;
};

/// Reads what follows `comprobar`. Throws GuionError.
Check readCheck(Words& words);

/// Throws GuionError with what was found when it is not so.
void carryOut(const Check& check, const GuionOperator& person);

}  // namespace FendaMaestros
