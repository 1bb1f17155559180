#include "platform/sqlite/DataFolder.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include "platform/sqlite/Collation.h"
#include "platform/sqlite/DemoCompany.h"
#include "platform/sqlite/FileNames.h"
#include "platform/sqlite/ReferenceData.h"
#include "platform/sqlite/Schema.h"
#include "platform/sqlite/SqliteConexion.h"
#include "session/ErrorBd.h"
#include "session/SesionSql.h"
#include "toolkit/Text.h"

namespace FendaMaestros::sqlite {

namespace {

namespace fs = std::filesystem;

using Kind = ErrorBd::Kind;

Kind kindOf(const std::error_code& error) {
    if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
        error == std::errc::read_only_file_system)
        return Kind::ReadOnly;
    return error == std::errc::no_space_on_device ? Kind::Full : Kind::Other;
}

constexpr const char* sharedIsUnusable = "La base de datos común no se puede usar";

std::string guillemets(const std::string& text) { return "«" + text + "»"; }

bool isThere(const fs::path& file) {
    std::error_code error;
    const bool there = fs::exists(file, error);
    if (error)
        throw ErrorBd(kindOf(error), "No se puede leer " + guillemets(file.string()), error.value(), error.message());
    return there;
}

/// The engine does not say why it cannot create a file; the system does.
void createEmpty(const fs::path& file) {
    if (auto* handle = std::fopen(file.string().c_str(), "wb")) {
        std::fclose(handle);
        return;
    }
    const auto error = std::error_code(errno, std::generic_category());
    throw ErrorBd(kindOf(error), "No se puede escribir el fichero " + guillemets(file.string()), error.value(),
                  error.message());
}

/// Gives a finished file its name. False when another one has the name already, which then stays as it is.
bool publish(const fs::path& aside, const fs::path& file) {
    std::error_code error, ignored;
    fs::create_hard_link(aside, file, error);
    const bool taken = error == std::errc::file_exists || (error && fs::exists(file, ignored));
    if (error && !taken) fs::rename(aside, file, error);  // a file system without links
    fs::remove(aside, ignored);
    if (error && !taken)
        throw ErrorBd(kindOf(error), "No se puede crear el fichero " + guillemets(file.string()), error.value(),
                      error.message());
    return !taken;
}

/// Carries out `work`; its error says first what could not be done.
template <class Work>
auto saying(const std::string& failure, Work&& work) {
    try {
        return work();
    } catch (const ErrorBd& error) {
        throw ErrorBd(error.kind(), failure + ": " + error.what(), error.nativeCode(), error.nativeText());
    }
}

void validate(const CompanyData& company) {
    const auto require = [](bool condition, const char* sentence) {
        if (!condition) throw ErrorBd(Kind::Refused, sentence);
    };
    require(!text::trim(company.name).empty(), "Debe indicar el nombre de la empresa.");
    require(companyFileName(company.name).size() <= 200, "El nombre de la empresa es demasiado largo.");
    require(company.fiscalYear >= 1900 && company.fiscalYear <= 9999, "El ejercicio debe ser un año de 1900 a 9999.");
    require(company.accountDigits >= 4 && company.accountDigits <= 15,
            "Las cifras de una subcuenta deben ser de 4 a 15.");
    require((company.province >= 1 && company.province <= 52) || company.province == 99,
            "La provincia debe ser un código de 1 a 52, o 99.");
}

void storeParameters(const Database& database, const CompanyData& company) {
    const std::pair<const char*, std::string> values[] = {
        {"Par_Nombre", quoted(company.name)},
        {"Par_Ejercicio", std::to_string(company.fiscalYear)},
        {"Par_CtaNum", std::to_string(company.accountDigits)},
        {"Par_Provincia", std::to_string(company.province)},
        {"PAR_ORCONTANOM", std::to_string(company.nameOrder)},
    };
    for (const auto& [name, value] : values)
        database.execute("INSERT INTO Parametros VALUES (" + quoted(name) + ", " + value + ")");
}

/// A plan of data/NAME.csv as accounts that are no sub-accounts. `variant` is what the plan in force is known by.
void loadPlan(const Database& database, const std::string& name, int year, int variant) {
    loadReferenceData(database, "PCta", name,
                      {.names = "PCta_Plan,PCta_PlanSec,PCta_Subcuenta,PCta_bActiva,PCta_IdMasa,PCta_IdCen,PCta_IdDpto,"
                                "Pcta_IdNif,PCta_IdCtaAso,Pcta_Origen,Pcta_IdOrigen",
                       .values = std::to_string(year) + "," + std::to_string(variant) + ",0,1,0,0,0,0,0,0,0"});
}

void attachShared(const Database& database, const fs::path& file) {
    database.execute("ATTACH " + quoted(file.string()) + " AS KXComun");
    checkSchema(database, "KXComun", Contents::Shared);
}

ParametrosEmpresa readParameters(ConexionBd& connection) {
    ParametrosEmpresa parameters;
    const auto rows = connection.Execute("SELECT Par_Nom, Par_Valor FROM Parametros");
    for (; !rows->Eof(); rows->MoveNext())
        parameters.set(rows->Fields("Par_Nom").Value.text(), rows->Fields("Par_Valor").Value);
    return parameters;
}

}  // namespace

bool DataFolder::exists() const {
    std::error_code error;
    return fs::is_directory(folder_, error);
}

