#include <sys/stat.h>

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

/// An empty company in a folder of its own, and files beside it.
class Exchange : public ::testing::Test {
protected:
    OwnFolder own_;

    void SetUp() override {
        companiesAt({Place::Kind::Folder, own_.path})->create({.name = "Empresa", .fiscalYear = 2026});
    }
    std::string file(const std::string& name) const { return (own_.path / name).string(); }
    Ran importar(const std::string& kind, const std::string& contents, std::vector<std::string> options = {}) {
        std::ofstream(file("f.csv"), std::ios::binary) << contents;
        return run(kind, std::move(options));
    }
    /// What there is at the name of the file.
    Ran run(const std::string& kind, std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"importar", kind, file("f.csv"), "--carpeta", own_.path.string()});
        return fenda(std::move(options));
    }
    std::string read(const std::string& sql) {
        const auto session = companiesAt({Place::Kind::Folder, own_.path})->open("Empresa");
        return testing::valuesOf(*session->Conexion()->Execute(sql));
    }
    std::string accounts() {
        return read("SELECT PCta_Cta, PCta_Des FROM PCta WHERE PCta_Subcuenta=1 ORDER BY PCta_Cta");
    }
};

TEST_F(Exchange, TellsHowTheFileIsUnderstoodAndWhatBecomesOfEachRow) {
    const std::string csv =
        "C\xF3"
        "digo;NOMBRE;C.I.F.;Saldo\r\n"
        "43,5;P\xE9rez;12345678A;1\r\n43000007;Sin;;\r\n4.3E+07;Roto;;\r\n43.000.008;Luz;B12345674;\r\n"
        "43000009.0;Eco;B12345674;\r\n430.10;Paz;B-12345674;\r\n99900001;Fuera;;\r\n430,;Otra;;\r\n5720000012;;;\r\n"
        "43000005;Dos;12345678Z;\r\n570;Caja;;\r\n01/02/2026;Fecha;;\r\n";
    const Ran onto = importar("cuentas", csv, {"--erroneas", file("f.csv")});
    EXPECT_EQ(onto.err, "fenda: No se puede guardar \"" + file("f.csv") + "\": es el fichero que se importa.\n");
    const Ran shown = run("cuentas", {"--erroneas", file("mal.csv")});
    EXPECT_EQ(shown.status, 1);
    EXPECT_EQ(shown.out,
              "Fichero: f.csv, Windows-1252, separado por ;, con cabecera\n"
              "Columnas: Cuenta = 1 «Código», Nombre = 2 «NOMBRE», NIF = 3 «C.I.F.»\nNo se usan: 4 «Saldo»\n\n"
              "línea 2: nueva 43000005 Pérez (se ha escrito «43,5»; el NIF es 12345678Z, y no 12345678A)\n"
              "línea 3: errónea 43000007 Sin: No ha indicado el Nif asociado\n"
              "línea 4: errónea 4.3E+07 Roto: «4.3E+07» es un número que una hoja de cálculo ha redondeado, y sus "
              "cifras se han perdido: dé a la columna formato de texto y vuelva a guardar el fichero\n"
              "línea 5: nueva 43000008 Luz (se ha escrito «43.000.008»)\n"
              "línea 6: nueva 43000009 Eco (se ha escrito «43000009.0»)\n"
              "línea 7: nueva 43000010 Paz (se ha escrito «430.10»)\n"
              "línea 8: errónea 99900001 Fuera: no pertenece al PGC 2008\n"
              "línea 9: errónea 430, Otra: «430,» pide el siguiente código libre: en un fichero hace falta el código "
              "entero\n"
              "línea 10: errónea 5720000012: «5720000012» tiene 10 cifras, y las cuentas de la empresa 8\n"
              "línea 11: errónea 43000005 Dos: la cuenta está también en la línea 2\n"
              "línea 12: nueva 57000000 Caja (se ha escrito «570»)\n"
              "línea 13: errónea 01/02/2026 Fecha: «01/02/2026» no es un código de cuenta\n\n"
              "5 nuevas, 0 con cambios, 0 iguales y 7 erróneas.\nSe ha guardado " +
                  file("mal.csv") + "\nNo se ha escrito nada; con --aplicar se importan.\n");
    std::ostringstream wrong;
    wrong << std::ifstream(file("mal.csv")).rdbuf();
    EXPECT_TRUE(wrong.str().starts_with("Código;NOMBRE;C.I.F.;Saldo;Motivo\r\n43000007;Sin;;;No ha")) << wrong.str();
    EXPECT_EQ(accounts(), "");

    EXPECT_EQ(importar("cuentas", csv, {"--aplicar"}).status, 1);
    EXPECT_EQ(accounts(), "");
    EXPECT_EQ(importar("cuentas", csv, {"--aplicar", "--omitir-erroneas"}).status, 1);
    EXPECT_EQ(accounts(), "43000005|Pérez|\n43000008|Luz|\n43000009|Eco|\n43000010|Paz|\n57000000|Caja|\n");
    EXPECT_EQ(importar("cuentas", "99900001;Fuera\n", {"--aplicar", "--fuera-del-plan"}).status, 0);
    EXPECT_NE(importar("cuentas", csv).out.find("0 nuevas, 0 con cambios, 6 iguales"), std::string::npos);
}

