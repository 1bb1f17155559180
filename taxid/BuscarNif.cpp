#include "taxid/BuscarNif.h"

#include <array>

#include "taxid/ExpresionNombre.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr const char* captionNombre = "Razon Social/Nombre";
constexpr Twips wide = 6500;
constexpr Twips narrow = 2200;

/// The values of a result of AyudaCampos::Buscar; those it does not have stay empty.
std::array<std::string, 4> values(std::string_view result) {
    std::array<std::string, 4> found;
    for (std::string& value : found) {
        const auto end = std::min(result.find('\x01'), result.size());
        value = text::trim(result.substr(0, end));
        result.remove_prefix(std::min(end + 1, result.size()));
    }
    return found;
}

}  // namespace

std::int64_t buscarNifPorDocumento(AyudaCampos& help, const std::string& expresionNombre) {
    std::string result;
    help.Buscar("Select Nif_Id,Nif_Doc + ' - ' +(" + expresionNombre +
                    ") AS Nif,'' as Otro FROM KXComun.dbo.Nif order by Nif_Doc",
                "Nif", "CIF/NIF", captionNombre, "Buscar registros por NIF", wide, narrow, 0, result);
    return AyudaCampos::chosenId(result);
}

std::int64_t buscarNifPorNombre(AyudaCampos& help) {
    std::string result;
    help.Buscar("Select Nif_Id," + fnExpresionNombre() + " , Nif_Doc FROM KXComun.dbo.Nif ORDER BY Nombre", "Nombre",
                "Nombre", captionNombre, "Buscar registros de Nif por nombre", wide, narrow, 0, result);
    return AyudaCampos::chosenId(result);
}

std::optional<Poblacion> buscarPoblacion(AyudaCampos& help) {
    std::string result;
    help.Buscar(
        "SELECT Dir_Poblacion,Dir_cp,"
        "(Dir_Poblacion + ' (' + Dir_Cp + ')') as Poblacion"
        ",dir_provincia as [Cod.Provincia] FROM DIR where len(dir_cp) >4 and len(Dir_Poblacion)>0 group by "
        "dir_poblacion,dir_cp,dir_provincia",
        "Poblacion", "Cod.Postal", "Nombre Población", "Buscar Poblaciones", narrow, wide, 0, result);
    if (result.empty()) return std::nullopt;
    auto [town, postalCode, shown, province] = values(result);
    return Poblacion{std::move(town), std::move(postalCode), std::move(province)};
}

}  // namespace FendaMaestros
