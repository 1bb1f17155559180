#include "storage/FirstContents.h"

#include <string>
#include <utility>

#include "session/Literal.h"
#include "storage/Insertion.h"
#include "storage/Parameters.h"
#include "storage/ReferenceData.h"

namespace FendaMaestros::storage {

namespace {

/// A column that every row of a file gets.
struct FixedColumn {
    std::string_view name;
    Variant value;
};

Variant textOf(std::string_view value) { return std::string(value); }
Variant textOrNull(std::string_view value) { return value.empty() ? Variant() : textOf(value); }

/// Inserts every row of data/FILE.csv.
void load(ConexionBd& connection, std::string_view table, std::string_view file,
          std::initializer_list<FixedColumn> fixed = {}) {
    ReferenceRows rows(file);
    auto columns = rows.columns();
    for (const auto& column : fixed) columns.push_back(column.name);
    Statement insert = insertion(table, columns);
    while (rows.next()) {
        insert.parameters.clear();
        for (const auto value : rows.values()) insert.parameters.push_back(textOf(value));
        for (const auto& column : fixed) insert.parameters.push_back(column.value);
        connection.run(insert);
    }
}

/// A plan of data/FILE.csv as accounts that are no sub-accounts. `variant` is what the plan in force is known by.
void loadPlan(ConexionBd& connection, std::string_view file, int year, int variant) {
    load(connection, "PCta", file,
         {{"PCta_Plan", year},
          {"PCta_PlanSec", variant},
          {"PCta_Subcuenta", 0},
          {"PCta_bActiva", 1},
          {"PCta_IdMasa", 0},
          {"PCta_IdCen", 0},
          {"PCta_IdDpto", 0},
          {"Pcta_IdNif", 0},
          {"PCta_IdCtaAso", 0},
          {"Pcta_Origen", 0},
          {"Pcta_IdOrigen", 0}});
}

/// The identity of the row whose column is a text; 0 when there is none. `from` goes on from SELECT to WHERE.
std::int64_t identity(ConexionBd& connection, const std::string& from, std::string_view text) {
    const auto rows = connection.Execute("SELECT " + from + " = " + literal(text));
    return rows->rowCount() == 0 ? 0 : rows->cell(0, 0).integer();
}

std::int64_t taxIdentity(ConexionBd& connection, std::string_view document) {
    return identity(connection, "Nif_Id FROM KXComun.dbo.Nif WHERE Nif_Doc", document);
}

/// Companies have no surnames, and who has no withholding key has no subkey.
Variant identityValue(const ReferenceRows& row, std::string_view column) {
    const bool surname = column == "Nif_Ape1" || column == "Nif_Ape2";
    const bool key = column == "Nif_ClaveRet" || column == "Nif_SubClave";
    const bool absent = (surname && row.value("Nif_TipDoc") == "0") || (key && row.value("Nif_ClaveRet").empty());
    return absent ? Variant() : textOf(row.value(column));
}

void loadIdentities(ConexionBd& connection) {
    ReferenceRows rows("demo_identidades");
    Statement insert = insertion("KXComun.dbo.Nif", rows.columns());
    while (rows.next()) {
        if (taxIdentity(connection, rows.value("Nif_Doc")) != 0) continue;
        insert.parameters.clear();
        for (const auto column : rows.columns()) insert.parameters.push_back(identityValue(rows, column));
        connection.run(insert);
    }
}

void loadAccounts(ConexionBd& connection) {
    constexpr std::string_view columns[] = {"PCta_Cta",     "PCta_Des",    "PCta_CtaAso",   "PCta_CtaIrpfAso",
                                            "Pcta_IdNif",   "PCta_IdMasa", "PCta_IdCtaAso", "PCta_Subcuenta",
                                            "PCta_bActiva", "PCta_IdCen",  "PCta_IdDpto",   "Pcta_Origen",
                                            "Pcta_IdOrigen"};
    ReferenceRows rows("demo_cuentas");
    Statement insert = insertion("PCta", columns);
    while (rows.next()) {
        const auto mass = identity(connection, "Masas_Id FROM KXComun.dbo.Masas WHERE Masas_Plan = 2008 AND Masas_Des",
                                   rows.value("Masas_Des"));
        insert.parameters = {textOf(rows.value("PCta_Cta")),
                             textOf(rows.value("PCta_Des")),
                             textOrNull(rows.value("PCta_CtaAso")),
                             textOrNull(rows.value("PCta_CtaIrpfAso")),
                             taxIdentity(connection, rows.value("Nif_Doc")),
                             mass,
                             0,
                             1,
                             1,
                             0,
                             0,
                             0,
                             0};
        connection.run(insert);
    }
    const std::string associated = "FROM PCta AS A WHERE A.PCta_Subcuenta = 1 AND A.PCta_Cta = PCta.PCta_CtaAso";
    connection.run({"UPDATE PCta SET PCta_IdCtaAso = (SELECT A.PCta_Id " + associated + ") WHERE EXISTS (SELECT 1 " +
                        associated + ")",
                    {}});
}

void loadJournal(ConexionBd& connection) {
    load(connection, "Apu", "demo_apuntes", {{"Apu_Estado", 0}, {"Apu_IdCen", 0}, {"Apu_IdDpto", 0}});
    const std::string ofAccount = " FROM PCta WHERE PCta_Subcuenta = 1 AND PCta_Cta = Apu_Cta)";
    connection.run(
        {"UPDATE Apu SET Apu_IdCta = (SELECT PCta_Id" + ofAccount + ", Apu_CtaDes = (SELECT PCta_Des" + ofAccount, {}});
}

}  // namespace

void fillShared(ConexionBd& connection) {
    constexpr std::pair<std::string_view, std::string_view> contents[] = {
        {"Pais", "paises"},         {"PROV", "provincias"}, {"TVI", "vias"},
        {"Conceptos", "conceptos"}, {"Masas", "masas"},     {"Balances", "balances"},
        {"BalEstruc", "balestruc"}, {"BalCtas", "balctas"},
    };
    for (const auto& [table, file] : contents) load(connection, "KXComun.dbo." + std::string(table), file);
}

void fillCompany(ConexionBd& connection, const NewCompany& company) {
    storeParameters(connection, company);
    loadPlan(connection, "pgc2008", 2008, 1);
    loadPlan(connection, "pgc1990", 1990, 0);
    load(connection, "DIR", "poblaciones");
}

NewCompany demonstrationCompany() { return {.name = "Empresa de demostración", .fiscalYear = 2026}; }

void fillDemonstration(ConexionBd& connection) {
    load(connection, "Centro", "demo_centros");
    load(connection, "Dpto", "demo_departamentos");
    loadIdentities(connection);
    loadAccounts(connection);
    loadJournal(connection);
    load(connection, "Fac", "demo_facturas");
}

}  // namespace FendaMaestros::storage
