#include "SessionContract.h"
#include "storage/Consistency.h"
#include "storage/FirstContents.h"

namespace FendaMaestros::tests {
namespace {

class Consistency : public SessionContract {
protected:
    std::string faults() {
        std::string found;
        const auto add = [&found](const std::string& sentence) { found += sentence + "\n"; };
        storage::checkSharedRows(*connection, add);
        storage::checkCompanyRows(*connection, add);
        return found;
    }
    void write(const std::string& sql) { connection->run({sql, {}}); }
};

TEST_P(Consistency, TellsWhatDoesNotBelongTogether) {
    storage::fillShared(*connection);
    storage::fillCompany(*connection, storage::demonstrationCompany());
    storage::fillDemonstration(*connection);
    ASSERT_EQ(faults(), "");

    const std::string set = "UPDATE PCta SET ", of = " WHERE PCta_Cta = ";
    write("UPDATE KXComun.dbo.Nif SET Nif_Doc = 'B00000018 ' WHERE Nif_Id = 2");
    write("UPDATE KXComun.dbo.Conceptos SET Conce_Cod = 1 WHERE Conce_Cod = 2");
    write("DELETE FROM KXComun.dbo.Nif WHERE Nif_Doc = 'B00000059'");
    write("UPDATE Centro SET Centro_Cod = 1 WHERE Centro_Cod = 2");
    write(set + "PCta_IdCen = 999, PCta_Des = '100%2'" + of + "'57200001'");
    write(set + "PCta_CtaAso = '57200001', PCta_IdCtaAso = 0" + of + "'43000001'");
    write(set + "PCta_CtaAso = NULL, PCta_IdCtaAso = (SELECT PCta_Id FROM PCta WHERE PCta_Cta = '57200001')" + of +
          "'43000002'");
    write(set + "PCta_CtaIrpfAso = '47510099'" + of + "'43000003'");
    write("UPDATE Apu SET Apu_IdCta = 0 WHERE Apu_Cta = '10000001'");
    write("DELETE FROM PCta WHERE PCta_Cta = '17000001'");
    write("INSERT INTO PCta (PCta_Cta, PCta_Subcuenta) VALUES ('43000001', 1)");
    const std::string found = faults();
    for (const char* told :
         {"El documento B00000018 lo tienen 2 identidades", "El código 1 lo tienen 2 conceptos.",
          "está enlazada a una identidad fiscal que ya no existe.", "El código 1 lo tienen 2 centros.",
          "La cuenta 57200001 («100%2») está enlazada a un centro que ya no existe.",
          "tiene como cuenta asociada «57200001», pero no está enlazada a ella.",
          "tiene como cuenta asociada «», pero está enlazada a la 57200001.", "I.R.P.F. «47510099», que no existe.",
          "Apuntes de la cuenta 10000001 que no están enlazados a ella: ",
          "Apuntes de la cuenta 17000001 enlazados a una cuenta que ya no existe: ",
          "El código 43000001 lo tienen 2 subcuentas."})
        EXPECT_NE(found.find(told), std::string::npos) << told << "\n" << found;
}

INSTANTIATE_TEST_SUITE_P(, Consistency, ::testing::ValuesIn(backends()), nameOf);

}  // namespace
}  // namespace FendaMaestros::tests