TEST_F(Exchange, WhatIsGuessedOfAFileCanBeSaid) {
    Ran ran = importar("cuentas", "570,3;Caja, de \xC3\xB1\n", {"--aplicar"});
    EXPECT_EQ(ran.status, 0) << ran.out << ran.err;
    EXPECT_NE(ran.out.find("UTF-8, separado por ;, sin cabecera\n"), std::string::npos) << ran.out;
    ran = importar("cuentas", "Nombre\tx\ty\nBanco\t1\t57200001\n",
                   {"--aplicar", "--columnas", "cuenta=y", "--separador", "tab", "--con-cabecera"});
    EXPECT_EQ(ran.status, 0) << ran.out << ran.err;
    EXPECT_EQ(accounts(), "57000003|Caja, de ñ|\n57200001|Banco|\n");
    ran = importar("identidades", "\xEF\xBB\xBFRaz\xC3\xB3n social,C.P. ,N.I.F.\n\"Uno, S.A.\",28001,A-58818501\n",
                   {"--aplicar"});
    EXPECT_EQ(read("SELECT Nif_Nom, Nif_Doc, Nif_CP, Nif_TipDoc FROM KXComun.dbo.Nif"),
              "Uno, S.A.|A58818501|28001|0|\n")
        << ran.out << ran.err;

    for (const auto& [columns, complaint] : {std::pair{"cuenta=9", "no tiene la columna «9»"},
                                             {"nada=1", "No se conoce el dato «nada»"},
                                             {"cuenta=", "No se sabe qué columna tiene el código de la cuenta"}}) {
        ran = importar("cuentas", "Cuenta;Nombre\n57200001;x\n", {"--columnas", columns});
        EXPECT_EQ(ran.status, 2);
        EXPECT_NE(ran.err.find(complaint), std::string::npos) << ran.err;
    }
}

