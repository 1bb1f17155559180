#include "capi/HostConexion.h"

#include <vector>

#include "storage/ReadOnly.h"
#include "storage/SqlTranslation.h"

namespace FendaMaestros::capi {

namespace {

/// More than all screens together have.
constexpr std::size_t mostKnown = 500;

[[noreturn]] void refuseText(const char* sentence) { throw ErrorBd(ErrorBd::Kind::Refused, sentence); }

/// Only what the walk over a text refuses is of interest here, not what it gives.
constexpr storage::Dialect anyEngine{
    .ifNull = "isnull", .join = "+", .orderTerm = "", .parameter = [](char, int) { return std::string("?"); }};

constexpr storage::Dialect anyReadingEngine = [] {
    auto dialect = anyEngine;
    dialect.admits = storage::admitsInRead;
    return dialect;
}();

}  // namespace

HostConexion::HostConexion(const fenda_connection& host) : host_(host) {
    if (!host.execute || !host.run || !host.begin || !host.commit || !host.rollback)
        refuseArgument("Falta una función de la conexión.");
}

HostConexion::~HostConexion() {
    if (!host_.release) return;
    const Registry::Nesting nesting;
    try {
        host_.release(host_.context);
    } catch (...) {
        return;  // nobody is left to be told
    }
}

template <class Call>
void HostConexion::ask(Call&& call) const {
    const Registry::Nesting nesting;
    const fenda_status status = callBack(call);
    if (status == FENDA_OK) return;
    const Report reason = takeReason("La base de datos no ha podido hacerlo.");
    if (!isOfDatabase(status)) throw HostFault(reason.text, reason.nativeText);
    throw ErrorBd(kindOf(status), reason.text, reason.nativeCode, reason.nativeText);
}

void HostConexion::requireRead(std::string_view sql) {
    storage::scan(sql, shape_);
    if (known_.contains(shape_.text)) return;
    if (!storage::beginsAsRead(shape_.text)) refuseText("La consulta no se ejecuta: solo se admiten lecturas.");
    storage::translate(shape_.text, anyReadingEngine);
    if (known_.size() == mostKnown) known_.clear();
    known_.insert(shape_.text);
}

std::shared_ptr<Recordset> HostConexion::Execute(std::string_view sql) {
    requireRead(sql);
    const std::string text(sql);
    RowsBuilder builder(watch_, stop_);
    const LentHandle rows(std::make_unique<RowsThing>(builder));
    try {
        ask([&] { return host_.execute(host_.context, text.c_str(), rows.as<fenda_rows>()); });
    } catch (const ErrorBd&) {
        if (!builder.enough()) throw;
    }
    return builder.finish();
}

std::int64_t HostConexion::run(const Statement& statement) {
    if (!storage::beginsAsWriteOfRows(statement.sql))
        refuseText("La sentencia no se ejecuta: se esperaba una escritura.");
    if (static_cast<std::size_t>(storage::translate(statement.sql, anyEngine).parameters) !=
        statement.parameters.size())
        refuseText("La sentencia no lleva tantos valores como parámetros.");
    std::vector<fenda_value> values;
    values.reserve(statement.parameters.size());
    for (const Variant& parameter : statement.parameters) values.push_back(valueOf(parameter));
    std::int64_t touched = 0;
    ask([&] { return host_.run(host_.context, statement.sql.c_str(), values.data(), values.size(), &touched); });
    return touched;
}

void HostConexion::BeginTrans() {
    ask([this] { return host_.begin(host_.context, depth_); });
    ++depth_;
}

void HostConexion::CommitTrans() {
    if (depth_ == 0) refuseText("No hay ninguna transacción abierta.");
    ask([this] { return host_.commit(host_.context, depth_ - 1); });
    --depth_;
}

void HostConexion::RollbackTrans() {
    if (depth_ == 0) return;
    --depth_;
    ask([this] { return host_.rollback(host_.context, depth_); });
}

}  // namespace FendaMaestros::capi
