#include "interchange/Import.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "SessionContract.h"
#include "TemporaryFolder.h"
#include "interchange/Export.h"
#include "interchange/ImportFile.h"
#include "tests/support/Company.h"

namespace FendaMaestros::tests {
namespace {

using namespace std::chrono_literals;
using testing::valuesOf;

/// An empty company.
class Import : public ::testing::TestWithParam<Backend> {
protected:
    Import() : here(place()) {}

    static std::shared_ptr<Companies> place() {
        auto made = GetParam().companies(30ms);
        made->create({.name = "Empresa", .fiscalYear = 2026});
        return made;
    }
    static std::unique_ptr<SesionBd> open(Companies& place) { return place.open("Empresa"); }
    ImportPreview preview(SesionBd& session, const std::string& csv, ExchangeKind kind = ExchangeKind::Accounts) {
        const std::string path = (folder_.path() / "datos.csv").string();
        std::ofstream(path, std::ios::binary) << csv;
        const ImportFile file(path, kind, {});
        return {session, kind, *file.rows(), file.form().columns};
    }
    void import(Companies& place, const std::string& csv, ExchangeKind kind = ExchangeKind::Accounts) {
        const auto session = open(place);
        const ImportPreview read = preview(*session, csv, kind);
        for (const ImportRow& row : read.rows()) EXPECT_EQ(row.why, "") << row.key;
        read.apply(*session, false);
    }
    static std::string exported(Companies& place, ExchangeKind kind) {
        return exportedCsv(*exportedRows(*open(place), kind));
    }
    static std::string rows(Companies& place, const std::string& sql) {
        return valuesOf(*open(place)->Conexion()->Execute(sql));
    }
    static std::string written(Companies& place) {
        return rows(place, "SELECT COUNT(*) FROM PCta WHERE PCta_Subcuenta=1") +
               rows(place, "SELECT COUNT(*) FROM KXComun.dbo.Nif");
    }

