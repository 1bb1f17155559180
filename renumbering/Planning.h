#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chart/SubcuentaRecord.h"
#include "renumbering/CodePlaces.h"
#include "renumbering/OfficialPlan.h"
#include "renumbering/Renumbering.h"

/// What plans of each kind are made with.
namespace FendaMaestros {

/// A company as plans read it.
struct CompanyCodes {
    /// Errors as ConexionBd::Execute and ParametrosEmpresa::Item.
    explicit CompanyCodes(SesionBd& session);

    ConexionBd& connection;
    const std::int16_t fiscalYear;
    const std::size_t digits;
    const OfficialPlan official;

    /// Rows of the place with this value, a text or a whole number, in one of its columns.
    std::int64_t rowsWith(const CodePlace& place, std::string_view column, const Variant& value) const;
    /// The one sub-account of a code that a person has typed, completed unless it is there as it was typed. When there
    /// is none, or more than one, the plan is told.
    std::optional<SubcuentaRecord> account(const std::string& typed, RenumberingPlan& plan) const;
};

/// "43000005 «Muebles Peñalba»"
std::string nameOf(const SubcuentaRecord& account);

/// "1.234 apuntes"
std::string counted(const CodePlace& place, std::int64_t rows);
void addCount(RenumberingPlan& plan, const CodePlace& place, std::int64_t rows);
/// Adds a write, unless it touches no row.
void addStep(RenumberingPlan& plan, std::string sql, std::vector<Variant> parameters, std::int64_t rows);

RenumberingPlan planOf(const CompanyCodes& company, const AccountToRenumber& wanted);
RenumberingPlan planOf(const CompanyCodes& company, const DigitsToChange& wanted);
RenumberingPlan planOf(const CompanyCodes& company, const AccountsToMerge& wanted);

}  // namespace FendaMaestros
