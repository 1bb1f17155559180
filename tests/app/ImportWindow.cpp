#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/window/frmImportar.h"
#include "tests/session/TemporaryFolder.h"
#include "tests/support/CompanyTest.h"

#ifdef FENDA_WITH_SQLITE

namespace FendaMaestros::testing {

namespace {

/// Data that another program holds, or that take a second to read or to write.
class TroubledConexion final : public FailingConexion {
public:
    TroubledConexion(std::shared_ptr<ConexionBd> connection, Desktop& desktop)
        : FailingConexion(std::move(connection)), desktop_(desktop) {}

    bool held = false, slowReads = false, slowWrites = false;

    void watchReads(ReadWatch watch) override { watch_ = std::move(watch); }
    std::shared_ptr<Recordset> Execute(std::string_view sql) override {
        auto rows = FailingConexion::Execute(sql);
        if (slowReads && watch_) {
            desktop_.letPass(std::chrono::seconds(1));
            rows->Partial = !watch_(rows->rowCount());
        }
        return rows;
    }
    std::int64_t run(const Statement& statement) override {
        if (slowWrites) desktop_.letPass(std::chrono::seconds(1));
        return FailingConexion::run(statement);
    }
    void BeginTrans() override {
        if (held) {
            desktop_.letPass(std::chrono::seconds(1));
            throw ErrorBd(ErrorBd::Kind::Busy, "Otro programa tiene ocupados los datos.");
        }
        FailingConexion::BeginTrans();
    }

private:
    Desktop& desktop_;
    ReadWatch watch_;
};

/// A person who imports files into a company without sub-accounts.
class ImportWindow : public CompanyTest {
protected:
    ImportWindow() {
        insert("PCta (PCta_Cta, PCta_Des, PCta_Plan, PCta_PlanSec, PCta_Subcuenta, PCta_bActiva)",
               {{"430", "Clientes", 2008, 1, 0, 1}, {"572", "Bancos", 2008, 1, 0, 1}});
    }
    /// A file of these contents, of the one name or another.
    std::string file(const std::string& contents, const char* name = "f.csv") const {
        const std::string path = (folder_.path() / name).string();
        std::ofstream(path, std::ios::binary) << contents;
        return path;
    }
    std::string contentsOf(const std::string& path) const {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    void visit(const ScriptedPerson::Visit& work) {
        onNextScreen(work);
        frmImportar().show();
    }
    void read(Form& form, const std::string& contents) { open(form, file(contents)); }
    void open(Form& form, const std::string& path) {
        person.fill(form, "Text1", path);
        person.enter(form);
    }
    /// Chooses an item by its text.
    void choose(Form& form, const char* list, const std::string& item) {
        auto& combo = person.control<ComboBox>(form, list);
        for (int i = 0; i < combo.ListCount(); ++i)
            if (combo.List(i) == item) return person.hands.choose(form, combo, i);
        FAIL() << "no item " << item;
    }
    static std::string textOf(Form& form, const char* table) {
        const auto& grid = ScriptedPerson::control<DataGrid>(form, table);
        std::string text;
        for (int row = 0; row < grid.rowCount(); ++row, text += '\n')
            for (int column = 0; column < grid.columnCount(); ++column) text += grid.cellText(row, column) + "|";
        return text;
    }
    static std::string rowsOf(Form& form) { return textOf(form, "dbgFilas"); }
    static std::string countsOf(Form& form) { return ScriptedPerson::control<DataGrid>(form, "dbgFilas").Caption; }
    static std::string chosen(Form& form, const char* list) {
        return ScriptedPerson::control<ComboBox>(form, list).Text();
    }
    static std::string status(Form& form) { return form.statusLine()->Caption; }
    static bool isOffered(Form& form, const char* control) {
        return ScriptedPerson::control(form, control).isEnabled();
    }
    std::string stored() {
        return rows("SELECT PCta_Cta, PCta_Des FROM PCta WHERE PCta_Subcuenta=1 ORDER BY PCta_Cta") +
               rows("SELECT Nif_Doc, Nif_Nom FROM KXComun.dbo.Nif ORDER BY Nif_Doc");
    }

private:
    const tests::TemporaryFolder folder_;
};

TEST_F(ImportWindow, ShowsWhatBecomesOfEachRowAndWritesItWhenTold) {
    insert("PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva)",
           {{"57200001", "Banco viejo", 1, 1}, {"57200003", "Igual", 1, 1}});
    const std::string before = stored();
    visit([&](Form& form) {
        EXPECT_FALSE(isOffered(form, "cboContiene") || isOffered(form, "cmdImportar"));
        person.files = {
            file("C\xF3"
                 "digo;Nombre;NIF\r\n43,5;P\xE9rez;12345678\r\n57200001;Banco nuevo;\r\n57200003;Igual;\r\n"
                 "43000007;Sin;\r\n")};
        person.press(form, "cmdExaminar");
        EXPECT_EQ(chosen(form, "cboContiene") + chosen(form, "cboCodificacion") + chosen(form, "cboSeparador"),
                  "CuentasWindows-1252; (punto y coma)");
        EXPECT_TRUE(person.control<CheckBox>(form, "chkCabecera").Value());
        EXPECT_EQ(textOf(form, "dbgColumnas"), "1 Código|43,5|Cuenta|\n2 Nombre|Pérez|Nombre|\n3 NIF|12345678|NIF|\n");
        const std::string wrong = "5|errónea|43000007|Sin|No ha indicado el Nif asociado|\n";
        EXPECT_EQ(rowsOf(form),
                  "2|nueva|43000005|Pérez|se ha escrito «43,5»; el NIF es 12345678Z, y no 12345678|\n"
                  "3|cambia|57200001|Banco nuevo|Nombre «Banco viejo» → «Banco nuevo»|\n"
                  "4|igual|57200003|Igual||\n" +
                      wrong);
        EXPECT_EQ(countsOf(form), "1 nueva, 1 con cambios, 1 igual y 1 errónea");
        person.hands.clickRow(form, person.control<DataGrid>(form, "dbgFilas"), 1);
        EXPECT_EQ(status(form), "Nombre «Banco viejo» → «Banco nuevo»");
        person.press(form, "chkErroneas");
        EXPECT_EQ(rowsOf(form), wrong);

        const std::string kept = file("", "mal.csv");
        person.files = {kept};
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.proposals.back(), "f - erróneas.csv");
        EXPECT_EQ(contentsOf(kept), "Código;Nombre;NIF;Motivo\r\n43000007;Sin;;No ha indicado el Nif asociado\r\n");
        person.answers = {Answer::No, Answer::Yes};
        person.press(form, "cmdImportar");
        EXPECT_EQ(person.messages.back().text, "Hay 1 fila errónea. ¿Quiere importar las demás?");
        EXPECT_EQ(stored(), before);
        person.press(form, "cmdImportar");
        EXPECT_EQ(status(form), "Importado: 1 nueva y 1 con cambios; sin importar, 1 fila errónea.");
        EXPECT_EQ(countsOf(form), "0 nuevas, 0 con cambios, 3 iguales y 1 errónea");
        EXPECT_FALSE(isOffered(form, "cmdImportar"));
    });
    EXPECT_EQ(stored(), "43000005|Pérez|\n57200001|Banco nuevo|\n57200003|Igual|\n12345678Z|Pérez|\n");
}

TEST_F(ImportWindow, WhatIsUnderstoodOfAFileCanBeChanged) {
    visit([&](Form& form) {
        const auto assign = [&](int column, const char* field) {
            person.hands.clickRow(form, person.control<DataGrid>(form, "dbgColumnas"), column);
            choose(form, "cboDato", field);
        };
        read(form, "x\tNombre\ty\nB12345674\tBanco, S.A.\t57200001\n");
        EXPECT_EQ(status(form), "Diga qué columna tiene el código de la cuenta.");
        EXPECT_FALSE(isOffered(form, "cmdImportar"));
        assign(0, "Cuenta");
        EXPECT_NE(rowsOf(form).find("2|errónea|B12345674|Banco, S.A.|"), std::string::npos);
        assign(2, "Cuenta");
        EXPECT_EQ(rowsOf(form), "2|nueva|57200001|Banco, S.A.||\n");
        assign(0, "NIF");
        assign(1, "(no se importa)");
        assign(1, "Razón social");
        EXPECT_EQ(textOf(form, "dbgColumnas"),
                  "1 x|B12345674|NIF|\n2 Nombre|Banco, S.A.|Razón social|\n3 y|57200001|Cuenta|\n");
        person.press(form, "chkCabecera");
        EXPECT_EQ(textOf(form, "dbgColumnas"), "1|x|Cuenta|\n2|Nombre|Nombre|\n3|y|NIF|\n");
        person.press(form, "chkCabecera");
        choose(form, "cboSeparador", ", (coma)");
        EXPECT_EQ(person.control<DataGrid>(form, "dbgColumnas").rowCount(), 1);
        choose(form, "cboSeparador", "Tabulador");
        choose(form, "cboContiene", "Identidades");
        assign(0, "NIF");
        EXPECT_EQ(rowsOf(form), "2|nueva|B12345674|Banco, S.A.||\n");
        person.press(form, "cmdImportar");

        read(form,
             "CIF;Nombre\nA58818501;Pi\xF1"
             "a\n");
        EXPECT_EQ(chosen(form, "cboContiene"), "Identidades");
        person.answers = {Answer::Ok};
        choose(form, "cboCodificacion", "UTF-8");
        EXPECT_NE(person.messages.back().text.find("no está en UTF-8 (línea 2)"), std::string::npos);
        EXPECT_EQ(rowsOf(form), "");
        choose(form, "cboCodificacion", "Windows-1252");
        EXPECT_EQ(rowsOf(form), "2|nueva|A58818501|Piña||\n");

        read(form, "99900001;Fuera\n");
        EXPECT_EQ(rowsOf(form), "1|errónea|99900001|Fuera|no pertenece al PGC 2008|\n");
        person.press(form, "chkFueraDelPlan");
        EXPECT_EQ(rowsOf(form), "1|nueva|99900001|Fuera||\n");
    });
    EXPECT_EQ(stored(), "B12345674|Banco, S.A.|\n");
}

TEST_F(ImportWindow, AFileThatIsNoneIsToldAndTheWindowGoesOn) {
    const std::string header = "Cuenta;Nombre\n57200001;Bien\n";
    const std::string folder = std::filesystem::path(file("")).parent_path();
    const std::string locked = file(header, "cerrado.csv");
    std::filesystem::permissions(locked, std::filesystem::perms::none);
    std::string sparse = file("x", "grande.csv");
    std::filesystem::resize_file(sparse, 1'000'000'000);
    struct Case {
        std::string path;
        const char* complaint;
    };
    std::vector<Case> cases{
        {" ", "Falta el fichero"},
        {folder, "es una carpeta"},
        {folder + "/nada.csv", "no se puede abrir"},
        {sparse, "tiene 953 MB"},
        {file("", "vacio.csv"), "está vacío"},
        {file(std::string("\x7F"
                          "ELF\x02\0\1",
                          7),
              "binario.csv"),
         "no es un texto"},
        {file("PK\x03\x04 comprimido", "hoja.xlsx"), "guárdelo como CSV"},
        {file(header + "57200002;\"no se cierra\n57200003;x\n", "comillas.csv"), "en la línea 3 no se cierran"},
        {file("57200001" + std::string(1'000'000, ','), "ancho.csv"), "más de 256 columnas"},
    };
    if (::geteuid() != 0) cases.push_back({locked, "no se puede abrir"});
    visit([&](Form& form) {
        for (const Case& wrong : cases) {
            SCOPED_TRACE(wrong.complaint);
            person.answers = {Answer::Ok};
            open(form, wrong.path);
            EXPECT_NE(person.messages.back().text.find(wrong.complaint), std::string::npos)
                << person.messages.back().text;
            EXPECT_EQ(rowsOf(form) + textOf(form, "dbgColumnas"), "");
            EXPECT_FALSE(isOffered(form, "cmdImportar") || isOffered(form, "cmdGuardar"));
            expectFocus(form, "Text1");
        }
        read(form, "Cuenta;Nombre\n4.3E+07;Roto\n57200004;=1+1\n01/02/2026;Fecha\n");
        EXPECT_EQ(countsOf(form), "1 nueva, 0 con cambios, 0 iguales y 2 erróneas");
    });
    EXPECT_EQ(stored(), "");
}

TEST_F(ImportWindow, AFileThatChangesBehindThePreviewIsReadAgain) {
    visit([&](Form& form) {
        read(form, "57200001;Uno\n");
        const std::string path = file("57200002;Dos, más largo\n");
        person.answers = {Answer::Ok};
        person.press(form, "cmdImportar");
        EXPECT_NE(person.messages.back().text.find("El fichero ha cambiado"), std::string::npos);
        EXPECT_EQ(rowsOf(form), "1|nueva|57200002|Dos, más largo||\n");
        std::filesystem::remove(path);
        person.answers = {Answer::Ok, Answer::Ok};
        person.press(form, "cmdImportar");
        EXPECT_NE(person.messages.back().text.find("no se puede abrir"), std::string::npos);
        EXPECT_EQ(rowsOf(form), "");
        EXPECT_EQ(stored(), "");
    });
}

constexpr const char* customers = "Cuenta;Nombre;NIF\n43000001;Ana;12345678\n43000002;Eva;87654321\n";

TEST_F(ImportWindow, WhateverFailsNothingIsWrittenAndTheNextTryWorks) {
    visit([&](Form& form) {
        for (const ErrorBd::Kind kind : {ErrorBd::Kind::ReadOnly, ErrorBd::Kind::Full, ErrorBd::Kind::Lost}) {
            read(form, customers);
            for (int n = 1;; ++n) {
                failing->failAt(n, kind);
                person.answers = {Answer::Ok};
                person.messages.clear();
                person.press(form, "cmdImportar");
                failing->failAt(0);
                if (person.messages.empty()) break;
                const bool lost = kind == ErrorBd::Kind::Lost;
                EXPECT_EQ(person.messages.back().text,
                          std::string(lost ? "" : "No se ha escrito nada. ") + "Fallo provocado");
                EXPECT_EQ(stored(), "");
                EXPECT_FALSE(hasOpenTransaction(*memory));
                ASSERT_TRUE(form.isOpen() && n < 100);
            }
            person.answers.clear();
            EXPECT_EQ(stored(), "43000001|Ana|\n43000002|Eva|\n12345678Z|Ana|\n87654321X|Eva|\n");
            memory->run({"DELETE FROM PCta WHERE PCta_Subcuenta=1", {}});
            memory->run({"DELETE FROM KXComun.dbo.Nif", {}});
        }
    });
}

/// Another clerk imports the same file first, or writes something else.
TEST_F(ImportWindow, WhatAnotherHasWrittenMeanwhileIsShownBeforeAnythingIsWritten) {
    visit([&](Form& form) {
        read(form, customers);
        failing->rival = {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva) VALUES (?, ?, 1, 1)",
                          {"43000001", "De otro"}};
        person.answers = {Answer::Ok};
        person.press(form, "cmdImportar");
        EXPECT_NE(person.messages.back().text.find("Otro programa ha cambiado los datos"), std::string::npos);
        EXPECT_EQ(stored(), "43000001|De otro|\n");
        EXPECT_EQ(countsOf(form), "1 nueva, 1 con cambios, 0 iguales y 0 erróneas");
        person.press(form, "cmdImportar");
    });
    EXPECT_EQ(stored(), "43000001|Ana|\n43000002|Eva|\n12345678Z|Ana|\n87654321X|Eva|\n");
}

TEST_F(ImportWindow, IsStoppedWithNothingWrittenAndWaitsForOthers) {
    const auto troubled = std::make_shared<TroubledConexion>(memory, desktop);
    SesionSql slow(troubled, parameters(2026));
    maes.MyBd = &slow;
    std::string many = "Cuenta;Nombre\n";
    for (int i = 0; i < 2500; ++i) many += std::to_string(57'200'000 + i) + ";Caja " + std::to_string(i) + "\n";
    visit([&](Form& form) {
        person.impatient = troubled->slowReads = true;
        read(form, many);
        EXPECT_EQ(status(form), "Se ha parado la lectura. «Leer» empieza otra vez.");
        EXPECT_EQ(rowsOf(form), "");
        EXPECT_FALSE(person.control(form, "barProgreso").Visible);
        person.impatient = troubled->slowReads = false;
        person.press(form, "cmdLeer");
        EXPECT_EQ(countsOf(form), "2.500 nuevas, 0 con cambios, 0 iguales y 0 erróneas");

        person.impatient = troubled->slowWrites = true;
        person.press(form, "cmdImportar");
        EXPECT_EQ(status(form), "Se ha interrumpido: no se ha escrito nada.");
        EXPECT_EQ(stored(), "");
        EXPECT_FALSE(hasOpenTransaction(*memory));
        person.impatient = troubled->slowWrites = false;

        troubled->held = true;
        person.answers = {Answer::Ok};
        person.press(form, "cmdImportar");
        EXPECT_EQ(person.messages.back().text, "No se ha escrito nada. Otro programa tiene ocupados los datos.");
        troubled->held = false;
        troubled->failAt(3, ErrorBd::Kind::Busy);
        person.press(form, "cmdImportar");
        EXPECT_EQ(status(form), "Importado: 2.500 nuevas y 0 con cambios.");
    });
    EXPECT_EQ(rows("SELECT COUNT(*), MIN(PCta_Des), MAX(PCta_Cta) FROM PCta WHERE PCta_Subcuenta=1"),
              "2500|Caja 0|57202499|\n");
}

}  // namespace

}  // namespace FendaMaestros::testing

#endif