    const std::shared_ptr<Companies> here;

private:
    TemporaryFolder folder_;
};

constexpr const char* customers =
    "Subcuenta;Descripción;CIF;Razón social;Domicilio;CP;Población;Provincia;País;Cuenta asociada\n"
    "43,5;Gestión;b-12.345.674;Gestión «Sur», S.L.;Mayor 5;08001;Sants;;;700,1\n"
    "43,6;Ana;12345678;;;;;;;\n"
    "70000001;Ventas;;;;;;;;\n"
    "43,7;Lyon;FR12345678901;;;69001;;Ródano;Francia;\n"
    "40,1;Gestión;B12345674;;;;;;;\n";

/// An imported row is what a save would have stored: codes of accounts and surnames that are not there are null, the
/// town comes from another identity with the postal code, the province from the code or from the company.
TEST_P(Import, StoresWhatTheScreensStore) {
    import(*here, customers);
    EXPECT_EQ(rows(*here,
                   "SELECT PCta_Cta, PCta_Des, PCta_IdMasa, PCta_IdCen, Nif_Doc, PCta_CtaAso, PCta_CtaIrpfAso, "
                   "PCta_Plan, Pcta_Origen, Pcta_IdOrigen, PCta_bActiva FROM PCta INNER JOIN KXComun.dbo.Nif ON "
                   "Nif_Id = Pcta_IdNif WHERE PCta_Subcuenta=1 ORDER BY PCta_Id"),
              "43000005|Gestión|0|0|B12345674|70000001|||0|0|1|\n43000006|Ana|0|0|12345678Z||||0|0|1|\n"
              "43000007|Lyon|0|0|FR12345678901||||0|0|1|\n40000001|Gestión|0|0|B12345674||||0|0|1|\n");
    EXPECT_EQ(rows(*here, "SELECT COUNT(*) FROM PCta WHERE PCta_CtaAso IS NULL AND PCta_Subcuenta=1"), "4|\n");
    EXPECT_EQ(rows(*here, "SELECT PCta_Cta FROM PCta WHERE PCta_Id IN (SELECT PCta_IdCtaAso FROM PCta)"),
              "70000001|\n");
    const auto identities = open(*here)->Conexion()->Execute(
        "SELECT Nif_TipDoc, Nif_Nom, Nif_Ape1, Nif_Dir, Nif_CP, Nif_Pob, Nif_Prov, Nif_Pais, Nif_ClaveRet FROM "
        "KXComun.dbo.Nif ORDER BY Nif_Id");
    EXPECT_EQ(valuesOf(*identities),
              "0|Gestión «Sur», S.L.||Mayor 5|08001|Sants|08|011||\n1|Ana|||||28|011||\n"
              "3|Lyon|||69001||Ródano|001||\n");
    EXPECT_TRUE(identities->cell(0, 2).isNull() && identities->cell(0, 8).isNull());
    EXPECT_FALSE(identities->cell(1, 2).isNull());

    import(*here, "NIF;Nombre;C.P.\n87654321;Eva;8001\n", ExchangeKind::Identities);
    EXPECT_EQ(rows(*here, "SELECT Nif_Pob, Nif_Prov FROM KXComun.dbo.Nif WHERE Nif_Doc = '87654321X'"), "Sants|08|\n");
}

TEST_P(Import, SaysWhatChangesFromWhatToWhatAndLeavesWhatTheFileDoesNotSay) {
    import(*here, customers);
    const auto session = open(*here);
    const auto run = [&](const std::string& sql) { session->Conexion()->run({sql, {}}); };
    run("UPDATE PCta SET Pcta_Origen = 7, Pcta_IdOrigen = 9, PCta_IdCen = 3 WHERE PCta_Cta = '43000006'");
    run("INSERT INTO Apu (Apu_IdCta, Apu_CtaDes) SELECT PCta_Id, '' FROM PCta WHERE PCta_Cta = '43000006'");
    const ImportPreview read = preview(
        *session,
        "Cuenta;Nombre;NIF;Teléfono;Población\n43000005;Gestión;B12345674;;\n43000006;Ana Ruiz;12345678Z;600;\n");
    ASSERT_EQ(read.rows().size(), 2u);
    EXPECT_EQ(read.rows()[0].verdict, Verdict::Same);
    std::string changes;
    for (const auto& [field, from, to] : read.rows()[1].changes) changes += field + ":" + from + ">" + to + " ";
    EXPECT_EQ(changes, "Teléfono:>600 Nombre:Ana>Ana Ruiz ");
    read.apply(*session, false);
    EXPECT_EQ(rows(*here,
                   "SELECT PCta_Des, Pcta_Origen, Pcta_IdOrigen, PCta_IdCen FROM PCta WHERE PCta_Cta = "
                   "'43000006'"),
              "Ana Ruiz|7|9|3|\n");
    EXPECT_EQ(rows(*here, "SELECT Apu_CtaDes FROM Apu"), "Ana Ruiz|\n");
    EXPECT_EQ(rows(*here, "SELECT Nif_Nom, Nif_Tf, Nif_Prov FROM KXComun.dbo.Nif WHERE Nif_Doc = '12345678Z'"),
              "Ana|600|28|\n");
}

TEST_P(Import, WhatIsExportedAndImportedElsewhereIsExportedTheSame) {
    import(*here, customers);
    import(*here,
           "Cuenta,Nombre,Activa,NIF,Razón social,Dirección,Teléfono,Móvil,C.P.\n"
           "41000009,\"Varias \"\"Hnas\"\"; y\r\notra línea, ñ €\",no,B99999999,=1+1,\"@via, 3\",+34 600,'x,01001\n"
           "57200001,-Caja,,,,,,,\n");
    const std::string demonstration = here->createDemonstration();
    const auto there = place();
    for (const ExchangeKind kind : {ExchangeKind::Accounts, ExchangeKind::Identities}) {
        const std::string file = exported(*here, kind);
        import(*there, file, kind);
        EXPECT_EQ(exported(*there, kind), file);
    }
    EXPECT_NE(exported(*there, ExchangeKind::Accounts).find(";'=1+1;"), std::string::npos);
    EXPECT_EQ(rows(*there, "SELECT Nif_Nom, Nif_Movil FROM KXComun.dbo.Nif WHERE Nif_Doc = 'B99999999'"), "=1+1|'x|\n");

    const std::string file = exportedCsv(*exportedRows(*here->open(demonstration), ExchangeKind::Accounts));
    there->create({.name = "Demostración", .fiscalYear = 2026});
    const auto session = there->open("Demostración");
    preview(*session, file).apply(*session, false);
    EXPECT_EQ(exportedCsv(*exportedRows(*session, ExchangeKind::Accounts)), file);
}

std::string manyAccounts(int count) {
    std::string csv = "Cuenta;Nombre;NIF\n";
    for (int i = 0; i < count; ++i)
        csv += std::to_string(43'000'000 + i) + ";Cliente " + std::to_string(i) + ";" + std::to_string(10'000'000 + i) +
               "\n";
    return csv;
}

/// Stopped, failed, killed or overtaken by another program: all of it or nothing.
TEST_P(Import, KeepsAllOrNothing) {
    const std::string csv = manyAccounts(2500);
    const auto session = open(*here);
    const ImportPreview read = preview(*session, csv);
    EXPECT_EQ(errorOf([&] { read.apply(*session, false, [](std::int64_t done) { return done < 4000; }); }),
              ErrorBd::Kind::Stopped);
    EXPECT_EQ(written(*here), "0|\n0|\n");

    if (const pid_t child = fork(); child == 0) {
        const auto own = open(*here);
        preview(*own, csv).apply(*own, false, [](std::int64_t done) { return done == 0 || raise(SIGKILL) != 0; });
        _exit(0);
    } else {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status));
    }
    EXPECT_EQ(written(*here), "0|\n0|\n");

