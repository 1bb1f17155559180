// A company on a server: listings, checks and look-ups over 10,000 accounts and 1,000,000 journal lines, and the save
// of an account, at the screen. Against the same company in a folder, and against the bare calls of the server's
// library for the same texts, each prepared once, in the same order; elapsed time, medians of interleaved rounds. Then
// how often opening the account screen and saving ask the server and wait for it, through a proxy that holds up each
// trip.

#include <libpq-fe.h>
#include <unistd.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "bench/Measure.h"
#include "component/FendaMaes.h"
#include "platform/postgres/Dialect.h"
#include "platform/postgres/Server.h"
#include "platform/sqlite/DataFolder.h"
#include "session/SesionSql.h"
#include "storage/CompanyCopy.h"
#include "storage/TextScan.h"
#include "tests/support/PreparedServer.h"
#include "tests/support/Proxy.h"
#include "tests/support/ScriptedPerson.h"
#include "toolkit/Text.h"

namespace {

using namespace FendaMaestros;
using namespace FendaMaestros::bench;
using testing::ScriptedPerson;

constexpr int accounts = 10'000, linesOfAnAccount = 100, rounds = 7;
constexpr const char* company = "Medida";

std::string code(int n) { return std::to_string(43'000'001 + n); }

// --- What a screen asks ----------------------------------------------------------------------------------------------

enum class Step { Begin, Commit, Rollback };
/// A text that reads, one that writes, or a step of a transaction.
using Call = std::variant<std::string, Statement, Step>;

/// Keeps the calls while `calls` is set.
class Recorder final : public ConexionBd {
public:
    explicit Recorder(std::shared_ptr<ConexionBd> connection) : connection_(std::move(connection)) {}

    std::vector<Call>* calls = nullptr;

    std::shared_ptr<Recordset> Execute(std::string_view sql) override {
        keep(std::string(sql));
        return connection_->Execute(sql);
    }
    void watchReads(ReadWatch watch) override { connection_->watchReads(std::move(watch)); }
    void stopWhen(StopWatch asked) override { connection_->stopWhen(std::move(asked)); }
    std::int64_t run(const Statement& statement) override {
        keep(statement);
        return connection_->run(statement);
    }
    void BeginTrans() override {
        keep(Step::Begin);
        connection_->BeginTrans();
    }
    void CommitTrans() override {
        keep(Step::Commit);
        connection_->CommitTrans();
    }
    void RollbackTrans() override {
        keep(Step::Rollback);
        connection_->RollbackTrans();
    }

private:
    void keep(Call call) {
        if (calls) calls->push_back(std::move(call));
    }

    std::shared_ptr<ConexionBd> connection_;
};

/// A person at the screens, of which there is one set.
struct Desk {
    ScriptedPerson person;
    HeadlessDesktop desktop{person};
    ComponentRegistry components;
    FendaMaes maes{desktop, components};
};

/// Two sessions on a company, to be used at the desk.
class Office {
public:
    Office(Desk& desk, const Companies& companies)
        : person(desk.person), desk_(desk), opened_(companies.open(company)), second_(companies.open(company)) {
        recorder = std::make_shared<Recorder>(opened_->Conexion());
        session_ = std::make_unique<SesionSql>(recorder, opened_->Parametros(), "");
    }

    /// The screens work on this company from now on.
    FendaMaes& maes() {
        desk_.maes.MyBd = session_.get();
        desk_.maes.MyBdorigen = second_.get();
        return desk_.maes;
    }

    ScriptedPerson& person;
    std::shared_ptr<Recorder> recorder;

private:
    Desk& desk_;
    std::unique_ptr<SesionBd> opened_, session_, second_;
};

// --- The bare calls --------------------------------------------------------------------------------------------------

std::size_t touched = 0;

/// The library of the server, used in the plainest way: each text prepared once, each call waited for, each value
/// touched once.
class Bare {
public:
    Bare(const std::string& connection, const std::string& place) : connection_(PQconnectdb(connection.c_str())) {
        take(PQexec(connection_, "SET ROLE fenda_puesto"));
        take(PQexec(connection_, ("SET search_path = " + place + ", fenda, pg_catalog, pg_temp").c_str()));
        take(PQexec(connection_, "SET jit = off"));
    }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;
    ~Bare() { PQfinish(connection_); }

