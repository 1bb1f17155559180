#include <gtest/gtest.h>

#include "session/Condition.h"
#include "session/Decorators.h"
#include "session/ErrorBd.h"
#include "session/SesionSql.h"
#include "tests/support/FailingConexion.h"
#include "tests/support/FakeConexion.h"

using namespace std::literals;

namespace FendaMaestros::testing {
namespace {

using Values = std::vector<Variant>;

TEST(Condition, TakesTheLiteralsOut) {
    const auto key = readCondition(" WHERE Centro_Id = 7");
    ASSERT_TRUE(key);
    EXPECT_EQ(key->sql, " WHERE Centro_Id = ?");
    EXPECT_EQ(key->parameters, Values{7});

    const auto year =
        readCondition("where Fac_Doc='O''Hara -- ' and YEAR( Fac_Fecha ) >= 2026 And x<>'' AND y < -1.5 ");
    ASSERT_TRUE(year);
    EXPECT_EQ(year->sql, " WHERE Fac_Doc = ? AND year(Fac_Fecha) >= ? AND x <> ? AND y < ?");
    EXPECT_EQ(year->parameters, (Values{"O'Hara -- ", 2026, "", -1.5}));
}

TEST(Condition, RefusesWhatIsMoreThanAConjunctionOfComparisons) {
    for (std::string_view hostile : {
             ""sv,
             " "sv,
             "Id = 7"sv,
             " WHERE"sv,
             " WHERE "sv,
             " WHEREId = 7"sv,
             " WHERE Id"sv,
             " WHERE Id ="sv,
             " WHERE Id = 7 OR 1 = 1"sv,
             " WHERE Doc = '' OR '' = ''"sv,
             " WHERE Doc = 'a'b'"sv,
             " WHERE Doc = 'a"sv,
             " WHERE Doc = 'a''"sv,
             " WHERE Doc = 'a';"sv,
             " WHERE Doc = 'a' -- "sv,
             " WHERE Doc = 'a' /* */"sv,
             " WHERE Doc = 'a' AND"sv,
             " WHERE Doc = 'a'AND Id = 1"sv,
             " WHERE Id = 1AND Doc = 'a'"sv,
             " WHERE Doc = 'a' AND 1 = 1"sv,
             " WHERE Doc = 'a' AND '1' = '1'"sv,
             " WHERE Doc = 'a' AND Id IN (1)"sv,
             " WHERE Doc = Doc"sv,
             " WHERE Doc = 'a' || Doc"sv,
             " WHERE Id = 7 + 1"sv,
             " WHERE Id = (SELECT 1)"sv,
             " WHERE (Id = 7)"sv,
             " WHERE NOT Id = 7"sv,
             " WHERE true = 1"sv,
             " WHERE CURRENT_DATE <> ''"sv,
             " WHERE lower(Doc) = 'a'"sv,
             " WHERE year(year(F)) = 1"sv,
             " WHERE year(true) = 1"sv,
             " WHERE year(F = 1"sv,
             " WHERE Id == 7"sv,
             " WHERE Id =< 7"sv,
             " WHERE Id = 1e3"sv,
             " WHERE Id = 0x7"sv,
             " WHERE Id = --7"sv,
             " WHERE Id = 7."sv,
             " WHERE Id = 99999999999999999999"sv,
             " WHERE Año = 1"sv,
             " WHERE [Id] = 1"sv,
             " WHERE a.Id = 1"sv,
             " WHERE Id = 7\nAND Id = 7"sv,
             " WHERE Id = 7\0"sv,
         })
        EXPECT_FALSE(readCondition(hostile)) << hostile;
}

class Writing : public ::testing::Test {
protected:
    std::shared_ptr<FakeConexion> connection = std::make_shared<FakeConexion>();
    SesionSql session{connection, {}};
    std::string text;
    bool status = true;

