#include "renumbering/Renumbering.h"

#include "SessionContract.h"
#include "renumbering/Report.h"
#include "storage/Consistency.h"
#include "storage/Parameters.h"
#include "tests/support/Company.h"
#include "tests/support/RivalConexion.h"

namespace FendaMaestros::tests {
namespace {

using namespace std::chrono_literals;
using Identity = AccountsToMerge::Identity;
using testing::valuesOf;

/// The demonstration, with journal, invoices, identities and linked accounts.
class Renumbering : public ::testing::TestWithParam<Backend> {
protected:
    std::unique_ptr<SesionBd> open() const { return place->open(name); }
    std::string rows(const std::string& sql) const { return valuesOf(*open()->Conexion()->Execute(sql)); }
    void run(const std::string& sql) const { open()->Conexion()->run({sql, {}}); }

    RenumberingPlan plan(const RenumberingRequest& request) const { return planRenumbering(*open(), request); }
    RenumberingPlan apply(const RenumberingRequest& request) const {
        const auto session = open();
        RenumberingPlan plan = planRenumbering(*session, request);
        EXPECT_TRUE(plan.allowed()) << reportText(plan);
        if (plan.allowed()) applyRenumbering(*session, request, plan);
        return plan;
    }
    std::string obstacles(const RenumberingRequest& request) const {
        std::string all;
        for (const std::string& obstacle : plan(request).obstacles) all += obstacle + "\n";
        return all;
    }
    /// As listed, account by account, whatever the codes.
    std::string balances() const {
        return rows(
            "SELECT PCta_Id,PCta_Des,(SELECT isnull(SUM(Apu_Debe-Apu_Haber),0) FROM Apu WHERE Apu_Cta=PCta_Cta AND "
            "Apu_Estado=0) AS Saldo,(SELECT COUNT(*) FROM Apu WHERE Apu_IdCta=PCta_Id) AS Apuntes,Pcta_IdNif,"
            "PCta_IdCtaAso FROM PCta WHERE PCta_Subcuenta=1 ORDER BY PCta_Id");
    }
    std::string everything() const {
        return rows("SELECT * FROM PCta WHERE PCta_Subcuenta=1 ORDER BY PCta_Id") +
               rows("SELECT * FROM Apu ORDER BY Apu_Id") + rows("SELECT * FROM Parametros ORDER BY Par_Nom");
    }
    std::string faults() const {
        std::string all;
        storage::checkCompanyRows(*open()->Conexion(), [&](const std::string& fault) { all += fault + "\n"; });
        return all;
    }
    std::string count(const std::string& from) const { return rows("SELECT COUNT(*) FROM " + from); }

