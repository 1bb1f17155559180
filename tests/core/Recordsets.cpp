#include <gtest/gtest.h>

#include "session/ErrorBd.h"
#include "session/ParametrosEmpresa.h"
#include "session/Recordset.h"
#include "toolkit/Controls.h"

namespace FendaMaestros::testing {
namespace {

std::shared_ptr<Recordset> concepts() {
    auto rows = std::make_shared<Recordset>(std::vector<std::string>{"Id", "Codigo", "Importe"});
    const auto append = [&](int id, std::string_view code, double amount) {
        rows->appendInteger(id);
        rows->appendText(code);
        rows->appendReal(amount);
    };
    append(7, "A'1", 0.5);
    append(8, "Ñu", 12);
    append(9, "12  ", 3);
    append(8, "ñU", 4);
    rows->appendNull();
    rows->appendText("");
    rows->appendNull();
    return rows;
}

/// The row found, -1 at the end.
int found(std::string_view criteria) {
    const auto rows = concepts();
    rows->Find(criteria);
    EXPECT_EQ(rows->Eof(), rows->currentRow() < 0);
    return rows->currentRow();
}

TEST(RecordsetFind, ComparesAsTheColumnDoes) {
    EXPECT_EQ(found("Codigo = '12'"), 2) << "trailing blanks do not count";
    EXPECT_EQ(found("codigo='ÑU  '"), 1) << "nor does case, and the first one wins";
    EXPECT_EQ(found("Codigo = 'A'1'"), 0) << "a quote typed into a field is part of the literal";
    EXPECT_EQ(found("Codigo = 'A''1'"), 0) << "doubled or not";
    EXPECT_EQ(found("Codigo = '1'"), -1);
    EXPECT_EQ(found("Codigo = ''"), 4);
    EXPECT_EQ(found("Id = '008'"), 1) << "numbers compare as numbers";
    EXPECT_EQ(found("Importe = '0.50'"), 0);
    EXPECT_EQ(found("Id = '8x'"), -1);
    EXPECT_EQ(found("Id = ''"), -1) << "null equals nothing";
}

TEST(RecordsetFind, RefusesAnotherForm) {
    for (const char* criteria : {"", "Codigo", "= '1'", "Codigo = 1", "Codigo = '", "Otra = '1'"})
        EXPECT_THROW(concepts()->Find(criteria), ErrorBd) << criteria;
}

TEST(RecordsetMoves, TellOfEveryPositionTheEndIncluded) {
    const auto rows = concepts();
    std::vector<int> heard;
    rows->MoveComplete = [&] { heard.push_back(rows->currentRow()); };

    DataGrid grid;
    grid.bind(rows);
    rows->Find("Id = '9'");
    rows->Find("Id = '7'");
    rows->Find("Id = '1'");
    rows->MoveNext();
    grid.bind(rows);
    rows->moveToRow(4);
    rows->MoveNext();
    rows->MoveFirst();
    EXPECT_EQ(heard, (std::vector{0, 2, 0, -1, -1, 4, -1, 0})) << "MoveNext at the end is silent";
}

TEST(RecordsetEnds, HoldBothWhenThereAreNoRows) {
    Recordset none({"Id"});
    none.MoveFirst();
    EXPECT_TRUE(none.Eof() && none.Bof());
    EXPECT_THROW(none.Fields("Id"), ErrorBd);

    const auto rows = concepts();
    EXPECT_EQ(rows->Fields("IMPORTE").Value, Variant(0.5));
    EXPECT_EQ(rows->Fields("importe").Name, "Importe");
    EXPECT_THROW(rows->Fields("Otra"), ErrorBd);
    rows->Close();
    EXPECT_TRUE(rows->Eof() && rows->Bof());
    EXPECT_EQ(rows->RecordCount(), 0);
}

TEST(CompanyParameters, AreFoundInAnyCaseAndMissedAloud) {
    ParametrosEmpresa parameters;
    parameters.set("Par_Ejercicio", 2026);
    EXPECT_EQ(parameters.Item("PAR_EJERCICIO").Value, Variant(2026));
    EXPECT_THROW(parameters.Item("Par_Nombre"), ErrorBd);
}

}  // namespace
}  // namespace FendaMaestros::testing
