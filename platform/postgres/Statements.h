#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/postgres/Trip.h"

namespace FendaMaestros::postgres {

/// A text in the engine's dialect, which the server is given once.
struct PreparedText {
    std::string sql;
    int parameters = 0;
    /// What the server knows it by; empty until it does.
    std::string name = {};
    /// Of a read: its columns, and how much the last one gave, a good guess for the next.
    std::vector<std::string> columns = {};
    int rows = 0;
    std::size_t textBytes = 0;
    /// Of a write: whether values may go into columns of any kind, and what its transaction has to end with.
    bool anyKind = false;
    std::string beforeCommit = {};
};

/// The texts that were given to the server, by the texts of the screens they were made from.
class Statements {
public:
    /// Null when there is none. What it points to lives until the next add() or clear().
    PreparedText* find(std::string_view text);
    PreparedText& add(std::string text, PreparedText statement);
    /// What gives a text to the server that it does not know yet; empty when it does.
    Trip giving(PreparedText& statement);
    static Step describing(const PreparedText& statement);
    static Step running(const PreparedText& statement, Parameters parameters);
    /// The server could not be given a text, or has failed to carry it out for the first time.
    static void refused(PreparedText& statement) { statement.name.clear(); }
    /// Whether a failure with this SQLSTATE says that the server does not know a text, or not any more in the form that
    /// it was given in. Then it gets every text anew.
    bool areForgotten(const std::string& state);

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    std::unordered_map<std::string, PreparedText, Hash, std::equal_to<>> statements_;
    std::size_t given_ = 0;
    /// The server still has texts that are not among these.
    bool tooMany_ = false;
};

}  // namespace FendaMaestros::postgres
