#include "platform/sqlite/DemoCompany.h"

#include "platform/sqlite/ReferenceData.h"

namespace FendaMaestros::sqlite {

namespace {

void loadIdentities(const Database& database) {
    database.execute("CREATE TEMP TABLE Identidades AS SELECT * FROM KXComun.Nif WHERE 0");
    loadReferenceData(database, "Identidades", "demo_identidades");
    database.execute(
        "DELETE FROM Identidades WHERE Nif_Doc IN (SELECT Nif_Doc FROM KXComun.Nif);"
        "UPDATE Identidades SET Nif_Ape1 = NULL, Nif_Ape2 = NULL WHERE Nif_TipDoc = 0;"
        "UPDATE Identidades SET Nif_ClaveRet = NULL, Nif_SubClave = NULL WHERE Nif_ClaveRet = '';"
        "INSERT INTO KXComun.Nif SELECT * FROM Identidades");
}

void loadAccounts(const Database& database) {
    database.execute(
        "CREATE TEMP TABLE Cuentas (PCta_Cta TEXT, PCta_Des TEXT, Nif_Doc TEXT, PCta_CtaAso TEXT, "
        "PCta_CtaIrpfAso TEXT, Masas_Des TEXT)");
    loadReferenceData(database, "Cuentas", "demo_cuentas");
    database.execute(
        "INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_CtaAso, PCta_CtaIrpfAso, Pcta_IdNif, PCta_IdMasa, PCta_IdCtaAso, "
        "PCta_Subcuenta, PCta_bActiva, PCta_IdCen, PCta_IdDpto, Pcta_Origen, Pcta_IdOrigen) "
        "SELECT PCta_Cta, PCta_Des, nullif(PCta_CtaAso, ''), nullif(PCta_CtaIrpfAso, ''), "
        "ifnull((SELECT Nif_Id FROM KXComun.Nif AS N WHERE N.Nif_Doc = C.Nif_Doc), 0), "
        "ifnull((SELECT Masas_Id FROM KXComun.Masas AS M WHERE Masas_Plan = 2008 AND M.Masas_Des = C.Masas_Des), 0), "
        "0, 1, 1, 0, 0, 0, 0 FROM Cuentas AS C ORDER BY PCta_Cta;"
        "UPDATE PCta SET PCta_IdCtaAso = A.PCta_Id FROM PCta AS A "
        "WHERE A.PCta_Subcuenta = 1 AND A.PCta_Cta = PCta.PCta_CtaAso");
}

void loadJournal(const Database& database) {
    loadReferenceData(database, "Apu", "demo_apuntes", {.names = "Apu_Estado,Apu_IdCen,Apu_IdDpto", .values = "0,0,0"});
    database.execute(
        "UPDATE Apu SET Apu_IdCta = PCta_Id, Apu_CtaDes = PCta_Des FROM PCta "
        "WHERE PCta_Subcuenta = 1 AND PCta_Cta = Apu_Cta");
}

}  // namespace

void loadDemo(const Database& database) {
    loadReferenceData(database, "Centro", "demo_centros");
    loadReferenceData(database, "Dpto", "demo_departamentos");
    loadIdentities(database);
    loadAccounts(database);
    loadJournal(database);
    loadReferenceData(database, "Fac", "demo_facturas");
}

}  // namespace FendaMaestros::sqlite
