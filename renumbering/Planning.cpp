#include "renumbering/Planning.h"

#include "chart/CodigosCuenta.h"
#include "session/Literal.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::shared_ptr<Recordset> accountsOf(ConexionBd& connection, const std::string& code) {
    return connection.Execute("SELECT * FROM PCta WHERE PCta_Subcuenta = 1 AND PCta_Cta = " + literal(code));
}

}  // namespace

CompanyCodes::CompanyCodes(SesionBd& session)
    : connection(*session.Conexion()),
      fiscalYear(ejercicioActivo(session.Parametros())),
      digits(digitosSubcuenta(session.Parametros())),
      official(connection, fiscalYear) {}

std::int64_t CompanyCodes::rowsWith(const CodePlace& place, std::string_view column, const Variant& value) const {
    const bool isText = std::holds_alternative<std::string>(value.storage());
    const std::string sql =
        "SELECT COUNT(*) FROM " + std::string(place.table) + " WHERE " + std::string(column) + " = ";
    return connection.Execute(sql + (isText ? literal(value.text()) : value.text()) + std::string(place.where))
        ->cell(0, 0)
        .integer();
}

std::optional<SubcuentaRecord> CompanyCodes::account(const std::string& typed, RenumberingPlan& plan) const {
    const std::string trimmed = text::trim(typed);
    auto rows = accountsOf(connection, trimmed);
    const std::string code = rows->Eof() ? completedCode(trimmed, digits) : trimmed;
    if (code != trimmed) rows = accountsOf(connection, code);
    if (rows->rowCount() == 1) {
        SubcuentaRecord account = leerSubcuenta(*rows);
        account.codigo = text::trimEnd(account.codigo);
        return account;
    }
    if (code.empty())
        plan.obstacles.emplace_back("Falta el código de la subcuenta.");
    else if (rows->Eof())
        plan.obstacles.push_back("No hay ninguna subcuenta " + code + ".");
    else
        plan.obstacles.push_back("El código " + code + " lo tienen " + std::to_string(rows->rowCount()) +
                                 " subcuentas.");
    return {};
}

std::string nameOf(const SubcuentaRecord& account) {
    return account.codigo + " «" + text::printable(text::trim(account.nombre)) + "»";
}

std::string counted(const CodePlace& place, std::int64_t rows) {
    return counted(static_cast<int>(rows), place.one, place.many);
}

void addCount(RenumberingPlan& plan, const CodePlace& place, std::int64_t rows) {
    plan.counts.push_back({rows, counted(place, rows)});
}

void addStep(RenumberingPlan& plan, std::string sql, std::vector<Variant> parameters, std::int64_t rows) {
    if (rows > 0) plan.steps.push_back({std::move(sql), std::move(parameters), rows});
}

}  // namespace FendaMaestros
