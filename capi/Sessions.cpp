#include "capi/Sessions.h"

#include <charconv>
#include <functional>

#include "app/Composition.h"
#include "capi/HostConexion.h"
#include "capi/Structures.h"
#include "capi/Texts.h"
#include "session/SesionSql.h"

using namespace FendaMaestros;
using namespace FendaMaestros::capi;

namespace {

/// What a place has to tell a person, a library has nobody to tell it to.
std::unique_ptr<Companies> companiesOf(const Place& place) {
    auto companies = companiesAt(place);
    companies->tellTo({});
    return companies;
}

std::string_view takenPlace(const char* where) {
    const std::string_view place = taken(where);
    if (place.empty()) refuseArgument("Falta el lugar de las empresas.");
    return place;
}

Place takenFolder(const char* folder) { return {Place::Kind::Folder, std::string(takenPlace(folder))}; }

fenda_status open(const char* where, Place::Kind kind, const char* company, fenda_session** session) noexcept {
    return guardedMaking(session, [&] {
        const Place place{kind, std::string(takenPlace(where))};
        std::string name(takenOrNone(company));
        const auto companies = companiesOf(place);
        if (name.empty()) name = firstCompany(*companies, place);
        return std::make_unique<SessionThing>(companies->open(name));
    });
}

/// A value as the library's own sessions have it: whole numbers as numbers.
Variant parameterValue(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size() && std::to_string(number) == text;
    return whole ? Variant(number) : Variant(std::string(text));
}

ParametrosEmpresa takenParameters(const fenda_parameter* parameters, std::size_t count) {
    if (!parameters && count > 0) refuseArgument("Faltan los parámetros de la empresa.");
    constexpr std::size_t most = 1000;
    if (count > most) refuseArgument("Hay demasiados parámetros de la empresa.");
    ParametrosEmpresa made;
    for (std::size_t i = 0; i < count; ++i)
        made.set(taken(parameters[i].name), parameterValue(taken(parameters[i].value)));
    requireUsable(made);
    return made;
}

}  // namespace

fenda_status fenda_folder_companies(const char* folder, fenda_text_sink sink, void* context) {
    return guarded([&] {
        const Place place = takenFolder(folder);
        if (!sink) refuseArgument("Falta a quién decirlo.");
        const auto companies = companiesOf(place);
        if (!companies->exists()) return;
        for (const std::string& name : companies->list()) callBackWith(sink, context, name.c_str());
    });
}

fenda_status fenda_folder_create_demonstration(const char* folder, char** company) {
    return guarded([&] { give(company, companiesOf(takenFolder(folder))->createDemonstration()); });
}

fenda_status fenda_folder_create_company(const char* folder, const char* company, int32_t fiscal_year,
                                         int32_t account_digits, int32_t province, int32_t name_order) {
    return guarded([&] {
        const Place place = takenFolder(folder);
        companiesOf(place)->create({.name = std::string(taken(company)),
                                    .fiscalYear = fiscal_year,
                                    .accountDigits = account_digits,
                                    .province = province,
                                    .nameOrder = name_order});
    });
}

fenda_status fenda_session_open_folder(const char* folder, const char* company, fenda_session** session) {
    return open(folder, Place::Kind::Folder, company, session);
}

fenda_status fenda_session_open_server(const char* connection, const char* company, fenda_session** session) {
    return open(connection, Place::Kind::Server, company, session);
}

fenda_status fenda_session_open_connection(const fenda_connection* connection, const fenda_parameter* parameters,
                                           size_t count, const char* folder, fenda_session** session) {
    return guardedMaking(session, [&] {
        const fenda_connection host = takenStructure(connection);
        ParametrosEmpresa company = takenParameters(parameters, count);
        std::string files(takenOrNone(folder));
        auto shared = std::make_shared<HostConexion>(host);
        return std::make_unique<SessionThing>(
            std::make_unique<SesionSql>(std::move(shared), std::move(company), std::move(files)));
    });
}

fenda_status fenda_session_close(fenda_session* session) {
    return guarded([&] {
        Registry& registry = Registry::instance();
        if (registry.find<SessionThing>(session).uses > 0) refuse(FENDA_IN_USE, "Un objeto usa la sesión todavía.");
        registry.close(session);
    });
}

fenda_status fenda_session_read(fenda_session* session, const char* sql, fenda_rows** rows) {
    return guarded([&] {
        Registry& registry = Registry::instance();
        SesionBd& on = registry.find<SessionThing>(session).session();
        fenda_rows*& place = required(rows);
        auto read = on.Conexion()->Execute(taken(sql));
        place = static_cast<fenda_rows*>(registry.add(std::make_unique<RowsThing>(std::move(read), false)));
    });
}