TEST_F(Exchange, AFileThatIsNoneIsRefusedWithItsReasonAndNothingIsWritten) {
    struct Case {
        std::string contents;
        const char* complaint;
        std::vector<std::string> options = {};
    };
    const std::string header = "Cuenta;Nombre\n57200001;Bien\n";
    std::string wide = "57200001";
    for (int i = 0; i < 1'000'000; ++i) wide += ',';
    const std::vector<Case> cases{
        {"", "está vacío"},
        {"\n\n ;\n", "no tiene ninguna fila"},
        {header + std::string("5720\0001;x\n", 10), "no es un texto"},
        {"\x7F"
         "ELF\x02\x01\x01",
         "no es un texto"},
        {"PK\x03\x04 comprimido", "guárdelo como CSV"},
        {"\xFF\xFE"
         "C\0u\0",
         "UTF-16"},
        {header + "57200002;Pi\xF1"
                  "a\n",
         "no está en UTF-8 (línea 3)",
         {"--codificacion", "utf-8"}},
        {header + "57200002;\x81\n", "ni en Windows-1252"},
        {wide, "más de 256 columnas"},
        {header + "57200002;\"no se cierra\n57200003;x\n", "comillas que se abren en la línea 3 no se cierran"},
        {header + "57200002;\"" + std::string(200'000, 'x'), "comillas que se abren en la línea 3 no se cierran"},
        {header + "57200002;" + std::string(200'000, 'x'), "un valor de más de"},
    };
    for (const Case& wrong : cases) {
        std::vector<std::string> options = wrong.options;
        options.insert(options.end(), {"--aplicar", "--omitir-erroneas"});
        const Ran ran = importar("cuentas", wrong.contents, options);
        EXPECT_EQ(ran.status, 2) << wrong.complaint << ran.out;
        EXPECT_NE(ran.err.find(wrong.complaint), std::string::npos) << wrong.complaint << ": " << ran.err;
        EXPECT_EQ(accounts(), "") << wrong.complaint;
    }
    std::filesystem::resize_file(file("f.csv"), 1'000'000'000);
    EXPECT_NE(run("cuentas").err.find("tiene 953 MB, y se importan ficheros de hasta 256 MB"), std::string::npos);
    std::filesystem::remove(file("f.csv"));
    EXPECT_NE(run("cuentas").err.find("no se puede abrir"), std::string::npos);
    ASSERT_EQ(::mkfifo(file("f.csv").c_str(), 0600), 0);
    EXPECT_NE(run("cuentas").err.find("no se puede abrir"), std::string::npos);
    std::filesystem::remove(file("f.csv"));
    std::filesystem::create_directory(file("f.csv"));
    EXPECT_NE(run("cuentas").err.find("es una carpeta"), std::string::npos);
}

TEST_F(Exchange, IdentitiesFollowTheRulesOfTheRegister) {
    const Ran ran = importar("identidades",
                             "Documento;Tipo documento;Nombre;Apellidos;Provincia;País;C.P.;Número;Correo\n"
                             "X1234567L;;Ann;Lee;Vizcaya;;;;\nB12345674;;Uno;Borrado;;España;48001;;\n"
                             "de 811;Otros;Hans;;Hessen;DE;;;\nA58818501;;Dos;;Atlantis;;;;\n"
                             "A08000143;;Tres;;;;;12345;\nx-1234567-l;;Ann;Lee;;;;;\nB12345674;;Otro;;;;;;\n;;;;;;;;a@"
                             "b\nB33778813;;Diez;;;;;;\n",
                             {"--aplicar", "--omitir-erroneas"});
    EXPECT_NE(ran.out.find("línea 5: errónea A58818501 Dos: la provincia «Atlantis» no se conoce\n"
                           "línea 6: errónea A08000143 Tres: Número: más de 4 caracteres\n"
                           "línea 8: errónea B12345674 Uno: está con otros datos en la línea 3\n"
                           "línea 9: errónea : Faltan el documento y el nombre\n"
                           "línea 10: nueva B33778813 Diez (B33778813: el dígito de control debería ser 2)\n\n4 "
                           "nuevas, 0 con cambios, 1 igual y 4 "
                           "erróneas.\n"),
              std::string::npos)
        << ran.out;
    EXPECT_EQ(read("SELECT Nif_TipDoc, Nif_Doc, Nif_Nom, Nif_Ape1, Nif_Prov, Nif_Pais FROM KXComun.dbo.Nif ORDER BY "
                   "Nif_Id"),
              "2|X1234567L|Ann|Lee|48|011|\n0|B12345674|Uno||48|011|\n3|DE "
              "811|Hans||Hessen|004|\n0|B33778813|Diez||28|011|\n");
    const Ran again = importar("identidades", "DNI,Nombre\nES B12345674,Uno\nx1234567l,Ann\n");
    EXPECT_NE(again.out.find("0 nuevas, 0 con cambios, 2 iguales"), std::string::npos) << again.out;
}

}  // namespace

}  // namespace FendaMaestros

#endif