    /// How long the calls take; what can be prepared for them is prepared.
    double replay(const std::vector<Call>& calls) {
        std::vector<Ready> ready;
        ready.reserve(calls.size());
        for (const auto& call : calls) ready.push_back(std::visit([&](const auto& of) { return prepare(of); }, call));
        const Watch watch;
        for (const auto& of : ready) carryOut(of);
        return watch.spent().elapsed;
    }

private:
    struct Ready {
        std::string name;
        std::vector<std::string> values = {};
        const char* command = nullptr;
    };

    void take(PGresult* result) {
        const auto status = PQresultStatus(result);
        if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
            throw std::runtime_error(PQresultErrorMessage(result));
        for (int row = 0; row < PQntuples(result); ++row)
            for (int column = 0; column < PQnfields(result); ++column)
                touched += static_cast<std::size_t>(PQgetvalue(result, row, column)[0]);
        PQclear(result);
    }

    std::string known(const std::string& text) {
        const auto [found, isNew] = names_.try_emplace(text, "bare" + std::to_string(names_.size()));
        if (isNew) take(PQprepare(connection_, found->second.c_str(), text.c_str(), 0, nullptr));
        return found->second;
    }
    Ready prepare(const std::string& sql) {
        storage::Shape shape;
        storage::scan(sql, shape);
        Ready ready{known(postgres::translateRead(shape.text).text)};
        for (const auto& literal : shape.literals)
            ready.values.push_back(text::replaced(std::string(literal.source), "''", "'"));
        return ready;
    }
    Ready prepare(const Statement& statement) {
        Ready ready{known(postgres::translateWrite(statement.sql).text)};
        for (const auto& value : statement.parameters) ready.values.push_back(value.text());
        return ready;
    }
    static Ready prepare(Step step) {
        if (step == Step::Begin) return {"", {}, "BEGIN ISOLATION LEVEL SERIALIZABLE"};
        return {"", {}, step == Step::Commit ? "COMMIT" : "ROLLBACK"};
    }
    void carryOut(const Ready& ready) {
        if (ready.command) return take(PQexec(connection_, ready.command));
        std::vector<const char*> values;
        for (const auto& value : ready.values) values.push_back(value.c_str());
        take(PQexecPrepared(connection_, ready.name.c_str(), static_cast<int>(values.size()), values.data(), nullptr,
                            nullptr, 0));
    }

