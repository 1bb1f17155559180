#include "platform/sqlite/DataFolder.h"

#include <algorithm>
#include <system_error>

#include "platform/sqlite/Collation.h"
#include "platform/sqlite/Copy.h"
#include "platform/sqlite/CreationLock.h"
#include "platform/sqlite/FileNames.h"
#include "platform/sqlite/Files.h"
#include "platform/sqlite/Integrity.h"
#include "platform/sqlite/Order.h"
#include "platform/sqlite/Recovery.h"
#include "platform/sqlite/Schema.h"
#include "platform/sqlite/SqliteConexion.h"
#include "session/ErrorBd.h"
#include "session/SesionSql.h"
#include "storage/FirstContents.h"
#include "storage/Parameters.h"
#include "ui/FileRights.h"

namespace FendaMaestros::sqlite {

namespace {

namespace fs = std::filesystem;

using Kind = ErrorBd::Kind;

/// One word of a command that can be pasted as it stands.
std::string inShell(const std::string& word) {
    std::string quoted = "'";
    for (const char letter : word) quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    return quoted + "'";
}

void tellWhoMayRead(const fs::path& folder, const Companies::Tell& tell) {
    std::error_code ignored;
    const fs::perms ofOthers = fs::status(folder, ignored).permissions() & fs::perms::others_all;
    if (ofOthers != fs::perms::none)
        tell("Cualquier usuario del equipo puede entrar en la carpeta de datos " + guillemets(folder.string()) +
             ", que tiene datos personales. Se cierra con: chmod o= " + inShell(folder.string()));
}

std::string sentenceOn(const fs::path& file, const std::string& fault) {
    const bool index = fault.find("index") != std::string::npos;
    return (index ? "Un índice de " + describe(file) + " no concuerda con su tabla: "
                  : "Está dañada " + describe(file) + ": ") +
           fault;
}

/// Makes the tables of an empty database and their first contents in one transaction. `schema` is the name that the
/// connection has it under.
void fill(SqliteConexion& connection, const std::string& schema, Contents contents,
          const std::function<void(ConexionBd&)>& first) {
    connection.BeginTrans();
    createSchema(connection.database(), schema, contents);
    first(connection);
    connection.CommitTrans();
}

}  // namespace

bool DataFolder::exists() const {
    std::error_code error;
    return fs::is_directory(folder_, error);
}

std::vector<std::string> DataFolder::list() const {
    requireFolder();
    recover();
    std::vector<std::string> names;
    std::error_code error, ignored;
    for (fs::directory_iterator entry(folder_, error), last; !error && entry != last; entry.increment(error))
        if (auto name = companyOfFile(entry->path()); !name.empty() && !fs::is_directory(entry->path(), ignored))
            names.push_back(std::move(name));
    if (error) failOn("No se puede leer la carpeta de datos", folder_, error);
    std::ranges::sort(names, [](const auto& a, const auto& b) { return compareSpanish(a, b) < 0; });
    return names;
}

void DataFolder::create(const NewCompany& company) const {
    check(company);
    receive(company.name, [&](ConexionBd& empty) { storage::fillCompany(empty, company); });
}

std::string DataFolder::createDemonstration() const {
    const NewCompany company = storage::demonstrationCompany();
    receive(company.name, [&](ConexionBd& empty) {
        storage::fillCompany(empty, company);
        storage::fillDemonstration(empty);
    });
    return company.name;
}

std::unique_ptr<SesionBd> DataFolder::open(const std::string& name) const { return openCompany(name); }

std::unique_ptr<SesionBd> DataFolder::openCompany(const std::string& name, const ConnectionWrapper& wrap) const {
    requireFolder();
    recover();
    const auto file = fileOf(name), shared = fileOf({});
    return saying("No se puede abrir la empresa " + guillemets(name), [&] {
        Database company(file, Database::Mode::Existing, busyTimeout_);
        checkSchema(company, "main", Contents::Company);
        requireOrder(company, "de la empresa " + guillemets(name));
        requireShared();
        auto own = std::make_shared<SqliteConexion>(std::move(company), shared);
        auto parameters = storage::readParameters(*own);
        std::shared_ptr<ConexionBd> connection = std::move(own);
        if (wrap) connection = wrap(std::move(connection));
        return std::make_unique<SesionSql>(std::move(connection), std::move(parameters), folder_.string());
    });
}

bool DataFolder::examine(const std::string& company, const Tell& tell) const {
    requireFolder();
    recover();
    if (company.empty()) tellWhoMayRead(folder_, tell);
    const auto file = fileOf(company);
    try {
        return saying("No se puede leer " + describe(file), [&] {
            {
                const Database database(file, Database::Mode::Existing, busyTimeout_);
                checkSchema(database, "main", company.empty() ? Contents::Shared : Contents::Company);
                requireOrder(database, "de " + describe(file));
            }
            // It takes seconds, and the others are to go on saving.
            const auto found = faults(temporaryCopy(file, busyTimeout_));
            for (const auto& fault : found) tell(sentenceOn(file, fault));
            return found.empty();
        });
    } catch (const ErrorBd& error) {
        if (error.kind() != Kind::NotADatabase) throw;
        tell(error.what());
        return false;
    }
}

Backup DataFolder::backUp(const fs::path& destination) const {
    Backup backup{.companies = list()};
    // The shared database last, as in the transactions that span it and a company.
    std::vector<fs::path> files;
    for (const auto& company : backup.companies) files.push_back(fileOf(company));
    files.push_back(fileOf({}));
    PartialFolder partial(destination);
    backup.heldUp = copyDatabases(files, partial.path(), busyTimeout_);
    DataFolder(partial.path(), busyTimeout_).requireWhole();
    partial.commit();
    return backup;
}

Backup DataFolder::restore(const fs::path& backup) const { return DataFolder(backup, busyTimeout_).backUp(folder_); }

void DataFolder::requireWhole() const {
    std::vector<std::string> found;
    const Tell note = [&found](const std::string& sentence) { found.push_back(sentence); };
    const auto requireWholeOne = [&](const std::string& company) {
        if (!examine(company, note)) throw ErrorBd(Kind::NotADatabase, "No se ha copiado nada. " + found.back());
    };
    requireWholeOne({});
    for (const auto& company : list()) {
        requireWholeOne(company);
        requireUsable(open(company)->Parametros());
    }
}

bool DataFolder::hasCompany(const std::string& name) const {
    if (!exists()) return false;
    const auto same = [&name](const std::string& other) { return compareSpanish(name, other) == 0; };
    return std::ranges::any_of(list(), same);
}

fs::path DataFolder::fileOf(const std::string& company) const {
    auto file = folder_ / (company.empty() ? sharedFileName : companyFileName(company));
    if (isThere(file)) return file;
    const std::string missing =
        company.empty() ? "Falta la base de datos común" : "No existe la empresa " + guillemets(company);
    throw ErrorBd(Kind::NotADatabase, missing + " en la carpeta de datos " + guillemets(folder_.string()));
}

void DataFolder::requireFolder() const {
    if (!exists()) throw ErrorBd(Kind::NotADatabase, "No existe la carpeta de datos " + guillemets(folder_.string()));
}

void DataFolder::recover() const {
    sqlite::recover(folder_, [this](const std::string& sentence) { tell(sentence); });
}

void DataFolder::createFolder() const {
    std::error_code error;
    createPrivateFolder(folder_, error);
    if (error) failOn("No se puede crear la carpeta de datos", folder_, error);
}

void DataFolder::requireShared() const {
    const auto file = folder_ / sharedFileName;
    saying("La base de datos común no se puede usar", [&] {
        const Database shared(file, Database::Mode::Existing, busyTimeout_);
        checkSchema(shared, "main", Contents::Shared);
        requireOrder(shared, "de la base de datos común");
    });
}

void DataFolder::requireOrder(const Database& database, const std::string& whose) const {
    if (hasCurrentOrder(database)) return;
    const auto change = "el orden de los textos es de otra versión";
    saying("No se pueden rehacer los índices " + whose + ", y " + change, [&] { renewOrder(database); });
    tell("Se han rehecho los índices " + whose + ": " + change + ".");
}

void DataFolder::createShared() const {
    const auto file = folder_ / sharedFileName;
    if (isThere(file)) return requireShared();
    // Companies that have lost theirs would take the identities of an empty one for their own.
    if (!list().empty()) fileOf({});
    // When another program makes it at the same time, the first one counts.
    const bool first = createFile(file, [](const fs::path& aside) {
        SqliteConexion connection(Database(), aside);
        fill(connection, "KXComun", Contents::Shared, storage::fillShared);
    });
    if (first && isShared(folder_))
        tell("La carpeta de datos " + guillemets(folder_.string()) + " está compartida con el grupo " +
             guillemets(groupOf(folder_)) + ", que puede usar lo que se cree en ella.");
}

void DataFolder::receive(const std::string& name, const std::function<void(ConexionBd&)>& contents) const {
    const ErrorBd alreadyThere(Kind::Constraint, "La empresa " + guillemets(name) + " ya existe.");
    if (hasCompany(name)) throw alreadyThere;
    createFolder();
    bool created = false;
    saying("No se puede crear la empresa " + guillemets(name), [&] {
        createShared();
        created = createFile(folder_ / companyFileName(name), [&](const fs::path& aside) {
            SqliteConexion connection(Database(aside, Database::Mode::Create, busyTimeout_), folder_ / sharedFileName);
            fill(connection, "main", Contents::Company, contents);
        });
    });
    if (!created) throw alreadyThere;
}

bool DataFolder::createFile(const fs::path& file, const std::function<void(const fs::path& aside)>& make) const {
    const CreationLock creating(folder_);
    const fs::path aside = asideOf(file);
    const fs::path journal = aside.string() + "-journal";
    std::error_code ignored;
    fs::remove(journal, ignored);
    createEmptyFile(aside, file);
    try {
        make(aside);
    } catch (...) {
        fs::remove(aside, ignored);
        fs::remove(journal, ignored);
        throw;
    }
    return publish(aside, file);
}

}  // namespace FendaMaestros::sqlite
