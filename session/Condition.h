#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/Variant.h"

namespace FendaMaestros {

/// A WHERE clause with its literals taken out: `sql` is " WHERE Centro_Id = ?", `parameters` what stands for each "?".
struct Condition {
    std::string sql;
    std::vector<Variant> parameters;
};

/// Reads a conjunction of comparisons, such as " WHERE Fac_Doc = 'A1' AND year(Fac_Fecha) = 2026": each side left of
/// the operator is a column or year(column), each side right of it a number or a text between quotes (a quote inside
/// doubled), the operators are = <> < > <= >=. Nothing when the text is anything else: OR, a subquery, a function, a
/// comment, a comparison of two columns, more text behind the end.
std::optional<Condition> readCondition(std::string_view where);

}  // namespace FendaMaestros
