#include <fstream>
#include <sstream>

#include "app/Composition.h"
#include "tests/app/RunFenda.h"
#include "tests/support/Company.h"

#ifdef FENDA_WITH_SQLITE

namespace FendaMaestros {

namespace {

using testing::fenda;
using testing::OwnFolder;
using testing::Ran;

/// The demonstration in a folder of its own.
class RenumberingCommand : public ::testing::Test {
protected:
    OwnFolder own_;

    void SetUp() override { companies()->createDemonstration(); }
    std::unique_ptr<Companies> companies() const { return companiesAt({Place::Kind::Folder, own_.path}); }
    Ran run(std::vector<std::string> words) const {
        words.insert(words.begin(), "renumerar");
        words.insert(words.end(), {"--carpeta", own_.path.string()});
        return fenda(std::move(words));
    }
    std::string read(const std::string& sql) const {
        return testing::valuesOf(*companies()->open("Empresa de demostración")->Conexion()->Execute(sql));
    }
    static std::string contents(const std::string& path) {
        std::ostringstream all;
        all << std::ifstream(path).rdbuf();
        return all.str();
    }
};

TEST_F(RenumberingCommand, ShowsAndThenDoesIt) {
    const std::vector<std::string> words{"cuenta", "43,5", "43,50"};
    const std::string shown =
        "Subcuenta 43000005 a 43000050\n\n43000005 → 43000050  Muebles Peñaluenga S.L. (14 apuntes)\n\n"
        "Cambian: 1 subcuenta, 14 apuntes.\n\n";
    Ran ran = run(words);
    EXPECT_EQ(ran.out, shown + "No se ha escrito nada; con --aplicar se hace.\n");
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(read("SELECT COUNT(*) FROM Apu WHERE Apu_Cta='43000005'"), "14|\n");
    ran = run({"cuenta", "43,5", "43,50", "--aplicar"});
    EXPECT_EQ(ran.out, shown + "Se ha hecho.\n");
    EXPECT_EQ(read("SELECT COUNT(*) FROM Apu WHERE Apu_Cta='43000050'"), "14|\n");
    for (const char* nowhere : {"/dev/null", "Empresa de demostración.db", "KXComun.db"}) {
        ran = run({"cuenta", "43,50", "43,51", "--aplicar", "--informe", (own_.path / nowhere).string()});
        EXPECT_EQ(ran.status, 2) << nowhere;
        EXPECT_EQ(read("SELECT COUNT(*) FROM Apu WHERE Apu_Cta='43000050'"), "14|\n") << nowhere;
    }
    EXPECT_EQ(run({"cuenta", "57000001", "999,1"}).status, 1);
    EXPECT_EQ(run({"cuenta", "57000001", "999,1", "--fuera-del-plan"}).status, 0);
}

TEST_F(RenumberingCommand, SaysWhatForbidsItAndKeepsAReport) {
    const std::string text = (own_.path / "informe.txt").string(), csv = (own_.path / "informe.CSV").string();
    Ran ran = run({"fundir", "43000001", "43,2", "--aplicar", "--informe", text});
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.err, "fenda: No se ha escrito nada.\n");
    EXPECT_NE(contents(text).find("no se ha escrito nada:\n\nSubcuenta 43000001 fundida en la 43000002\n"),
              std::string::npos)
        << contents(text);
    EXPECT_NE(contents(text).find("No se puede: Tienen identidades distintas, B00000018"), std::string::npos);
    ran = run({"fundir", "43000001", "43,2", "--identidad", "desaparece", "--aplicar", "--informe", text});
    EXPECT_EQ(ran.status, 0) << ran.out;
    EXPECT_NE(contents(text).find("\nSe ha hecho:\n"), std::string::npos) << contents(text);
    EXPECT_EQ(read("SELECT Nif_Doc FROM PCta INNER JOIN KXComun.dbo.Nif ON Nif_Id=Pcta_IdNif WHERE "
                   "PCta_Cta='43000002'"),
              "B00000018|\n");

    EXPECT_EQ(run({"digitos", "10", "--aplicar", "--informe", csv}).status, 0);
    EXPECT_TRUE(
        contents(csv).starts_with("Código;Código nuevo;Nombre;Apuntes;Lo impide\r\n"
                                  "10000001;1000000001;Capital social;1;\r\n"))
        << contents(csv);
    EXPECT_EQ(read("SELECT Par_Valor FROM Parametros WHERE Par_Nom='Par_CtaNum'"), "10|\n");
    EXPECT_EQ(run({"digitos", "5", "--informe", csv}).status, 1);
    EXPECT_NE(contents(csv).find("con 5 dígitos perdería cifras\r\n"), std::string::npos) << contents(csv);
}

TEST_F(RenumberingCommand, SaysWhatIsMissing) {
    for (const auto& [words, complaint] : std::vector<std::pair<std::vector<std::string>, std::string>>{
             {{}, "Falta lo que se renumera: cuenta, digitos o fundir."},
             {{"cuenta"}, "Falta la subcuenta."},
             {{"cuenta", "1"}, "Falta el código nuevo."},
             {{"fundir", "1"}, "Falta la subcuenta que queda."},
             {{"digitos"}, "Falta el número de dígitos."},
             {{"digitos", "diez"}, "Los dígitos deben ser un número, y no «diez»."},
             {{"fundir", "1", "2", "--identidad", "x"}, "La identidad debe ser desaparece o queda, y no «x»."}}) {
        const Ran ran = words.empty() ? fenda({"renumerar"}) : run(words);
        EXPECT_EQ(ran.status, 2) << complaint;
        EXPECT_EQ(ran.err, "fenda: " + complaint + "\n");
    }
}

}  // namespace

}  // namespace FendaMaestros

#endif
