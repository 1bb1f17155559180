#include "taxid/BuscarNif.h"

#include "taxid/ExpresionNombre.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr Twips wide = 6500;
constexpr Twips narrow = 2200;

}  // namespace

std::int64_t buscarNifPorDocumento(AyudaCampos& help, const std::string& expresionNombre) {
    std::string result;
    help.Buscar("Select Nif_Id,Nif_Doc + ' - ' +(" + expresionNombre +
                    ") AS Nif,'' as Otro FROM KXComun.dbo.Nif order by Nif_Doc",
                "Nif", "CIF/NIF", "Razon Social/Nombre", "Buscar registros por NIF", wide, narrow, 0, result);
    return AyudaCampos::chosenId(result);
}

std::int64_t buscarNifPorNombre(AyudaCampos& help, const RotulosBusqueda& rotulos) {
    std::string result;
    help.Buscar("Select Nif_Id," + fnExpresionNombre() + " , Nif_Doc FROM KXComun.dbo.Nif ORDER BY Nombre", "Nombre",
                rotulos.nombre, rotulos.documento, rotulos.titulo, wide, narrow, 0, result);
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
    const std::vector<std::string> values = AyudaCampos::values(result);
    if (values.size() < 4) return std::nullopt;
    return Poblacion{text::trim(values[0]), text::trim(values[1]), text::trim(values[3])};
}

}  // namespace FendaMaestros