    void describe(std::string_view table, std::string_view where = {}) {
        session.Tabla(table);
        session.Reiniciar(0);
        session.Condicion(where);
    }
    void add(std::string_view column, long kind, const Variant& value) {
        session.Campos().Agregar(column, kind, value, 2);
    }
    void expectRefused(std::string_view reason) {
        EXPECT_FALSE(status);
        EXPECT_NE(text.find(reason), std::string::npos) << text;
        EXPECT_TRUE(connection->log.empty()) << "a refused statement does nothing";
    }
};

TEST_F(Writing, ComposesOneStatementWithItsValuesApart) {
    describe("KXComun.dbo.Conceptos");
    add("Conce_Cod", valor::Texto, "7'");
    add("Conce_Mod", valor::Entero, "12");
    add("Conce_Nat", valor::Entero, 3.6);
    add("Conce_Plan", valor::Numero, " 2008");
    add("Conce_Pct", valor::Numero, "0.5");
    add("Conce_Des", valor::Nulo, "Null");
    session.Insertar(text, status);
    EXPECT_TRUE(status);
    EXPECT_EQ(text,
              "INSERT INTO KXComun.dbo.Conceptos (Conce_Cod, Conce_Mod, Conce_Nat, Conce_Plan, Conce_Pct, Conce_Des) "
              "VALUES (?, ?, ?, ?, ?, ?)");
    EXPECT_EQ(connection->parameters, (Values{"7'", 12, 4, 2008, 0.5, {}}));

    describe("Centro", " WHERE Centro_Id = 7");
    add("Centro_Cod", valor::Texto, 3);
    add("Centro_Des", valor::Texto, "Ñ");
    session.Actualizar(text, status);
    EXPECT_EQ(text, "UPDATE Centro SET Centro_Cod = ?, Centro_Des = ? WHERE Centro_Id = ?");
    EXPECT_EQ(connection->parameters, (Values{"3", "Ñ", 7}));

    session.Tabla("Centro");
    session.Reiniciar(0);
    add("Centro_Cod", valor::Texto, 4);
    session.Insertar(text, status);
    EXPECT_EQ(text, "INSERT INTO Centro (Centro_Cod) VALUES (?)") << "nothing of the write before";

    describe("Nif", " WHERE Nif_Id = 7 AND Nif_Doc = 'A1'");
    session.Borrar(text, status);
    EXPECT_EQ(text, "DELETE FROM Nif WHERE Nif_Id = ? AND Nif_Doc = ?");
    EXPECT_EQ(connection->parameters, (Values{7, "A1"}));
    EXPECT_EQ(connection->log.back(), text);
}

TEST_F(Writing, RefusesWhatItCannotCarryOut) {
    session.Borrar(text, status);
    expectRefused("tabla");
    for (const char* table : {"Centro; DROP TABLE Nif", "Centro x", "a..b", ".a", "a.", "1a", "Año"}) {
        describe(table, " WHERE Id = 7");
        session.Borrar(text, status);
        expectRefused("tabla");
    }
    describe("Centro", " WHERE Id = 7");
    session.Actualizar(text, status);
    expectRefused("columna");
    describe("Centro");
    session.Borrar(text, status);
    expectRefused("Falta la condición");
    describe("Centro", " WHERE Cod = '' OR '' = ''");
    session.Borrar(text, status);
    expectRefused("condición");
    describe("Centro", " WHERE Id = 7");
    add("Cod", valor::Texto, "1");
    session.Insertar(text, status);
    expectRefused("condición");

    struct Pair {
        const char* column;
        long kind;
        Variant value;
    };
    for (const Pair& pair : {Pair{"Cod = 1 --", valor::Texto, "x"}, Pair{"", valor::Texto, "x"}, Pair{"Cod", 9, "x"},
                             Pair{"Cod", valor::Numero, "doce"}, Pair{"Cod", valor::Entero, ""}}) {
        describe("Centro");
        add(pair.column, pair.kind, pair.value);
        session.Insertar(text, status);
        expectRefused("columna");
    }
}

TEST(Trace, SaysEveryTextAndStepInOrder) {
    std::vector<std::string> lines;
    const auto connection = std::make_shared<FakeConexion>();
    const auto session = traced(std::make_unique<SesionSql>(connection, ParametrosEmpresa()),
                                [&](std::string_view line) { lines.emplace_back(line); });
    std::string text;
    bool status = false;
    session->Conexion()->BeginTrans();
    session->Tabla("Centro");
    session->Reiniciar(0);
    session->Campos().Agregar("Centro_Cod", 3, "7", 2);
    session->Campos().Agregar("Centro_Mod", 0, 7, 2);
    session->Condicion(" WHERE Centro_Id = 7");
    session->Actualizar(text, status);
    session->Conexion()->Execute("SELECT 'x'  FROM Centro ");
    session->Conexion()->CommitTrans();
    EXPECT_EQ(lines, (std::vector<std::string>{"BeginTrans", "Tabla \"Centro\"", "Reiniciar 0",
                                               "Agregar \"Centro_Cod\", 3, \"7\", 2", "Agregar \"Centro_Mod\", 0, 7, 2",
                                               "Condicion \" WHERE Centro_Id = 7\"", "Actualizar",
                                               "SELECT 'x'  FROM Centro ", "CommitTrans"}));
    EXPECT_EQ(connection->log.size(), 4U) << "and everything still reaches the connection";
    EXPECT_TRUE(status);
}

TEST(FailingConnection, FailsTheStatementAskedForAndNoOther) {
    const auto inner = std::make_shared<FakeConexion>();
    FailingConexion connection(inner);
    connection.failAt(3);
    connection.BeginTrans();
    connection.Execute("SELECT 1");
    EXPECT_THROW(connection.run({"UPDATE", {}}), ErrorBd);
    connection.RollbackTrans();
    connection.CommitTrans();
    EXPECT_EQ(inner->log, (std::vector<std::string>{"begin", "SELECT 1", "rollback", "commit"}));
    EXPECT_EQ(connection.seen(), 4);
}

}  // namespace
}  // namespace FendaMaestros::testing
