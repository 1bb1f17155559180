#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/sqlite/Database.h"

namespace FendaMaestros::sqlite {

struct CachedStatement {
    StatementHandle handle;
    std::vector<std::string> columns;
    /// What the last read gave: a good guess for the next.
    int rows = 0;
    std::size_t textBytes = 0;
};

/// Prepared statements by the text they were made from.
class StatementCache {
public:
    /// Null when there is none. The statement lives until the next add().
    CachedStatement* find(std::string_view text);
    CachedStatement& add(std::string text, CachedStatement statement);
    void clear() { statements_.clear(); }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    std::unordered_map<std::string, CachedStatement, Hash, std::equal_to<>> statements_;
};

}  // namespace FendaMaestros::sqlite
