#include "tests/support/CompanyTest.h"

namespace FendaMaestros::testing {
namespace {

class CodeTables : public CompanyTest {
protected:
    CodeTables() { insert("Centro (Centro_Cod, Centro_Des)", {{1, "Almacén"}, {2, "Oficina"}, {3, "Tienda"}}); }

    std::string centres() { return rows("SELECT * FROM Centro ORDER BY Centro_Id"); }
};

TEST_F(CodeTables, AFailureAtAnyStatementOfASaveReachesTheHostAndLeavesTheTableWhole) {
    const std::string before = centres();
    bool failed = true;
    for (int statement = 1; failed; ++statement) {
        ASSERT_LT(statement, 10);
        onNextScreen([&](Form& form) {
            person.fill(form, "Text1(1)", "Otro nombre");
            failing->failAt(statement);
            person.press(form, "cmdGuardar");
        });
        failed = false;
        try {
            maes.jCentros();
        } catch (const ErrorBd& error) {
            failed = true;
            EXPECT_STREQ(error.what(), "Fallo provocado");
        }
        failing->failAt(0);
        EXPECT_EQ(centres() == before, statement == 1) << "the first statement is the write, the others read";
        EXPECT_EQ(desktop.pointer(), 0);
        EXPECT_EQ(desktop.activeForm(), nullptr);
    }
    EXPECT_EQ(centres(), "1|1|Otro nombre|\n2|2|Oficina|\n3|3|Tienda|\n");
}

TEST_F(CodeTables, ATypeOfEntryIsInsertedOnceAndUpdatedFromThenOn) {
    onNextScreen([&](Form& concepts) { person.press(concepts, "cmdAuto"); });
    onNextScreen([&](Form& form) {
        auto& types = ScriptedPerson::control<ComboBox>(form, "Combo1");
        const auto save = [&](int type, const char* variable) {
            person.hands.choose(form, types, type);
            person.press(form, variable);
            person.press(form, "cmdGuardar");
        };
        save(1, "Check1(2)");
        save(1, "Check1(0)");
        save(2, "Check1(3)");
        person.press(form, "Check1(1)");
        person.press(form, "cmdGuardar");
    });
    maes.jConceptos();
    EXPECT_EQ(rows("SELECT * FROM KXComun.dbo.Conceptos"), "1|1001|000#3#1|0|\n2|1002|000#4#2|0|\n");
}

TEST_F(CodeTables, ATypeOfEntryWithTwoRowsStaysOnTheScreenThatHasSavedAThird) {
    insert("KXComun.dbo.Conceptos (Conce_Cod, Conce_Des, Conce_Mod)",
           {{1001, "000#1", 0}, {1001, "000#2", 0}, {1002, "000#4", 0}});
    onNextScreen([&](Form& concepts) { person.press(concepts, "cmdAuto"); });
    onNextScreen([&](Form& form) {
        person.hands.choose(form, ScriptedPerson::control<ComboBox>(form, "Combo1"), 1);
        person.press(form, "Check1(2)");
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.text(form, "Text1(2)"), "#3");
        EXPECT_TRUE(ScriptedPerson::control<CheckBox>(form, "Check1(2)").Value());
        const DataGrid& listed = ScriptedPerson::control<DataGrid>(form, "DataGrid1");
        EXPECT_EQ(listed.source()->cell(listed.markedRow(), 0), Variant(4));
    });
    maes.jConceptos();
    EXPECT_EQ(rows("SELECT Conce_Des FROM KXComun.dbo.Conceptos WHERE Conce_Cod = 1001"), "000#1|\n000#2|\n000#3|\n");
}

TEST_F(CodeTables, AMassOfUnknownNatureIsNotSavedAsAnother) {
    insert("KXComun.dbo.Masas (Masas_Plan, Masas_Des, Masas_AP)", {{2008, "Otra", 7}});
    onNextScreen([&](Form& form) {
        pressAndRead(form, "cmdGuardar", "Debe indicar si la masa es de activo o de pasivo");
        expectFocus(form, "cboMasas");
    });
    maes.jMasas();
    EXPECT_EQ(rows("SELECT Masas_AP FROM KXComun.dbo.Masas"), "7|\n");
}

TEST_F(CodeTables, EachOneExportsTheColumnsItShows) {
    struct Notes final : SpreadsheetExporter {
        std::string& noted;
        Desktop& shownOn;
        Notes(std::string& notes, Desktop& shown) : noted(notes), shownOn(shown) {}
        void GridToExcel(std::shared_ptr<Recordset>& source, const DataGrid& grid) override {
            noted += sTitulo;
            for (const GridColumn& column : grid.Columns)
                if (column.Visible) noted += "|" + column.Caption + "=" + source->columnName(column.SourceColumn);
            noted += "\n";
            shownOn.ask({"Se ha guardado", message::Information, sTitulo});
        }
    };
    std::string exported;
    components.add(SpreadsheetExporter::ProgId, [&] { return std::make_unique<Notes>(exported, desktop); });
    insert("Dpto (Dpto_Cod, Dpto_Des)", {{1, "Ventas"}});
    insert("KXComun.dbo.Conceptos (Conce_Cod, Conce_Des)", {{1, "Cobro"}});
    insert("KXComun.dbo.Masas (Masas_Plan, Masas_Des, Masas_AP)", {{2008, "Caja", 2}});
    insert("KXComun.dbo.Pais (Pais_Cod, Pais_Nom, Pais_Aeat)", {{"011", "España", "ES"}});
    for (auto screen : {&FendaMaes::jCentros, &FendaMaes::jDepartamentos, &FendaMaes::jConceptos, &FendaMaes::jMasas,
                        &FendaMaes::jPaises}) {
        onNextScreen([&](Form& form) {
            pressAndRead(form, "cmdExcel", "Se ha guardado");
            expectFocus(form, "cmdExcel");
        });
        (maes.*screen)();
    }
    EXPECT_EQ(exported,
              "Listado de Centros de trabajo|Código =Codigo|Descripción =Des\n"
              "Listado de departamentos|Código =Codigo|Descripción =Des\n"
              "Listado de conceptos|Código =Conce_Cod|Descripción =Conce_Des\n"
              "Listado de Masas Patrimoniales|Descripción =Masas_Des|Activo/Pasivo=Naturaleza\n"
              "Listado de Paises|Código =Pais_Cod|Nombre =Pais_Nom|Cod.Aeat =Pais_Aeat\n");
}

}  // namespace
}  // namespace FendaMaestros::testing
