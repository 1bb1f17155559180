#pragma once

#include <string>

#include "app/Place.h"
#include "interchange/Fields.h"

namespace FendaMaestros {

/// What `fenda importar` was asked for; what is empty is found out.
struct TypedImport {
    std::string kind;  ///< "cuentas" or "identidades"
    std::string file;
    std::string encoding;   ///< "utf-8" or "windows-1252"
    std::string separator;  ///< ";", "," or "tab"
    bool withHeader = false;
    bool withoutHeader = false;
    std::string columns;    ///< "cuenta=1,nombre=3,nif=Documento"
    std::string wrongRows;  ///< the file for the rows that are wrong
    bool apply = false;
    bool omitWrong = false;
    bool outsidePlan = false;
};

/// The kind of a command's first argument. Throws std::invalid_argument, in Spanish, for another word.
ExchangeKind exchangeKind(const std::string& typed);

/// `fenda importar`: tells how a file has been understood, what becomes of each row but those that the company has as
/// they are, and how many there are of each; with `apply` writes them, all or nothing. Returns 0, or 1 when rows are
/// wrong. Throws std::exception, in Spanish, when it cannot be done.
int runImportar(const Place& place, const std::string& company, const TypedImport& typed);

}  // namespace FendaMaestros
