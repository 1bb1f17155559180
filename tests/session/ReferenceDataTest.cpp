#include <cmath>

#include "SessionContract.h"
#include "taxid/Validacion.h"

namespace FendaMaestros::tests {
namespace {

class ReferenceDataTest : public ::testing::TestWithParam<Backend> {
protected:
    std::shared_ptr<Recordset> rows(const std::string& sql) { return session->Conexion()->Execute(sql); }
    std::int64_t number(const std::string& sql) { return rows("SELECT " + sql)->cell(0, 0).integer(); }

    const std::shared_ptr<Companies> companies = GetParam().companies(std::chrono::seconds(1));
    std::unique_ptr<SesionBd> session;
};

TEST_P(ReferenceDataTest, ANewCompanyHasBothPlansTheBalancesAndTheTowns) {
    companies->create({.name = "Una", .fiscalYear = 2026});
    session = companies->open("Una");
    const std::string plan = "COUNT(*) FROM PCta WHERE PCta_Subcuenta = 0 AND PCta_bActiva = 1 AND ";
    EXPECT_EQ(number(plan + "PCta_PlanSec = 1 AND PCta_Plan = 2008"), 915);
    EXPECT_EQ(number(plan + "PCta_PlanSec = 0 AND PCta_Plan = 1990"), 682);
    EXPECT_EQ(number(plan + "PCta_Plan = 2008 AND PCta_Cta = '76213' "
                            "AND PCta_Des = 'Ingresos de créditos a corto plazo, otras empresas'"),
              1);
    EXPECT_EQ(number("COUNT(*) FROM PCta WHERE PCta_Cta = '' OR PCta_Des = '' OR PCta_IdMasa <> 0 OR Pcta_IdNif <> 0"),
              0);
    const auto line = rows(
        "SELECT Bal_Plan, Bal_Des, BalE_Des FROM KXComun.dbo.BalCtas INNER JOIN KXComun.dbo.BalEstruc "
        "ON BalE_Id = BalC_IdBalE INNER JOIN KXComun.dbo.Balances ON Bal_Id = BalE_IdBal "
        "WHERE BalC_Cta = '430'");
    EXPECT_EQ(line->cell(0, 0), Variant(2008));
    EXPECT_EQ(line->cell(0, 1), Variant("Balance normal: activo"));
    EXPECT_EQ(line->cell(0, 2), Variant("B.III.1. Clientes por ventas y prestaciones de servicios"));
    EXPECT_EQ(number("COUNT(*) FROM DIR WHERE Dir_Poblacion = 'Palma' AND Dir_Cp = '07001' AND Dir_Provincia = '07'"),
              1);
}

class DemoCompanyTest : public ReferenceDataTest {
protected:
    DemoCompanyTest() { session = companies->open(companies->createDemonstration()); }
};

TEST_P(DemoCompanyTest, HasThirtyIdentitiesWithRightCheckCharacters) {
    const auto identities = rows("SELECT Nif_Doc, Nif_TipDoc, Nif_Ape1 FROM KXComun.dbo.Nif");
    EXPECT_EQ(identities->RecordCount(), 30);
    for (; !identities->Eof(); identities->MoveNext()) {
        const auto document = identities->Fields("Nif_Doc").Value.text();
        auto normalised = document;
        EXPECT_TRUE(verificarCif(normalised)) << document;
        EXPECT_EQ(normalised, document);
        EXPECT_EQ(identities->Fields("Nif_TipDoc").Value == Variant(0), identities->Fields("Nif_Ape1").Value.isNull())
            << document;
    }
    EXPECT_EQ(number("COUNT(DISTINCT Nif_TipDoc) FROM KXComun.dbo.Nif"), 4);
    EXPECT_EQ(number("COUNT(*) FROM KXComun.dbo.Nif LEFT JOIN KXComun.dbo.Pais ON Pais_Cod = Nif_Pais "
                     "LEFT JOIN KXComun.dbo.TVI ON TVI_COD = Nif_Sg WHERE Pais_Cod IS NULL OR TVI_COD IS NULL"),
              0);
}

TEST_P(DemoCompanyTest, HasSubAccountsThatHangFromThePlanAndTheirIdentities) {
    const std::string subAccounts = "COUNT(*) FROM PCta WHERE PCta_Subcuenta = 1";
    EXPECT_GE(number(subAccounts), 40);
    EXPECT_EQ(number(subAccounts + " AND (LEN(PCta_Cta) <> 8 OR SUBSTRING(PCta_Cta, 1, 3) NOT IN "
                                   "(SELECT PCta_Cta FROM PCta WHERE PCta_Subcuenta = 0 AND PCta_Plan = 2008))"),
              0);
    EXPECT_EQ(number(subAccounts + " AND (SUBSTRING(PCta_Cta, 1, 3) IN ('400', '410', '430', '440', '523')) <> "
                                   "(Pcta_IdNif IN (SELECT Nif_Id FROM KXComun.dbo.Nif))"),
              0);
    EXPECT_EQ(number(subAccounts + " AND (PCta_IdCtaAso = 0) <> (PCta_CtaAso IS NULL)"), 0);
    EXPECT_EQ(number(subAccounts + " AND PCta_CtaIrpfAso NOT IN (SELECT PCta_Cta FROM PCta WHERE PCta_Subcuenta = 1)"),
              0);
    EXPECT_EQ(number(subAccounts + " AND PCta_Cta < '6' AND PCta_IdMasa = 0"), 0);
}

TEST_P(DemoCompanyTest, HasTwoYearsOfLinesThatBalanceAndInvoicesOfItsIdentities) {
    const auto years = rows(
        "SELECT Apu_Eje, SUM(Apu_Debe) AS Debe, SUM(Apu_Haber) AS Haber FROM Apu GROUP BY Apu_Eje "
        "ORDER BY Apu_Eje");
    ASSERT_EQ(years->RecordCount(), 2);
    for (int row = 0; row < 2; ++row) {
        const auto debit = years->cell(row, 1).real(), credit = years->cell(row, 2).real();
        EXPECT_EQ(years->cell(row, 0), Variant(2025 + row));
        EXPECT_EQ(std::llround(debit * 100), std::llround(credit * 100));
        EXPECT_GT(debit, 0);
    }
    EXPECT_EQ(number("COUNT(*) FROM Apu LEFT JOIN PCta ON PCta_Id = Apu_IdCta WHERE PCta_Cta IS NULL OR "
                     "PCta_Cta <> Apu_Cta OR PCta_Des <> Apu_CtaDes OR Apu_Estado <> 0"),
              0);
    EXPECT_EQ(number("COUNT(DISTINCT YEAR(Fac_Fecha)) FROM Fac"), 2);
    EXPECT_EQ(
        number("COUNT(*) FROM Fac WHERE Fac_Rsocial = '' OR Fac_Doc NOT IN (SELECT Nif_Doc FROM KXComun.dbo.Nif)"), 0);
}

INSTANTIATE_TEST_SUITE_P(, ReferenceDataTest, ::testing::ValuesIn(backends()), nameOf);
INSTANTIATE_TEST_SUITE_P(, DemoCompanyTest, ::testing::ValuesIn(backends()), nameOf);

}  // namespace
}  // namespace FendaMaestros::tests
