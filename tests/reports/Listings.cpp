#include <gtest/gtest.h>

#include "codetables/DtrListado.h"
#include "component/FendaMaes.h"
#include "platform/reports/FendaRep.h"
#include "session/SesionSql.h"
#include "tests/reports/Support.h"
#include "tests/support/FakeConexion.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros::testing {
namespace {

class Listings : public ::testing::Test {
protected:
    ScriptedPerson person;
    HeadlessDesktop desktop{person};
    ComponentRegistry components;
    std::shared_ptr<FakeConexion> connection = std::make_shared<FakeConexion>();
    SesionSql session{connection, company()};
    FendaMaes component{desktop, components};
    std::string caption;
    std::shared_ptr<const PagedDocument> seen;

    Listings() {
        component.MyBd = &session;
        registerFendaRep(components, desktop);
        person.visits = {[this](Form& form) {
            caption = form.Caption;
            seen = ScriptedPerson::control<PageView>(form, "Pagina").Document;
        }};
    }

    static ParametrosEmpresa company() {
        ParametrosEmpresa parameters;
        parameters.set("Par_Nombre", "Ñandú & Hijos, 100%pura lana");
        return parameters;
    }

    /// The texts below `top`, row by row with "|" between them.
    static std::string lines(const PagedDocument& document, Twips top) {
        std::string text;
        Twips line = -1;
        for (const PageText& part : document.page(0).texts) {
            if (part.top < top) continue;
            text += line < 0 ? "" : part.top == line ? "|" : "\n";
            text += part.text;
            line = part.top;
        }
        return text;
    }
};

TEST_F(Listings, MassesPrintUnderTheCompanysHead) {
    DtrListadoMasas report;
    imprimirListado(report, "Listado de Masas Patrimoniales", "Fenda. Listado de Masas Patrimoniales",
                    recordset({"Masas_Id", "Naturaleza", "Masas_Des"},
                              {{1, "Activo Circulante", "Existencias"}, {2, "Pasivo", "Reservas"}}));
    EXPECT_EQ(caption, "Listado de Masas Patrimoniales");
    EXPECT_EQ(seen->pageCount(), 1);
    EXPECT_EQ(printed(*seen, 0),
              "850,850 Times New Roman 16b Ñandú & Hijos, 100%pura lana\n"
              "850,1350 Arial 12 Fenda. Listado de Masas Patrimoniales\n"
              "8456,970 Arial 9 >Pagina 1 de 1\n"
              "8456,1390 Arial 9 >Fecha " +
                  desktop.today().text() +
                  "\n"
                  "850,1950 Arial 10b Activo/Pasivo\n"
                  "2950,1950 Arial 10b Descripción de la masa\n"
                  "850,2410 Arial 10 Activo Circulante\n"
                  "2950,2410 Arial 10 Existencias\n"
                  "850,2710 Arial 10 Pasivo\n"
                  "2950,2710 Arial 10 Reservas\n");
}

TEST_F(Listings, EachTableHasItsOwnHeadingsAndColumns) {
    DtrListadoDepartamentos departments;
    DtrListadoConceptos concepts;
    DtrListadoPaises countries;
    const std::vector<std::tuple<DtrListado*, std::shared_ptr<Recordset>, std::string, std::string>> cases{
        {&departments, recordset({"Id", "Codigo", "Des"}, {{9, 1, "Ventas"}}), "Listado de Departamentos",
         "Código |Descripción \n1|Ventas"},
        {&concepts, recordset({"Conce_Cod", "Conce_Des"}, {{12, "Su factura"}}), "Listado de Conceptos",
         "Código |Descripción del concepto\n12|Su factura"},
        {&countries, recordset({"Pais_Cod", "Pais_Nom", "Pais_Aeat"}, {{"011", "España", "ES"}}), "Listado de Paises",
         "Código |Nombre \n011|España"}};
    const auto visit = person.visits.front();
    for (const auto& [report, rows, title, text] : cases) {
        person.visits = {visit};
        imprimirListado(*report, std::nullopt, "Título", rows);
        EXPECT_EQ(caption, title);
        EXPECT_EQ(lines(*seen, 1900), text);
    }
}

class ChartListings : public Listings {
protected:
    void showReport(const std::string& name, int variables, std::shared_ptr<Recordset> rows) {
        connection->rows = std::move(rows);
        auto report = components.create<ReportPrinter>();
        report->MyBd = &session;
        report->sAcotacion1 = "Entre las cuentas Primera y Ultima";
        report->svariables = static_cast<std::int16_t>(variables);
        report->jshowInforme(name, "SELECT ...");
    }
};

TEST_F(ChartListings, BalancesAreTotalledExactlyWhenTheyAreWanted) {
    const auto rows =
        recordset({"PCta_Id", "Pcta_Cta", "Pcta_Des", "Saldo"},
                  {{1, "43000001", "Cliente", 0.1}, {2, "57000000", "Caja", 0.2}, {3, "1", "Capital", -1500}});
    showReport("PlanCuentas1", 1, rows);
    EXPECT_EQ(connection->log, std::vector<std::string>{"SELECT ..."});
    EXPECT_TRUE(shows(*seen, 0, "Entre las cuentas Primera y Ultima"));
    EXPECT_TRUE(shows(*seen, 0, "Ñandú & Hijos, 100%pura lana"));
    EXPECT_EQ(lines(*seen, 2100),
              "Cuenta|Descripción|Saldo \n43000001|Cliente|0,10 \n57000000|Caja|0,20 \n"
              "1|Capital|-1.500,00 \nTotal|-1.499,70 ");
}

TEST_F(ChartListings, WithoutBalancesNeitherColumnNorTotal) {
    showReport(
        "PlanCuentasCentro", 0,
        recordset({"PCta_Id", "Departamento", "Pcta_Cta", "Pcta_Des", "Saldo"}, {{1, Variant(), "43", "Cliente", ""}}));
    EXPECT_EQ(caption, "Plan de cuentas por centros");
    EXPECT_EQ(lines(*seen, 2100), "Centro|Cuenta|Descripción\n|43|Cliente");
}

TEST_F(ChartListings, EveryLayoutStaysWithinItsPaperWithColumnsApart) {
    const auto rows = recordset({"Departamento", "Pcta_Cta", "Pcta_Des", "Nif", "RSocial", "Direcion", "CPostal",
                                 "Poblacion", "Provincia", "Pais", "Saldo"},
                                {std::vector<Variant>(11, Variant("x"))});
    const auto visit = person.visits.front();
    for (const char* name : {"PlanCuentas1", "PlanCuentasDpto", "PlanCuentasCentro", "PlanCuentasNif"}) {
        person.visits = {visit};
        showReport(name, 1, rows);
        Twips line = -1, end = 0;
        for (const PageText& text : seen->page(0).texts) {
            EXPECT_GT(text.width, 0) << name << " " << text.text;
            EXPECT_LE(text.left + text.width, seen->pageWidth() - 850) << name << " " << text.text;
            EXPECT_TRUE(text.top != line || text.left >= end) << name << " " << text.text;
            line = text.top;
            end = text.left + text.width;
        }
    }
}

TEST_F(ChartListings, RefusesWhatItCannotPrint) {
    EXPECT_THROW(showReport("PlanCuentas2", 0, recordset({"Pcta_Cta"}, {})), std::invalid_argument);
    EXPECT_THROW(showReport("PlanCuentas1", 1, recordset({"Pcta_Cta", "Pcta_Des"}, {})), std::runtime_error);
    EXPECT_THROW(components.create<ReportPrinter>()->jshowInforme("PlanCuentas1", ""), std::logic_error);
    EXPECT_EQ(seen, nullptr);
}

TEST_F(ChartListings, AComponentThatNobodyRegisteredIsNamed) {
    try {
        components.create<HostApplication>();
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(),
                     "No se puede crear el componente FENDA.FENDATA: no está registrado en este programa.");
    }
}

}  // namespace
}  // namespace FendaMaestros::testing
