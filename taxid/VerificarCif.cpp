#include "taxid/VerificarCif.h"

#include "session/Literal.h"
#include "taxid/NifRecord.h"
#include "taxid/Validacion.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"

namespace FendaMaestros {

namespace {

bool isRegisteredAsNie(const std::string& document) {
    const auto rows = read("SELECT * FROM KXComun.dbo.Nif WHERE Nif_Doc = " + literal(document));
    return !rows->Eof() && rows->Fields("Nif_TipDoc").Value.integer() == documento::Nie;
}

}  // namespace

bool FnVerificarCif(std::string& sValor, bool bDatos) {
    if (!bDatos) return verificarCif(sValor);
    sValor = text::upper(sValor);
    return isRegisteredAsNie(sValor) || verificarCif(sValor);
}

}  // namespace FendaMaestros
