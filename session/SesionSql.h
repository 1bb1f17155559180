#pragma once

#include <string>
#include <utility>
#include <vector>

#include "session/SesionBd.h"

namespace FendaMaestros {

/// A session on any connection: it composes the statements, with bound parameters, and the connection runs them.
class SesionSql final : public SesionBd, private ListaCampos {
public:
    /// `folder` is CarpetaFicheros().
    SesionSql(std::shared_ptr<ConexionBd> connection, ParametrosEmpresa parameters, std::string folder = {})
        : connection_(std::move(connection)), parameters_(std::move(parameters)), folder_(std::move(folder)) {}

    std::shared_ptr<ConexionBd> Conexion() override { return connection_; }
    const ParametrosEmpresa& Parametros() const override { return parameters_; }
    std::string CarpetaFicheros() const override { return folder_; }
    void Tabla(std::string_view name) override { table_ = name; }
    void Reiniciar(std::int16_t fixed) override;
    ListaCampos& Campos() override { return *this; }
    void Condicion(std::string_view where) override { condition_ = where; }
    void Actualizar(std::string& text, bool& status) override;
    void Insertar(std::string& text, bool& status) override;
    void Borrar(std::string& text, bool& status) override;

private:
    struct Column {
        std::string name;
        long kind;
        Variant value;
    };

    void Agregar(std::string_view column, long kind, const Variant& value, std::int16_t fixed) override;
    /// Composed from what has been described; each throws ErrorBd when the session refuses that.
    Statement update() const;
    Statement insert() const;
    Statement erase() const;
    void carryOut(Statement (SesionSql::*compose)() const, std::string& text, bool& status);
    void requireTable() const;
    void requireColumns() const;

    std::shared_ptr<ConexionBd> connection_;
    ParametrosEmpresa parameters_;
    std::string folder_;
    std::string table_;
    std::vector<Column> columns_;
    std::string condition_;
};

}  // namespace FendaMaestros
