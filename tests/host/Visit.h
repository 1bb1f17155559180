#pragma once

#include <iostream>
#include <string>

#include "component/FendaMaes.h"
#ifdef FENDA_WITH_POSTGRES
#include "platform/postgres/Server.h"
#endif
#ifdef FENDA_WITH_SQLITE
#include "platform/sqlite/Session.h"
#include "session/SesionSql.h"
#endif

/// What a host does on its desktop: checks an identifier and, with a session, opens a screen. `seen` is the caption of
/// the last form that the desktop has shown. Gives the program's exit status.
inline int visit(FendaMaestros::Desktop& desktop, const std::string& seen) {
    FendaMaestros::ComponentRegistry components;
    FendaMaestros::FendaMaes fenda(desktop, components);
    std::string identifier = "12.345.678-z";
    if (!fenda.FnVerificarCif(identifier) || identifier != "12345678Z") return 1;
    std::cout << identifier << '\n';

#ifdef FENDA_WITH_POSTGRES
    if (FendaMaestros::postgres::Server("dbname=conta").place() != "base de datos conta") return 1;
#endif
#ifdef FENDA_WITH_SQLITE
    FendaMaestros::SesionSql session(FendaMaestros::sqlite::openMemory(), FendaMaestros::ParametrosEmpresa{});
    fenda.MyBd = &session;
    fenda.jPaises();
    if (seen.empty()) return 1;
    std::cout << seen << '\n';
#endif
    return 0;
}
