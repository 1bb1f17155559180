#include <gtest/gtest.h>

#include "chartreports/FiltroCuentas.h"
#include "chartreports/FiltroPgc.h"
#include "chartreports/VerificacionPlan.h"
#include "taxid/InformeNif.h"

// The reads of the listings and checks, letter for letter.
// clang-format off

namespace FendaMaestros {
namespace {

using enum TipoInforme;

struct Text {
    std::string name;
    std::string found;
    std::string expected;
};

void expectAll(const std::vector<Text>& texts) {
    for (const auto& [name, found, expected] : texts) EXPECT_EQ(found, expected) << name;
}

const std::string base = "SELECT PCta_Id,Pcta_Cta, Pcta_Des,'' AS Saldo  FROM Pcta  WHERE PCta_SubCuenta=1 ";
const std::string byCode = " ORDER BY PCta_Cta ASC ";
const std::string balance =
    ",(SELECT isnull(SUM(Apu_Debe-Apu_Haber),0) From Apu  WHERE Apu_Cta = PCta_Cta AND Apu_Estado = 0) AS Saldo ";
const std::string sum = "SELECT isnull(SUM(Apu_Debe-Apu_Haber),0) FROM Apu INNER JOIN Pcta ON pcta_cta = apu_cta ";
const std::string active = " AND  PCta_bActiva = 1";

TEST(ListingTexts, EachKindHasItsColumnsItsAccountsAndItsTotal) {
    const std::string byDepartment = "SELECT PCta_Id, (SELECT Dpto_Des FROM Dpto WHERE Dpto_Id = PCta_IdDpto) AS Departamento, Pcta_Cta, Pcta_Des";
    const std::string byCentre = "SELECT PCta_Id, (SELECT Centro_Des FROM Centro WHERE Centro_Id = PCta_IdCen) AS Departamento, Pcta_Cta, Pcta_Des";
    const std::string withIdentity = "SELECT PCta_Id,Pcta_Cta, Pcta_Des,Nif_Doc AS Nif,Nif_Nom as RSocial, (Nif_Sg + ' ' +  RTRIM(Nif_Dir) + ' ' + Nif_Num + ' ' + Nif_Esc + ' ' + Nif_Pis + ' ' + Nif_Pue) AS Direcion, Nif_Cp AS Cpostal,Nif_Pob AS Poblacion,Nif_Prov AS Provincia, (SELECT PAIS_NOM FROM KXComun.dbo.Pais WHERE Pais_Cod = Nif_Pais) AS Pais ";
    const std::string identities = "INNER JOIN KXComun.dbo.Nif ON Nif_Id = PCta_IdNif ";
    struct Kind {
        const char* name;
        FiltroCuentas filter;
        std::string columns, source, order;
    };
    for (const Kind& kind : std::vector<Kind>{
             {"subaccounts", {}, "SELECT PCta_Id,Pcta_Cta, Pcta_Des", " WHERE PCta_SubCuenta=1 ", " PCta_Cta"},
             {"complete", {.tipo = SubcuentasCompleto}, "SELECT PCta_Id,Pcta_Cta, Pcta_Des", " WHERE PCta_SubCuenta=1 ", " PCta_Cta"},
             {"plan of 2008", {.tipo = CuentasSubcuentas}, "SELECT PCta_Id,Pcta_Cta, Pcta_Des", " WHERE PCta_Plan = 2008 OR PCta_SubCuenta=1", " PCta_Cta"},
             {"plan of 1990", {.tipo = CuentasSubcuentas, .plan = 1990}, "SELECT PCta_Id,Pcta_Cta, Pcta_Des", " WHERE PCta_Plan = 1990 OR PCta_SubCuenta=1", " PCta_Cta"},
             {"departments", {.tipo = Departamentos}, byDepartment, " WHERE PCta_SubCuenta=1 ", " Departamento"},
             {"centres", {.tipo = Centros}, byCentre, " WHERE PCta_SubCuenta=1 ", " Departamento"},
             {"identities", {.tipo = Nif}, withIdentity, identities + " WHERE PCta_SubCuenta=1 AND Pcta_IdNif>0", " PCta_Cta"}}) {
        SCOPED_TRACE(kind.name);
        FiltroCuentas filter = kind.filter;
        EXPECT_EQ(sqlListado(filter, -1, true), kind.columns + ",'' AS Saldo  FROM Pcta " + kind.source + active + " ORDER BY" + kind.order + " ASC ");
        EXPECT_EQ(sqlTotal(filter), sum + kind.source + "AND Apu_Estado = 0 " + active);
        filter.conSaldo = true;
        filter.estado = EstadoCuenta::Todas;
        EXPECT_EQ(sqlListado(filter, -1, false), kind.columns + balance + " FROM Pcta " + kind.source + " ORDER BY" + kind.order + " DESC ");
    }
}

TEST(ListingTexts, FiltersSayWhatIsTypedAndNothingWhenTheyAreBlank) {
    const std::string having = " AND PCTA_Id IN (SELECT Apu_IdCta FROM Apu  WHERE APU_ESTADO =0  GROUP BY Apu_IdCta HAVING SUM(Apu_Debe-Apu_Haber) ";
    struct Filter {
        const char* name;
        FiltroCuentas filter;
        std::string condition;
    };
    for (const auto& [name, filter, condition] : std::vector<Filter>{
             {"blank", {.desde = "  ", .hasta = " ", .desdeSaldo = " ", .hastaSaldo = "", .nombre = "  "}, active},
             {"both codes", {.desde = "43000000", .hasta = "43000009"}, " AND  PCta_Cta BETWEEN '43000000' AND '43000009'" + active},
             {"first code", {.desde = "43000000"}, " AND  PCta_Cta >= '43000000'" + active},
             {"last code", {.hasta = "43000009"}, " AND  PCta_Cta  <= '43000009'" + active},
             {"pasted quotes", {.desde = "4' OR '1'='1"}, " AND  PCta_Cta >= '4'' OR ''1''=''1'" + active},
             {"reversed codes", {.desde = "7", .hasta = "4"}, " AND  PCta_Cta BETWEEN '7' AND '4'" + active},
             {"department", {.departamento = "7"}, " AND  PCta_IdDpto = 7" + active},
             {"centre", {.centro = "12"}, " AND  PCta_IdCen = 12" + active},
             {"both balances", {.desdeSaldo = "1.000,50", .hastaSaldo = "2.000,00"}, having + "BETWEEN 1000.50 AND 2000.00)" + active},
             {"from a balance", {.desdeSaldo = "-1.234.567,80"}, having + ">= -1234567.80)" + active},
             {"up to a balance", {.hastaSaldo = "0,00"}, having + "<= 0.00)" + active},
             {"no amounts", {.desdeSaldo = "-", .hastaSaldo = "1e5"}, active},
             {"one amount", {.desdeSaldo = "abc", .hastaSaldo = "5,00"}, having + "<= 5.00)" + active},
             {"beginning", {.nombre = "O'Neill"}, " AND  PCTA_Des Like 'O''Neill%'" + active},
             {"anywhere", {.nombre = "O'Neill", .enCualquierParte = true}, " AND  PCTA_Des Like '%O''Neill%'" + active},
             {"pattern signs", {.nombre = " 50%_, s.a. "}, " AND  PCTA_Des Like ' 50%_, s.a. %'" + active},
             {"inactive", {.estado = EstadoCuenta::Inactivas}, " AND  PCta_bActiva = 0"},
             {"any state", {.estado = EstadoCuenta::Todas}, ""},
             {"all at once",
              {.desde = "4", .hasta = "5", .departamento = "1", .centro = "2", .desdeSaldo = "3,00", .hastaSaldo = "4,00", .nombre = "S", .estado = EstadoCuenta::Inactivas},
              " AND  PCta_Cta BETWEEN '4' AND '5' AND  PCta_IdDpto = 1 AND  PCta_IdCen = 2" + having + "BETWEEN 3.00 AND 4.00) AND  PCTA_Des Like 'S%' AND  PCta_bActiva = 0"}}) {
        EXPECT_EQ(sqlListado(filter, -1, true), base + condition + byCode) << name;
        EXPECT_EQ(sqlTotal(filter), sum + " WHERE PCta_SubCuenta=1 AND Apu_Estado = 0 " + condition) << name;
    }
}

TEST(ListingTexts, HeadersGiveTheOrderOfTheirColumnOrTheDefault) {
    struct Order {
        TipoInforme kind;
        int column;
        std::string orderBy, title;
    };
    for (const auto& [kind, column, orderBy, title] : std::vector<Order>{
             {Subcuentas, -1, " PCta_Cta", "Cuenta "}, {Subcuentas, 1, " PCta_Cta", "Cuenta "},
             {SubcuentasCompleto, 2, " PCta_Des", "Descripción "}, {CuentasSubcuentas, 3, " PCta_Cta", "Cuenta "},
             {Nif, 2, " PCta_Des", "Descripción "}, {Nif, 4, " PCta_Cta", "Cuenta "},
             {Departamentos, -1, " Departamento", "Departamento "}, {Departamentos, 2, " PCta_Cta", "Cuenta "},
             {Departamentos, 3, " PCta_Des", "Descripción "}, {Departamentos, 4, " Departamento", "Departamento "},
             {Centros, 1, " Departamento", "Centro "}, {Centros, 2, " PCta_Cta", "Cuenta "}, {Centros, 4, " Departamento", "Centro "}}) {
        const OrdenCuentas found = ordenCuentas(kind, column);
        EXPECT_EQ(found.columna + std::string("/") + found.titulo, orderBy + "/" + title) << static_cast<int>(kind) << " " << column;
    }
}

TEST(ListingTexts, RangesInWords) {
    expectAll({{"open", textoRango({"", "x"}, {" ", ""}), "Entre las cuentas Primera y Ultima"},
               {"closed", textoRango({"43000000", "Clientes"}, {"43999999", ""}), "Entre las cuentas 43000000 Clientes y 43999999 "},
               {"from", textoRango({"4", "A"}, {}), "Entre las cuentas 4 A y Ultima"},
               {"to", textoRango({}, {"5", "B"}), "Entre las cuentas Primera y 5 B"}});
}

TEST(ListingTexts, TheOfficialPlan) {
    const std::string plan = "SELECT PCta_Id,Pcta_Cta, Pcta_Des,(SELECT Masas_Des FROM kxcomun.dbo.masas WHERE Masas_Id = PCta_IdMasa) AS Masa  FROM Pcta  WHERE PCta_SubCuenta=0 AND PCta_Plan = ";
    const FiltroPgc everything{.desde = "4", .hasta = "5", .masa = "21", .nombre = "l'a", .enCualquierParte = true};
    expectAll({{"default", sqlListadoPgc({}, 1, true), plan + "2008 ORDER BY PCta_Cta ASC "},
               {"by name", sqlListadoPgc({}, 2, false), plan + "2008 ORDER BY PCta_Des DESC "},
               {"by mass", sqlListadoPgc({}, 3, true), plan + "2008 ORDER BY Masa ASC "},
               {"a mass", sqlListadoPgc({.masa = "21"}, 0, true), plan + "2008 AND  PCta_IdMasa = 21 ORDER BY PCta_Cta ASC "},
               {"from", sqlListadoPgc({.plan = "1990", .desde = "43"}, 1, true), plan + "1990 AND  PCta_Cta >= '43' ORDER BY PCta_Cta ASC "},
               {"all filters", sqlListadoPgc(everything, 1, true), plan + "2008 AND  PCta_Cta BETWEEN '4' AND '5' AND  PCta_IdMasa = 21 AND  PCTA_Des Like '%l''a%' ORDER BY PCta_Cta ASC "},
               {"titles", std::string(ordenPgc(1).titulo) + ordenPgc(2).titulo + ordenPgc(3).titulo, "Cuenta Descripción Masa Patrimonial "}});
}

TEST(ListingTexts, ChecksAndTheRegister) {
    const std::string wrong = "SELECT Pcta_id,pcta_cta,pcta_des,(SELECT COUNT(Apu_id) FROM Apu WHERE Apu_IdCta = PCta_ID) AS Diario FROM pcta WHERE ";
    expectAll({{"wrong sub-accounts", sqlSubcuentasErroneas("8"),
                wrong + "Pcta_Cta IN (SELECT pcta_cta from pcta where pcta_subcuenta=1 GROUP BY pcta_cta having count(Pcta_Cta)>1) UNION " + wrong + "Pcta_subcuenta=1 AND LEN(PCta_Cta)<> 8ORDER BY PCta_Cta"},
               {"active ones", sqlSubcuentasActivas(), "Select * FROM PCta WHERE PCta_Subcuenta=1 and PCta_bActiva=1 ORDER BY PCta_Cta"},
               {"official account", sqlCuentaPlan("2008", 1, "43'"), "SELECT * FROM PCta WHERE PCta_Plan = 2008 AND PCta_PlanSec = 1AND PCta_Cta = '43'''"},
               {"register", sqlInformeNif("(x) ", "Nif_Doc DESC "),
                "SELECT Nif_Id, (x)  AS Nombre, Nif_Doc, (Nif_Sg + ' ' +  RTRIM(Nif_Dir) + ' ' + Nif_Num + ' ' + Nif_Esc + ' ' + Nif_Pis + ' ' + Nif_Pue) AS Direcion, Nif_Cp, Nif_Pob, Nif_Prov, (SELECT PAIS_NOM FROM KXComun.dbo.Pais WHERE PAIS_COD = Nif_Pais) AS pais, Nif_Tf,Nif_Fax,Nif_Movil,Nif_CE  FROM KXComun.dbo.NIF ORDER BY Nif_Doc DESC "}});
}

}  // namespace
}  // namespace FendaMaestros
