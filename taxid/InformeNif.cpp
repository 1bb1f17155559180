#include "taxid/InformeNif.h"

#include <array>
#include <utility>

#include "ui/GridReport.h"

namespace FendaMaestros {

std::string sqlInformeNif(const std::string& expresionNombre, const std::string& orden) {
    return "SELECT Nif_Id, " + expresionNombre +
           " AS Nombre, "
           "Nif_Doc, (Nif_Sg + ' ' +  RTRIM(Nif_Dir) + ' ' + Nif_Num + ' ' + Nif_Esc + ' ' + Nif_Pis + ' ' + Nif_Pue) "
           "AS Direcion, "
           "Nif_Cp, Nif_Pob, Nif_Prov, "
           "(SELECT PAIS_NOM FROM KXComun.dbo.Pais WHERE PAIS_COD = Nif_Pais) AS pais, "
           "Nif_Tf,Nif_Fax,Nif_Movil,Nif_CE "
           " FROM KXComun.dbo.NIF "
           "ORDER BY " +
           orden;
}

std::span<const ListingColumn> columnasInformeNif() {
    static const std::array<ListingColumn, 12> columns{{{},
                                                        {"Razón Social/Nombre", 4500, Alignment::Left, {}, true},
                                                        {"Cif/Nif", 1100},
                                                        {"Dirección", 3500},
                                                        {"C.Postal", 700, Alignment::Center},
                                                        {"Población", 2500},
                                                        {"Provincia", 1500},
                                                        {"Pais", 2000},
                                                        {"Tf. Fijo", 1000},
                                                        {"Fax", 1000},
                                                        {"Tf. Movil", 1000},
                                                        {"Correo electronico", 3000}}};
    return columns;
}

std::shared_ptr<const PagedDocument> documentoInformeNif(std::shared_ptr<Recordset> rows, const Date& day) {
    const GridReport report(tituloInformeNif, "Todas las identidades registradas", std::move(rows),
                            columnasInformeNif());
    return report.document(day);
}

}  // namespace FendaMaestros
