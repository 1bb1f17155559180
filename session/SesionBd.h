#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "session/ConexionBd.h"
#include "session/ParametrosEmpresa.h"

namespace FendaMaestros {

/// How a value reaches its column.
namespace valor {
inline constexpr long Entero = 0;  ///< whole number
inline constexpr long Numero = 1;  ///< number, also written as text ("2008")
inline constexpr long Texto = 3;   ///< text; a numeric column stores the number it spells
inline constexpr long Nulo = 6;    ///< NULL, whatever the value says
}  // namespace valor

/// The column and value pairs of the write that is being described.
class ListaCampos {
public:
    virtual ~ListaCampos() = default;

    /// `kind` is one of namespace valor. `fixed` is always 2.
    virtual void Agregar(std::string_view column, long kind, const Variant& value, std::int16_t fixed) = 0;
};

/// The host's open session on a company: where every screen reads, and the builder through which every write goes.
///
/// A write is described by Tabla, Reiniciar(0), Campos().Agregar(...) for each column and Condicion, and carried out by
/// Actualizar, Insertar or Borrar. The three leave in `text` the statement carried out, and in `status` false when the
/// session refuses it: no table, no column to write, a table or column that is no plain name, a value that is not of
/// its kind, an insert with a condition, an update or a delete without one, or a condition that is more than
/// comparisons of columns with literals joined by AND. A refused statement does nothing and leaves the reason in
/// `text`. Errors of the engine are thrown as ErrorBd. An update that matches no row is no failure.
class SesionBd {
public:
    virtual ~SesionBd() = default;

    /// Never null.
    virtual std::shared_ptr<ConexionBd> Conexion() = 0;
    virtual const ParametrosEmpresa& Parametros() const = 0;

    /// The folder beside the company's data for files that belong to it, which need not be there yet; empty for a
    /// session without files of its own.
    virtual std::string CarpetaFicheros() const { return {}; }

    virtual void Tabla(std::string_view name) = 0;
    /// Forgets columns and condition; the argument is always 0.
    virtual void Reiniciar(std::int16_t fixed) = 0;
    virtual ListaCampos& Campos() = 0;
    /// The WHERE clause in full with its leading blank, " WHERE Centro_Id = 7"; empty for an insert.
    virtual void Condicion(std::string_view where) = 0;
    virtual void Actualizar(std::string& text, bool& status) = 0;
    virtual void Insertar(std::string& text, bool& status) = 0;
    virtual void Borrar(std::string& text, bool& status) = 0;
};

}  // namespace FendaMaestros
