#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "toolkit/Desktop.h"

namespace FendaMaestros {

class GuionOperator;

/// An answer to a message.
struct ExpectedMessage {
    int line = 0;
    /// What the message must say; none takes any message.
    std::optional<std::string> text = {};
    /// The text is a part of what the message says.
    bool part = false;
    /// None: the one that leaves the message (Ok or No).
    std::optional<Answer> answer = {};
    bool byMouse = false;
};

struct ExpectedFile {
    bool proposed = false;            ///< the name that the question proposes
    std::optional<std::string> name;  ///< none: the question is left
};

struct ExpectedSearch {
    bool leave = false;
    std::string text;
    int row = 1;  ///< of the narrowed list, from 1
};

struct ExpectedError {
    std::optional<std::string> part;
};

/// What a command prepares for the one that acts behind it; nothing once it has been used.
using Preparation = std::variant<std::monostate, ExpectedMessage, ExpectedFile, ExpectedSearch, ExpectedError>;

struct Command {
    int line = 0;
    /// The line as written, without the blanks around it.
    std::string text = {};
    /// It does something to a screen, or opens one: what stands prepared must be used up when the next command is read.
    bool acts = false;
    /// Empty for a command that only prepares.
    std::function<void(GuionOperator&)> run = {};
    Preparation preparation = {};
};

/// The commands of a script and how far a person has read them.
class Script {
public:
    explicit Script(std::vector<Command> commands) : commands_(std::move(commands)) {}

    /// Reads on; null at the end. Throws GuionError at the line read when the command before it acted and has left
    /// something unused that was prepared.
    const Command* next();
    /// Of the command read last, 0 at the beginning.
    int line() const { return read_ ? commands_[read_ - 1].line : 0; }

    /// Uses the first preparation of this kind that stands between the command read last and the one that acted before
    /// it.
    template <class T>
    std::optional<T> take() {
        for (std::size_t at = open_; at < read_; ++at)
            if (std::holds_alternative<T>(commands_[at].preparation))
                return std::get<T>(std::exchange(commands_[at].preparation, {}));
        return std::nullopt;
    }
    /// Throws GuionError at `line` when something prepared has not been used.
    void failOnUnused(int line) const;

private:
    std::vector<Command> commands_;
    std::size_t read_ = 0;
    /// Where the commands begin whose preparations may still be unused.
    std::size_t open_ = 0;
};

}  // namespace FendaMaestros
