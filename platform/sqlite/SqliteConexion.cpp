#include "platform/sqlite/SqliteConexion.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <list>
#include <thread>
#include <utility>

#include "platform/sqlite/Check.h"
#include "platform/sqlite/SqlTranslation.h"
#include "session/ErrorBd.h"
#include "session/Literal.h"
#include "storage/Characters.h"
#include "toolkit/Text.h"

namespace FendaMaestros::sqlite {

namespace {

[[noreturn]] void refuse(const char* sentence) { throw ErrorBd(ErrorBd::Kind::Refused, sentence); }

/// Of the engine's virtual machine, between two questions: some tenths of a millisecond.
constexpr int instructions = 20000;

/// Between two attempts at what another program holds.
constexpr std::chrono::milliseconds longestPause(25);

/// A statement in use: without bindings and at its start again when it goes.
class Run {
public:
    Run(const Database& database, sqlite3_stmt* statement) : database_(database), statement_(statement) {}
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() {
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
    }

    /// Texts must live as long as this.
    void bind(int position, std::string_view text) {
        done(sqlite3_bind_text64(statement_, position, text.data() ? text.data() : "", text.size(), SQLITE_STATIC,
                                 SQLITE_UTF8));
    }
    void bind(int position, std::int64_t value) { done(sqlite3_bind_int64(statement_, position, value)); }
    void bind(int position, double value) { done(sqlite3_bind_double(statement_, position, value)); }
    void bind(int position, const std::string& text) { bind(position, std::string_view(text)); }
    void bind(int position, std::monostate) { done(sqlite3_bind_null(statement_, position)); }

private:
    void done(int code) { check(code, database_.handle()); }

