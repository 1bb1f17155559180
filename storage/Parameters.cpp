#include "storage/Parameters.h"

#include <array>
#include <utility>

#include "toolkit/Text.h"

namespace FendaMaestros::storage {

namespace {

constexpr const char *nameOf = "Par_Nombre", *yearOf = "Par_Ejercicio", *digitsOf = "Par_CtaNum",
                     *provinceOf = "Par_Provincia", *orderOf = "PAR_ORCONTANOM";

std::array<std::pair<const char*, Variant>, 5> valuesOf(const NewCompany& company) {
    return {{{nameOf, company.name},
             {yearOf, company.fiscalYear},
             {digitsOf, company.accountDigits},
             {provinceOf, company.province},
             {orderOf, company.nameOrder}}};
}

Statement change(const char* name, const Variant& value) {
    return {"UPDATE Parametros SET Par_Valor = ? WHERE Par_Nom = ?", {value, name}};
}

void insert(ConexionBd& connection, const char* name, const Variant& value) {
    connection.run({"INSERT INTO Parametros (Par_Nom, Par_Valor) VALUES (?, ?)", {name, value}});
}

}  // namespace

void storeParameters(ConexionBd& connection, const NewCompany& company) {
    for (const auto& [name, value] : valuesOf(company)) insert(connection, name, value);
}

void changeParameters(ConexionBd& connection, const NewCompany& company) {
    check(company);
    connection.BeginTrans();
    try {
        for (const auto& [name, value] : valuesOf(company))
            if (connection.run(change(name, value)) == 0) insert(connection, name, value);
        connection.CommitTrans();
    } catch (...) {
        connection.RollbackTrans();
        throw;
    }
}

Statement digitsChange(int digits) { return change(digitsOf, digits); }

ParametrosEmpresa readParameters(ConexionBd& connection) {
    ParametrosEmpresa parameters;
    const auto rows = connection.Execute("SELECT Par_Nom, Par_Valor FROM Parametros");
    for (; !rows->Eof(); rows->MoveNext())
        parameters.set(rows->Fields("Par_Nom").Value.text(), rows->Fields("Par_Valor").Value);
    return parameters;
}

NewCompany companyOf(const ParametrosEmpresa& parameters) {
    NewCompany company;
    for (const auto& [name, parameter] : parameters.all()) {
        const Variant& value = parameter.Value;
        const auto is = [&name = name](const char* other) { return text::equalIgnoringCase(name, other); };
        const auto number = static_cast<int>(value.integer());
        if (is(nameOf)) company.name = value.text();
        if (is(yearOf)) company.fiscalYear = number;
        if (is(digitsOf)) company.accountDigits = number;
        if (is(provinceOf)) company.province = number;
        if (is(orderOf)) company.nameOrder = number == 0 ? 0 : 1;
    }
    return company;
}

}  // namespace FendaMaestros::storage
