#include "platform/postgres/Statements.h"

#include <iterator>
#include <utility>

namespace FendaMaestros::postgres {

namespace {

/// More than all texts of the screens together; beyond it the texts are somebody's own.
constexpr std::size_t mostStatements = 500;

}  // namespace

PreparedText* Statements::find(std::string_view text) {
    const auto found = statements_.find(text);
    return found == statements_.end() ? nullptr : &found->second;
}

PreparedText& Statements::add(std::string text, PreparedText statement) {
    if (statements_.size() >= mostStatements) {
        statements_.clear();
        tooMany_ = true;
    }
    return statements_.insert_or_assign(std::move(text), std::move(statement)).first->second;
}

Trip Statements::giving(PreparedText& statement) {
    Trip trip;
    if (std::exchange(tooMany_, false)) trip.push_back(command("DEALLOCATE ALL"));
    if (!statement.name.empty()) return trip;
    statement.name = "text" + std::to_string(++given_);
    trip.push_back({.kind = Step::Kind::Prepare, .sql = statement.sql, .name = statement.name});
    return trip;
}

Step Statements::describing(const PreparedText& statement) {
    return {.kind = Step::Kind::Describe, .sql = {}, .name = statement.name};
}

Step Statements::running(const PreparedText& statement, Parameters parameters) {
    return {.kind = Step::Kind::Run, .sql = {}, .name = statement.name, .parameters = std::move(parameters)};
}

bool Statements::areForgotten(const std::string& state) {
    constexpr const char *unknownStatement = "26000", *changedColumns = "0A000";
    if (state != unknownStatement && state != changedColumns) return false;
    for (auto& [text, statement] : statements_) {
        statement.name.clear();
        statement.columns.clear();
    }
    return true;
}

}  // namespace FendaMaestros::postgres
