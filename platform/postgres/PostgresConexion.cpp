#include "platform/postgres/PostgresConexion.h"

#include <libpq-fe.h>

#include <charconv>
#include <optional>
#include <utility>

#include "platform/postgres/ColumnNames.h"
#include "platform/postgres/Dialect.h"
#include "platform/postgres/Rows.h"
#include "platform/postgres/Schema.h"
#include "storage/ReadOnly.h"
#include "toolkit/Text.h"

namespace FendaMaestros::postgres {

namespace {

constexpr const char* noRead = "La consulta no se ejecuta: solo se admiten lecturas.";

[[noreturn]] void refuse(const char* sentence) { throw ErrorBd(ErrorBd::Kind::Refused, sentence); }

Parameters parametersOf(const std::vector<storage::Literal>& literals) {
    Parameters parameters;
    parameters.reserve(literals.size());
    for (const auto& literal : literals)
        parameters.push_back(literal.kind == storage::Literal::Kind::QuotedText
                                 ? parameterOf(text::replaced(literal.source, "''", "'"))
                                 : parameterOf(std::string(literal.source)));
    return parameters;
}

std::int64_t rowsTouched(const Result& result) {
    const std::string_view count = PQcmdTuples(result.get());
    std::int64_t rows = 0;
    std::from_chars(count.data(), count.data() + count.size(), rows);
    return rows;
}

/// Which parameters of a described statement go into columns of any kind.
std::vector<bool> parametersOfAnyKind(const Result& described) {
    std::vector<bool> anyKind;
    for (int i = 0; i < PQnparams(described.get()); ++i) anyKind.push_back(isAnyKind(PQparamtype(described.get(), i)));
    return anyKind;
}

/// The rows of one read as they come.
class Reading {
public:
    Reading(PreparedText& text, std::string_view sql) : text_(text), sql_(sql) {}

    void restart() { rows_.reset(); }
    void take(const PGresult* result) {
        if (!rows_) begin(result);
        appendRows(*rows_, result);
    }
    int count() const { return rows_ ? rows_->rowCount() : 0; }
    std::shared_ptr<Recordset> finish(bool whole) {
        if (!rows_) rows_ = std::make_shared<Recordset>(text_.columns);
        rows_->Partial = !whole;
        text_.rows = rows_->rowCount();
        text_.textBytes = rows_->textBytes();
        return std::move(rows_);
    }

private:
    void begin(const PGresult* result) {
        if (PQnfields(result) == 0) refuse(noRead);
        if (text_.columns.size() != static_cast<std::size_t>(PQnfields(result)))
            text_.columns = columnNames(sql_, result);
        rows_ = std::make_shared<Recordset>(text_.columns);
        rows_->reserve(std::max(text_.rows, PQntuples(result)), text_.textBytes);
    }

    PreparedText& text_;
    std::string_view sql_;
    std::shared_ptr<Recordset> rows_;
};

}  // namespace

template <class Use>
auto PostgresConexion::withText(PreparedText& text, Use&& use) {
    const bool known = !text.name.empty();
    try {
        return use();
    } catch (const ServerError& error) {
        if (!known) Statements::refused(text);
        if (!known || !statements_.areForgotten(error.state())) throw;
    }
    return use();
}

void PostgresConexion::watchReads(ReadWatch watch) {
    watch_ = std::move(watch);
    answers_.clear();
}

std::shared_ptr<Recordset> PostgresConexion::Execute(std::string_view sql) {
    constexpr int rowsOfLookup = 4;
    constexpr std::size_t mostAnswers = 50000;
    if (!watch_ || transaction_.isOpen()) return ask(sql);
    std::string text(sql);
    if (const auto known = answers_.find(text); known != answers_.end())
        return std::make_shared<Recordset>(known->second);
    auto rows = ask(sql);
    if (rows->rowCount() <= rowsOfLookup && !rows->Partial && answers_.size() < mostAnswers)
        answers_.emplace(std::move(text), *rows);
    return rows;
}

std::shared_ptr<Recordset> PostgresConexion::ask(std::string_view sql) {
    storage::scan(sql, shape_);
    auto& text = reader();
    const Parameters parameters = parametersOf(shape_.literals);
    try {
        return withText(text, [&] { return read(text, sql, parameters); });
    } catch (const ServerError& error) {
        constexpr const char* readOnlyTransaction = "25006";
        if (error.state() == readOnlyTransaction) throw ErrorBd(ErrorBd::Kind::Refused, noRead, 0, error.nativeText());
        throw;
    }
}

PreparedText& PostgresConexion::reader() {
    if (auto* known = statements_.find(shape_.text)) return *known;
    if (!storage::beginsAsRead(shape_.text)) refuse(noRead);
    auto translation = translateRead(shape_.text);
    return statements_.add(shape_.text, {.sql = std::move(translation.text), .parameters = translation.parameters});
}

std::shared_ptr<Recordset> PostgresConexion::read(PreparedText& text, std::string_view sql,
                                                  const Parameters& parameters) {
    Trip steps = statements_.giving(text);
    steps.push_back(Statements::running(text, parameters));
    Reading reading(text, sql);
    if (!watch_) {
        reading.take(transaction_.read(steps).back().get());
        return reading.finish(true);
    }
    const RowWatch watch{.begin = [&] { reading.restart(); },
                         .take = [&](const PGresult* result) { reading.take(result); },
                         .goOn = [&] { return watch_(reading.count()); }};
    const bool whole = transaction_.read(steps, watch);
    return reading.finish(whole);
}

std::int64_t PostgresConexion::run(const Statement& statement) {
    answers_.clear();
    auto& text = writer(statement.sql);
    if (static_cast<std::size_t>(text.parameters) != statement.parameters.size())
        refuse("La sentencia no lleva tantos valores como parámetros.");
    if (transaction_.isOpen()) return withText(text, [&] { return write(text, statement.parameters); });

    transaction_.begin();
    try {
        const auto rows = withText(text, [&] { return write(text, statement.parameters); });
        transaction_.commit();
        return rows;
    } catch (...) {
        transaction_.rollback();
        throw;
    }
}

PreparedText& PostgresConexion::writer(const std::string& sql) {
    if (auto* known = statements_.find(sql)) return *known;
    if (!storage::beginsAsWriteOfRows(sql)) refuse("La sentencia no se ejecuta: se esperaba una escritura.");
    auto translation = translateWrite(sql);
    return statements_.add(sql, {.sql = std::move(translation.text),
                                 .parameters = translation.parameters,
                                 .anyKind = hasColumnOfAnyKind(sql),
                                 .beforeCommit = identitiesAbove(sql)});
}

std::int64_t PostgresConexion::write(PreparedText& text, const std::vector<Variant>& values) {
    Trip steps = statements_.giving(text);
    std::vector<bool> anyKind(values.size());
    if (text.anyKind) {
        steps.push_back(Statements::describing(text));
        anyKind = parametersOfAnyKind(transaction_.write(std::exchange(steps, {})).back());
    }
    Parameters parameters;
    parameters.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) parameters.push_back(parameterOf(values[i], anyKind[i]));
    steps.push_back(Statements::running(text, std::move(parameters)));
    if (!text.beforeCommit.empty()) transaction_.beforeCommit(text.beforeCommit);
    if (writes_ == Writes::Answered) return rowsTouched(transaction_.write(steps).back());
    for (auto& step : steps) transaction_.writeLater(std::move(step));
    return 0;
}

}  // namespace FendaMaestros::postgres