    const ImportPreview wrong = preview(*session, "Cuenta;Nombre\n57200001;Bien\n43000001;Sin nif\n");
    EXPECT_THROW(wrong.apply(*session, false), std::invalid_argument);
    EXPECT_EQ(written(*here), "0|\n0|\n");
    wrong.apply(*session, true);
    EXPECT_EQ(written(*here), "1|\n0|\n");
    EXPECT_THROW(read.apply(*session, false), OutdatedPreview);
}

/// The other one writes in the middle of the first: one of them is turned away as busy, and then told.
TEST_P(Import, OfTwoAtOnceOneIsToldAndNothingIsDoubled) {
    const std::string csv = manyAccounts(1200);
    const auto mine = open(*here), yours = open(*here);
    const ImportPreview first = preview(*mine, csv), second = preview(*yours, csv);
    std::vector<const ImportPreview*> refused;
    const auto tryOut = [&](const ImportPreview& read, SesionBd& session, const ImportProgress& progress) {
        try {
            read.apply(session, false, progress);
        } catch (const ErrorBd& error) {
            EXPECT_EQ(error.kind(), ErrorBd::Kind::Busy) << error.what();
            refused.push_back(&read);
        }
    };
    tryOut(first, *mine, [&](std::int64_t done) {
        if (done == 1000) tryOut(second, *yours, {});
        return true;
    });
    ASSERT_EQ(refused.size(), 1u);
    EXPECT_THROW(refused.front()->apply(*mine, false), OutdatedPreview);
    EXPECT_EQ(written(*here), "1200|\n1200|\n");
}

INSTANTIATE_TEST_SUITE_P(Adapters, Import, ::testing::ValuesIn(backends()), nameOf);

}  // namespace
}  // namespace FendaMaestros::tests
