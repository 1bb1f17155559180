#include "storage/Consistency.h"

#include <span>
#include <string_view>

#include "toolkit/Text.h"

namespace FendaMaestros::storage {

namespace {

/// A rule that rows keep among each other.
struct Rule {
    /// Reads those that break it.
    std::string_view sql;
    /// What is said of each; %1, %2... stand for its columns.
    std::string_view sentence;
};

constexpr Rule companyRules[] = {
    {"SELECT PCta_Cta,COUNT(*) FROM PCta WHERE PCta_Subcuenta=1 GROUP BY PCta_Cta HAVING COUNT(*)>1 ORDER BY PCta_Cta",
     "El código %1 lo tienen %2 subcuentas."},
    {"SELECT PCta_Cta,PCta_Plan,COUNT(*) FROM PCta WHERE PCta_Subcuenta=0 GROUP BY PCta_Plan,PCta_PlanSec,PCta_Cta "
     "HAVING COUNT(*)>1 ORDER BY PCta_Plan,PCta_Cta",
     "El código %1 lo tienen %3 cuentas del plan de %2."},
    {"SELECT Centro_Cod,COUNT(*) FROM Centro WHERE Centro_Cod IS NOT NULL GROUP BY Centro_Cod HAVING COUNT(*)>1 "
     "ORDER BY Centro_Cod",
     "El código %1 lo tienen %2 centros."},
    {"SELECT Dpto_Cod,COUNT(*) FROM Dpto WHERE Dpto_Cod IS NOT NULL GROUP BY Dpto_Cod HAVING COUNT(*)>1 "
     "ORDER BY Dpto_Cod",
     "El código %1 lo tienen %2 departamentos."},
    {"SELECT PCta_Cta,PCta_Des FROM PCta WHERE Pcta_IdNif<>0 AND NOT EXISTS "
     "(SELECT Nif_Id FROM KXComun.dbo.Nif WHERE Nif_Id=Pcta_IdNif) ORDER BY PCta_Cta",
     "La cuenta %1 («%2») está enlazada a una identidad fiscal que ya no existe."},
    {"SELECT A.PCta_Cta,A.PCta_Des FROM PCta AS A WHERE A.PCta_IdCtaAso<>0 AND NOT EXISTS "
     "(SELECT B.PCta_Id FROM PCta AS B WHERE B.PCta_Id=A.PCta_IdCtaAso AND B.PCta_Subcuenta=1) ORDER BY A.PCta_Cta",
     "La cuenta %1 («%2») está enlazada a una cuenta asociada que ya no existe."},
    {"SELECT A.PCta_Cta,A.PCta_Des,A.PCta_CtaAso,B.PCta_Cta FROM PCta AS A INNER JOIN PCta AS B "
     "ON B.PCta_Id=A.PCta_IdCtaAso WHERE isnull(A.PCta_CtaAso,'')<>B.PCta_Cta ORDER BY A.PCta_Cta",
     "La cuenta %1 («%2») tiene como cuenta asociada «%3», pero está enlazada a la %4."},
    {"SELECT PCta_Cta,PCta_Des,PCta_CtaAso FROM PCta WHERE PCta_CtaAso<>'' AND isnull(PCta_IdCtaAso,0)=0 "
     "ORDER BY PCta_Cta",
     "La cuenta %1 («%2») tiene como cuenta asociada «%3», pero no está enlazada a ella."},
    {"SELECT A.PCta_Cta,A.PCta_Des,A.PCta_CtaIrpfAso FROM PCta AS A WHERE A.PCta_CtaIrpfAso<>'' AND NOT EXISTS "
     "(SELECT B.PCta_Id FROM PCta AS B WHERE B.PCta_Cta=A.PCta_CtaIrpfAso AND B.PCta_Subcuenta=1) ORDER BY A.PCta_Cta",
     "La cuenta %1 («%2») tiene como cuenta de I.R.P.F. «%3», que no existe."},
    {"SELECT PCta_Cta,PCta_Des FROM PCta WHERE PCta_IdCen<>0 AND NOT EXISTS "
     "(SELECT Centro_Id FROM Centro WHERE Centro_Id=PCta_IdCen) ORDER BY PCta_Cta",
     "La cuenta %1 («%2») está enlazada a un centro que ya no existe."},
    {"SELECT PCta_Cta,PCta_Des FROM PCta WHERE PCta_IdDpto<>0 AND NOT EXISTS "
     "(SELECT Dpto_Id FROM Dpto WHERE Dpto_Id=PCta_IdDpto) ORDER BY PCta_Cta",
     "La cuenta %1 («%2») está enlazada a un departamento que ya no existe."},
    {"SELECT PCta_Cta,PCta_Des FROM PCta WHERE PCta_IdMasa<>0 AND NOT EXISTS "
     "(SELECT Masas_Id FROM KXComun.dbo.Masas WHERE Masas_Id=PCta_IdMasa) ORDER BY PCta_Cta",
     "La cuenta %1 («%2») está enlazada a una masa que ya no existe."},
    {"SELECT Apu_Cta,COUNT(*) FROM Apu WHERE Apu_IdCta<>0 AND NOT EXISTS "
     "(SELECT PCta_Id FROM PCta WHERE PCta_Id=Apu_IdCta) GROUP BY Apu_Cta ORDER BY Apu_Cta",
     "Apuntes de la cuenta %1 enlazados a una cuenta que ya no existe: %2."},
    {"SELECT Apu_Cta,PCta_Cta,COUNT(*) FROM Apu INNER JOIN PCta ON PCta_Id=Apu_IdCta "
     "WHERE isnull(Apu_Cta,'')<>PCta_Cta GROUP BY Apu_Cta,PCta_Cta ORDER BY Apu_Cta,PCta_Cta",
     "Apuntes con la cuenta «%1» enlazados a la cuenta %2: %3."},
    {"SELECT Apu_Cta,COUNT(*) FROM Apu WHERE Apu_Cta<>'' AND isnull(Apu_IdCta,0)=0 GROUP BY Apu_Cta ORDER BY Apu_Cta",
     "Apuntes de la cuenta %1 que no están enlazados a ella: %2."},
    {"SELECT Apu_Cta,COUNT(*) FROM Apu WHERE Apu_IdCen<>0 AND NOT EXISTS "
     "(SELECT Centro_Id FROM Centro WHERE Centro_Id=Apu_IdCen) GROUP BY Apu_Cta ORDER BY Apu_Cta",
     "Apuntes de la cuenta %1 enlazados a un centro que ya no existe: %2."},
    {"SELECT Apu_Cta,COUNT(*) FROM Apu WHERE Apu_IdDpto<>0 AND NOT EXISTS "
     "(SELECT Dpto_Id FROM Dpto WHERE Dpto_Id=Apu_IdDpto) GROUP BY Apu_Cta ORDER BY Apu_Cta",
     "Apuntes de la cuenta %1 enlazados a un departamento que ya no existe: %2."},
};

constexpr Rule sharedRules[] = {
    {"SELECT Nif_Doc,COUNT(*) FROM KXComun.dbo.Nif WHERE Nif_Doc<>'' GROUP BY Nif_Doc HAVING COUNT(*)>1 "
     "ORDER BY Nif_Doc",
     "El documento %1 lo tienen %2 identidades fiscales."},
    {"SELECT Conce_Cod,COUNT(*) FROM KXComun.dbo.Conceptos WHERE Conce_Cod IS NOT NULL GROUP BY Conce_Cod "
     "HAVING COUNT(*)>1 ORDER BY Conce_Cod",
     "El código %1 lo tienen %2 conceptos."},
    {"SELECT BalC_Cta,COUNT(*) FROM KXComun.dbo.BalCtas WHERE NOT EXISTS "
     "(SELECT BalE_Id FROM KXComun.dbo.BalEstruc WHERE BalE_Id=BalC_IdBalE) GROUP BY BalC_Cta ORDER BY BalC_Cta",
     "La cuenta %1 de los balances está enlazada a un epígrafe que ya no existe."},
    {"SELECT BalE_Des,BalE_Id FROM KXComun.dbo.BalEstruc WHERE NOT EXISTS "
     "(SELECT Bal_Id FROM KXComun.dbo.Balances WHERE Bal_Id=BalE_IdBal) ORDER BY BalE_Id",
     "El epígrafe «%1» está enlazado a un balance que ya no existe."},
};

std::string sentenceOn(const Rule& rule, const Recordset& rows, int row) {
    std::string sentence;
    for (std::size_t i = 0; i < rule.sentence.size(); ++i) {
        if (rule.sentence[i] == '%')
            sentence += text::trim(rows.cell(row, rule.sentence[++i] - '1').text());
        else
            sentence += rule.sentence[i];
    }
    return sentence;
}

void check(ConexionBd& connection, std::span<const Rule> rules, const TellFault& tell) {
    for (const Rule& rule : rules) {
        const auto found = connection.Execute(rule.sql);
        for (int row = 0; row < found->rowCount(); ++row) tell(sentenceOn(rule, *found, row));
    }
}

}  // namespace

void checkCompanyRows(ConexionBd& connection, const TellFault& tell) { check(connection, companyRules, tell); }

void checkSharedRows(ConexionBd& connection, const TellFault& tell) { check(connection, sharedRules, tell); }

}  // namespace FendaMaestros::storage
