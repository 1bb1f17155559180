#include "app/Composition.h"

#include <stdexcept>
#include <utility>
#include <vector>

#include "app/AccountSearch.h"
#include "app/Complaint.h"

#ifdef FENDA_WITH_QT
#include "app/window/Display.h"
#include "app/window/RunMainWindow.h"
#include "platform/qt/Pdf.h"
#endif
#ifdef FENDA_WITH_POSTGRES
#include <chrono>

#include "platform/postgres/Server.h"
#endif
#ifdef FENDA_WITH_REPORTS
#include "platform/reports/FendaRep.h"
#endif
#ifdef FENDA_WITH_SQLITE
#include "platform/sqlite/DataFolder.h"
#endif
#ifdef FENDA_WITH_XLSX
#include "platform/xlsx/KOffice.h"
#endif

namespace FendaMaestros {

void registerComponents(ComponentRegistry& components, Desktop& desktop) {
    components.add(HostApplication::ProgId, [&desktop] { return std::make_unique<AccountSearch>(desktop); });
#ifdef FENDA_WITH_REPORTS
    registerFendaRep(components, desktop);
#endif
#ifdef FENDA_WITH_XLSX
    registerKOffice(components, desktop);
#endif
}

namespace {

#ifdef FENDA_WITH_SQLITE
std::unique_ptr<Companies> companiesOfFolder(const std::string& folder) {
    return std::make_unique<sqlite::DataFolder>(folder);
}
#else
std::unique_ptr<Companies> companiesOfFolder(const std::string&) {
    throw std::runtime_error("Este programa se ha construido sin base de datos propia.");
}
#endif

#ifdef FENDA_WITH_POSTGRES
std::unique_ptr<Companies> companiesOfServer(const std::string& connection) {
    return std::make_unique<postgres::Server>(connection, std::chrono::seconds(1), ownDataFolder().string());
}
#else
[[noreturn]] void failWithoutServers() {
    throw std::runtime_error("Este programa se ha construido sin acceso a servidores PostgreSQL.");
}

std::unique_ptr<Companies> companiesOfServer(const std::string&) { failWithoutServers(); }
#endif

}  // namespace

#ifdef FENDA_WITH_POSTGRES

std::string serverPreparation() { return postgres::Server::preparation(); }

std::string prepareServer(const std::string& connection) {
    const postgres::Server server(connection);
    server.prepare();
    return server.place();
}

#else

std::string serverPreparation() { failWithoutServers(); }
std::string prepareServer(const std::string&) { failWithoutServers(); }

#endif

std::unique_ptr<Companies> companiesAt(const Place& place) {
    auto companies =
        place.kind == Place::Kind::Server ? companiesOfServer(place.where) : companiesOfFolder(place.where);
    companies->tellTo([](const std::string& sentence) { complain(sentence, 0); });
    return companies;
}

std::string firstCompany(const Companies& companies, const Place& place) {
    const std::vector<std::string> names = companies.list();
    if (names.empty()) throw std::runtime_error("No hay ninguna empresa en " + nameOf(place) + ".");
    return names.front();
}

#ifdef FENDA_WITH_QT

int runMainWindow(const std::optional<Place>& chosen, const std::string& company) {
    return window::runMainWindow(chosen, company);
}

GuionDesktop windowDesktop(Operator& person) { return window::windowDesktop(person); }

std::function<void(const PagedDocument&, const std::string&)> pdfWriter() { return writePdf; }

#else

int runMainWindow(const std::optional<Place>&, const std::string&) {
    throw std::runtime_error("Este programa se ha construido sin ventanas; con --ayuda se ven las demás órdenes.");
}

GuionDesktop windowDesktop(Operator&) {
    throw std::runtime_error("Este programa se ha construido sin ventanas: el guion se ejecuta sin --ventana.");
}

std::function<void(const PagedDocument&, const std::string&)> pdfWriter() { return {}; }

#endif

#ifndef FENDA_WITH_HEADLESS

GuionDesktop headlessDesktop(Operator&) {
    throw std::runtime_error("Este programa solo se ha construido con ventanas: el guion se ejecuta con --ventana.");
}

#endif

OpenCompany::OpenCompany(Desktop& desktop, std::unique_ptr<SesionBd> session)
    : session_(std::move(session)), component_(desktop, components_) {
    registerComponents(components_, desktop);
    component_.MyBd = session_.get();
    component_.MyBdorigen = session_.get();
}

}  // namespace FendaMaestros
