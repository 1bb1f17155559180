#include "chart/CodigosCuenta.h"

#include <algorithm>
#include <array>

#include "session/Literal.h"
#include "toolkit/Text.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

/// The groups of the official plan whose accounts stand for somebody.
constexpr std::array<std::string_view, 5> groupsWithIdentity{"430", "440", "410", "400", "523"};

/// As many zeros as a code of `length` characters lacks.
std::string missingZeros(std::size_t length, std::size_t digits) {
    return std::string(digits > length ? digits - length : 0, '0');
}

/// A number written in digits plus one, without leading zeros.
std::string successor(std::string number) {
    std::size_t place = number.size();
    while (place > 0 && number[place - 1] == '9') number[--place] = '0';
    if (place > 0)
        ++number[place - 1];
    else
        number.insert(number.begin(), '1');
    number.erase(0, number.find_first_not_of('0'));
    return number;
}

NextCode refused(const std::string& code) {
    return {{}, "Código de cuenta erróneo " + code + "\r\n No es posible calcular el código de cuenta siguiente"};
}

std::string planFilter(std::int16_t nEjercicio) {
    if (nEjercicio < 2008) return " AND PCta_PlanSec = 0 AND PCta_Plan = " + std::to_string(nEjercicio);
    return " AND PCta_PlanSec = 1 AND PCta_Plan = 2008";
}

bool confirmed(const std::string& question) {
    constexpr int style = message::YesNo + message::Question + message::SecondIsDefault;
    return instanciaActual().desktop().ask({question, style, {}}).answer == Answer::Yes;
}

}  // namespace

bool asksForNextCode(std::string_view typed) { return typed.ends_with(','); }

std::string completedCode(const std::string& typed, std::size_t digits) {
    if (text::trim(typed).empty()) return typed;
    std::string code = typed;
    if (const std::size_t comma = code.find(','); comma != std::string::npos)
        code.replace(comma, 1, missingZeros(text::length(typed) - 1, digits));
    return code + missingZeros(text::length(code), digits);
}

std::string highestCodeSql(const std::string& prefix) {
    return "SELECT MAX(PCta_Cta) FROM Pcta WHERE PCta_SubCuenta=1 and substring(PCta_Cta,1," +
           std::to_string(text::length(prefix)) + ") = " + literal(prefix);
}

NextCode nextCode(const Variant& highest, const std::string& prefix, std::size_t digits) {
    if (!highest.isNull()) {
        const std::string code = text::trim(highest.text());
        return text::isNumericCode(code) ? NextCode{successor(code), {}} : refused(highest.text());
    }
    const std::size_t length = text::length(prefix);
    if (length >= digits) return refused(prefix);
    return {prefix + missingZeros(length + 1, digits) + '1', {}};
}

bool needsIdentity(std::string_view code) {
    return std::ranges::find(groupsWithIdentity, text::left(code, groupsWithIdentity.front().size())) !=
           groupsWithIdentity.end();
}

std::string planCodesSql(std::int16_t nEjercicio) {
    return "SELECT PCta_Cta FROM PCta WHERE PCta_Subcuenta=0" + planFilter(nEjercicio);
}

std::shared_ptr<Recordset> planAccount(const std::string& sCuenta, std::int16_t nEjercicio) {
    const auto connection = instanciaActual().sesion().Conexion();
    for (const std::size_t length : planLengths) {
        auto rows = connection->Execute("SELECT * FROM PCta WHERE PCta_Subcuenta=0" + planFilter(nEjercicio) +
                                        " AND PCta_Cta = " + literal(text::left(sCuenta, length)));
        if (!rows->Eof()) return rows;
    }
    return nullptr;
}

bool msValidaCuentaPlan(const std::string& sCuenta, std::int16_t nEjercicio, bool bPreguntar) {
    if (planAccount(sCuenta, nEjercicio)) return true;
    return bPreguntar && confirmed("Cuenta no pertenece al PGC " + std::to_string(nEjercicio) +
                                   "\r\nConfirma que desea trabajar con esta cuenta");
}

}  // namespace FendaMaestros
