#include "codetables/DtrListado.h"
#include "component/FendaMaes.h"
#include "platform/reports/FendaRep.h"
#include "session/SesionSql.h"
#include "tests/reports/Support.h"
#include "tests/support/Company.h"
#include "tests/support/DesktopTest.h"
#include "tests/support/FakeConexion.h"

namespace FendaMaestros::testing {
namespace {

class Listings : public DesktopTest {
protected:
    Listings() {
        maes.MyBd = &session;
        registerFendaRep(components, desktop);
    }

    static ParametrosEmpresa company() {
        ParametrosEmpresa made = parameters(2026);
        made.set("Par_Nombre", "Ñandú & Hijos, 100%pura lana");
        return made;
    }

    /// The caption of the preview that `show` opens; its document is `seen`.
    template <class Show>
    std::string preview(Show&& show) {
        std::string caption;
        onNextScreen([&](Form& form) {
            caption = form.Caption;
            seen = ScriptedPerson::control<PageView>(form, "Pagina").Document;
        });
        show();
        return caption;
    }
    std::string showReport(const std::string& name, int variables, std::shared_ptr<Recordset> rows) {
        connection->rows = std::move(rows);
        auto report = components.create<ReportPrinter>();
        report->MyBd = &session;
        report->sAcotacion1 = "Entre 100%p y 200%d";
        report->svariables = static_cast<std::int16_t>(variables);
        return preview([&] { report->jshowInforme(name, "SELECT ..."); });
    }

    /// The texts below `top`, row by row with "|" between them.
    std::string lines(Twips top) const {
        std::string text;
        Twips line = -1;
        for (const PageText& part : seen->page(0).texts) {
            if (part.top < top) continue;
            text += line < 0 ? "" : part.top == line ? "|" : "\n";
            text += part.text;
            line = part.top;
        }
        return text;
    }

