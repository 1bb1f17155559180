#pragma once

#include <string>

#include "session/ConexionBd.h"
#include "session/ErrorBd.h"
#include "session/ParametrosEmpresa.h"

/// What tests of the screens look at in a company.
namespace FendaMaestros::testing {

/// Of a company in Madrid with sub-accounts of eight digits, where names come before surnames.
inline ParametrosEmpresa parameters(int fiscalYear) {
    ParametrosEmpresa made;
    made.set("Par_Ejercicio", fiscalYear);
    made.set("Par_CtaNum", 8);
    made.set("Par_Provincia", 28);
    made.set("PAR_ORCONTANOM", 0);
    made.set("Par_Nombre", "Empresa de prueba");
    return made;
}

inline bool hasOpenTransaction(ConexionBd& connection) {
    try {
        connection.CommitTrans();
        return true;
    } catch (const ErrorBd&) {
        return false;
    }
}

/// Every value of every row, "|" behind each and a line each row.
inline std::string valuesOf(const Recordset& rows) {
    std::string found;
    for (int row = 0; row < rows.rowCount(); ++row, found += '\n')
        for (int column = 0; column < rows.columnCount(); ++column) found += rows.cell(row, column).text() + "|";
    return found;
}

/// Names of controls by what they hold.
namespace account {
constexpr const char *code = "Text1(0)", *name = "Text1(1)", *linked = "Text1(2)", *document = "Text1(4)",
                     *withholding = "Text1(6)", *save = "cmdGuardar", *remove = "cmdBorrar";
}
namespace identity {
constexpr const char *name = "txtFields(1)", *surname = "txtFields(2)", *surname2 = "txtFields(3)",
                     *document = "txtFields(5)", *email = "txtFields(9)", *number = "txtFields(44)",
                     *street = "txtFields(45)", *town = "txtFields(50)", *type = "cboDocType", *save = "cmdSalvar",
                     *remove = "cmdBorrar";
}

}  // namespace FendaMaestros::testing
