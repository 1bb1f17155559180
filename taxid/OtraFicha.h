#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace FendaMaestros {

/// What a person is typing as a document.
struct DocumentoTecleado {
    std::string documento;  ///< as the register leaves it; "" until there is enough of it
    std::string clave;      ///< its spellingKey()

    /// `conLetra`: a person's number gets the letter that belongs to it.
    DocumentoTecleado(const std::string& typed, bool conLetra);
};

/// The entry of the register that has an identifier, in whatever spelling; without a document, none has.
struct OtraFicha {
    std::string documento;
    std::string nombre;

    /// "B33778812 ya es de Ferretería Robles, escrito b-33778812".
    std::string texto(const std::string& tecleado) const;
    bool igual(const std::string& tecleado) const;
};

/// Of several entries the one that is spelled as typed; never the entry `idPropio`. One read. Throws ErrorBd.
OtraFicha buscarOtraFicha(const DocumentoTecleado& typed, const std::string& expresionNombre, std::int64_t idPropio);

/// Looks for the other entry as a document is typed, once for each document.
class AvisoOtraFicha {
public:
    /// Arguments as buscarOtraFicha(). Finds nothing where there is not enough typed, and when the database does not
    /// answer: what is wrong with it is said when the document is looked up.
    OtraFicha buscar(const DocumentoTecleado& typed, const std::string& expresionNombre, std::int64_t idPropio);
    /// What was found for this document, if it is the one looked for last.
    OtraFicha encontrada(const std::string& documento) const {
        return documento == buscada_.first ? ficha_ : OtraFicha{};
    }

    /// The register has changed.
    void olvidar() { buscada_ = {}; }

private:
    std::pair<std::string, std::int64_t> buscada_;
    OtraFicha ficha_;
};

}  // namespace FendaMaestros
