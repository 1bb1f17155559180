#include "renumbering/OfficialPlan.h"

#include "chart/CodigosCuenta.h"
#include "session/ParametrosEmpresa.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::unordered_set<std::string> codes(ConexionBd& connection, const std::string& sql) {
    const auto rows = connection.Execute(sql);
    std::unordered_set<std::string> read;
    for (int row = 0; row < rows->rowCount(); ++row) read.insert(text::trimEnd(rows->textView(row, 0)));
    return read;
}

}  // namespace

OfficialPlan::OfficialPlan(ConexionBd& connection, std::int16_t fiscalYear)
    : inForce_(codes(connection, planCodesSql(planEnVigor(fiscalYear)))),
      all_(codes(connection, "SELECT PCta_Cta FROM PCta WHERE PCta_Subcuenta=0")) {}

std::string OfficialPlan::groupOf(std::string_view code) const {
    for (const std::size_t length : planLengths) {
        std::string group(code.substr(0, length));
        if (inForce_.contains(group)) return group;
    }
    return {};
}

}  // namespace FendaMaestros