    const Database& database_;
    sqlite3_stmt* statement_;
};

void bindNumber(Run& run, int position, const storage::Literal& literal) {
    const auto bind = [&](auto value) {
        std::from_chars(literal.source.data(), literal.source.data() + literal.source.size(), value);
        run.bind(position, value);
    };
    if (literal.kind == storage::Literal::Kind::Integer) return bind(std::int64_t{0});
    bind(0.0);
}

/// Texts with doubled quotes are kept in `unquoted`, the others stay where they are.
void bindLiterals(Run& run, const std::vector<storage::Literal>& literals, std::list<std::string>& unquoted) {
    int position = 0;
    for (const auto& literal : literals) {
        ++position;
        if (literal.kind == storage::Literal::Kind::Text)
            run.bind(position, literal.source);
        else if (literal.kind == storage::Literal::Kind::QuotedText)
            run.bind(position, unquoted.emplace_back(text::replaced(literal.source, "''", "'")));
        else
            bindNumber(run, position, literal);
    }
}

void append(Recordset& rows, sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return rows.appendNull();
        case SQLITE_INTEGER:
            return rows.appendInteger(sqlite3_value_int64(value));
        case SQLITE_FLOAT:
            return rows.appendReal(sqlite3_value_double(value));
        default:
            break;
    }
    // Asked for as bytes, a text is not copied to put a zero behind it.
    const auto* text = static_cast<const char*>(sqlite3_value_blob(value));
    rows.appendText({text, static_cast<std::size_t>(sqlite3_value_bytes(value))});
}

std::vector<std::string> columnNames(sqlite3_stmt* statement) {
    std::vector<std::string> names;
    for (int i = 0; i < sqlite3_column_count(statement); ++i) names.emplace_back(sqlite3_column_name(statement, i));
    return names;
}

bool onlyBlanks(std::string_view text) {
    for (const char c : text)
        if (!storage::isBlank(c)) return false;
    return true;
}

/// The one statement of a text; texts with more behind it are refused.
StatementHandle prepareOne(const Database& database, const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    const char* tail = nullptr;
    const int code = sqlite3_prepare_v3(database.handle(), sql.c_str(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &statement, &tail);
    StatementHandle handle(statement);
    check(code, database.handle());
    if (!handle) refuse("La sentencia está vacía.");
    if (!onlyBlanks({tail, sql.data() + sql.size()})) refuse("El texto contiene más de una sentencia.");
    return handle;
}

}  // namespace

/// Narrows what may be prepared while it lives.
class SqliteConexion::Permitting {
public:
    Permitting(Permission& permission, Permission narrower) : permission_(permission) { permission = narrower; }
    Permitting(const Permitting&) = delete;
    Permitting& operator=(const Permitting&) = delete;
    ~Permitting() { permission_ = Permission::Everything; }

private:
    Permission& permission_;
};

/// What the watch is asked about while it lives.
class SqliteConexion::Reading {
public:
    Reading(SqliteConexion& connection, const Recordset& rows) : connection_(connection) {
        connection_.reading_ = &rows;
    }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    ~Reading() {
        connection_.reading_ = nullptr;
        connection_.readStopped_ = false;
    }

private:
    SqliteConexion& connection_;
};

SqliteConexion::SqliteConexion(Database company, const std::filesystem::path& shared) : database_(std::move(company)) {
    sqlite3_busy_handler(database_.handle(), waitOn, this);
    database_.execute("ATTACH " + literal(shared.empty() ? ":memory:" : shared.string()) + " AS KXComun");
    // One transaction spans both files, and only a rollback journal keeps it whole through a crash.
    for (const char* schema : {"main", "KXComun"}) {
        database_.execute(std::string("PRAGMA ") + schema + ".journal_mode = DELETE");
        // The folder is synchronised too when a journal goes: what has been kept survives a power cut right behind it.
        database_.execute(std::string("PRAGMA ") + schema + ".synchronous = EXTRA");
    }
    // The filter in front of such an index takes texts of different lengths for different ones (SQLite 3.38 to 3.40),
    // which in our order they need not be: rows would be missed.
    database_.execute("PRAGMA automatic_index = OFF");
    sqlite3_set_authorizer(database_.handle(), authorize, this);
}

int SqliteConexion::authorize(void* self, int action, const char*, const char*, const char*, const char*) {
    const auto permission = static_cast<SqliteConexion*>(self)->permission_;
    if (permission == Permission::Everything) return SQLITE_OK;
    switch (action) {
        case SQLITE_SELECT:
        case SQLITE_READ:
        case SQLITE_FUNCTION:
        case SQLITE_RECURSIVE:
            return SQLITE_OK;
        case SQLITE_INSERT:
        case SQLITE_UPDATE:
        case SQLITE_DELETE:
            return permission == Permission::Write ? SQLITE_OK : SQLITE_DENY;
        default:
            return SQLITE_DENY;
    }
}

void SqliteConexion::watchReads(ReadWatch watch) {
    watch_ = std::move(watch);
    attend();
}

void SqliteConexion::stopWhen(StopWatch asked) {
    stopAsked_ = std::move(asked);
    attend();
}

void SqliteConexion::attend() {
    const bool asked = watch_ || stopAsked_;
    sqlite3_progress_handler(database_.handle(), asked ? instructions : 0, asked ? mayGoOn : nullptr, this);
}

int SqliteConexion::mayGoOn(void* self) {
    auto& connection = *static_cast<SqliteConexion*>(self);
    if (connection.isToStop()) return 1;
    if (connection.reading_ && connection.watch_ && !connection.watch_(connection.reading_->rowCount()))
        connection.readStopped_ = true;
    return connection.readStopped_ ? 1 : 0;
}

int SqliteConexion::waitOn(void* self, int tries) {
    auto& connection = *static_cast<SqliteConexion*>(self);
    const auto now = std::chrono::steady_clock::now();
    if (tries == 0) connection.waitingSince_ = now;
    if (now - connection.waitingSince_ >= connection.database_.busyTimeout() || connection.isToStop()) return 0;
    std::this_thread::sleep_for(std::min(std::chrono::milliseconds(tries + 1), longestPause));
    return 1;
}

bool SqliteConexion::step(sqlite3_stmt* statement) const {
    const int code = sqlite3_step(statement);
    if (code == SQLITE_INTERRUPT && readStopped_) return false;
    check(code == SQLITE_BUSY && isToStop() ? SQLITE_INTERRUPT : code, database_.handle());
    return code == SQLITE_ROW;
}

CachedStatement& SqliteConexion::reader(std::string_view sql) {
    storage::scan(sql, shape_);
    if (auto* known = readers_.find(shape_.text)) return *known;

    const char* noRead = "La consulta no se ejecuta: solo se admiten lecturas.";
    if (!storage::beginsAsRead(shape_.text)) refuse(noRead);
    auto handle = prepareOne(database_, translate(shape_.text));
    auto* statement = handle.get();
    if (!sqlite3_stmt_readonly(statement) || sqlite3_column_count(statement) == 0) refuse(noRead);
    return readers_.add(shape_.text, {.handle = std::move(handle), .columns = columnNames(statement)});
}

void SqliteConexion::requireTransaction() const {
    if (depth_ > 0 && sqlite3_get_autocommit(database_.handle()))
        throw ErrorBd(ErrorBd::Kind::Other, "Un error anterior ha deshecho la transacción. No se ha guardado nada.");
}

std::shared_ptr<Recordset> SqliteConexion::Execute(std::string_view sql) {
    requireTransaction();
    const Permitting permitting(permission_, Permission::Read);
    auto& cached = reader(sql);
    auto* statement = cached.handle.get();
    auto rows = std::make_shared<Recordset>(cached.columns);
    rows->reserve(cached.rows, cached.textBytes);
    std::list<std::string> unquoted;
    Run run(database_, statement);
    bindLiterals(run, shape_.literals, unquoted);
    const int columns = static_cast<int>(cached.columns.size());
    const Reading reading(*this, *rows);
    while (step(statement))
        for (int i = 0; i < columns; ++i) append(*rows, sqlite3_column_value(statement, i));
    rows->Partial = readStopped_;
    cached.rows = rows->rowCount();
    cached.textBytes = rows->textBytes();
    return rows;
}

CachedStatement& SqliteConexion::writer(const std::string& sql) {
    if (auto* known = writers_.find(sql)) return *known;
    auto handle = prepareOne(database_, translate(sql));
    if (sqlite3_stmt_readonly(handle.get()) || sqlite3_column_count(handle.get()) > 0)
        refuse("La sentencia no se ejecuta: se esperaba una escritura.");
    return writers_.add(sql, {.handle = std::move(handle), .columns = {}});
}

std::int64_t SqliteConexion::run(const Statement& statement) {
    requireTransaction();
    const Permitting permitting(permission_, Permission::Write);
    auto* handle = writer(statement.sql).handle.get();
    if (sqlite3_bind_parameter_count(handle) != static_cast<int>(statement.parameters.size()))
        refuse("La sentencia no lleva tantos valores como parámetros.");
    Run run(database_, handle);
    int position = 0;
    const auto bind = [&](const auto& value) { run.bind(++position, value); };
    for (const auto& parameter : statement.parameters) std::visit(bind, parameter.storage());
    step(handle);
    return sqlite3_changes64(database_.handle());
}

void SqliteConexion::BeginTrans() {
    requireTransaction();
    database_.execute(depth_ == 0 ? "BEGIN" : "SAVEPOINT nivel" + std::to_string(depth_));
    ++depth_;
}

void SqliteConexion::CommitTrans() {
    if (depth_ == 0) refuse("No hay ninguna transacción abierta.");
    requireTransaction();
    database_.execute(depth_ == 1 ? "COMMIT" : "RELEASE nivel" + std::to_string(depth_ - 1));
    --depth_;
}

void SqliteConexion::RollbackTrans() {
    if (depth_ == 0) return;
    --depth_;
    // A full disk or a failing one may have undone everything already.
    if (sqlite3_get_autocommit(database_.handle())) return;
    if (depth_ == 0) return database_.execute("ROLLBACK");
    const auto name = "nivel" + std::to_string(depth_);
    database_.execute("ROLLBACK TO " + name + "; RELEASE " + name);
}

}  // namespace FendaMaestros::sqlite
