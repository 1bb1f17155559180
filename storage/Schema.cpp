#include "storage/Schema.h"

#include "session/ErrorBd.h"

namespace FendaMaestros::storage {

using enum ColumnKind;

const Schema& companySchema() {
    static const Schema schema{
        .version = 1,
        .tables =
            {
                {"Parametros", {{"Par_Nom", Text, true}, {"Par_Valor", Any}}},
                {"Centro", {{"Centro_Id", Identity}, {"Centro_Cod", Integer}, {"Centro_Des", Text}}},
                {"Dpto", {{"Dpto_Id", Identity}, {"Dpto_Cod", Integer}, {"Dpto_Des", Text}}},
                {"PCta",
                 {{"PCta_Id", Identity},
                  {"PCta_Cta", Text},
                  {"PCta_Des", Text},
                  {"PCta_Plan", Integer},
                  {"PCta_PlanSec", Integer},
                  {"PCta_Subcuenta", Integer},
                  {"PCta_bActiva", Integer},
                  {"PCta_IdMasa", Integer},
                  {"PCta_IdCen", Integer},
                  {"PCta_IdDpto", Integer},
                  {"Pcta_IdNif", Integer},
                  {"PCta_IdCtaAso", Integer},
                  {"PCta_CtaAso", Text},
                  {"PCta_CtaIrpfAso", Text},
                  {"Pcta_Origen", Integer},
                  {"Pcta_IdOrigen", Integer}}},
                {"Apu",
                 {{"Apu_Id", Identity},
                  {"Apu_Cta", Text},
                  {"Apu_IdCta", Integer},
                  {"Apu_CtaDes", Text},
                  {"Apu_IdCen", Integer},
                  {"Apu_IdDpto", Integer},
                  {"Apu_Eje", Integer},
                  {"Apu_Estado", Integer},
                  {"Apu_Debe", Amount},
                  {"Apu_Haber", Amount}}},
                {"Fac", {{"Fac_Id", Identity}, {"Fac_Doc", Text}, {"Fac_Rsocial", Text}, {"Fac_Fecha", Date}}},
                {"DIR", {{"Dir_Poblacion", Text}, {"Dir_Cp", Text}, {"Dir_Provincia", Text}}},
            },
        .indexes =
            {
                {"PCta_PorCta", "PCta", {"PCta_Cta"}},
                // The balance of an account and the balance filter read no more than the index.
                {"Apu_PorCta", "Apu", {"Apu_Cta", "Apu_Estado"}, {"Apu_Debe", "Apu_Haber"}},
                {"Apu_PorIdCta", "Apu", {"Apu_IdCta", "Apu_Estado"}, {"Apu_Debe", "Apu_Haber"}},
                {"Fac_PorDoc", "Fac", {"Fac_Doc"}},
            },
    };
    return schema;
}

const Schema& sharedSchema() {
    static const Schema schema{
        .version = 1,
        .tables =
            {
                {"Nif", {{"Nif_Id", Identity},   {"Nif_TipDoc", Integer}, {"Nif_Doc", Text},   {"Nif_Nom", Text},
                         {"Nif_Ape1", Text},     {"Nif_Ape2", Text},      {"Nif_Sg", Text},    {"Nif_Dir", Text},
                         {"Nif_Num", Text},      {"Nif_ESC", Text},       {"Nif_PIS", Text},   {"Nif_Pue", Text},
                         {"Nif_CP", Text},       {"Nif_Pob", Text},       {"Nif_Prov", Text},  {"Nif_Pais", Text},
                         {"Nif_Tf", Text},       {"Nif_Fax", Text},       {"Nif_Movil", Text}, {"Nif_CE", Text},
                         {"Nif_ClaveRet", Text}, {"Nif_SubClave", Text}}},
                {"Pais", {{"Pais_Cod", Text, true}, {"Pais_Nom", Text}, {"Pais_Aeat", Text}}},
                {"PROV", {{"PROV_COD", Integer, true}, {"PROV_NOM", Text}}},
                {"TVI", {{"TVI_COD", Text, true}, {"TVI_NOM", Text}}},
                {"Conceptos",
                 {{"Conce_Id", Identity}, {"Conce_Cod", Integer}, {"Conce_Des", Text}, {"Conce_Mod", Integer}}},
                {"Masas",
                 {{"Masas_Id", Identity},
                  {"Masas_Cod", Text},
                  {"Masas_Plan", Integer},
                  {"Masas_Des", Text},
                  {"Masas_AP", Integer}}},
                {"BalCtas", {{"BalC_Id", Identity}, {"BalC_Cta", Text}, {"BalC_IdBalE", Integer}}},
                {"BalEstruc", {{"BalE_Id", Identity}, {"BalE_IdBal", Integer}, {"BalE_Des", Text}}},
                {"Balances", {{"Bal_Id", Identity}, {"Bal_Plan", Integer}, {"Bal_Des", Text}}},
            },
        .indexes =
            {
                {"Nif_PorDoc", "Nif", {"Nif_Doc"}},
                {"Nif_PorCP", "Nif", {"Nif_CP", "Nif_Pais"}},
                {"BalCtas_PorCta", "BalCtas", {"BalC_Cta"}},
            },
    };
    return schema;
}

void checkVersion(const Schema& schema, std::int64_t found) {
    if (found > schema.version)
        throw ErrorBd(ErrorBd::Kind::NewerVersion,
                      "Los datos son de una versión más nueva del programa. Actualice el programa para abrirlos.");
}

}  // namespace FendaMaestros::storage
