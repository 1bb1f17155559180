#include <algorithm>

#include "SessionContract.h"

namespace FendaMaestros::tests {
namespace {

using Kind = ErrorBd::Kind;

class ConnectionContract : public SessionContract {
protected:
    void insertCentres(std::initializer_list<const char*> names) {
        for (const char* name : names) insert("Centro", {{"Centro_Cod", 1}, {"Centro_Des", name}});
    }
    std::string centresWhere(const std::string& condition) {
        return column("SELECT Centro_Des FROM Centro WHERE " + condition + " ORDER BY Centro_Id");
    }
    std::int64_t centres() { return value("SELECT COUNT(*) FROM Centro").integer(); }
};

/// --- reading and nothing else

TEST_P(ConnectionContract, ExecuteRefusesWhateverIsNoRead) {
    insertCentres({"uno"});
    for (const char* hostile : {
             "SELECT * FROM Centro WHERE Centro_Des = 'x'; DROP TABLE Centro --'",
             "SELECT * FROM Centro; DELETE FROM Centro",
             "SELECT 1; SELECT 2",
             "SELECT * FROM Centro WHERE Centro_Cod = 1 -- AND Centro_Des = 'x'",
             "SELECT * FROM Centro /* todo */",
             "INSERT INTO Centro(Centro_Cod) VALUES (2) RETURNING Centro_Id",
             "WITH uno AS (SELECT 1 AS id) DELETE FROM Centro WHERE Centro_Id IN (SELECT id FROM uno) RETURNING 1",
             "UPDATE Centro SET Centro_Cod = 2",
             "DELETE FROM KXComun.dbo.Pais",
             "ATTACH 'otra.db' AS otra",
             "DETACH KXComun",
             "PRAGMA user_version = 99",
             "PRAGMA table_info(Centro)",
             "BEGIN",
             "COMMIT",
             "SAVEPOINT uno",
             "VACUUM",
             "EXPLAIN SELECT 1",
             "CREATE TABLE x(y)",
             "CREATE TEMP VIEW v AS SELECT 1",
             "SELECT * FROM Centro WHERE Centro_Cod = ?",
             "SELECT * FROM Centro WHERE Centro_Cod = :uno",
             "",
             "  ;",
         })
        EXPECT_EQ(errorOf([&] { read(hostile); }), Kind::Refused) << hostile;
    EXPECT_EQ(centres(), 1);
}

TEST_P(ConnectionContract, RunRefusesWhateverIsNoWriteOfRows) {
    insertCentres({"uno"});
    for (const char* hostile : {"DROP TABLE Centro", "PRAGMA user_version = 99", "SELECT 1", "BEGIN",
                                "DELETE FROM Centro; DELETE FROM Dpto", "CREATE TABLE x(y)", "ATTACH 'x' AS y"})
        EXPECT_EQ(errorOf([&] { connection->run({hostile, {}}); }), Kind::Refused) << hostile;
    EXPECT_EQ(errorOf([&] { connection->run({"DELETE FROM Centro WHERE Centro_Id = ?", {}}); }), Kind::Refused);
    EXPECT_EQ(centres(), 1);
}

TEST_P(ConnectionContract, AWriteTakesValuesOfTheRowsOfAnotherTable) {
    insert("Apu", {{"Apu_Cta", "57200001 "}, {"Apu_IdCen", 5}, {"Apu_IdDpto", 6}, {"Apu_Eje", 2009}});
    insert("Apu", {{"Apu_Cta", "57200001"}, {"Apu_IdCen", 5}, {"Apu_IdDpto", 6}, {"Apu_Eje", 2010}});
    for (const int centre : {0, 9})
        insert("PCta", {{"PCta_Cta", "57200001"}, {"PCta_IdCen", centre}, {"PCta_IdDpto", 0}});
    EXPECT_EQ(
        connection->run({"UPDATE Apu SET Apu_IdCen = CASE WHEN Cen <> 0 THEN Cen ELSE Apu_IdCen END, Apu_IdDpto = "
                         "CASE WHEN Dpto <> 0 THEN Dpto ELSE Apu_IdDpto END FROM (SELECT PCta_Cta AS Cta, "
                         "MAX(PCta_IdCen) AS Cen, MAX(PCta_IdDpto) AS Dpto FROM PCta GROUP BY PCta_Cta) AS "
                         "Asignada WHERE Cta = isnull(Apu_Cta,'') AND Apu_Eje = 2009",
                         {}}),
        1);
    const auto lines = read("SELECT Apu_IdCen, Apu_IdDpto FROM Apu ORDER BY Apu_Id");
    EXPECT_EQ(lines->cell(0, 0), Variant(9));
    EXPECT_EQ(lines->cell(0, 1), Variant(6));
    EXPECT_EQ(lines->cell(1, 0), Variant(5));
}

TEST_P(ConnectionContract, ErrorsTellTheirKind) {
    insert("KXComun.dbo.Pais", {{"Pais_Cod", "011"}});
    EXPECT_EQ(errorOf([&] { insert("KXComun.dbo.Pais", {{"Pais_Cod", "011"}}); }), Kind::Constraint);
    EXPECT_EQ(errorOf([&] { insert("Centro", {{"Centro_Cod", "A1"}}); }), Kind::Constraint);
    EXPECT_EQ(errorOf([&] { insert("Nada", {{"Centro_Cod", "1"}}); }), Kind::Sql);
    for (const char* broken : {"SELECT * FROM Nada", "SELECT FROM", "SELECT 'sin cierre", "SELECT Nada FROM Centro"})
        EXPECT_EQ(errorOf([&] { read(broken); }), Kind::Sql) << broken;
    EXPECT_EQ(errorOf([&] { read("SELECT \x01 FROM Centro"); }), Kind::Refused);
}

TEST_P(ConnectionContract, TextsThatDifferOnlyInLiteralsKeepApart) {
    insertCentres({"b", "a", "c"});
    const auto idOf = [&](const char* name) {
        return value(std::string("SELECT Centro_Id FROM Centro WHERE Centro_Des = '") + name + "'").integer();
    };
    for (const int round : {1, 2}) {
        SCOPED_TRACE(round);
        EXPECT_EQ(idOf("a"), 2);
        EXPECT_EQ(idOf("c"), 3);
        EXPECT_EQ(centresWhere("Centro_Id = 1"), "b");
        EXPECT_EQ(centresWhere("Centro_Id = '1'"), "b");
        EXPECT_EQ(centresWhere("Centro_Id = 1.0"), "b");
        EXPECT_EQ(centresWhere("Centro_Id = 1.5"), "");
        EXPECT_EQ(column("SELECT Centro_Des, Centro_Id FROM Centro ORDER BY 1"), "a b c");
        EXPECT_EQ(column("SELECT Centro_Des, Centro_Id FROM Centro ORDER BY 2"), "b a c");
        EXPECT_EQ(column("SELECT TOP 1 Centro_Des FROM Centro ORDER BY 1 DESC"), "c");
        EXPECT_EQ(column("SELECT TOP 2 Centro_Des FROM Centro ORDER BY 1 DESC"), "c b");
    }
}

TEST_P(ConnectionContract, SpeaksTheDialectOfTheScreens) {
    insertCompany();
    EXPECT_EQ(column("SELECT Pais_Nom FROM KXCOMUN.DBO.pais WHERE isnull ( Pais_Aeat , '' ) = ''"), "Francia");
    EXPECT_EQ(column("SELECT dbo.Centro.Centro_Des FROM dbo.Centro ORDER BY Centro_Des"), "Ávila Oficina");
    EXPECT_EQ(column("SELECT Pais_Cod + '+' + Pais_Nom AS [a b] FROM KXComun.dbo.Pais WHERE Pais_Cod = '001'"),
              "001+Francia");
    EXPECT_EQ(column("SELECT Pais_Nom FROM KXComun.dbo.Pais WHERE Pais_Cod = '001'AND 1=1"), "Francia");
    EXPECT_EQ(column("SELECT Pais_Nom FROM KXComun.dbo.Pais WHERE 1=1AND 2>1ORDER BY Pais_Nom DESC"), "Francia España");
    EXPECT_EQ(column("SELECT Pais_Nom FROM KXComun.dbo.Pais WHERE Pais_Cod IN "
                     "(SELECT TOP 1 Pais_Cod FROM KXComun.dbo.Pais ORDER BY Pais_Cod DESC) ORDER BY Pais_Nom"),
              "España");
    EXPECT_EQ(value("SELECT LEN('ñandú  ')"), Variant(5));
    EXPECT_EQ(value("SELECT YEAR(Fac_Fecha) FROM Fac"), Variant(2026));
    EXPECT_TRUE(value("SELECT YEAR('mañana')").isNull());
    for (const char* date : {"01/03/2009", "1/3/2009 10:30", "2009/03/01", "20090301"})
        EXPECT_EQ(value(std::string("SELECT YEAR('") + date + "')"), Variant(2009)) << date;
    for (const char* none : {"01/2009", "x1/03/2009", "01/03/09"})
        EXPECT_TRUE(value(std::string("SELECT YEAR('") + none + "')").isNull()) << none;
    EXPECT_EQ(read("SELECT Dir_Provincia AS [Cod.Provincia] FROM DIR")->columnName(0), "Cod.Provincia");
    EXPECT_EQ(column("SELECT DISTINCT TOP (1) Pais_Nom FROM KXComun.dbo.Pais WHERE Pais_Nom >=N'f' ORDER BY 1"),
              "Francia");
    EXPECT_EQ(column("SELECT CAST( Centro_Des AS VARCHAR (3)) + CAST(Centro_Cod AS NVARCHAR(MAX)) FROM Centro "
                     "WHERE CAST(CAST(Centro_Cod AS VARCHAR) AS INT) = 2"),
              "Ávi2");
    for (const char* refused :
         {"SELECT TOP 5 PERCENT * FROM Centro", "SELECT TOP (1) WITH TIES * FROM Centro",
          "SELECT TOP (1+1) * FROM Centro", "SELECT CAST(Centro_Des AS VARCHAR('3')) FROM Centro",
          "SELECT CAST(Fac_Fecha AS DATETIME) FROM Fac", "SELECT CAST(Apu_Debe AS DECIMAL(10,2)) FROM Apu"})
        EXPECT_EQ(errorOf([&] { read(refused); }), Kind::Refused) << refused;
}

TEST_P(ConnectionContract, NumbersAreNeverJoinedAsTexts) {
    insertCompany();
    for (const char* sum : {"Centro_Cod + 1", "1.5+Centro_Cod", "Centro_Des + -1", "COUNT(*) + COUNT(Centro_Id)",
                            "'x' + Sum (Centro_Cod)", "LEN(Centro_Des) + ''"})
        EXPECT_EQ(errorOf([&] { read(std::string("SELECT ") + sum + " FROM Centro"); }), Kind::Refused) << sum;
    for (const char* sum : {"Centro_Id + Centro_Cod", "Centro_Des + Centro_Cod", "MAX(Centro_Id) + Centro_Des"})
        EXPECT_THROW(read(std::string("SELECT ") + sum + " FROM Centro"), ErrorBd) << sum;
    EXPECT_TRUE(
        value("SELECT Ape + 'x' FROM (SELECT Nif_Ape1 AS Ape FROM KXComun.dbo.Nif WHERE Nif_Id = 2) AS uno").isNull());
    const std::string large(300, 'x');
    EXPECT_EQ(value("SELECT TOP 1 '" + large + "' + Centro_Des + 'y' FROM Centro ORDER BY Centro_Id").text(),
              large + "Oficinay");
}

/// --- values

TEST_P(ConnectionContract, ValuesComeBackAsTheyWere) {
    const std::string emoji = "\xF0\x9F\x92\xB6 ñ";
    std::string longText;
    for (int i = 0; i < 5000; ++i) longText += "ñ'";
    for (const auto& text : {std::string("O'Neill"), std::string(), std::string(" % _ [x] \\ "), emoji, longText}) {
        insert("Centro", {{"Centro_Cod", "05"}, {"Centro_Des", text}});
        EXPECT_EQ(value("SELECT Centro_Des FROM Centro ORDER BY Centro_Id DESC"), Variant(text));
        std::string doubled;
        for (const char c : text) doubled += c == '\'' ? "''" : std::string(1, c);
        EXPECT_GE(read("SELECT 1 FROM Centro WHERE Centro_Des = '" + doubled + "'")->RecordCount(), 1);
    }
    EXPECT_EQ(value("SELECT Centro_Cod FROM Centro"), Variant(5));
    insert("Apu", {{"Apu_Debe", 12.5}, {"Apu_Haber", 3}, {"Apu_CtaDes", {}}, {"Apu_IdCen", std::int64_t{1} << 62}});
    const auto row = read("SELECT apu_debe, apu_haber, apu_ctades, apu_idcen FROM Apu");
    EXPECT_EQ(row->cell(0, 0), Variant(12.5));
    EXPECT_EQ(row->cell(0, 1), Variant(3.0));
    EXPECT_TRUE(row->cell(0, 2).isNull());
    EXPECT_EQ(row->cell(0, 3), Variant(std::int64_t{1} << 62));
    EXPECT_EQ(value("SELECT Apu_IdCen FROM Apu WHERE Apu_IdCen = 4611686018427387904").integer(),
              std::int64_t{1} << 62);
}

TEST_P(ConnectionContract, IdsAreNewAndGrowing) {
    insertCentres({"a", "b"});
    connection->run({"DELETE FROM Centro WHERE Centro_Id = ?", {2}});
    insertCentres({"c"});
    EXPECT_EQ(value("SELECT MAX(Centro_Id) FROM Centro"), Variant(3));

    connection->BeginTrans();
    connection->run({"DELETE FROM Centro", {}});
    insertCentres({"d"});
    EXPECT_EQ(column("SELECT Centro_Des FROM Centro WHERE Centro_Id = (SELECT MAX(Centro_Id) FROM Centro)"), "d");
    EXPECT_GT(value("SELECT MAX(Centro_Id) FROM Centro").integer(), 3);
    connection->CommitTrans();
}

/// --- texts

TEST_P(ConnectionContract, TextsCompareAsInSpanish) {
    insertCentres({"Señor  ", "SEÑOR", "senor", "señór", "Seno"});
    EXPECT_EQ(centresWhere("Centro_Des = 'señor'"), "Señor   SEÑOR");
    EXPECT_EQ(centresWhere("Centro_Des = 'sen\xCC\x83or'"), "Señor   SEÑOR");
    EXPECT_EQ(centresWhere("Centro_Des <> 'señor '"), "senor señór Seno");
    EXPECT_EQ(centresWhere("'SENO' = Centro_Des + ''"), "Seno");
    EXPECT_EQ(centresWhere("isnull(Centro_Des,'') = 'SENOR  '"), "senor");
    EXPECT_EQ(centresWhere("Centro_Des LIKE '%ÑO%'"), "Señor   SEÑOR");
    for (const char* decomposed : {"%n\xCC\x83O%", "_EN\xCC\x83OR%"})
        EXPECT_EQ(centresWhere(std::string("Centro_Des LIKE '") + decomposed + "'"), "Señor   SEÑOR");
    EXPECT_EQ(centresWhere("'sen\xCC\x83or' LIKE Centro_Des"), "SEÑOR");
    EXPECT_EQ(centresWhere("Centro_Des LIKE 'sen_'"), "Seno");
    EXPECT_EQ(centresWhere("Centro_Des LIKE '%Ó_'"), "señór");
    EXPECT_EQ(column("SELECT COUNT(*) FROM Centro GROUP BY Centro_Des ORDER BY 1"), "1 1 1 2");
}

TEST_P(ConnectionContract, OrderIsSpanishForColumnsAliasesAndUnions) {
    insertCentres({"oso", "Ñu", "nube", "árbol", "Zeta", "arca", "NÚMERO", "9", "_x"});
    const std::string order = "_x 9 árbol arca nube NÚMERO Ñu oso Zeta";
    EXPECT_EQ(column("SELECT Centro_Des FROM Centro ORDER BY Centro_Des"), order);
    EXPECT_EQ(column("SELECT Centro_Des + '' AS x FROM Centro ORDER BY x ASC , Centro_Id"), order);
    EXPECT_EQ(column("SELECT Centro_Des + '' AS x FROM Centro UNION SELECT Centro_Des FROM Centro ORDER BY x"), order);
    EXPECT_EQ(column("SELECT Centro_Des + '' AS x FROM Centro ORDER BY Centro_Cod, x DESC"),
              "Zeta oso Ñu NÚMERO nube arca árbol 9 _x");
    EXPECT_EQ(centresWhere("Centro_Des BETWEEN 'n' AND 'ñz'"), "Ñu nube NÚMERO");
    EXPECT_EQ(column("SELECT MAX(Centro_Des) FROM Centro GROUP BY Centro_Des HAVING COUNT(*) < 2"), order);
    EXPECT_EQ(column("SELECT Centro_Des FROM Centro GROUP BY Centro_Des UNION SELECT 'b' FROM Centro"),
              "_x 9 árbol arca b nube NÚMERO Ñu oso Zeta");
    connection->run({"UPDATE Centro SET Centro_Cod = 7 WHERE Centro_Id = ?", {1}});
    EXPECT_EQ(column("SELECT Centro_Id FROM Centro"), "1 2 3 4 5 6 7 8 9");
}

TEST_P(ConnectionContract, ANullComesBeforeEveryValue) {
    insertCentres({"", "a"});
    insert("Centro", {{"Centro_Cod", {}}, {"Centro_Des", {}}});
    EXPECT_EQ(column("SELECT Centro_Id FROM Centro ORDER BY Centro_Des"), "3 1 2");
    EXPECT_EQ(column("SELECT Centro_Id FROM Centro ORDER BY Centro_Des DESC"), "2 1 3");
    EXPECT_EQ(column("SELECT Centro_Id FROM Centro ORDER BY Centro_Cod, Centro_Id"), "3 1 2");
}

/// --- amounts

TEST_P(ConnectionContract, SumsAreExactToTheTenThousandth) {
    EXPECT_TRUE(value("SELECT SUM(Apu_Debe) FROM Apu").isNull());
    EXPECT_EQ(value("SELECT isnull(SUM(Apu_Debe),0) FROM Apu"), Variant(0));
    for (const double amount : {0.1, 0.2, -0.3}) insert("Apu", {{"Apu_Cta", "1"}, {"Apu_Debe", amount}});
    EXPECT_EQ(value("SELECT SUM(Apu_Debe) FROM Apu"), Variant(0.0));
    EXPECT_EQ(column("SELECT SUM(Apu_Debe) FROM Apu WHERE Apu_Debe > 0 GROUP BY Apu_Cta HAVING SUM(Apu_Debe) <= 0.30"),
              "0.3");
    insert("Apu", {{"Apu_Cta", "1"}, {"Apu_Debe", {}}});
    for (int i = 0; i < 1000; ++i) insert("Apu", {{"Apu_Cta", "2"}, {"Apu_Debe", 0.0001}});
    EXPECT_EQ(value("SELECT SUM(Apu_Debe) FROM Apu"), Variant(0.1));
    EXPECT_EQ(value("SELECT SUM(Apu_Id) FROM Apu WHERE Apu_Id < 4"), Variant(6));
    EXPECT_EQ(value("SELECT AVG(Apu_Debe) FROM Apu WHERE Apu_Id < 4"), Variant(0.0));
    EXPECT_EQ(value("SELECT AVG(Apu_Debe) FROM Apu WHERE Apu_Cta = '2'"), Variant(0.0001));
    EXPECT_TRUE(value("SELECT AVG(Apu_Debe) FROM Apu WHERE Apu_Cta = '9'").isNull());
    insert("Apu", {{"Apu_Cta", "3"}, {"Apu_Debe", 1e16}});
    EXPECT_EQ(value("SELECT SUM(Apu_Debe) FROM Apu"), Variant(1e16));
}

/// --- transactions

TEST_P(ConnectionContract, TransactionsNest) {
    connection->BeginTrans();
    insertCentres({"fuera"});
    connection->BeginTrans();
    insertCentres({"dentro"});
    insert("KXComun.dbo.Pais", {{"Pais_Cod", "011"}});
    connection->RollbackTrans();
    connection->BeginTrans();
    insertCentres({"otro"});
    connection->CommitTrans();
    connection->CommitTrans();
    EXPECT_EQ(centresWhere("1 = 1"), "fuera otro");
    EXPECT_EQ(value("SELECT COUNT(*) FROM KXComun.dbo.Pais"), Variant(0));

    connection->BeginTrans();
    connection->BeginTrans();
    connection->run({"DELETE FROM Centro", {}});
    connection->CommitTrans();
    connection->RollbackTrans();
    connection->RollbackTrans();
    EXPECT_EQ(centres(), 2);
    EXPECT_EQ(errorOf([&] { connection->CommitTrans(); }), Kind::Refused);
}

TEST_P(ConnectionContract, AFailedStatementLeavesTheTransactionOpen) {
    insert("KXComun.dbo.Pais", {{"Pais_Cod", "011"}});
    connection->BeginTrans();
    insertCentres({"antes"});
    EXPECT_THROW(insert("KXComun.dbo.Pais", {{"Pais_Cod", "011"}}), ErrorBd);
    EXPECT_THROW(read("SELECT Nada FROM Centro"), ErrorBd);
    insertCentres({"después"});
    connection->CommitTrans();
    EXPECT_EQ(centres(), 2);
    EXPECT_EQ(connection->run({"UPDATE Centro SET Centro_Cod = ?", {"7"}}), 2);
    EXPECT_EQ(connection->run({"UPDATE Centro SET Centro_Cod = ? WHERE Centro_Id = ?", {8, 99}}), 0);
}

/// --- stopping

TEST_P(ConnectionContract, AStatementUnderWayCanBeStopped) {
    for (int i = 0; i < 20; ++i) insertCentres({"uno"});
    const char* millions = "SELECT COUNT(*) FROM Centro a, Centro b, Centro c, Centro d, Centro e, Centro f";
    bool wanted = false;
    int asked = 0;
    connection->stopWhen([&] { return wanted && ++asked > 2; });
    connection->BeginTrans();
    insertCentres({"dos"});
    wanted = true;
    try {
        read(millions);
        EXPECT_EQ(asked, 0);
        GTEST_SKIP() << "this adapter never asks";
    } catch (const ErrorBd& error) {
        EXPECT_EQ(error.kind(), Kind::Stopped);
    }
    wanted = false;
    connection->CommitTrans();
    EXPECT_EQ(centres(), 21);
}

INSTANTIATE_TEST_SUITE_P(, ConnectionContract, ::testing::ValuesIn(backends()), nameOf);

}  // namespace
}  // namespace FendaMaestros::tests
