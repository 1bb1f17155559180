#include <gtest/gtest.h>

#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/Place.h"
#include "tests/app/RunFenda.h"

namespace FendaMaestros {

namespace {

using testing::fenda;
using testing::OwnFolder;
using testing::Ran;

class CommandLine : public ::testing::Test {
protected:
    OwnFolder own_;
    const std::filesystem::path& folder_ = own_.path;

    Ran create(std::vector<std::string> options) {
        options.insert(options.begin(), {"crear", "--carpeta", folder_.string()});
        return fenda(std::move(options));
    }
};

TEST_F(CommandLine, AScriptThatIsEndedEndsInsideAStatementAndTheFolderOfAKilledOneGoesWithTheNext) {
    std::filesystem::create_directories(folder_ / "temporal");
    ::setenv("TMPDIR", (folder_ / "temporal").c_str(), 1);
    const auto folders = [&] { return std::distance(std::filesystem::directory_iterator(folder_ / "temporal"), {}); };
    std::ofstream(folder_ / "corto.guion") << "decir hola\n";
    std::ofstream(folder_ / "largo.guion")
        << "mostrar\nsql \"WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i-1 FROM n WHERE i > -10000000000) "
           "SELECT COUNT(*) FROM n\"\n";
    const auto endedBy = [&](int signal) {
        int output[2];
        EXPECT_EQ(::pipe(output), 0);
        const pid_t program = ::fork();
        if (program == 0) {
            ::dup2(output[1], STDOUT_FILENO);
            std::string name = "fenda", verb = "guion", script = folder_ / "largo.guion";
            char* words[] = {name.data(), verb.data(), script.data()};
            ::_exit(runCommandLine(3, words));
        }
        char first = 0;
        EXPECT_EQ(::read(output[0], &first, 1), 1);
        EXPECT_EQ(fenda({"guion", folder_ / "corto.guion"}).status, 0);
        EXPECT_EQ(folders(), 1) << "in use";
        ::usleep(300'000);  // from the first line to the middle of the statement
        ::kill(program, signal);
        int status = 0;
        ::waitpid(program, &status, 0);
        return status;
    };
    const int status = endedBy(SIGTERM);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
    EXPECT_EQ(folders(), 0);
    endedBy(SIGKILL);
    EXPECT_EQ(fenda({"guion", folder_ / "corto.guion"}).status, 0);
    EXPECT_EQ(folders(), 0);
    ::unsetenv("TMPDIR");
}

TEST_F(CommandLine, WhatIsNotUnderstoodIsSaidInSpanish) {
    for (const auto& words : std::vector<std::vector<std::string>>{{"otra"},
                                                                   {"crear", "otra"},
                                                                   {"nif", "--otra"},
                                                                   {"--carpeta"},
                                                                   {"crear", "--nombre"},
                                                                   {"guion"},
                                                                   {"listado", "--pdf"}}) {
        const Ran ran = fenda(words);
        EXPECT_EQ(ran.status, 2) << words.back();
        EXPECT_EQ(ran.out, "");
        EXPECT_EQ(std::ranges::count(ran.err, '\n'), 1) << ran.err;
        EXPECT_NE(ran.err.find(words.back()), std::string::npos) << ran.err;
    }
}

TEST_F(CommandLine, HelpIsSpanishAsAWhole) {
    for (const std::string command :
         {"crear", "nif", "guion", "listado", "identidades", "verificar", "revisar", "copia", "restaurar"}) {
        const Ran ran = fenda({command, "--help"});
        EXPECT_EQ(ran.status, 0);
        EXPECT_NE(ran.out.find("Uso: fenda " + command), std::string::npos);
        for (const char* english : {"Usage", "Options", "Positionals", "REQUIRED", "TEXT"})
            EXPECT_EQ(ran.out.find(english), std::string::npos) << ran.out;
    }
}

TEST_F(CommandLine, IdentifiersGivenGetTheirVerdicts) {
    const Ran good = fenda({"nif", "12.345.678-z", "ESA12345674"});
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(good.out, "12345678Z\tválido\nA12345674\tválido\n");
    EXPECT_EQ(fenda({"nif", "12345678Z", ""}).status, 1);
}

TEST_F(CommandLine, ACompanyThatMakesNoSenseIsNotCreated) {
    const std::vector<std::vector<std::string>> requests{
        {},
        {"--nombre", "  "},
        {"--nombre", "A\tB"},
        {"--nombre", std::string(61, 'x')},
        {"--nombre", "A", "--ejercicio", "26"},
        {"--nombre", "A", "--ejercicio", "dos mil"},
        {"--nombre", "A", "--digitos", "3"},
        {"--nombre", "A", "--digitos", "99999999999"},
        {"--nombre", "A", "--provincia", "53"},
        {"--nombre", "A", "--orden", "edad"},
    };
    for (const auto& request : requests) {
        const Ran ran = create(request);
        EXPECT_EQ(ran.status, 2) << ran.err;
        EXPECT_EQ(std::ranges::count(ran.err, '\n'), 1) << ran.err;
        EXPECT_FALSE(std::filesystem::exists(folder_)) << ran.err;
    }
}

#ifdef FENDA_WITH_SQLITE

TEST_F(CommandLine, ACompanyIsCreatedOnce) {
    const std::vector<std::string> request{"--nombre", "Peña & Hijos", "--digitos", "10", "--orden", "Apellidos"};
    EXPECT_EQ(create(request).status, 0);
    const Ran again = create(request);
    EXPECT_EQ(again.status, 1);
    EXPECT_NE(again.err.find("«Peña & Hijos» ya existe"), std::string::npos);
}

TEST_F(CommandLine, DataAreExaminedAndBackedUp) {
    create({"--nombre", "Una"});
    const auto run = [&](std::vector<std::string> words) {
        words.insert(words.end(), {"--carpeta", folder_.string()});
        return fenda(std::move(words));
    };
    const Ran nothing = run({"revisar"});
    EXPECT_EQ(nothing.status, 0) << nothing.out << nothing.err;
    EXPECT_EQ(nothing.out, "");
    const std::string copy = (folder_ / "copia").string();
    EXPECT_EQ(run({"copia", copy}).status, 0);
    EXPECT_EQ(run({"copia", copy}).status, 1);
    EXPECT_EQ(run({"restaurar", copy}).status, 1);
    EXPECT_EQ(fenda({"restaurar", copy, "--carpeta", (folder_ / "otra").string()}).status, 0);
    EXPECT_EQ(fenda({"revisar", "--carpeta", (folder_ / "otra").string()}).status, 0);

    std::filesystem::permissions(folder_, static_cast<std::filesystem::perms>(0755));
    const Ran open = run({"revisar", "--empresa", "Una"});
    EXPECT_EQ(open.status, 1);
    EXPECT_TRUE(open.out.starts_with("datos comunes\tCualquier usuario")) << open.out;
    EXPECT_EQ(run({"revisar", "--empresa", "Ninguna"}).status, 2);

    // One that cannot be checked, here made by a version to come, does not hide the next one.
    create({"--nombre", "Ayer"});
    for (const char* name : {"Ayer.db", "Una.db"})
        std::fstream(folder_ / name, std::ios::in | std::ios::out | std::ios::binary).seekp(60).write("\0\0\0\x63", 4);
    const Ran newer = run({"revisar"});
    EXPECT_EQ(newer.status, 2);
    EXPECT_NE(newer.err.find("«Una»", newer.err.find("«Ayer»")), std::string::npos) << newer.err;
}

#endif

TEST(PlaceOfCompanies, OptionBeforeVariableBeforeTheUsersOwn) {
    ::setenv("XDG_DATA_HOME", "/datos", 1);
    ::unsetenv("FENDA_CARPETA");
    ::unsetenv("FENDA_SERVIDOR");
    EXPECT_EQ(placeOfCompanies({}).where, "/datos/fenda");
    EXPECT_FALSE(chosenPlace({}));
    ::setenv("FENDA_CARPETA", "/otra", 1);
    EXPECT_EQ(placeOfCompanies({}).where, "/otra");
    ::setenv("FENDA_SERVIDOR", "service=fenda", 1);
    EXPECT_EQ(nameOf(placeOfCompanies({})), "el servidor");
    EXPECT_EQ(nameOf(placeOfCompanies({"/esta", ""})), "la carpeta /esta");
    EXPECT_EQ(placeOfCompanies({"", "host=suyo"}).where, "host=suyo");
    EXPECT_THROW(chosenPlace({"/esta", "host=suyo"}), std::invalid_argument);
    ::unsetenv("FENDA_SERVIDOR");
    ::unsetenv("FENDA_CARPETA");
    ::setenv("XDG_DATA_HOME", "relativa", 1);
    ::setenv("HOME", "/casa", 1);
    EXPECT_EQ(placeOfCompanies({}).where, "/casa/.local/share/fenda");
    ::unsetenv("HOME");
    EXPECT_THROW(placeOfCompanies({}), std::runtime_error);
}

TEST(PlaceOfCompanies, OneArgumentNamesAFolderOrAServer) {
    for (const char* server : {"host=suyo dbname=fenda", "service=fenda", "postgresql://ana@suyo/fenda"})
        EXPECT_EQ(readPlace(server).kind, Place::Kind::Server) << server;
    for (const char* folder : {"/datos/a=b", "./a=b", "datos", "=raro", "postgresql"})
        EXPECT_EQ(readPlace(folder).kind, Place::Kind::Folder) << folder;
}

}  // namespace

}  // namespace FendaMaestros
