#include "session/Decorators.h"

#include <string>
#include <utility>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::string literal(std::string_view text) { return '"' + text::replaced(text, "\"", "\"\"") + '"'; }

std::string shown(const Variant& value) {
    if (value.isNull()) return "Null";
    return std::holds_alternative<std::string>(value.storage()) ? literal(value.text()) : value.text();
}

class TracedConexion final : public ConexionBd {
public:
    TracedConexion(std::shared_ptr<ConexionBd> connection, TraceSink sink)
        : connection_(std::move(connection)), sink_(std::move(sink)) {}

    std::shared_ptr<Recordset> Execute(std::string_view sql) override {
        sink_(sql);
        return connection_->Execute(sql);
    }
    void watchReads(ReadWatch watch) override { connection_->watchReads(std::move(watch)); }
    void stopWhen(StopWatch asked) override { connection_->stopWhen(std::move(asked)); }
    std::int64_t run(const Statement& statement) override {
        std::string line = statement.sql;
        const char* separator = "  -- ";
        for (const Variant& parameter : statement.parameters) line += std::exchange(separator, ", ") + shown(parameter);
        sink_(line);
        return connection_->run(statement);
    }
    void BeginTrans() override {
        sink_("BeginTrans");
        connection_->BeginTrans();
    }
    void CommitTrans() override {
        sink_("CommitTrans");
        connection_->CommitTrans();
    }
    void RollbackTrans() override {
        sink_("RollbackTrans");
        connection_->RollbackTrans();
    }

private:
    std::shared_ptr<ConexionBd> connection_;
    TraceSink sink_;
};

class TracedSesion final : public SesionBd, private ListaCampos {
public:
    TracedSesion(std::unique_ptr<SesionBd> session, TraceSink sink) : session_(std::move(session)), sink_(sink) {
        connection_ = traced(session_->Conexion(), std::move(sink));
    }

    std::shared_ptr<ConexionBd> Conexion() override { return connection_; }
    const ParametrosEmpresa& Parametros() const override { return session_->Parametros(); }
    std::string CarpetaFicheros() const override { return session_->CarpetaFicheros(); }
    void Tabla(std::string_view name) override {
        sink_("Tabla " + literal(name));
        session_->Tabla(name);
    }
    void Reiniciar(std::int16_t fixed) override {
        sink_("Reiniciar " + std::to_string(fixed));
        session_->Reiniciar(fixed);
    }
    ListaCampos& Campos() override { return *this; }
    void Condicion(std::string_view where) override {
        sink_("Condicion " + literal(where));
        session_->Condicion(where);
    }
    void Actualizar(std::string& text, bool& status) override {
        sink_("Actualizar");
        session_->Actualizar(text, status);
    }
    void Insertar(std::string& text, bool& status) override {
        sink_("Insertar");
        session_->Insertar(text, status);
    }
    void Borrar(std::string& text, bool& status) override {
        sink_("Borrar");
        session_->Borrar(text, status);
    }

private:
    void Agregar(std::string_view column, long kind, const Variant& value, std::int16_t fixed) override {
        sink_("Agregar " + literal(column) + ", " + std::to_string(kind) + ", " + shown(value) + ", " +
              std::to_string(fixed));
        session_->Campos().Agregar(column, kind, value, fixed);
    }

    std::unique_ptr<SesionBd> session_;
    TraceSink sink_;
    std::shared_ptr<ConexionBd> connection_;
};

}  // namespace

std::shared_ptr<ConexionBd> traced(std::shared_ptr<ConexionBd> connection, TraceSink sink) {
    return std::make_shared<TracedConexion>(std::move(connection), std::move(sink));
}

std::unique_ptr<SesionBd> traced(std::unique_ptr<SesionBd> session, TraceSink sink) {
    return std::make_unique<TracedSesion>(std::move(session), std::move(sink));
}

}  // namespace FendaMaestros
