#include "taxid/NifRecord.h"

namespace FendaMaestros {

namespace {

void textOrNull(RowWrite& write, const char* column, const std::string& value, bool absent) {
    if (absent)
        write.column(column, valor::Nulo, "Null");
    else
        write.column(column, valor::Texto, value);
}

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

void describirNif(RowWrite& write, const NifRecord& nif) {
    const bool organisation = nif.tipoDocumento == documento::Cif;
    if (nif.tipoDocumento >= 0) write.column("Nif_TipDoc", valor::Numero, nif.tipoDocumento);
    write.column("Nif_Doc", valor::Texto, nif.documento);
    write.column("Nif_Nom", valor::Texto, nif.nombre);
    textOrNull(write, "Nif_Ape1", nif.apellido1, organisation);
    textOrNull(write, "Nif_Ape2", nif.apellido2, organisation);
    write.column("Nif_Sg", valor::Texto, nif.tipoVia);
    write.column("Nif_Dir", valor::Texto, nif.via);
    write.column("Nif_Num", valor::Texto, nif.numero);
    write.column("Nif_ESC", valor::Texto, nif.escalera);
    write.column("Nif_PIS", valor::Texto, nif.piso);
    write.column("Nif_Pue", valor::Texto, nif.puerta);
    write.column("Nif_CP", valor::Texto, nif.codigoPostal);
    write.column("Nif_Pob", valor::Texto, nif.poblacion);
    write.column("Nif_Prov", valor::Texto, nif.provincia);
    write.column("Nif_Pais", valor::Texto, nif.pais);
    write.column("Nif_Tf", valor::Texto, nif.telefono);
    write.column("Nif_Fax", valor::Texto, nif.fax);
    write.column("Nif_Movil", valor::Texto, nif.movil);
    write.column("Nif_CE", valor::Texto, nif.correo);
    textOrNull(write, "Nif_ClaveRet", nif.claveRetencion, nif.claveRetencion.empty());
    textOrNull(write, "Nif_SubClave", nif.subclave, nif.subclave.empty());
}

}  // namespace FendaMaestros