    std::shared_ptr<FakeConexion> connection = std::make_shared<FakeConexion>();
    SesionSql session{connection, company()};
    FendaMaes maes{desktop, components};
    std::shared_ptr<const PagedDocument> seen;
};

TEST_F(Listings, MassesPrintUnderTheCompanysHead) {
    DtrListadoMasas report;
    EXPECT_EQ(preview([&] {
                  imprimirListado(report, "Listado de Masas", "Fenda. Masas",
                                  recordset({"Masas_Id", "Naturaleza", "Masas_Des"},
                                            {{1, "Activo Circulante", "Existencias"}, {2, "Pasivo", "Reservas"}}));
              }),
              "Listado de Masas");
    EXPECT_EQ(printed(*seen, 0),
              "850,850 Times New Roman 16b Ñandú & Hijos, 100%pura lana\n"
              "850,1350 Arial 12 Fenda. Masas\n"
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

TEST_F(Listings, BalancesAreTotalledExactlyWhenTheyAreWanted) {
    EXPECT_EQ(showReport("PlanCuentas1", 1,
                         recordset({"PCta_Id", "Pcta_Cta", "Pcta_Des", "Saldo"}, {{1, "43000001", "Cliente", 0.1},
                                                                                  {2, "57000000", "Caja", 0.2051},
                                                                                  {3, "1", "Capital", -1234567.89},
                                                                                  {4, "2", "Redondeo", 0.0049}})),
              "Plan de cuentas");
    EXPECT_EQ(connection->log, std::vector<std::string>{"SELECT ..."});
    EXPECT_EQ(printed(*seen, 0),
              "850,850 Times New Roman 16b Ñandú & Hijos, 100%pura lana\n"
              "850,1350 Arial 12 Plan de cuentas\n"
              "8456,970 Arial 9 >Página 1 de 1\n"
              "8456,1390 Arial 9 >Fecha " +
                  desktop.today().text() +
                  "\n"
                  "850,1690 Arial 9 Entre 100%p y 200%d\n"
                  "850,2150 Arial 10b Cuenta\n"
                  "2450,2150 Arial 10b Descripción\n"
                  "9356,2150 Arial 10b >Saldo \n"
                  "850,2570 Arial 10 43000001\n"
                  "2450,2570 Arial 10 Cliente\n"
                  "9356,2570 Arial 10 >0,10 \n"
                  "850,2850 Arial 10 57000000\n"
                  "2450,2850 Arial 10 Caja\n"
                  "9356,2850 Arial 10 >0,21 \n"
                  "850,3130 Arial 10 1\n"
                  "2450,3130 Arial 10 Capital\n"
                  "9356,3130 Arial 10 >-1.234.567,89 \n"
                  "850,3410 Arial 10 2\n"
                  "2450,3410 Arial 10 Redondeo\n"
                  "9356,3410 Arial 10 >0,00 \n"
                  "7556,3790 Arial 10b >Total\n"
                  "9356,3790 Arial 10b >-1.234.567,58 \n");
}

TEST_F(Listings, EveryLayoutHasItsColumnsApartWithinItsPaper) {
    const std::vector<std::string> columns{"Departamento", "Pcta_Cta",  "Pcta_Des",  "Nif",  "RSocial", "Direcion",
                                           "CPostal",      "Poblacion", "Provincia", "Pais", "Saldo"};
    const auto rows = recordset(columns, {{"D", "C", "N", "I", "R", "V", "P", "T", "S", "E", 1234.5}});
    struct {
        const char *name, *caption, *columns;
        Twips paper;
    } layouts[] = {
        {"PlanCuentas1", "Plan de cuentas", "Cuenta|Descripción|Saldo \nC|N|1.234,50 \nTotal|1.234,50 ", 11906},
        {"PlanCuentasDpto", "Plan de cuentas por departamentos",
         "Departamento|Cuenta|Descripción|Saldo \nD|C|N|1.234,50 \nTotal|1.234,50 ", 11906},
        {"PlanCuentasCentro", "Plan de cuentas por centros",
         "Centro|Cuenta|Descripción|Saldo \nD|C|N|1.234,50 \nTotal|1.234,50 ", 11906},
        {"PlanCuentasNif", "Plan de cuentas con NIF",
         "Cuenta|Descripción|NIF|Razón social / Nombre|Dirección|C. postal|Población|Provincia|País\n"
         "C|N|I|R|V|P|T|S|E",
         16838},
    };
    for (const auto& layout : layouts) {
        EXPECT_EQ(showReport(layout.name, 1, rows), layout.caption);
        EXPECT_EQ(lines(2100), layout.columns);
        EXPECT_EQ(seen->pageWidth(), layout.paper) << layout.name;
        Twips line = -1, end = 0;
        for (const PageText& text : seen->page(0).texts) {
            EXPECT_GT(text.width, 0) << layout.name << " " << text.text;
            EXPECT_LE(text.left + text.width, seen->pageWidth() - 850) << layout.name << " " << text.text;
            EXPECT_TRUE(text.top != line || text.left >= end) << layout.name << " " << text.text;
            line = text.top;
            end = text.left + text.width;
        }
    }
    showReport("PlanCuentas1", 0, rows);
    EXPECT_EQ(lines(2100), "Cuenta|Descripción\nC|N") << "balances that are not wanted";
}

TEST_F(Listings, RefuseWhatCannotBePrinted) {
    const auto show = [&](const char* name, const std::vector<std::string>& columns) {
        connection->rows = recordset(columns, {});
        auto report = components.create<ReportPrinter>();
        report->MyBd = &session;
        report->svariables = 1;
        report->jshowInforme(name, "");
    };
    EXPECT_THROW(show("PlanCuentas2", {"Pcta_Cta"}), std::invalid_argument);
    EXPECT_THROW(show("PlanCuentas1", {"Pcta_Cta", "Pcta_Des"}), std::runtime_error);
    EXPECT_THROW(components.create<ReportPrinter>()->jshowInforme("PlanCuentas1", ""), std::logic_error);
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
