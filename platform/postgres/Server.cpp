#include "platform/postgres/Server.h"

#include <libpq-fe.h>

#include <charconv>

#include "platform/postgres/Connection.h"
#include "platform/postgres/PostgresConexion.h"
#include "platform/postgres/Preparation.h"
#include "platform/postgres/Schema.h"
#include "session/ErrorBd.h"
#include "session/SesionSql.h"
#include "storage/FirstContents.h"
#include "storage/Parameters.h"

namespace FendaMaestros::postgres {

namespace {

using Kind = ErrorBd::Kind;
using namespace std::chrono_literals;

/// With the server while a clerk's transaction is open: what a screen waits for a save.
constexpr Patience clerkPatience{.silence = 5s};
constexpr Patience managerPatience{.silence = 5s, .whileAtWork = true};
/// Making a company waits until another one has been made.
constexpr auto managerLockWait = 60s;

std::string guillemets(const std::string& text) { return "«" + text + "»"; }

std::string milliseconds(std::chrono::milliseconds time) { return "'" + std::to_string(time.count()) + "ms'"; }

/// What every connection begins with.
std::vector<std::string> sessionOf(const char* role, std::chrono::milliseconds lockWait) {
    return {std::string("SET ROLE ") + role, "SET search_path = fenda, pg_catalog, pg_temp",
            "SET default_transaction_read_only = on", "SET lock_timeout = " + milliseconds(lockWait),
            // A clerk whose machine dies does not hold the others up.
            "SET idle_in_transaction_session_timeout = '60s'", "SET tcp_keepalives_idle = 10",
            "SET tcp_keepalives_interval = 3", "SET tcp_keepalives_count = 3",
            // What has been told to be saved is saved.
            "SELECT set_config('synchronous_commit', 'on', false) WHERE current_setting('synchronous_commit') = 'off'",
            "SET standard_conforming_strings = on", "SET jit = off",
            // The first row of a text without an order is the first one stored.
            "SET synchronize_seqscans = off"};
}

constexpr const char* sharedPlace = "kxcomun";

/// The schema of a company.
std::string placeOf(std::int64_t company) { return "empresa_" + std::to_string(company); }

/// Where names are looked for. Not in the shared data: a table that a company lacks must not be found there.
std::string searchPath(const std::string& company) {
    return "search_path = " + company + ", fenda, pg_catalog, pg_temp";
}

/// Number, versions, and whether the order of texts is no more the one that the indexes were made by.
constexpr const char* companyByName =
    "SELECT numero, version, (SELECT version FROM fenda.comun), "
    "(SELECT bool_or(collversion IS DISTINCT FROM pg_collation_actual_version(oid)) FROM pg_collation "
    "WHERE oid IN ('fenda.es'::regcollation, 'fenda.letters'::regcollation)) "
    "FROM fenda.empresas WHERE nombre = $1";

ErrorBd otherOrder() {
    return {Kind::NotADatabase,
            "El servidor ordena los textos de otra manera que cuando se crearon los datos. Quien lo administra lo "
            "arregla con «fenda servidor preparar»."};
}

ErrorBd notPrepared(const ServerError& error) {
    return {Kind::NotADatabase,
            "El servidor no está preparado para este programa. Quien lo administra lo prepara una vez con «fenda "
            "servidor preparar».",
            0, error.nativeText()};
}

/// Whether a failure says that roles, schemas or lists of companies are not there.
bool saysNotPrepared(const ServerError& error) {
    for (const char* state : {"22023", "3F000", "42P01", "42704", "42883"})
        if (error.state() == state) return true;
    return false;
}

/// Carries out what needs the lists of companies.
template <class Work>
auto onPrepared(Work&& work) {
    try {
        return work();
    } catch (const ServerError& error) {
        if (saysNotPrepared(error)) throw notPrepared(error);
        throw;
    }
}

std::string cell(const Result& result, int row, int column) { return PQgetvalue(result.get(), row, column); }

std::int64_t number(const std::string& text) {
    std::int64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

/// The rows of one read outside a transaction.
Result rowsOf(Connection& connection, std::string sql, Parameters parameters = {}) {
    connection.require();
    return std::move(connection.exchange({command(std::move(sql), std::move(parameters))}, managerPatience).front());
}

/// Throws when the server has been prepared by an older version of this program.
void requirePreparation(Connection& connection) {
    const auto found =
        rowsOf(connection, "SELECT substring(obj_description('fenda'::regnamespace, 'pg_namespace') FROM '[0-9]+')");
    if (number(cell(found, 0, 0)) >= preparationVersion) return;
    throw ErrorBd(Kind::NotADatabase,
                  "El servidor está preparado para una versión anterior de este programa. Quien lo administra lo pone "
                  "al día con «fenda servidor preparar».");
}

bool hasShared(Connection& connection) {
    return PQntuples(rowsOf(connection, "SELECT version FROM fenda.comun").get()) > 0;
}

/// Clerks read and write rows, and nothing else.
Trip grants(const std::string& place) {
    const std::string to = " IN SCHEMA " + place + " TO " + clerkRole;
    return {command("GRANT USAGE ON SCHEMA " + place + " TO " + clerkRole),
            command("GRANT SELECT, INSERT, UPDATE, DELETE ON ALL TABLES" + to),
            command("GRANT SELECT, USAGE, UPDATE ON ALL SEQUENCES" + to)};
}

void createTables(PostgresConexion& connection, const storage::Schema& schema, const std::string& place) {
    Trip trip;
    for (auto& sql : creation(schema, place)) trip.push_back(command(std::move(sql)));
    for (auto& grant : grants(place)) trip.push_back(std::move(grant));
    connection.carryOut(trip);
}

/// Makes the shared tables and fills them, unless they are there.
void createShared(PostgresConexion& connection) {
    const auto found = connection.carryOut({command("SELECT version FROM fenda.comun")});
    if (PQntuples(found.front().get()) > 0)
        return storage::checkVersion(storage::sharedSchema(), number(cell(found.front(), 0, 0)));
    const auto& schema = storage::sharedSchema();
    connection.carryOut({command("INSERT INTO fenda.comun VALUES (" + std::to_string(schema.version) + ")")});
    createTables(connection, schema, sharedPlace);
    storage::fillShared(connection);
}

/// Makes the tables of a company, which names are looked for in from then on; gives its schema.
std::string createCompany(PostgresConexion& connection, const std::string& name) {
    const auto& schema = storage::companySchema();
    const auto inserted =
        connection.carryOut({command("INSERT INTO fenda.empresas (nombre, version) VALUES ($1, $2) RETURNING numero",
                                     {name, std::to_string(schema.version)})});
    auto place = placeOf(number(cell(inserted.front(), 0, 0)));
    connection.carryOut({command("CREATE SCHEMA " + place), command("SET LOCAL " + searchPath(place))});
    createTables(connection, schema, place);
    return place;
}

/// Tells the server how much there is now, which it would find out by itself in a while.
void tidy(Connection& connection, const std::string& company) {
    std::string tables;
    for (const auto& [schema, place] :
         {std::pair(&storage::companySchema(), company), {&storage::sharedSchema(), std::string(sharedPlace)}})
        for (const auto& table : schema->tables)
            tables.append(tables.empty() ? "" : ", ").append(place).append(".").append(table.name);
    try {
        connection.exchange({command("VACUUM (ANALYZE) " + tables)}, managerPatience);
    } catch (const ErrorBd&) {
        // The company is there all the same.
    }
}

/// Marks that nobody asks for any more. They go where no clerk waits for a save; what keeps them from going, such as a
/// server that only reads, keeps nobody from opening a company.
void forgetOldMarks(Connection& connection) {
    try {
        connection.exchange(
            {command("BEGIN ISOLATION LEVEL READ COMMITTED READ WRITE"),
             command("DELETE FROM fenda.marcas WHERE momento < now() - interval '1 day'"), command("COMMIT")},
            managerPatience);
    } catch (const ErrorBd&) {
        connection.drop();
    }
}

/// Carries out `work`; its error says first what could not be done.
template <class Work>
auto saying(const std::string& failure, Work&& work) {
    try {
        return onPrepared(work);
    } catch (const ErrorBd& error) {
        throw ErrorBd(error.kind(), failure + ": " + error.what(), error.nativeCode(), error.nativeText());
    }
}

struct FreeOptions {
    void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};

}  // namespace

std::string Server::place() const {
    char* problem = nullptr;
    const std::unique_ptr<PQconninfoOption, FreeOptions> options(PQconninfoParse(connection_.c_str(), &problem));
    if (!options) {
        const std::string words = problem ? problem : "";
        PQfreemem(problem);
        throw ErrorBd(Kind::Refused, "No se entiende la conexión con el servidor: " + words);
    }
    std::string place;
    const auto add = [&](std::string_view keyword, const char* what) {
        for (const auto* option = options.get(); option->keyword; ++option)
            if (option->keyword == keyword && option->val)
                place += (place.empty() ? "" : ", ") + std::string(what) + " " + option->val;
    };
    add("service", "servicio");
    add("host", "servidor");
    add("port", "puerto");
    add("dbname", "base de datos");
    return place.empty() ? "servidor de esta máquina" : place;
}

std::string Server::preparation() { return postgres::preparation(); }

void Server::prepare() const {
    Connection connection(connection_, {});
    connection.script(preparation());
}

bool Server::exists() const {
    Connection connection(connection_, sessionOf(clerkRole, lockWait_));
    try {
        return hasShared(connection);
    } catch (const ServerError& error) {
        if (saysNotPrepared(error)) return false;
        throw;
    }
}

std::vector<std::string> Server::list() const {
    return onPrepared([&] {
        Connection connection(connection_, sessionOf(clerkRole, lockWait_));
        if (!hasShared(connection)) throw ErrorBd(Kind::NotADatabase, "En el servidor no hay ninguna empresa.");
        const auto rows = rowsOf(connection, "SELECT nombre FROM fenda.empresas ORDER BY nombre");
        std::vector<std::string> names;
        for (int row = 0; row < PQntuples(rows.get()); ++row) names.push_back(cell(rows, row, 0));
        return names;
    });
}

void Server::create(const NewCompany& company) const {
    check(company);
    receive(company.name, [&](ConexionBd& empty) { storage::fillCompany(empty, company); });
}

std::string Server::createDemonstration() const {
    const NewCompany company = storage::demonstrationCompany();
    receive(company.name, [&](ConexionBd& empty) {
        storage::fillCompany(empty, company);
        storage::fillDemonstration(empty);
    });
    return company.name;
}

void Server::receive(const std::string& name, const std::function<void(ConexionBd&)>& fill) const {
    bool there = false;
    saying("No se puede crear la empresa " + guillemets(name), [&] {
        auto opened = std::make_unique<Connection>(connection_, sessionOf(managerRole, managerLockWait));
        Connection& server = *opened;
        requirePreparation(server);
        PostgresConexion connection(std::move(opened), managerPatience, PostgresConexion::Writes::Together);
        connection.BeginTrans();
        connection.carryOut({command("LOCK TABLE fenda.empresas IN EXCLUSIVE MODE")});
        const auto same = connection.carryOut({command("SELECT FROM fenda.empresas WHERE nombre = $1", {name})});
        there = PQntuples(same.front().get()) > 0;
        if (there) return;
        createShared(connection);
        const auto place = createCompany(connection, name);
        fill(connection);
        connection.CommitTrans();
        tidy(server, place);
    });
    if (there) throw ErrorBd(Kind::Constraint, "La empresa " + guillemets(name) + " ya existe.");
}

std::unique_ptr<SesionBd> Server::open(const std::string& name) const {
    return saying("No se puede abrir la empresa " + guillemets(name), [&] {
        auto connection = std::make_unique<Connection>(connection_, sessionOf(clerkRole, lockWait_));
        requirePreparation(*connection);
        const auto found = rowsOf(*connection, companyByName, {name});
        if (PQntuples(found.get()) == 0) throw ErrorBd(Kind::NotADatabase, "no existe en el servidor.");
        storage::checkVersion(storage::companySchema(), number(cell(found, 0, 1)));
        storage::checkVersion(storage::sharedSchema(), number(cell(found, 0, 2)));
        if (cell(found, 0, 3) == "t") throw otherOrder();
        forgetOldMarks(*connection);
        connection->addSessionCommand("SET " + searchPath(placeOf(number(cell(found, 0, 0)))));
        auto company = std::make_shared<PostgresConexion>(std::move(connection), clerkPatience);
        auto parameters = storage::readParameters(*company);
        return std::make_unique<SesionSql>(std::move(company), std::move(parameters), folder_);
    });
}

}  // namespace FendaMaestros::postgres