    PGconn* connection_;
    std::unordered_map<std::string, std::string> names_;
};

// --- The works -------------------------------------------------------------------------------------------------------

/// Does its work once and gives how long it took. What it asks meanwhile, and no more, is kept by the recorder.
using Work = std::function<double(Office&, std::vector<Call>* calls)>;

double timed(Office& office, std::vector<Call>* calls, const std::function<void()>& work) {
    office.recorder->calls = calls;
    const Watch watch;
    work();
    const double elapsed = watch.spent().elapsed;
    office.recorder->calls = nullptr;
    return elapsed;
}

/// The chart listing, or its checks, at the screen: `prepare`, then the button that begins.
Work atScreen(void (FendaMaes::*open)(), const char* button, const std::function<void(Form&)>& prepare,
              const std::function<bool(Form&)>& isDone) {
    return [=](Office& office, std::vector<Call>* calls) {
        double elapsed = 0;
        office.person.visits.emplace_back([&](Form& form) {
            prepare(form);
            office.person.answers = {Answer::Ok};
            elapsed = timed(office, calls, [&] { office.person.press(form, button); });
            office.person.answers.clear();
            if (!isDone(form)) throw std::runtime_error("no se ha encontrado nada");
            office.person.escape(form);
        });
        (office.maes().*open)();
        return elapsed;
    };
}

Work listing(const std::function<void(Form&)>& prepare) {
    return atScreen(&FendaMaes::jshowInformePlandeCuentas, "cmdIniciar", prepare,
                    [](Form& form) { return ScriptedPerson::control<DataGrid>(form, "dbg").rowCount() > 0; });
}

void tickBalances(Form& form) { ScriptedPerson::control<CheckBox>(form, "Check1").setValue(true); }
void boundBalances(Form& form) {
    ScriptedPerson::control<TextBox>(form, "Text1(4)").Text = "1.000,00";
    ScriptedPerson::control<TextBox>(form, "Text1(5)").Text = "90.000,00";
}

/// Only the calls whose text `isOne` knows are measured, by themselves.
Work onlyReads(const Work& work, const std::function<bool(const std::string&)>& isOne) {
    return [=](Office& office, std::vector<Call>* kept) {
        std::vector<Call> calls;
        work(office, &calls);
        return timed(office, kept, [&] {
            for (const auto& call : calls)
                if (const auto* text = std::get_if<std::string>(&call); text && isOne(*text))
                    office.recorder->Execute(*text);
        });
    };
}

Work accountSearch() {
    return [](Office& office, std::vector<Call>* calls) {
        office.person.visits.emplace_back([&](Form& form) {
            if (ScriptedPerson::control<DataGrid>(form, "dbgBuscar").rowCount() < accounts)
                throw std::runtime_error("no se han encontrado las cuentas");
            office.person.escape(form);
        });
        return timed(office, calls, [&] { office.maes().fnBuscarCuentas(1, false, false); });
    };
}

/// A new account at the screen, or the name of one that is there.
void visitAccount(Office& office, bool isNew, const std::function<void(Form&)>& visit) {
    static int saved = 0;
    office.person.visits.emplace_back([&](Form& form) {
        office.person.fill(form, "Text1(1)", "Cliente de medida " + std::to_string(++saved));
        office.person.answers = {Answer::Ok};
        visit(form);
        if (form.isOpen()) office.person.escape(form);
    });
    std::string group = "430";
    if (isNew)
        office.maes().CrearNuevaCuenta(group, 1, true);
    else
        office.maes().jPlanCuentas(accounts / 2);
    if (office.person.messages.back().text != "Grabación finalizada")
        throw std::runtime_error(office.person.messages.back().text);
    office.person.messages.clear();
}

Work save(bool isNew) {
    return [=](Office& office, std::vector<Call>* calls) {
        double elapsed = 0;
        visitAccount(office, isNew, [&](Form& form) {
            elapsed = timed(office, calls, [&] { office.person.press(form, "cmdGuardar"); });
        });
        return elapsed;
    };
}

double lookUpsInTransaction(Office& office, std::vector<Call>* calls) {
    return timed(office, calls, [&] {
        office.recorder->BeginTrans();
        for (int n = 0; n < 10'000; ++n)
            office.recorder->Execute("SELECT * FROM PCta WHERE PCta_Subcuenta = 1  AND PCta_Cta = '" +
                                     code(n * 7919 % accounts) + "'");
        office.recorder->CommitTrans();
    });
}

// --- Both places -----------------------------------------------------------------------------------------------------

void fill(ConexionBd& connection) {
    connection.BeginTrans();
    connection.run({"INSERT INTO KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom) VALUES (0, 'A00000000', ?)",
                    {"Sociedad de pruebas"}});
    for (int n = 0; n < accounts; ++n) {
        connection.run(
            {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva, PCta_IdMasa, PCta_IdCen, "
             "PCta_IdDpto, Pcta_IdNif) VALUES (?, ?, 1, 1, 0, 0, 0, 1)",
             {code(n), "Construcciones número " + std::to_string(n * 7919 % accounts)}});
        const auto id = connection.Execute("SELECT MAX(PCta_Id) FROM PCta")->cell(0, 0).integer();
        for (int line = 0; line < linesOfAnAccount; ++line)
            connection.run(
                {"INSERT INTO Apu (Apu_IdCta, Apu_Cta, Apu_Eje, Apu_Estado, Apu_Debe, Apu_Haber) VALUES (?, "
                 "?, 2026, 0, ?, ?)",
                 {id, code(n), (n + line) % 977 + 0.1, line % 13 + 0.2}});
    }
    connection.CommitTrans();
}

struct Times {
    double server = 0, folder = 0, bare = 0, ratio = 0;
};

Times compare(Office& server, Office& folder, Bare& bare, const Work& work) {
    std::vector<double> servers, folders, bares, ratios;
    work(folder, nullptr);
    work(server, nullptr);
    for (int round = 0; round < rounds; ++round) {
        std::vector<Call> calls;
        servers.push_back(work(server, &calls));
        folders.push_back(work(folder, nullptr));
        bares.push_back(bare.replay(calls));
        ratios.push_back(servers.back() / bares.back());
    }
    return {median(servers), median(folders), median(bares), median(ratios)};
}

void printTrips(Office& office, tests::Proxy& proxy) {
    for (const auto& [isNew, name] : {std::pair(true, "cuenta nueva"), {false, "cuenta que ya está"}})
        for (const char* time : {"la primera vez", "otra vez"}) {
            int opening = 0;
            double openingTime = 0, savingTime = 0;
            proxy.letPass();
            const Watch opened;
            visitAccount(office, isNew, [&](Form& form) {
                opening = proxy.traffic().trips;
                openingTime = opened.spent().elapsed;
                proxy.letPass();
                savingTime = timed(office, nullptr, [&] { office.person.press(form, "cmdGuardar"); });
            });
            std::printf("%-20s %-15s abrir %2d viajes (%5.1f ms)   grabar %2d viajes (%5.1f ms)   objetivo 12\n", name,
                        time, opening, openingTime, proxy.traffic().trips, savingTime);
        }
}

}  // namespace

int main() {
    if (!tests::PostgresServer::installed()) {
        std::printf("PostgreSQL no está instalado.\n");
        return 0;
    }
    const tests::TemporaryFolder folder;
    const sqlite::DataFolder data(folder.path() / "datos");
    data.create({.name = company, .fiscalYear = 2026, .accountDigits = 8});
    fill(*data.open(company)->Conexion());
    tests::PreparedServer prepared(tests::PostgresServer::Disk::Awaited);
    const auto connection = prepared.fresh();
    const postgres::Server server(connection);
    const Watch copying;
    server.receive(company, [&](ConexionBd& empty) {
        storage::copyCompany(*data.open(company)->Conexion(), empty, true, [](std::string_view, std::int64_t) {});
    });
    std::printf("copiada en %.0f ms: %d cuentas, %d apuntes\n", copying.spent().elapsed, accounts,
                accounts * linesOfAnAccount);

    // What is still on its way to the disk would be measured with the saves.
    prepared.server.execute("postgres", {"CHECKPOINT"});
    ::sync();

    const Work balances = listing(tickBalances);
    const struct {
        const char* name;
        double aim;
        Work work;
    } works[] = {
        {"listado con saldos y total", 1.25, balances},
        {"línea de total", 1.25,
         onlyReads(balances, [](const std::string& sql) { return sql.find("ORDER BY") == std::string::npos; })},
        {"filtro por saldo", 1.25, listing(boundBalances)},
        {"búsqueda de cuentas", 1.25, accountSearch()},
        {"verificación del plan", 1.25,
         atScreen(
             &FendaMaes::jshowPGCVerificacion, "cmdInicio", [](Form&) {}, [](Form&) { return true; })},
        {"alta de una cuenta", 1.25, save(true)},
        {"cambio de una cuenta", 1.25, save(false)},
        {"10.000 búsquedas en transacción", 1.5, lookUpsInTransaction},
    };
    Desk desk;
    Office onServer(desk, server), inFolder(desk, data);
    Bare bare(connection, "empresa_1");
    std::printf("%-34s %10s %10s %10s\n", "ms transcurridos", "servidor", "carpeta", "libpq solo");
    for (const auto& [name, aim, work] : works) {
        const auto times = compare(onServer, inFolder, bare, work);
        std::printf("%-34s %10.2f %10.2f %10.2f   razón %.2f (objetivo %.2f)\n", name, times.server, times.folder,
                    times.bare, times.ratio, aim);
    }

    tests::Proxy proxy(prepared.server.socket());
    proxy.setDelay(std::chrono::milliseconds(2));
    Office behindProxy(desk, postgres::Server(connection + " host=" + proxy.host().string()));
    printTrips(behindProxy, proxy);
    std::printf("(suma %zu)\n", touched);
}
