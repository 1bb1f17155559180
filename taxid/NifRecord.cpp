#include "taxid/NifRecord.h"

#include <iterator>

namespace FendaMaestros {

namespace {

Variant unless(bool absent, const std::string& value) { return absent ? Variant() : Variant(value); }

}  // namespace

NifRecord leerNif(const Recordset& row) {
    const auto text = [&row](const char* column) { return row.Fields(column).Value.text(); };
    return {
        .id = row.Fields("Nif_Id").Value.integer(),
        .tipoDocumento = static_cast<int>(row.Fields("Nif_TipDoc").Value.integer()),
        .documento = text("Nif_Doc"),
        .nombre = text("Nif_Nom"),
        .apellido1 = text("Nif_Ape1"),
        .apellido2 = text("Nif_Ape2"),
        .tipoVia = text("Nif_Sg"),
        .via = text("Nif_Dir"),
        .numero = text("Nif_Num"),
        .escalera = text("Nif_ESC"),
        .piso = text("Nif_PIS"),
        .puerta = text("Nif_Pue"),
        .codigoPostal = text("Nif_CP"),
        .poblacion = text("Nif_Pob"),
        .provincia = text("Nif_Prov"),
        .pais = text("Nif_Pais"),
        .telefono = text("Nif_Tf"),
        .fax = text("Nif_Fax"),
        .movil = text("Nif_Movil"),
        .correo = text("Nif_CE"),
        .claveRetencion = text("Nif_ClaveRet"),
        .subclave = text("Nif_SubClave"),
    };
}

const std::vector<std::string_view>& columnasNif() {
    static const std::vector<std::string_view> columns{
        "Nif_TipDoc", "Nif_Doc", "Nif_Nom", "Nif_Ape1",  "Nif_Ape2", "Nif_Sg",       "Nif_Dir",
        "Nif_Num",    "Nif_ESC", "Nif_PIS", "Nif_Pue",   "Nif_CP",   "Nif_Pob",      "Nif_Prov",
        "Nif_Pais",   "Nif_Tf",  "Nif_Fax", "Nif_Movil", "Nif_CE",   "Nif_ClaveRet", "Nif_SubClave"};
    return columns;
}

std::vector<Variant> valoresNif(const NifRecord& nif) {
    const bool organisation = nif.tipoDocumento == documento::Cif;
    Variant values[]{nif.tipoDocumento,
                     nif.documento,
                     nif.nombre,
                     unless(organisation, nif.apellido1),
                     unless(organisation, nif.apellido2),
                     nif.tipoVia,
                     nif.via,
                     nif.numero,
                     nif.escalera,
                     nif.piso,
                     nif.puerta,
                     nif.codigoPostal,
                     nif.poblacion,
                     nif.provincia,
                     nif.pais,
                     nif.telefono,
                     nif.fax,
                     nif.movil,
                     nif.correo,
                     unless(nif.claveRetencion.empty(), nif.claveRetencion),
                     unless(nif.subclave.empty(), nif.subclave)};
    // A list in braces would copy every text once more.
    return std::vector<Variant>(std::move_iterator(std::begin(values)), std::move_iterator(std::end(values)));
}

void describirNif(RowWrite& write, const NifRecord& nif) {
    const std::vector<Variant> values = valoresNif(nif);
    for (std::size_t i = nif.tipoDocumento < 0 ? 1 : 0; i < values.size(); ++i) {
        const std::string_view column = columnasNif()[i];
        if (values[i].isNull())
            write.column(column, valor::Nulo, "Null");
        else
            write.column(column, i == 0 ? valor::Numero : valor::Texto, values[i]);
    }
}

}  // namespace FendaMaestros
