#pragma once

#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "app/guion/GuionError.h"
#include "app/guion/Script.h"
#include "toolkit/Operator.h"

namespace FendaMaestros {

/// The words of one line, read from left to right. What is missing or does not fit throws GuionError.
class Words {
public:
    Words(int line, std::string_view text);

    /// Of the script, from 1.
    int line() const { return line_; }
    bool atEnd() const { return next_ == words_.size(); }
    /// Reads on when the next word is this one, unquoted, whatever its case and accents.
    bool take(std::string_view keyword);
    /// The next word unquoted, folded as keywords are; `what` names it when it is missing.
    std::string keyword(std::string_view what);
    std::string text(std::string_view what);
    /// A whole number of 0 or more.
    int number(std::string_view what);
    /// Whether the next word is a whole number, unquoted.
    bool isNumber() const;
    bool isQuoted() const { return !atEnd() && words_[next_].quoted; }
    /// "=" if it comes next, which may always be left out.
    void equals() { take("="); }
    bool yesOrNo(std::string_view what);
    /// Every word left, as texts.
    std::vector<std::string> rest();
    /// Throws when something is left.
    void end() const;
    [[noreturn]] void fail(const std::string& reason) const;

private:
    struct Word {
        std::string text;
        bool quoted = false;
    };

    const Word& read(std::string_view what);
    void split(std::string_view text);
    std::string quoted(std::string_view text, std::size_t& at) const;

    int line_;
    std::vector<Word> words_;
    std::size_t next_ = 0;
};

/// The command of one line that is neither blank nor a comment (app/guion/GuionGrammar.cpp has the table of commands).
/// Throws GuionError when it is not understood.
Command parseCommand(int line, std::string_view text);

/// Every command of a script, checked as far as it can be without running it. Throws GuionError for the first line that
/// is not understood. `parse` reads a line as parseCommand() does, and may know more commands.
std::vector<Command> parseGuion(std::istream& script,
                                const std::function<Command(int line, std::string_view text)>& parse = parseCommand);

/// A key as scripts name it, "Intro" or "Mayús+Tab". Throws std::invalid_argument with the reason.
KeyStroke keyStroke(std::string_view name);

}  // namespace FendaMaestros
