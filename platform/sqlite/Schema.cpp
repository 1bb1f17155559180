#include "platform/sqlite/Schema.h"

#include <initializer_list>

#include "session/ErrorBd.h"

namespace FendaMaestros::sqlite {

namespace {

struct Table {
    const char* name;
    const char* columns;
};

struct Index {
    const char* table;
    const char* name;
    const char* columns;
};

/// What PRAGMA application_id says of our files, and the version that this program writes.
struct Stamp {
    std::int64_t applicationId;
    std::int64_t version;
};

constexpr Stamp companyStamp = {0x464d4531, 1};
constexpr Stamp sharedStamp = {0x464d4331, 1};

#define ID " INTEGER PRIMARY KEY AUTOINCREMENT"
#define TEXT " TEXT COLLATE ES"

constexpr Table companyTables[] = {
    {"Parametros", "Par_Nom" TEXT " PRIMARY KEY, Par_Valor ANY"},
    {"Centro", "Centro_Id" ID ", Centro_Cod INTEGER, Centro_Des" TEXT},
    {"Dpto", "Dpto_Id" ID ", Dpto_Cod INTEGER, Dpto_Des" TEXT},
    {"PCta",
     "PCta_Id" ID ", PCta_Cta" TEXT ", PCta_Des" TEXT
     ", PCta_Plan INTEGER, PCta_PlanSec INTEGER, PCta_Subcuenta INTEGER, PCta_bActiva INTEGER, "
     "PCta_IdMasa INTEGER, PCta_IdCen INTEGER, PCta_IdDpto INTEGER, Pcta_IdNif INTEGER, "
     "PCta_IdCtaAso INTEGER, PCta_CtaAso" TEXT ", PCta_CtaIrpfAso" TEXT ", Pcta_Origen INTEGER, Pcta_IdOrigen INTEGER"},
    {"Apu", "Apu_Id" ID ", Apu_Cta" TEXT ", Apu_IdCta INTEGER, Apu_CtaDes" TEXT
            ", Apu_IdCen INTEGER, Apu_IdDpto INTEGER, Apu_Eje INTEGER, Apu_Estado INTEGER, Apu_Debe REAL, "
            "Apu_Haber REAL"},
    {"Fac", "Fac_Id" ID ", Fac_Doc" TEXT ", Fac_Rsocial" TEXT ", Fac_Fecha" TEXT},
    {"DIR", "Dir_Poblacion" TEXT ", Dir_Cp" TEXT ", Dir_Provincia" TEXT},
};

constexpr Index companyIndexes[] = {
    {"PCta", "PCta_PorCta", "PCta_Cta"},
    // The balance of an account and the balance filter read no more than the index.
    {"Apu", "Apu_PorCta", "Apu_Cta, Apu_Estado, Apu_Debe, Apu_Haber"},
    {"Apu", "Apu_PorIdCta", "Apu_IdCta, Apu_Estado, Apu_Debe, Apu_Haber"},
    {"Fac", "Fac_PorDoc", "Fac_Doc"},
};

constexpr Table sharedTables[] = {
    {"Nif", "Nif_Id" ID ", Nif_TipDoc INTEGER, Nif_Doc" TEXT ", Nif_Nom" TEXT ", Nif_Ape1" TEXT ", Nif_Ape2" TEXT
            ", Nif_Sg" TEXT ", Nif_Dir" TEXT ", Nif_Num" TEXT ", Nif_ESC" TEXT ", Nif_PIS" TEXT ", Nif_Pue" TEXT
            ", Nif_CP" TEXT ", Nif_Pob" TEXT ", Nif_Prov" TEXT ", Nif_Pais" TEXT ", Nif_Tf" TEXT ", Nif_Fax" TEXT
            ", Nif_Movil" TEXT ", Nif_CE" TEXT ", Nif_ClaveRet" TEXT ", Nif_SubClave" TEXT},
    {"Pais", "Pais_Cod" TEXT " PRIMARY KEY, Pais_Nom" TEXT ", Pais_Aeat" TEXT},
    {"PROV", "PROV_COD INTEGER PRIMARY KEY, PROV_NOM" TEXT},
    {"TVI", "TVI_COD" TEXT " PRIMARY KEY, TVI_NOM" TEXT},
    {"Conceptos", "Conce_Id" ID ", Conce_Cod INTEGER, Conce_Des" TEXT ", Conce_Mod INTEGER"},
    {"Masas", "Masas_Id" ID ", Masas_Cod" TEXT ", Masas_Plan INTEGER, Masas_Des" TEXT ", Masas_AP INTEGER"},
    {"BalCtas", "BalC_Id" ID ", BalC_Cta" TEXT ", BalC_IdBalE INTEGER"},
    {"BalEstruc", "BalE_Id" ID ", BalE_IdBal INTEGER, BalE_Des" TEXT},
    {"Balances", "Bal_Id" ID ", Bal_Plan INTEGER, Bal_Des" TEXT},
};

constexpr Index sharedIndexes[] = {
    {"Nif", "Nif_PorDoc", "Nif_Doc"},
    {"Nif", "Nif_PorCP", "Nif_CP, Nif_Pais"},
    {"BalCtas", "BalCtas_PorCta", "BalC_Cta"},
};

#undef ID
#undef TEXT

template <std::size_t tables, std::size_t indexes>
void create(const Database& database, const std::string& schema, const Table (&table)[tables],
            const Index (&index)[indexes], const Stamp& stamp) {
    std::string sql;
    for (const auto& [name, columns] : table)
        sql += "CREATE TABLE " + schema + "." + name + " (" + columns + ") STRICT;";
    for (const auto& [of, name, columns] : index)
        sql += "CREATE INDEX " + schema + "." + name + " ON " + of + " (" + columns + ");";
    sql += "PRAGMA " + schema + ".application_id = " + std::to_string(stamp.applicationId) + ";";
    sql += "PRAGMA " + schema + ".user_version = " + std::to_string(stamp.version) + ";";
    database.execute(sql);
}

}  // namespace

void createSchema(const Database& database, const std::string& schema, Contents contents) {
    if (contents == Contents::Company)
        create(database, schema, companyTables, companyIndexes, companyStamp);
    else
        create(database, schema, sharedTables, sharedIndexes, sharedStamp);
}

void checkSchema(const Database& database, const std::string& schema, Contents contents) {
    const auto& stamp = contents == Contents::Company ? companyStamp : sharedStamp;
    const auto what = contents == Contents::Company ? "una empresa" : "la base de datos común";
    if (database.number("PRAGMA " + schema + ".application_id") != stamp.applicationId)
        throw ErrorBd(ErrorBd::Kind::NotADatabase,
                      std::string("El fichero no contiene ") + what + " de este programa.");
    if (database.number("PRAGMA " + schema + ".user_version") > stamp.version)
        throw ErrorBd(ErrorBd::Kind::NewerVersion,
                      "Los datos son de una versión más nueva del programa. Actualice el programa para abrirlos.");
}

}  // namespace FendaMaestros::sqlite
