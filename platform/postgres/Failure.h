#pragma once

#include <string>

#include "session/ErrorBd.h"

struct pg_result;

namespace FendaMaestros::postgres {

/// A failure that the server has told, with its SQLSTATE.
class ServerError : public ErrorBd {
public:
    /// `text`: the server's own words.
    ServerError(std::string state, const std::string& text);

    const std::string& state() const { return state_; }

private:
    std::string state_;
};

/// Throws ServerError when a result is no success.
void check(const pg_result* result);

/// The server cannot be reached, or not any more. `text`: the words of the library.
ErrorBd lost(const std::string& text);

}  // namespace FendaMaestros::postgres
