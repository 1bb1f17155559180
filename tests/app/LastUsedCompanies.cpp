#include <gtest/gtest.h>

#include "app/LastUsed.h"

namespace FendaMaestros {

namespace {

using Kind = Place::Kind;

TEST(LastUsedCompanies, TheNewestComesFirstAndNoneTwice) {
    std::vector<std::string> kept;
    const auto keep = [&kept](const std::vector<std::string>& lines) { kept = lines; };
    LastUsed used({}, keep);
    for (const char* name : {"A", "B", "C", "D", "E", "F", "G", "B"}) used.use({{Kind::Folder, "/una\tcarpeta"}, name});
    used.use({{Kind::Server, "service=conta"}, "B"});
    std::string order;
    const LastUsed next(kept, {});
    for (const UsedCompany& each : next.all()) order += each.company;
    EXPECT_EQ(order, "BBGFED");
    EXPECT_EQ(next.all()[1], (UsedCompany{{Kind::Folder, "/una\tcarpeta"}, "B"}));
    EXPECT_EQ(next.all()[0].place.kind, Kind::Server);
    EXPECT_TRUE(LastUsed({"", "carpeta", "carpeta\t/una", "disco\t/una\tA", "carpeta\t\tA", "carpeta\t/una\t"}, {})
                    .all()
                    .empty());
}

TEST(LastUsedCompanies, SecretsOfAConnectionAreNotKept) {
    const struct {
        std::string connection, kept;
    } cases[] = {
        {"host=srv  password=abc dbname=conta", "host=srv dbname=conta"},
        {"password = 'a b\\' c' host = srv", "host=srv"},
        {"password=a\\ b host=srv sslpassword=x", "host=srv"},
        {"host='s r v' user=ana", "host='s r v' user=ana"},
        {"host=srv password='abc", ""},
        {"host=srv abc", ""},
        {"postgresql://ana:a@b:c@srv:5432/conta", "postgresql://ana@srv:5432/conta"},
        {"postgres://srv:5432/conta?user=ana&password=abc&sslmode=require",
         "postgres://srv:5432/conta?user=ana&sslmode=require"},
        {"postgresql://srv/conta?p%61ssword=abc", "postgresql://srv/conta"},
    };
    for (const auto& each : cases) EXPECT_EQ(withoutSecrets({Kind::Server, each.connection}).where, each.kept);
    EXPECT_TRUE(withoutSecrets({Kind::Folder, "datos"}).where.starts_with("/"));
}

}  // namespace

}  // namespace FendaMaestros