std::vector<std::string> DataFolder::companies() const {
    requireFolder();
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), last; !error && entry != last; entry.increment(error))
        if (auto name = companyOfFile(entry->path()); !name.empty()) names.push_back(std::move(name));
    if (error) throw ErrorBd(kindOf(error), "No se puede leer la carpeta de datos " + guillemets(folder_.string()));
    std::ranges::sort(names, [](const auto& a, const auto& b) { return compareSpanish(a, b) < 0; });
    return names;
}

void DataFolder::createCompany(const CompanyData& company) const { create(company, {}); }

std::string DataFolder::createDemo() const {
    const CompanyData demo = {.name = "Empresa de demostración", .fiscalYear = 2026};
    create(demo, loadDemo);
    return demo.name;
}

std::unique_ptr<SesionBd> DataFolder::openCompany(const std::string& name, const ConnectionWrapper& wrap) const {
    requireFolder();
    const auto file = folder_ / companyFileName(name), shared = folder_ / sharedFileName;
    if (!isThere(file))
        throw ErrorBd(Kind::NotADatabase, "No existe la empresa " + guillemets(name) + " en la carpeta de datos " +
                                              guillemets(folder_.string()));
    if (!isThere(shared))
        throw ErrorBd(Kind::NotADatabase,
                      "Falta la base de datos común en la carpeta de datos " + guillemets(folder_.string()));
    return saying("No se puede abrir la empresa " + guillemets(name), [&] {
        Database company(file, Database::Mode::Existing, busyTimeout_);
        checkSchema(company, "main", Contents::Company);
        auto own = saying(sharedIsUnusable, [&] {
            auto attached = std::make_shared<SqliteConexion>(std::move(company), shared);
            checkSchema(attached->database(), "KXComun", Contents::Shared);
            return attached;
        });
        auto parameters = readParameters(*own);
        std::shared_ptr<ConexionBd> connection = std::move(own);
        if (wrap) connection = wrap(std::move(connection));
        return std::make_unique<SesionSql>(std::move(connection), std::move(parameters));
    });
}

bool DataFolder::hasCompany(const std::string& name) const {
    if (!exists()) return false;
    const auto same = [&name](const std::string& other) { return compareSpanish(name, other) == 0; };
    return std::ranges::any_of(companies(), same);
}

void DataFolder::requireFolder() const {
    if (!exists()) throw ErrorBd(Kind::NotADatabase, "No existe la carpeta de datos " + guillemets(folder_.string()));
}

void DataFolder::createFolder() const {
    std::error_code error;
    fs::create_directories(folder_, error);
    if (error)
        throw ErrorBd(kindOf(error), "No se puede crear la carpeta de datos " + guillemets(folder_.string()),
                      error.value(), error.message());
}

void DataFolder::createShared() const {
    const auto file = folder_ / sharedFileName;
    if (isThere(file)) {
        const Database shared(file, Database::Mode::Existing, busyTimeout_);
        return saying(sharedIsUnusable, [&] { checkSchema(shared, "main", Contents::Shared); });
    }
    // When another program makes it at the same time, the first one counts.
    createFile(file, [](const Database& database) {
        createSchema(database, "main", Contents::Shared);
        loadReferenceData(database, "Pais", "paises");
        loadReferenceData(database, "PROV", "provincias");
        loadReferenceData(database, "TVI", "vias");
        loadReferenceData(database, "Conceptos", "conceptos");
        loadReferenceData(database, "Masas", "masas");
        loadReferenceData(database, "Balances", "balances");
        loadReferenceData(database, "BalEstruc", "balestruc");
        loadReferenceData(database, "BalCtas", "balctas");
    });
}

void DataFolder::create(const CompanyData& company, const Filler& fill) const {
    validate(company);
    const auto file = folder_ / companyFileName(company.name);
    const ErrorBd alreadyThere(Kind::Constraint, "La empresa " + guillemets(company.name) + " ya existe.");
    if (hasCompany(company.name)) throw alreadyThere;
    createFolder();
    bool created = false;
    saying("No se puede crear la empresa " + guillemets(company.name), [&] {
        createShared();
        created = createFile(
            file,
            [&](const Database& database) {
                createSchema(database, "main", Contents::Company);
                storeParameters(database, company);
                loadPlan(database, "pgc2008", 2008, 1);
                loadPlan(database, "pgc1990", 1990, 0);
                loadReferenceData(database, "DIR", "poblaciones");
                if (fill) fill(database);
            },
            fill ? folder_ / sharedFileName : fs::path());
    });
    if (!created) throw alreadyThere;
}

bool DataFolder::createFile(const fs::path& file, const Filler& fill, const fs::path& shared) const {
    // A name of its own, so that two programs that create at once do not write into one file.
    const fs::path aside = file.string() + ".nueva" + std::to_string(::getpid());
    const fs::path journal = aside.string() + "-journal";
    std::error_code ignored;
    fs::remove(journal, ignored);
    createEmpty(aside);
    try {
        Database database(aside, Database::Mode::Create, busyTimeout_);
        if (!shared.empty()) attachShared(database, shared);
        database.execute("BEGIN");
        fill(database);
        database.execute("COMMIT");
    } catch (...) {
        fs::remove(aside, ignored);
        fs::remove(journal, ignored);
        throw;
    }
    return publish(aside, file);
}

}  // namespace FendaMaestros::sqlite
