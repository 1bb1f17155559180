#include "taxid/OtraFicha.h"

#include "session/ErrorBd.h"
#include "session/Literal.h"
#include "taxid/Explicacion.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"

namespace FendaMaestros {

namespace {

/// "" for what is no identifier yet.
std::string asLeft(const std::string& typed, const IdentifierExplanation& explained, bool conLetra) {
    using enum IdentifierFault;
    const bool person = conLetra && explained.kind == IdentifierKind::Person;
    std::string number = explained.normalForm;
    if (explained.fault == Form || explained.fault == FormerPrefix) return {};
    if (explained.fault == ControlMissing) return person && number.size() == 8 ? number + explained.expected : "";
    if (!person) return text::upper(text::trim(typed));
    if (explained.fault == ControlWrong) number.back() = explained.expected;
    return number;
}

}  // namespace

DocumentoTecleado::DocumentoTecleado(const std::string& typed, bool conLetra)
    : documento(asLeft(typed, explainIdentifier(typed), conLetra)), clave(spellingKey(documento)) {}

bool OtraFicha::igual(const std::string& tecleado) const { return text::equalIgnoringCase(documento, tecleado); }

std::string OtraFicha::texto(const std::string& tecleado) const {
    const bool same = igual(tecleado);
    std::string said = tecleado + (same ? " " : " ya ") + (nombre.empty() ? "está registrado" : "es de " + nombre);
    if (!same) said += ", escrito " + documento;
    return said;
}

OtraFicha buscarOtraFicha(const DocumentoTecleado& typed, const std::string& expresionNombre, std::int64_t idPropio) {
    // Whatever signs a spelling has lie between its characters.
    std::string spelled = "%";
    for (const char c : typed.clave) spelled.append(1, c).append("%");
    const auto rows =
        read("SELECT Nif_Id,Nif_Doc," + expresionNombre + "As Nombre FROM KXComun.dbo.Nif WHERE Nif_Doc LIKE " +
             literal(spelled) + " AND Nif_Id <> " + std::to_string(idPropio));
    OtraFicha found;
    for (; !rows->Eof() && !found.igual(typed.documento); rows->MoveNext()) {
        const std::string document = rows->Fields("Nif_Doc").Value.text();
        if (spellingKey(document) == typed.clave) found = {document, text::trim(rows->Fields("Nombre").Value.text())};
    }
    return found;
}

OtraFicha AvisoOtraFicha::buscar(const DocumentoTecleado& typed, const std::string& expresionNombre,
                                 std::int64_t idPropio) {
    if (typed.documento.empty()) return {};
    if (std::pair wanted(typed.documento, idPropio); wanted != buscada_) {
        buscada_ = {};
        try {
            ficha_ = buscarOtraFicha(typed, expresionNombre, idPropio);
        } catch (const ErrorBd&) {
            return {};
        }
        buscada_ = std::move(wanted);
    }
    return ficha_;
}

}  // namespace FendaMaestros
