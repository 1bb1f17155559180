#include "SessionContract.h"
#include "storage/Parameters.h"

namespace FendaMaestros::tests {
namespace {

using Kind = ErrorBd::Kind;

class CompaniesContract : public ::testing::TestWithParam<Backend> {
protected:
    std::unique_ptr<SesionBd> openCreated(const std::string& name = "Una") {
        companies->create({.name = name, .fiscalYear = 2026});
        return companies->open(name);
    }
    static void insertCentre(SesionBd& session, const std::string& name) {
        session.Conexion()->run({"INSERT INTO Centro (Centro_Des) VALUES (?)", {name}});
    }
    static std::int64_t count(SesionBd& session, const std::string& table) {
        return session.Conexion()->Execute("SELECT COUNT(*) FROM " + table)->cell(0, 0).integer();
    }
    /// Inserts and commits in the transaction that is open; rolls it back when another one is in the way.
    static bool keeps(SesionBd& session) {
        try {
            insertCentre(session, "nuevo");
            session.Conexion()->CommitTrans();
            return true;
        } catch (const ErrorBd& error) {
            EXPECT_EQ(error.kind(), Kind::Busy) << error.what();
            session.Conexion()->RollbackTrans();
            return false;
        }
    }

    const std::shared_ptr<Companies> companies = GetParam().companies(std::chrono::milliseconds(30));
};

TEST_P(CompaniesContract, FirstStartMakesADemonstrationCompany) {
    EXPECT_FALSE(companies->exists());
    EXPECT_EQ(errorOf([&] { companies->list(); }), Kind::NotADatabase);
    const auto session = companies->open(companies->createDemonstration());
    EXPECT_TRUE(companies->exists());
    EXPECT_EQ(companies->list(), std::vector<std::string>{"Empresa de demostración"});
    const auto& parameters = session->Parametros();
    EXPECT_EQ(parameters.Item("Par_Nombre").Value, Variant("Empresa de demostración"));
    EXPECT_EQ(parameters.Item("Par_Ejercicio").Value, Variant(2026));
    EXPECT_EQ(parameters.Item("par_ctanum").Value, Variant(8));
    EXPECT_EQ(parameters.Item("Par_Provincia").Value, Variant(28));
    EXPECT_EQ(parameters.Item("PAR_ORCONTANOM").Value, Variant(0));
    for (const char* table : {"Centro", "Dpto"}) EXPECT_GE(count(*session, table), 10) << table;
    EXPECT_GE(count(*session, "KXComun.dbo.Pais"), 200);
    EXPECT_EQ(count(*session, "KXComun.dbo.Pais WHERE Pais_Cod = '011' AND Pais_Nom = 'España' AND Pais_Aeat = 'ES'"),
              1);
    EXPECT_EQ(count(*session, "KXComun.dbo.Conceptos WHERE Conce_Cod BETWEEN 94 AND 99"), 6);
    EXPECT_EQ(count(*session, "KXComun.dbo.Conceptos WHERE Conce_Cod BETWEEN 1001 AND 1006 AND Conce_Des LIKE '00_#%'"),
              6);
    for (const char* plan : {"1990", "2008"})
        EXPECT_GE(count(*session, std::string("KXComun.dbo.Masas WHERE Masas_Plan = ") + plan), 10);
    EXPECT_EQ(count(*session, "KXComun.dbo.Masas WHERE LEN(Masas_Des) > 50 OR Masas_AP NOT IN (1, 2, 3)"), 0);
    EXPECT_EQ(count(*session, "KXComun.dbo.PROV"), 53);
}

TEST_P(CompaniesContract, AnyNameMakesACompanyOfItsOwn) {
    const std::vector<std::string> names = {"../a/b: 100%.", ".oculta", "kxcomun", "Ñandú", "zeta"};
    for (const auto& name : names) companies->create({.name = name, .fiscalYear = 2026});
    EXPECT_EQ(companies->list(), names);
    for (const auto& name : names) {
        EXPECT_EQ(companies->open(name)->Parametros().Item("Par_Nombre").Value, Variant(name));
        EXPECT_EQ(errorOf([&] { companies->create({.name = name, .fiscalYear = 2026}); }), Kind::Constraint);
    }
    for (const std::string name : {"ÑANDÚ", "Zeta"})
        EXPECT_EQ(errorOf([&] { companies->create({.name = name, .fiscalYear = 2026}); }), Kind::Constraint);
}

TEST_P(CompaniesContract, ParametersAreChangedByWhoWorksWithTheCompany) {
    const auto session = openCreated();
    session->Conexion()->run({"DELETE FROM Parametros WHERE Par_Nom = 'Par_Provincia'", {}});
    NewCompany company = storage::companyOf(session->Parametros());
    company.name = "O'Neill";
    company.fiscalYear = 1999;
    company.province = 7;
    storage::changeParameters(*session->Conexion(), company);
    EXPECT_EQ(storage::companyOf(companies->open("Una")->Parametros()), company);
    EXPECT_EQ(count(*session, "Parametros"), 5);
    company.accountDigits = 3;
    EXPECT_EQ(errorOf([&] { storage::changeParameters(*session->Conexion(), company); }), Kind::Refused);
}

TEST_P(CompaniesContract, ParametersAreThoseTheCompanyWasCreatedWith) {
    companies->create({.name = "O'Neill", .fiscalYear = 1999, .accountDigits = 15, .province = 99, .nameOrder = 1});
    const auto session = companies->open("O'Neill");
    const auto& parameters = session->Parametros();
    EXPECT_EQ(parameters.Item("Par_Nombre").Value, Variant("O'Neill"));
    EXPECT_EQ(parameters.Item("Par_Ejercicio").Value, Variant(1999));
    EXPECT_EQ(parameters.Item("Par_CtaNum").Value, Variant(15));
    EXPECT_EQ(parameters.Item("Par_Provincia").Value, Variant(99));
    EXPECT_EQ(parameters.Item("PAR_ORCONTANOM").Value, Variant(1));
}

TEST_P(CompaniesContract, RefusesDataThatMakeNoCompany) {
    const NewCompany good = {.name = "Una", .fiscalYear = 2026};
    const auto with = [&good](auto member, auto value) {
        NewCompany bad = good;
        bad.*member = value;
        return bad;
    };
    for (const auto& bad :
         {with(&NewCompany::name, "  "), with(&NewCompany::name, "\xFF"), with(&NewCompany::name, "A\tB"),
          with(&NewCompany::name, std::string(61, 'x')), with(&NewCompany::fiscalYear, 1899),
          with(&NewCompany::fiscalYear, 3000), with(&NewCompany::accountDigits, 3),
          with(&NewCompany::accountDigits, 16), with(&NewCompany::province, 0), with(&NewCompany::province, 53)})
        EXPECT_EQ(errorOf([&] { companies->create(bad); }), Kind::Refused) << bad.name;
    EXPECT_FALSE(companies->exists());
}

TEST_P(CompaniesContract, ACompanyThatIsNotThereCannotBeOpened) {
    EXPECT_EQ(errorOf([&] { companies->open("Una"); }), Kind::NotADatabase);
    openCreated();
    EXPECT_EQ(errorOf([&] { companies->open("Otra"); }), Kind::NotADatabase);
}

TEST_P(CompaniesContract, CompaniesShareOneDatabase) {
    const auto one = openCreated("Una"), other = openCreated("Otra");
    insertCentre(*one, "solo aquí");
    one->Conexion()->run({"UPDATE KXComun.dbo.Pais SET Pais_Nom = ? WHERE Pais_Cod = ?", {"Reino de España", "011"}});
    EXPECT_EQ(count(*other, "Centro"), 0);
    EXPECT_EQ(count(*other, "KXComun.dbo.Pais WHERE Pais_Nom = 'Reino de España'"), 1);
}

TEST_P(CompaniesContract, WhatATransactionHasReadStaysTrue) {
    const auto one = openCreated(), other = companies->open("Una");
    for (SesionBd* session : {one.get(), other.get()}) {
        session->Conexion()->BeginTrans();
        EXPECT_EQ(count(*session, "Centro"), 0);
    }
    const bool oneKept = keeps(*one);
    EXPECT_EQ(count(*other, "Centro"), 0);
    EXPECT_NE(keeps(*other), oneKept) << "both have counted no row and made the first";
    EXPECT_EQ(count(*one, "Centro"), 1);
    EXPECT_EQ(count(*other, "Centro"), 1);
}

INSTANTIATE_TEST_SUITE_P(, CompaniesContract, ::testing::ValuesIn(backends()), nameOf);

}  // namespace
}  // namespace FendaMaestros::tests
