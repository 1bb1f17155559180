#include "SessionContract.h"

namespace FendaMaestros::tests {

namespace {

long kindOf(const Variant& value) {
    if (value.isNull()) return valor::Nulo;
    return std::holds_alternative<std::string>(value.storage()) ? valor::Texto : valor::Numero;
}

}  // namespace

void SessionContract::insert(const char* table, std::initializer_list<Cell> cells) {
    session.Tabla(table);
    session.Reiniciar(0);
    for (const auto& [name, value] : cells) session.Campos().Agregar(name, kindOf(value), value, 2);
    session.Condicion("");
    std::string text;
    bool status = false;
    session.Insertar(text, status);
    ASSERT_TRUE(status) << text;
}

std::string SessionContract::column(std::string_view sql) {
    const auto rows = read(sql);
    std::string values;
    for (int row = 0; row < rows->rowCount(); ++row) values += (row ? " " : "") + rows->cell(row, 0).text();
    return values;
}

void SessionContract::insertCompany() {
    insert("Centro", {{"Centro_Cod", 1}, {"Centro_Des", "Oficina"}});
    insert("Centro", {{"Centro_Cod", 2}, {"Centro_Des", "Ávila"}});
    insert("Dpto", {{"Dpto_Cod", 1}, {"Dpto_Des", "Ventas"}});
    for (const auto& [code, name] : {std::pair(5, "Factura"), {94, "Cierre"}, {1001, "005#1#2"}})
        insert("KXComun.dbo.Conceptos", {{"Conce_Cod", code}, {"Conce_Des", name}, {"Conce_Mod", 0}});
    insert("KXComun.dbo.Pais", {{"Pais_Cod", "011"}, {"Pais_Nom", "España"}, {"Pais_Aeat", "ES"}});
    insert("KXComun.dbo.Pais", {{"Pais_Cod", "001"}, {"Pais_Nom", "Francia"}, {"Pais_Aeat", {}}});
    insert("KXComun.dbo.PROV", {{"PROV_COD", 28}, {"PROV_NOM", "Madrid"}});
    insert("KXComun.dbo.TVI", {{"TVI_COD", "CL"}, {"TVI_NOM", "Calle"}});
    for (const auto& [plan, name] : {std::pair(2008, "Existencias"), {2008, "Deudores"}, {1990, "Tesorería"}})
        insert("KXComun.Dbo.Masas", {{"Masas_Cod", ""}, {"Masas_Plan", plan}, {"Masas_Des", name}, {"Masas_AP", 2}});
    insert("KXComun.dbo.Nif", {{"Nif_TipDoc", 1},
                               {"Nif_Doc", "12345678Z"},
                               {"Nif_Nom", "Íñigo"},
                               {"Nif_Ape1", "García"},
                               {"Nif_Ape2", "López"},
                               {"Nif_Sg", "CL"},
                               {"Nif_Dir", "Mayor  "},
                               {"Nif_Num", "5"},
                               {"Nif_ESC", ""},
                               {"Nif_PIS", "2"},
                               {"Nif_Pue", "B"},
                               {"Nif_CP", "28001"},
                               {"Nif_Pob", "Madrid"},
                               {"Nif_Prov", "28"},
                               {"Nif_Pais", "011"}});
    insert("KXComun.dbo.Nif",
           {{"Nif_TipDoc", 0}, {"Nif_Doc", "A58818501"}, {"Nif_Nom", "Cliente SA"}, {"Nif_Ape1", {}}});
    insert("PCta", {{"PCta_Cta", "430"},
                    {"PCta_Des", "Clientes"},
                    {"PCta_Plan", 2008},
                    {"PCta_PlanSec", 1},
                    {"PCta_SubCuenta", 0},
                    {"PCta_IdMasa", 1},
                    {"PCta_bActiva", 1}});
    insert("PCta", {{"PCta_Cta", "430"},
                    {"PCta_Des", "Clientes"},
                    {"PCta_Plan", 1990},
                    {"PCta_PlanSec", 0},
                    {"PCta_SubCuenta", 0},
                    {"PCta_IdMasa", 3},
                    {"PCta_bActiva", 1}});
    const struct {
        const char *code, *name;
        int active;
    } accounts[] = {{"43000001", "Cliente SA", 1},
                    {"43000002", "Señor O'Neill", 1},
                    {"43000002", "Repetida", 0},
                    {"4300003", "Corta", 1}};
    for (const auto& [code, name, active] : accounts)
        insert("PCta", {{"PCta_Cta", code},
                        {"PCta_Des", name},
                        {"PCta_SubCuenta", 1},
                        {"PCta_bActiva", active},
                        {"PCta_IdCen", 1},
                        {"PCta_IdDpto", 1},
                        {"Pcta_IdNif", 1}});
    for (const auto& [id, amount] : {std::pair(3, 0.1), {3, 0.2}, {4, 1000.0}})
        insert("Apu", {{"Apu_Cta", "4300000" + std::to_string(id - 2)},
                       {"Apu_IdCta", id},
                       {"Apu_Estado", 0},
                       {"Apu_Debe", amount},
                       {"Apu_Haber", 0.0},
                       {"Apu_CtaDes", ""},
                       {"Apu_Eje", 2009}});
    insert("Fac", {{"Fac_Doc", "12345678Z"}, {"Fac_Rsocial", "Cliente"}, {"Fac_Fecha", "2026-03-01"}});
    insert("DIR", {{"Dir_Poblacion", "Getafe"}, {"Dir_Cp", "28901"}, {"Dir_Provincia", "28"}});
    insert("KXComun.dbo.BalCtas", {{"BalC_Cta", "430"}, {"BalC_IdBalE", 1}});
    insert("KXComun.dbo.BalEstruc", {{"BalE_IdBal", 1}, {"BalE_Des", "Deudores"}});
    insert("KXComun.dbo.Balances", {{"Bal_Plan", 2008}, {"Bal_Des", "Situación"}});
}

}  // namespace FendaMaestros::tests
