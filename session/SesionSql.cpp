#include "session/SesionSql.h"

#include "session/Condition.h"
#include "session/ErrorBd.h"
#include "session/Identifier.h"
#include "session/TypedText.h"

namespace FendaMaestros {

namespace {

ErrorBd refusal(const std::string& reason) { return {ErrorBd::Kind::Refused, reason}; }

Variant number(const std::string& column, const Variant& value) {
    if (!std::holds_alternative<std::string>(value.storage())) return value;
    const auto written = typed::number(value.text());
    if (!written) throw refusal("El valor de la columna " + column + " no es un número: " + value.text());
    return *written;
}

Variant parameter(const std::string& column, long kind, const Variant& value) {
    if (value.isNull()) return {};
    switch (kind) {
        case valor::Entero:
            return number(column, value).integer();
        case valor::Numero:
            return number(column, value);
        case valor::Texto:
            return value.text();
        case valor::Nulo:
            return {};
        default:
            throw refusal("La columna " + column + " lleva un tipo de valor desconocido: " + std::to_string(kind));
    }
}

Condition condition(const std::string& where) {
    if (where.empty()) throw refusal("Falta la condición de las filas que se escriben");
    auto read = readCondition(where);
    if (!read) throw refusal("La condición no es una comparación de columnas con valores:" + where);
    return *read;
}

}  // namespace

void SesionSql::Reiniciar(std::int16_t /*fixed*/) {
    columns_.clear();
    condition_.clear();
}

void SesionSql::Agregar(std::string_view column, long kind, const Variant& value, std::int16_t /*fixed*/) {
    columns_.push_back({std::string(column), kind, value});
}

void SesionSql::Actualizar(std::string& text, bool& status) { carryOut(&SesionSql::update, text, status); }

void SesionSql::Insertar(std::string& text, bool& status) { carryOut(&SesionSql::insert, text, status); }

void SesionSql::Borrar(std::string& text, bool& status) { carryOut(&SesionSql::erase, text, status); }

Statement SesionSql::update() const {
    requireTable();
    requireColumns();
    Statement statement{.sql = "UPDATE " + table_ + " SET ", .parameters = {}};
    for (const Column& column : columns_) {
        statement.sql += (statement.parameters.empty() ? "" : ", ") + column.name + " = ?";
        statement.parameters.push_back(parameter(column.name, column.kind, column.value));
    }
    const Condition where = condition(condition_);
    statement.sql += where.sql;
    statement.parameters.insert(statement.parameters.end(), where.parameters.begin(), where.parameters.end());
    return statement;
}

Statement SesionSql::insert() const {
    requireTable();
    requireColumns();
    if (!condition_.empty()) throw refusal("Una fila nueva no lleva condición:" + condition_);
    std::string names;
    std::string marks;
    std::vector<Variant> parameters;
    for (const Column& column : columns_) {
        const char* separator = parameters.empty() ? "" : ", ";
        names += separator + column.name;
        marks += std::string(separator) + "?";
        parameters.push_back(parameter(column.name, column.kind, column.value));
    }
    return {"INSERT INTO " + table_ + " (" + names + ") VALUES (" + marks + ")", std::move(parameters)};
}

Statement SesionSql::erase() const {
    requireTable();
    Condition where = condition(condition_);
    return {"DELETE FROM " + table_ + where.sql, std::move(where.parameters)};
}

void SesionSql::carryOut(Statement (SesionSql::*compose)() const, std::string& text, bool& status) {
    status = false;
    Statement statement;
    try {
        statement = (this->*compose)();
    } catch (const ErrorBd& refused) {
        text = refused.what();
        return;
    }
    text = statement.sql;
    connection_->run(statement);
    status = true;
}

void SesionSql::requireTable() const {
    if (!identifier::isTable(table_)) throw refusal("No es el nombre de una tabla: \"" + table_ + "\"");
}

void SesionSql::requireColumns() const {
    if (columns_.empty()) throw refusal("No se ha indicado ninguna columna que escribir");
    for (const Column& column : columns_)
        if (!identifier::isColumn(column.name))
            throw refusal("No es el nombre de una columna: \"" + column.name + "\"");
}

}  // namespace FendaMaestros