    const std::shared_ptr<Companies> place = GetParam().companies(30ms);
    const std::string name = place->createDemonstration();
};

TEST_P(Renumbering, AnAccountKeepsAllButItsCode) {
    run("UPDATE PCta SET PCta_Des='O''Neill «Ñandú», S.L.' WHERE PCta_Cta='70000001'");
    run("UPDATE PCta SET PCta_CtaIrpfAso='70000001' WHERE PCta_Cta='43000009'");
    const std::string before = balances();
    const RenumberingPlan done = apply(AccountToRenumber{" 700,1 ", "70,99"});
    EXPECT_EQ(done.title, "Subcuenta 70000001 a 70000099");
    EXPECT_EQ(done.codes, (std::vector<CodeChange>{{"70000001", "70000099", "O'Neill «Ñandú», S.L.", 72}}));
    EXPECT_EQ(countsText(done), "Cambian: 1 subcuenta, 72 apuntes, 11 cuentas asociadas, 1 cuenta de Irpf.");
    EXPECT_EQ(balances(), before);
    EXPECT_EQ(faults(), "");
    EXPECT_EQ(count("PCta WHERE PCta_CtaAso='70000099'"), "11|\n");
    EXPECT_EQ(rows("SELECT PCta_Cta FROM PCta WHERE PCta_CtaIrpfAso='70000099'"), "43000009|\n");
    EXPECT_EQ(count("Apu WHERE Apu_Cta='70000001'"), "0|\n");

    apply(AccountToRenumber{"43000011", "43,"});
    apply(AccountToRenumber{"57000001", "999,7", true});
    EXPECT_EQ(rows("SELECT PCta_Cta FROM PCta WHERE PCta_Des IN ('Caja','Greta Lindqvall') ORDER BY PCta_Cta"),
              "43000012|\n99900007|\n");
}

TEST_P(Renumbering, AnAccountGetsNoCodeThatTheScreensWouldRefuse) {
    run("INSERT INTO Apu (Apu_Cta,Apu_IdCta) VALUES ('70000050',0)");
    run("INSERT INTO PCta (PCta_Cta,PCta_Des,PCta_Subcuenta,Pcta_IdNif) VALUES ('57000009','Una',1,0)");
    run("INSERT INTO PCta (PCta_Cta,PCta_Des,PCta_Subcuenta,Pcta_IdNif) VALUES ('57000009','Otra',1,0)");
    const std::string before = everything();
    const auto why = [&](const char* from, const char* to) { return obstacles(AccountToRenumber{from, to}); };
    EXPECT_EQ(why("70000002", "70000003"), "No hay ninguna subcuenta 70000002.\n");
    EXPECT_EQ(why("57000009", "57000003"), "El código 57000009 lo tienen 2 subcuentas.\n");
    EXPECT_EQ(why("70000001", "705,1"), "El código 70500001 lo tiene ya la subcuenta «Prestaciones de servicios».\n");
    EXPECT_EQ(why("70000001", "700000012"), "El código 700000012 tiene 9 cifras, y las subcuentas de la empresa 8.\n");
    EXPECT_EQ(why("70000001", "7000OO12"), "«7000OO12» no es un código de cuenta.\n");
    EXPECT_EQ(why("70000001", "999,1"), "El código 99900001 no pertenece al PGC 2008.\n");
    EXPECT_EQ(why("57000001", "430,77"), "Las subcuentas del grupo 430 llevan identidad fiscal, y esta no la tiene.\n");
    EXPECT_EQ(why("70000001", "70000050"),
              "Hay 1 apunte con el código 70000050, que no tiene ninguna subcuenta, y esta se los quedaría.\n");
    EXPECT_EQ(why("70000001", "70000001"), "La subcuenta ya tiene el código 70000001.\n");
    EXPECT_EQ(why("", ""), "Falta el código de la subcuenta.\nFalta el código nuevo.\n");

    const auto session = open();
    const AccountToRenumber request{"70000001", "705,1"};
    EXPECT_THROW(applyRenumbering(*session, request, planRenumbering(*session, request)), std::invalid_argument);
    EXPECT_EQ(everything(), before);
}

TEST_P(Renumbering, ACompanyGetsTenDigitsAndEightAgain) {
    // From the plan's 430, since there is no 4301; the zeros must not make it hang from 4300.
    run("UPDATE PCta SET PCta_Cta='43010005' WHERE PCta_Cta='43000005'");
    run("UPDATE Apu SET Apu_Cta='43010005' WHERE Apu_Cta='43000005'");
    run("INSERT INTO PCta (PCta_Cta,PCta_Des,PCta_Subcuenta,PCta_CtaIrpfAso) VALUES ('00012345','Sin "
        "grupo',1,'47310001')");
    run("INSERT INTO Apu (Apu_Cta,Apu_IdCta,Apu_Estado,Apu_Debe,Apu_Haber) VALUES ('43000099',0,0,5,0)");
    run("INSERT INTO Apu (Apu_Cta,Apu_IdCta,Apu_Estado,Apu_Debe,Apu_Haber) VALUES ('430',0,0,5,0)");
    const std::string before = balances(), contents = everything(), faultsBefore = faults();

    const RenumberingPlan done = apply(DigitsToChange{10});
    EXPECT_EQ(done.title, "Subcuentas de 8 a 10 dígitos");
    EXPECT_EQ(countsText(done), "Cambian: 49 subcuentas, 1.392 apuntes, 22 cuentas asociadas, 3 cuentas de Irpf.");
    EXPECT_EQ(done.codes.size(), 51u);
    EXPECT_EQ(balances(), before);
    const auto code = [&](const char* named) {
        return rows("SELECT PCta_Cta FROM PCta WHERE PCta_Des='" + std::string(named) + "' AND PCta_Subcuenta=1");
    };
    EXPECT_EQ(code("Talleres Valdeniebla S.L."), "4300000001|\n");
    EXPECT_EQ(code("Muebles Peñaluenga S.L."), "4301000005|\n");
    EXPECT_EQ(code("Equipos informáticos"), "2170000001|\n");
    EXPECT_EQ(code("Amortización acumulada de maquinaria"), "2813000001|\n");
    EXPECT_EQ(code("Sin grupo"), "0000012345|\n");
    EXPECT_EQ(count("Apu WHERE Apu_Cta='4300000099'") + count("Apu WHERE Apu_Cta='430'"), "1|\n1|\n");
    EXPECT_EQ(count("PCta WHERE PCta_CtaAso='7000000001'") + count("PCta WHERE PCta_CtaIrpfAso='4730010001'"),
              "11|\n1|\n");
    EXPECT_EQ(open()->Parametros().Item("Par_CtaNum").Value.text(), "10");

    apply(DigitsToChange{8});
    EXPECT_EQ(everything(), contents);
    EXPECT_EQ(faults(), faultsBefore);
}

TEST_P(Renumbering, DigitsAreNotLostAndNoTwoCodesBecomeOne) {
    EXPECT_EQ(obstacles(DigitsToChange{8}), "Las subcuentas ya son de 8 dígitos.\n");
    EXPECT_NE(obstacles(DigitsToChange{16}), "");
    run("INSERT INTO PCta (PCta_Cta,PCta_Des,PCta_Subcuenta) VALUES ('4300003','Corta',1)");
    run("INSERT INTO PCta (PCta_Cta,PCta_Des,PCta_Subcuenta) VALUES ('57200123','Larga',1)");
    run("INSERT INTO PCta (PCta_Cta,PCta_Des,PCta_Subcuenta) VALUES ('5720A123','Letra',1)");
    run("INSERT INTO Apu (Apu_Cta,Apu_IdCta) VALUES ('4300000002',0)");
    const auto why = [&](int digits) {
        std::string all;
        for (const CodeChange& change : plan(DigitsToChange{digits}).codes)
            if (!change.why.empty()) all += change.from + ": " + change.why + "\n";
        return all;
    };
    EXPECT_EQ(why(10),
              "43000002: ya hay apuntes o enlaces con el código 4300000002\n4300003: tiene 7 cifras, y no 8\n"
              "5720A123: no son solo cifras\n");
    EXPECT_EQ(obstacles(DigitsToChange{10}),
              "Hay 3 códigos que no se pueden cambiar; junto a cada uno se dice por qué.\n");
    const std::string shorter = why(5);
    EXPECT_NE(shorter.find("57200123: con 5 dígitos perdería cifras\n"), std::string::npos) << shorter;
    EXPECT_EQ(plan(DigitsToChange{5}).steps.size(), 0u);

    // Both hang from 101, of which the plan has no accounts with four digits.
    run("DELETE FROM Apu");
    run("DELETE FROM PCta WHERE PCta_Subcuenta=1");
    for (const char* code : {"10100100", "10110000", "57200001"})
        run("INSERT INTO PCta (PCta_Cta,PCta_Des,PCta_Subcuenta) VALUES ('" + std::string(code) + "','Una',1)");
    EXPECT_EQ(why(6), "10100100: también la 10110000 sería la 101100\n10110000: también la 10100100 sería la 101100\n");
    run("DELETE FROM PCta WHERE PCta_Cta='10100100'");
    EXPECT_EQ(why(6), "");
    run("UPDATE PCta SET PCta_Cta='10000000' WHERE PCta_Cta='57200001'");
    EXPECT_EQ(why(4), "10000000: la 1000 es una cuenta del plan oficial\n");
}

TEST_P(Renumbering, AMergeTakesWhatNamesTheFirstToTheSecond) {
    run("UPDATE PCta SET PCta_CtaAso=NULL,PCta_IdCtaAso=0,PCta_IdMasa=0,Pcta_IdNif=0 WHERE PCta_Cta='43000002'");
    run("UPDATE PCta SET PCta_IdDpto=2,PCta_CtaIrpfAso='47510001' WHERE PCta_Cta='43000001'");
    const auto saldo = [&] {
        return rows("SELECT SUM(Apu_Debe),SUM(Apu_Haber) FROM Apu WHERE Apu_Cta LIKE '4300000_'");
    };
    const std::string before = saldo();
    const std::string identity = rows("SELECT Pcta_IdNif FROM PCta WHERE PCta_Cta='43000001'");
    const RenumberingPlan done = apply(AccountsToMerge{"43000001", "43,2"});
    EXPECT_EQ(countsText(done), "Cambian: 1 subcuenta, 12 apuntes.");
    EXPECT_NE(reportText(done).find("La que queda toma la identidad B00000018 ("), std::string::npos)
        << reportText(done);
    EXPECT_EQ(rows("SELECT Pcta_IdNif FROM PCta WHERE PCta_Cta='43000002'"), identity);
    EXPECT_EQ(rows("SELECT PCta_CtaAso,PCta_CtaIrpfAso,PCta_IdDpto,PCta_Des FROM PCta WHERE PCta_Cta='43000002'"),
              "70000001|47510001|2|Montelarco Distribución S.A.|\n");
    EXPECT_EQ(count("PCta WHERE PCta_Cta='43000001'"), "0|\n");
    EXPECT_EQ(count("Apu WHERE Apu_Cta='43000002' AND Apu_IdCta=(SELECT PCta_Id FROM PCta WHERE "
                    "PCta_Cta='43000002')"),
              "24|\n");
    EXPECT_EQ(saldo(), before);
    EXPECT_EQ(faults(), "");

    // The one that stays was linked to the one that goes: it is not linked to itself.
    run("UPDATE PCta SET PCta_CtaAso='70000001',PCta_IdCtaAso=(SELECT A.PCta_Id FROM PCta AS A WHERE "
        "A.PCta_Cta='70000001') WHERE PCta_Cta='70500001'");
    EXPECT_EQ(countsText(apply(AccountsToMerge{"70000001", "70500001"})),
              "Cambian: 1 subcuenta, 72 apuntes, 11 cuentas asociadas.");
    EXPECT_EQ(rows("SELECT PCta_CtaAso,PCta_IdCtaAso FROM PCta WHERE PCta_Cta='70500001'"), "|0|\n");
    EXPECT_EQ(count("PCta WHERE PCta_CtaAso='70500001'"), "11|\n");
    EXPECT_EQ(faults(), "");
}

TEST_P(Renumbering, WhoseIdentityStaysIsSaidWhenBothHaveOne) {
    EXPECT_EQ(obstacles(AccountsToMerge{"43000001", "43000001"}), "Son la misma subcuenta.\n");
    const std::string before = everything();
    EXPECT_NE(
        obstacles(AccountsToMerge{"43000003", "43000004"}).find("B00000034 (6 facturas) y F00000042 (6 facturas)"),
        std::string::npos)
        << obstacles(AccountsToMerge{"43000003", "43000004"});
    EXPECT_EQ(everything(), before);
    const auto document = [&](const char* code) {
        return rows("SELECT Nif_Doc FROM PCta INNER JOIN KXComun.dbo.Nif ON Nif_Id=Pcta_IdNif WHERE PCta_Cta='" +
                    std::string(code) + "'");
    };
    apply(AccountsToMerge{"43000003", "43000004", Identity::OfSecond});
    EXPECT_EQ(document("43000004"), "F00000042|\n");
    apply(AccountsToMerge{"43000005", "43000004", Identity::OfFirst});
    EXPECT_EQ(document("43000004"), "B00000059|\n");
    EXPECT_EQ(count("KXComun.dbo.Nif WHERE Nif_Doc IN ('B00000034','F00000042')"), "2|\n");
    EXPECT_EQ(faults(), "");
}

TEST_P(Renumbering, IsKeptWholeOrNotAtAll) {
    for (const RenumberingRequest& request :
         {RenumberingRequest(AccountToRenumber{"43000001", "43000099"}),
          RenumberingRequest(AccountsToMerge{"43000003", "43000004", Identity::OfFirst}),
          RenumberingRequest(DigitsToChange{10})}) {
        const auto failing = std::make_shared<testing::RivalConexion>(open()->Conexion());
        SesionSql session(failing, storage::readParameters(*failing));
        const RenumberingPlan seen = planRenumbering(session, request);
        const std::string before = everything();
        int failed = 0;
        const auto tryOut = [&](const RenumberingProgress& progress = {}) {
            return errorOf([&] { applyRenumbering(session, request, seen, progress); });
        };
        const auto statements = [&] {
            failing->failAt(0);
            EXPECT_EQ(tryOut([](std::int64_t done, std::int64_t total) { return done < total; }),
                      ErrorBd::Kind::Stopped);
            return failing->seen() + 1;
        }();
        EXPECT_EQ(everything(), before);
        for (int n = 1; n <= statements; ++n, ++failed) {
            failing->failAt(n);
            EXPECT_EQ(tryOut(), ErrorBd::Kind::Other) << n;
            EXPECT_EQ(everything(), before) << n;
        }
        EXPECT_GT(failed, 8);
        failing->failAt(0);
        applyRenumbering(session, request, seen);
        EXPECT_NE(everything(), before);
    }
}

/// Another program holds the company, has changed what the plan goes by, or the length of all codes.
TEST_P(Renumbering, OthersWhoWorkMeanwhileAreNoticed) {
    const auto rival = std::make_shared<testing::RivalConexion>(open()->Conexion());
    SesionSql session(rival, storage::readParameters(*rival));
    const DigitsToChange request{10};
    RenumberingPlan seen = planRenumbering(session, request);
    {
        const auto other = open();
        other->Conexion()->BeginTrans();
        other->Conexion()->run({"UPDATE PCta SET PCta_Des='Otra' WHERE PCta_Cta='57000001'", {}});
        EXPECT_EQ(errorOf([&] { applyRenumbering(session, request, seen); }), ErrorBd::Kind::Busy);
        other->Conexion()->RollbackTrans();
    }
    for (const char* change : {"INSERT INTO Apu (Apu_Cta) VALUES ('57000001')",
                               "UPDATE PCta SET PCta_CtaAso='57000001' WHERE PCta_Cta='40000001'",
                               "UPDATE PCta SET PCta_Cta='57000002' WHERE PCta_Cta='57000001'"}) {
        seen = planRenumbering(session, request);
        rival->rival = {change, {}};
        EXPECT_THROW(applyRenumbering(session, request, seen), OutdatedPreview) << change;
        EXPECT_EQ(count("PCta WHERE LEN(PCta_Cta)=10"), "0|\n");
    }
    apply(request);
    EXPECT_EQ(planRenumbering(session, AccountToRenumber{"7000000001", "7000000002"}).obstacles.back(),
              "Otro puesto ha cambiado los dígitos de las subcuentas: hay que volver a abrir la empresa.");
}

INSTANTIATE_TEST_SUITE_P(Adapters, Renumbering, ::testing::ValuesIn(backends()), nameOf);

}  // namespace
}  // namespace FendaMaestros::tests
