#include "app/GuionProgram.h"

#include <stdexcept>

#include <stdlib.h>

#include "app/Composition.h"
#include "toolkit/Text.h"
#ifdef FENDA_WITH_SQLITE
#include "platform/sqlite/DataFolder.h"
#endif

namespace FendaMaestros {

namespace {

[[noreturn]] void refuse(const std::string& name, const std::string& value) {
    throw std::invalid_argument("la propiedad " + name + " no puede valer \"" + value + "\"");
}

bool isYes(const std::string& name, const std::string& value) {
    const std::string word = text::folded(value);
    if (word == "si" || word == "true" || word == "verdadero" || word == "1") return true;
    if (word == "no" || word == "false" || word == "falso" || word == "0") return false;
    refuse(name, value);
}

std::string nameOf(const SesionBd* session) { return session ? "sesión" : "ninguna"; }

}  // namespace

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "fenda-guion-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("No se puede crear una carpeta de trabajo en " + name + ".");
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

GuionProgram::GuionProgram(GuionDesktop desktop, TraceSink trace, const std::optional<std::filesystem::path>& folder)
    : desktop_(std::move(desktop)), trace_(std::move(trace)) {
    if (!folder) temporary_.emplace();
    folder_ = folder ? *folder : temporary_->path();
    registrarComponentes(components_, *desktop_.desktop);
    renewObject();
}

GuionProgram::~GuionProgram() = default;

void GuionProgram::use(std::unique_ptr<SesionBd> session) {
    component_.reset();
    session_ = traced(std::move(session), [this](std::string_view line) {
        if (tracing_) trace_(line);
    });
    renewObject();
}

void GuionProgram::renewObject() {
    component_ = std::make_unique<FendaMaes>(*desktop_.desktop, components_);
    component_->MyBd = session_.get();
    component_->MyBdorigen = session_.get();
}

std::vector<std::pair<std::string, Variant>> GuionProgram::properties() const {
    return {{"Cuenta", component_->Cuenta},
            {"bFactu", component_->bFactu ? "sí" : "no"},
            {"Plan", component_->Plan},
            {"MyBdorigen", nameOf(component_->MyBdorigen)},
            {"MyBd", nameOf(component_->MyBd)}};
}

void GuionProgram::setProperty(const std::string& name, const std::string& value) {
    const auto is = [&name](const char* property) { return text::equalIgnoringCase(name, property); };
    const auto session = [&] {
        const std::string word = text::folded(value);
        if (word != "sesion" && word != "ninguna") refuse(name, value);
        return word == "sesion" ? session_.get() : nullptr;
    };
    if (is("Cuenta")) {
        component_->Cuenta = value;
    } else if (is("bFactu")) {
        component_->bFactu = isYes(name, value);
    } else if (is("Plan")) {
        if (!text::isNumericCode(value) || value.size() > 4) refuse(name, value);
        component_->Plan = static_cast<std::int16_t>(std::stoi(value));
    } else if (is("MyBd")) {
        component_->MyBd = session();
    } else if (is("MyBdorigen")) {
        component_->MyBdorigen = session();
    } else {
        throw std::invalid_argument("no hay ninguna propiedad " + name);
    }
}

#ifdef FENDA_WITH_SQLITE

void GuionProgram::start(const std::optional<std::string>& company) {
    const sqlite::DataFolder data(folder_);
    if (company) return openCompany(*company);
    if (temporary_) return openCompany(data.createDemo());
    const std::vector<std::string> companies = data.companies();
    if (companies.empty()) throw std::runtime_error("No hay ninguna empresa en la carpeta " + folder_.string() + ".");
    openCompany(companies.front());
}

void GuionProgram::openCompany(const std::string& name) { use(sqlite::DataFolder(folder_).openCompany(name)); }

void GuionProgram::createCompany(const std::map<std::string, std::string>& settings) {
    const auto number = [&settings](const char* name, int absent) {
        const auto found = settings.find(name);
        return found == settings.end() ? absent : std::stoi(found->second);
    };
    const sqlite::CompanyData defaults;
    const sqlite::CompanyData company{.name = settings.at("nombre"),
                                      .fiscalYear = number("ejercicio", desktop().today().year),
                                      .accountDigits = number("digitos", defaults.accountDigits),
                                      .province = number("provincia", defaults.province),
                                      .nameOrder = number("orden", defaults.nameOrder)};
    sqlite::DataFolder(folder_).createCompany(company);
    openCompany(company.name);
}

#else

namespace {

[[noreturn]] void refuseWithoutDatabase() {
    throw std::runtime_error("Este programa se ha construido sin base de datos.");
}

}  // namespace

void GuionProgram::start(const std::optional<std::string>&) { refuseWithoutDatabase(); }

void GuionProgram::openCompany(const std::string&) { refuseWithoutDatabase(); }

void GuionProgram::createCompany(const std::map<std::string, std::string>&) { refuseWithoutDatabase(); }

#endif

}  // namespace FendaMaestros
