#include "app/ListingTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <functional>
#include <sstream>

#include "app/Composition.h"
#include "tests/app/RunFenda.h"
#include "tests/support/ScriptedPerson.h"
#include "toolkit/Text.h"
#include "ui/Csv.h"

#ifdef FENDA_WITH_SQLITE

namespace FendaMaestros {

namespace {

using testing::fenda;
using testing::OwnFolder;
using testing::Ran;
using testing::ScriptedPerson;

std::string contentsOf(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

/// The demonstration company in a folder of its own.
class Listings : public ::testing::Test {
protected:
    OwnFolder own_;
    std::string company_;

    void SetUp() override { company_ = companiesAt({Place::Kind::Folder, own_.path})->createDemonstration(); }

    Ran run(std::vector<std::string> words) {
        words.insert(words.end(), {"--carpeta", own_.path.string()});
        return fenda(std::move(words));
    }
    std::unique_ptr<SesionBd> open() { return companiesAt({Place::Kind::Folder, own_.path})->open(company_); }
    void change(const std::string& sql) { open()->Conexion()->run({sql, {}}); }
    std::string file(const char* name) const { return (own_.path / name).string(); }
};

/// The rows of a grid as the command writes them: what it shows, amounts without points.
std::string rowsOf(const DataGrid& grid) {
    std::string lines;
    for (int row = 0; row < grid.rowCount(); ++row) {
        std::vector<std::string> values;
        for (int column = 0; column < grid.columnCount(); ++column) {
            if (!grid.column(column).Visible) continue;
            const std::string shown = grid.cellText(row, column);
            const bool amount = !grid.Columns[static_cast<std::size_t>(column)].NumberFormat.empty();
            values.push_back(amount ? text::trim(text::replaced(shown, ".", "")) : shown);
        }
        lines += csvLine(values);
    }
    return lines;
}

TEST_F(Listings, TheRowsAreThoseOfTheScreen) {
    change("UPDATE PCta SET PCta_IdDpto = (SELECT Dpto_Id FROM Dpto WHERE Dpto_Cod = 2) WHERE PCta_Cta LIKE '43%'");
    change("UPDATE PCta SET PCta_bActiva = 0 WHERE PCta_Cta = '43000002'");
    struct Case {
        std::vector<std::string> words;
        std::function<void(ScriptedPerson&, Form&)> asked;
    };
    const auto choose = [](const char* list, int index) {
        return [=](ScriptedPerson& person, Form& form) {
            person.hands.choose(form, person.control<ComboBox>(form, list), index);
        };
    };
    const std::vector<Case> cases{
        {{}, [](ScriptedPerson&, Form&) {}},
        {{"--tipo", "departamentos", "--departamento", "administracion", "--estado", "todas", "--con-saldo"},
         [&](ScriptedPerson& person, Form& form) {
             choose("cboTipo", 3)(person, form);
             auto& places = person.control<ComboBox>(form, "cboDepar(0)");
             for (int i = 0; i < places.ListCount(); ++i)
                 if (places.List(i) == "Administración") person.hands.choose(form, places, i);
             person.press(form, "Option1(2)");
             person.press(form, "Check1");
         }},
        {{"--desde", "43", "--hasta", "43,9", "--desde-saldo", "100,5", "--hasta-saldo", "7024.72", "--con-saldo"},
         [](ScriptedPerson& person, Form& form) {
             person.fill(form, "Text1(2)", "43");
             person.fill(form, "Text1(10)", "43,9");
             person.fill(form, "Text1(4)", "100,5");
             person.fill(form, "Text1(5)", "7024.72");
             person.press(form, "Check1");
         }},
        {{"--tipo", "nif", "--nombre", "S.L.", "--en-cualquier-parte", "--orden", "descripción", "--descendente"},
         [&](ScriptedPerson& person, Form& form) {
             choose("cboTipo", 5)(person, form);
             person.fill(form, "Text1(0)", "S.L.");
             person.press(form, "Check2");
             person.press(form, "cmdIniciar");
             person.hands.clickHeader(form, person.control<DataGrid>(form, "dbg"), 2);
         }},
    };
    for (const Case& asked : cases) {
        std::string shown;
        ScriptedPerson person;
        person.visits = {[&](Form& form) {
            asked.asked(person, form);
            auto& grid = person.control<DataGrid>(form, "dbg");
            if (grid.rowCount() == 0) person.press(form, "cmdIniciar");
            shown = rowsOf(grid);
        }};
        HeadlessDesktop desktop(person);
        OpenCompany(desktop, open()).component().jshowInformePlandeCuentas();

        std::vector<std::string> words = asked.words;
        words.insert(words.begin(), {"listado", "--csv"});
        const Ran ran = run(words);
        EXPECT_EQ(ran.status, 0) << ran.err;
        EXPECT_NE(shown, "");
        EXPECT_EQ(ran.out.substr(ran.out.find("\r\n") + 2), shown);
    }
}

TEST_F(Listings, EachOutputHoldsTheDataInItsOwnWriting) {
    change("UPDATE PCta SET PCta_Des = '  \"Uno\"; dos' || char(10) || 'tr\\es' WHERE PCta_Cta = '57000001'");
    change(
        "INSERT INTO Apu (Apu_IdCta, Apu_Cta, Apu_Debe, Apu_Haber, Apu_Estado) SELECT PCta_Id, PCta_Cta, 0, "
        "1234.5, 0 FROM PCta WHERE PCta_Cta = '57000001'");
    const std::vector<std::string> asked{"listado", "--desde", "57,1", "--hasta", "57,1", "--con-saldo"};
    const auto as = [&](const char* output) {
        auto words = asked;
        if (*output) words.push_back(output);
        return run(words).out;
    };
    EXPECT_EQ(as(""),
              "Cuenta    Descripción             Saldo\n"
              "--------  ------------------  ---------\n"
              "57000001    \"Uno\"; dos tr\\es  -1.234,50\n"
              "          Total...            -1.234,50\n");
    EXPECT_EQ(as("--csv"), "Cuenta;Descripción;Saldo\r\n57000001;\"  \"\"Uno\"\"; dos\ntr\\es\";-1234,50\r\n");
    EXPECT_EQ(as("--json"),
              "{\"cuentas\":[\n{\"cuenta\":\"57000001\",\"descripcion\":\"  \\\"Uno\\\"; dos\\u000Atr\\\\es\","
              "\"saldo\":-1234.5}],\"total\":-1234.5}\n");
    EXPECT_EQ(jsonString("ñ\x7F\xFF"), "\"ñ\\u007Fÿ\"");

    auto toFile = asked;
    toFile.insert(toFile.end(), {"--csv", file("cuentas.csv")});
    EXPECT_EQ(run(toFile).out, "Se ha guardado " + file("cuentas.csv") + "\n");
    EXPECT_EQ(contentsOf(file("cuentas.csv")), as("--csv"));
}

TEST_F(Listings, TheRegisterIsListedInTheOrderAskedFor) {
    const auto identifiers = [this](std::vector<std::string> words) {
        words.insert(words.begin(), {"identidades", "--json"});
        std::istringstream lines(run(words).out);
        std::vector<std::string> found;
        for (std::string line; std::getline(lines, line);)
            if (const auto at = line.find("\"cif_nif\":\""); at != std::string::npos)
                found.push_back(line.substr(at + 11, line.find('"', at + 11) - at - 11));
        return found;
    };
    const auto rows = open()->Conexion()->Execute("SELECT Nif_Doc FROM KXComun.dbo.Nif ORDER BY Nif_Doc");
    std::vector<std::string> expected;
    for (int row = 0; row < rows->rowCount(); ++row) expected.push_back(rows->cell(row, 0).text());
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(identifiers({"--orden", "NIF"}), expected);
    std::ranges::reverse(expected);
    EXPECT_EQ(identifiers({"--orden", "nif", "--descendente"}), expected);
}

TEST_F(Listings, AWrongChartIsToldByLineAndStatusAndStaysAsItIs) {
    EXPECT_EQ(run({"verificar"}).status, 0);
    for (const char* code : {"99900001", "430", "43000001"})
        change(std::string("INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva) VALUES ('") + code +
               "', 'Mal' || char(9) || 'hecha', 1, 1)");
    const auto chart = [this] { return csvRows(*open()->Conexion()->Execute("SELECT * FROM PCta")); };
    const std::string before = chart();

    const Ran plan = run({"verificar", "--plan"});
    EXPECT_EQ(plan.status, 1);
    EXPECT_EQ(plan.out, "99900001\tMal hecha\tfuera del plan\n");
    const Ran codes = run({"verificar", "--subcuentas"});
    EXPECT_EQ(codes.status, 1);
    EXPECT_EQ(std::ranges::count(codes.out, '\n'), 3) << codes.out;
    EXPECT_NE(codes.out.find("430\tMal hecha\tcódigo repetido o de otra longitud, sin diario\n"), std::string::npos);
    EXPECT_EQ(run({"verificar"}).out, plan.out + codes.out);
    const Ran json = run({"verificar", "--json"});
    EXPECT_EQ(json.status, 1);
    EXPECT_TRUE(json.out.starts_with(
        "{\"plan\":[\n{\"cuenta\":\"99900001\",\"descripcion\":\"Mal\\u0009hecha\"}],\n\"subcuentas\":[\n{"));
    EXPECT_EQ(chart(), before);
}

TEST_F(Listings, WhatCannotBeDoneIsOneSentenceAndLeavesNothing) {
    std::filesystem::create_directory(file("carpeta.csv"));
    const auto folderNow = [this] {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(own_.path))
            names.push_back(entry.path().filename());
        std::ranges::sort(names);
        return names;
    };
    const auto before = folderNow();
    const std::string missing = file("no-existe/x");
    const std::vector<std::vector<std::string>> requests {
        {"listado", "--tipo", "raro"}, {"listado", "--tipo", "nif", "--con-saldo"}, {"listado", "--estado", "x"},
            {"listado", "--orden", "centro"}, {"listado", "--desde", "43x"}, {"listado", "--hasta", "999999999"},
            {"listado", "--desde-saldo", "1e5"}, {"listado", "--departamento", "De nadie"},
            {"listado", "--centro", "99"}, {"listado", "--json", "--csv"}, {"listado", "--empresa", "Otra"},
            {"listado", "--csv", missing}, {"listado", "--csv", file("carpeta.csv")},
#ifdef FENDA_WITH_XLSX
            {"listado", "--xlsx", missing},
#endif
#if defined FENDA_WITH_QT && defined FENDA_WITH_REPORTS
            {"listado", "--pdf", missing}, {"listado", "--pdf", missing, "--tipo", "cuentas"},
#endif
            {"identidades", "--orden", "edad"}, {"identidades", "--csv", missing}, {"verificar", "--empresa", "Otra"},
    };
    for (const auto& request : requests) {
        const Ran ran = run(request);
        EXPECT_EQ(ran.status, 2) << request[1] << ran.err;
        EXPECT_EQ(ran.out, "");
        EXPECT_EQ(std::ranges::count(ran.err, '\n'), 1) << ran.err;
        EXPECT_EQ(folderNow(), before) << ran.err;
    }
}

#if defined FENDA_WITH_QT && defined FENDA_WITH_REPORTS && defined FENDA_WITH_XLSX

TEST_F(Listings, FilesOfOtherProgramsAreWhole) {
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"listado", "--con-saldo"}, {"listado", "--tipo", "cuentas"}, {"identidades"}}) {
        for (const auto& [output, name, start] : std::vector<std::array<const char*, 3>>{
                 {"--pdf", "listado.pdf", "%PDF-"}, {"--xlsx", "listado.xlsx", "PK"}}) {
            auto words = command;
            words.insert(words.end(), {output, file(name)});
            EXPECT_EQ(run(words).out, "Se ha guardado " + file(name) + "\n");
            EXPECT_TRUE(contentsOf(file(name)).starts_with(start));
            std::filesystem::remove(file(name));
        }
    }
}

#endif

}  // namespace

}  // namespace FendaMaestros

#endif
