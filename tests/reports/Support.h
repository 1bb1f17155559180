#pragma once

#include <memory>
#include <string>
#include <vector>

#include "session/SesionBd.h"
#include "tests/support/ScriptedPerson.h"
#include "toolkit/Document.h"

namespace FendaMaestros::testing {

/// A session that answers every read with the same rows.
class FixedSession final : public SesionBd, public ListaCampos, public ConexionBd {
public:
    std::shared_ptr<Recordset> rows;
    std::string lastRead;

    explicit FixedSession(std::string company) { parameters_.set("Par_Nombre", std::move(company)); }

    std::shared_ptr<ConexionBd> Conexion() override { return {std::shared_ptr<ConexionBd>(), this}; }
    const ParametrosEmpresa& Parametros() const override { return parameters_; }
    std::shared_ptr<Recordset> Execute(std::string_view sql) override {
        lastRead = sql;
        return rows;
    }

    void Tabla(std::string_view) override { refuse(); }
    void Reiniciar(std::int16_t) override { refuse(); }
    ListaCampos& Campos() override { return *this; }
    void Agregar(std::string_view, long, const Variant&, std::int16_t) override { refuse(); }
    void Condicion(std::string_view) override { refuse(); }
    void Actualizar(std::string&, bool&) override { refuse(); }
    void Insertar(std::string&, bool&) override { refuse(); }
    void Borrar(std::string&, bool&) override { refuse(); }
    std::int64_t run(const Statement&) override { return refuse(), 0; }
    void BeginTrans() override { refuse(); }
    void CommitTrans() override { refuse(); }
    void RollbackTrans() override { refuse(); }

private:
    [[noreturn]] static void refuse() { throw std::logic_error("a report wrote"); }

    ParametrosEmpresa parameters_;
};

/// Columns and rows of texts, numbers and reals.
inline std::shared_ptr<Recordset> recordset(std::vector<std::string> columns,
                                            const std::vector<std::vector<Variant>>& rows) {
    auto made = std::make_shared<Recordset>(std::move(columns));
    for (const auto& row : rows)
        for (const Variant& value : row) {
            if (const auto* whole = std::get_if<std::int64_t>(&value.storage())) made->appendInteger(*whole);
            if (const auto* real = std::get_if<double>(&value.storage())) made->appendReal(*real);
            if (const auto* text = std::get_if<std::string>(&value.storage())) made->appendText(*text);
            if (value.isNull()) made->appendNull();
        }
    return made;
}

/// The texts of a page as they are set, one a line.
inline std::string printed(const PagedDocument& document, int index) {
    std::string text;
    for (const PageText& part : document.page(index).texts) {
        text += std::to_string(part.left) + "," + std::to_string(part.top) + " " + part.font + " " +
                std::to_string(part.points) + (part.bold ? "b " : " ");
        text += (part.alignment == Alignment::Right ? ">" : "") + part.text + "\n";
    }
    return text;
}

inline bool shows(const PagedDocument& document, int index, const std::string& text) {
    for (const PageText& part : document.page(index).texts)
        if (part.text == text) return true;
    return false;
}

}  // namespace FendaMaestros::testing
