#include "platform/sqlite/StatementCache.h"

#include <utility>

namespace FendaMaestros::sqlite {

namespace {

/// More than all texts of the screens together; beyond it the texts are somebody's own.
constexpr std::size_t mostStatements = 500;

}  // namespace

CachedStatement* StatementCache::find(std::string_view text) {
    const auto found = statements_.find(text);
    return found == statements_.end() ? nullptr : &found->second;
}

CachedStatement& StatementCache::add(std::string text, CachedStatement statement) {
    if (statements_.size() >= mostStatements) statements_.clear();
    return statements_.insert_or_assign(std::move(text), std::move(statement)).first->second;
}

}  // namespace FendaMaestros::sqlite
