#pragma once

#include <string>

#include "session/ErrorBd.h"

struct pg_result;

namespace FendaMaestros::postgres {

/// A failure that the server has told, with its SQLSTATE.
class ServerError : public ErrorBd {
public:
    /// `result` is no success.
    explicit ServerError(const pg_result* result);

    const std::string& state() const { return state_; }

private:
    /// `words`: the server's own, in one line; `text`: all that the library says.
    ServerError(const std::string& state, const std::string& words, const std::string& text);

    std::string state_;
};

/// The server cannot be reached, or not any more. `text`: the words of the library.
ErrorBd lost(const std::string& text);

}  // namespace FendaMaestros::postgres
