#pragma once

#include <stdexcept>
#include <string>

namespace FendaMaestros {

/// A failure of the database or of the session, the one type every adapter throws. what() is a Spanish sentence that a
/// person understands; the engine's own words stay beside it.
class ErrorBd : public std::runtime_error {
public:
    enum class Kind {
        Busy,          ///< another program holds the database
        ReadOnly,      ///< no right to write
        Full,          ///< no room left
        NotADatabase,  ///< missing, damaged or no database at all
        NewerVersion,  ///< made by a newer version of the program
        Constraint,    ///< the database does not allow the value, such as a repeated key
        Refused,       ///< a text that the session does not carry out
        Sql,           ///< a text that the engine does not understand
        Lost,          ///< the server cannot be reached, or not any more; a later attempt connects again
        Stopped,       ///< whoever waited has had it stopped
        Other,
    };

    ErrorBd(Kind kind, const std::string& sentence, int nativeCode = 0, std::string nativeText = {})
        : std::runtime_error(sentence), kind_(kind), nativeCode_(nativeCode), nativeText_(std::move(nativeText)) {}

    Kind kind() const { return kind_; }
    /// The engine's code, 0 when the error is the session's own.
    int nativeCode() const { return nativeCode_; }
    const std::string& nativeText() const { return nativeText_; }

private:
    Kind kind_;
    int nativeCode_;
    std::string nativeText_;
};

}  // namespace FendaMaestros
