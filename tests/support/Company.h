#pragma once

#include <initializer_list>
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

/// Every value of every row, a line each.
inline std::string contents(ConexionBd& connection, std::initializer_list<const char*> tables) {
    std::string found;
    for (const char* table : tables) {
        const auto rows = connection.Execute(std::string("SELECT * FROM ") + table);
        for (int row = 0; row < rows->rowCount(); ++row, found += '\n')
            for (int column = 0; column < rows->columnCount(); ++column) found += rows->cell(row, column).text() + "|";
    }
    return found;
}

}  // namespace FendaMaestros::testing
