#include <algorithm>
#include <set>

#include "tests/support/CompanyTest.h"

namespace FendaMaestros::testing {
namespace {

struct Customer {
    std::string document, name, surname, surname2, streetType, street, number, postalCode, town, province;
};

/// Customers from a list on paper, with the keyboard alone. What carries no information is counted: every key but the
/// characters of the list, Enter and the save.
class TypedFromPaper : public CompanyTest {
protected:
    TypedFromPaper() {
        insert("KXComun.dbo.Pais (Pais_Cod, Pais_Nom)", {{"011", "España"}});
        insert("KXComun.dbo.PROV (PROV_COD, PROV_NOM)", {{15, "A Coruña"}, {28, "Madrid"}, {41, "Sevilla"}});
        insert("KXComun.dbo.TVI (TVI_COD, TVI_NOM)", {{"AV", "Avenida"}, {"CL", "Calle"}, {"PZ", "Plaza"}});
        insert("PCta (PCta_Cta, PCta_Des, PCta_Plan, PCta_PlanSec, PCta_Subcuenta, PCta_bActiva)",
               {{"430", "Clientes", 2008, 1, 0, 1}});
        for (int i = 0; i < 20; ++i) list.push_back(customer(i));
    }

    /// Companies and persons by turns, of three towns; of each town the postal code comes again and again.
    static Customer customer(int i) {
        const std::string n = std::to_string(10 + i);
        const struct {
            const char *streetType, *street, *postalCode, *town, *province;
        } places[] = {{"CL", "Mayor", "28013", "Madrid", "28"},
                      {"AV", "Finisterre", "15004", "A Coruña", "15"},
                      {"PZ", "Nueva", "41001", "Sevilla", "41"}};
        const auto& at = places[i % 3];
        if (i % 2 == 0)
            return {"B000000" + n, "Comercial " + n, "",         "", at.streetType, at.street, n,
                    at.postalCode, at.town,          at.province};
        return {"123456" + n, "Ana " + n, "Robles" + n,  "Peña" + n, at.streetType,
                at.street,    n,          at.postalCode, at.town,    at.province};
    }
    /// As the register has it: a person's number has its letter.
    std::string documentOf(const Customer& customer) {
        return customer.document + (customer.surname.empty() ? "" : maes.Calcula_letra_NIF(customer.document));
    }

    // --- the keys

    void key(Form& form, KeyStroke stroke) {
        ++besides;
        person.hands.key(form, stroke);
    }
    void enters(Form& form, int times = 1) {
        for (; times > 0; --times) person.enter(form);
    }
    void line(Form& form, const std::string& typed) {
        person.hands.type(form, typed);
        enters(form);
    }
    /// An Enter answers Ok, a letter Yes.
    void expectMessages(std::deque<Answer> answers) {
        besides += static_cast<int>(std::ranges::count(answers, Answer::Yes));
        person.answers = std::move(answers);
    }

    /// From the name to the save; `isNamed`: the name is there already.
    void fillIdentity(Form& form, const Customer& customer, bool isNamed) {
        expectFocus(form, identity::name);
        if (isNamed)
            enters(form);
        else
            line(form, customer.name);
        if (!customer.surname.empty()) {
            line(form, customer.surname);
            line(form, customer.surname2);
        }
        line(form, customer.streetType);
        line(form, customer.street);
        line(form, customer.number);
        enters(form, 3);
        const bool isTownKnown = !towns.insert(customer.postalCode).second;
        person.hands.type(form, customer.postalCode);
        if (!isTownKnown) {
            enters(form);
            person.hands.type(form, customer.town);
        }
        expectMessages({Answer::Ok});
        person.hands.key(form, {key::F(5)});
    }

    void expectRegister() {
        std::string expected;
        for (const Customer& c : list) {
            const bool isPerson = !c.surname.empty();
            expected += (isPerson ? "1|" : "0|") + documentOf(c) + "|" + c.name + "|" + c.surname + "|" + c.surname2 +
                        "|" + c.streetType + "|" + c.street + "|" + c.number + "|" + c.postalCode + "|" + c.town + "|" +
                        c.province + "|011|\n";
        }
        EXPECT_EQ(rows("SELECT Nif_TipDoc, Nif_Doc, Nif_Nom, Nif_Ape1, Nif_Ape2, Nif_Sg, Nif_Dir, Nif_Num, Nif_CP, "
                       "Nif_Pob, Nif_Prov, Nif_Pais FROM KXComun.dbo.Nif ORDER BY Nif_Id"),
                  expected);
    }

    std::vector<Customer> list;
    std::set<std::string> towns;
    int besides = 0;
};

TEST_F(TypedFromPaper, TheRegisterAsksForNoKeyButTheYesToANewEntry) {
    onNextScreen([&](Form& form) {
        for (const Customer& customer : list) {
            while (form.activeControl()->Name != identity::document) key(form, {key::Tab, shift::Shift});
            person.hands.type(form, customer.document);
            expectMessages({Answer::Yes});
            enters(form, 2);
            fillIdentity(form, customer, false);
        }
    });
    maes.jNif();
    expectRegister();
    EXPECT_EQ(besides, 20);
}

TEST_F(TypedFromPaper, AccountsWithTheirIdentitiesAskForNoKeyButTheYesToANewEntry) {
    onNextScreen([&](Form& form) {
        for (const Customer& customer : list) {
            const bool isPerson = !customer.surname.empty();
            while (form.activeControl()->Name != account::code) key(form, {key::Tab, shift::Shift});
            line(form, "430,");
            line(form, isPerson ? customer.surname + ", " + customer.name : customer.name);
            enters(form);
            person.hands.type(form, customer.document);
            onNextScreen([&](Form& identity) { fillIdentity(identity, customer, !isPerson); });
            expectMessages({Answer::Yes});
            enters(form);
            expectMessages({Answer::Ok});
            person.hands.key(form, {'G', shift::Alt});
        }
    });
    maes.jPlanCuentas();
    expectRegister();
    std::string expected;
    for (std::size_t i = 0; i < list.size(); ++i)
        expected += "430000" + std::string(i < 9 ? "0" : "") + std::to_string(i + 1) + "|" +
                    (list[i].surname.empty() ? "" : list[i].surname + ", ") + list[i].name + "|" + documentOf(list[i]) +
                    "|\n";
    EXPECT_EQ(rows("SELECT PCta_Cta, PCta_Des, Nif_Doc FROM PCta INNER JOIN KXComun.dbo.Nif ON Nif_Id = Pcta_IdNif "
                   "ORDER BY PCta_Cta"),
              expected);
    EXPECT_EQ(besides, 20);
}

}  // namespace
}  // namespace FendaMaestros::testing
