#include <gtest/gtest.h>

#include "session/Companies.h"
#include "session/ErrorBd.h"

namespace FendaMaestros::testing {
namespace {

template <class Error, class Call>
std::string sentenceOf(Call&& call) {
    try {
        call();
    } catch (const Error& error) {
        return error.what();
    }
    return "";
}

TEST(NewCompanies, WhatIsTypedFollowsTheRulesOfWhatIsCreated) {
    const TypedCompany good{.name = "Una", .fiscalYear = "2026"};
    const struct {
        std::string TypedCompany::*typed;
        int NewCompany::*created;
        std::vector<int> allowed, refused;
        std::string sentence;
    } settings[] = {
        {&TypedCompany::fiscalYear, &NewCompany::fiscalYear, {1900, 2999}, {26, 1899, 3000}, "El ejercicio debe ser"},
        {&TypedCompany::accountDigits, &NewCompany::accountDigits, {4, 15}, {3, 16}, "El número de dígitos"},
        {&TypedCompany::province, &NewCompany::province, {1, 52, 99}, {0, 53, 100}, "La provincia, si no es 99"},
    };
    for (const auto& setting : settings) {
        TypedCompany typed = good;
        NewCompany created = readCompany(good);
        for (const int value : setting.allowed) {
            typed.*setting.typed = std::to_string(value);
            EXPECT_EQ(readCompany(typed).*setting.created, value);
            EXPECT_NO_THROW(check(readCompany(typed)));
        }
        for (const int value : setting.refused) {
            typed.*setting.typed = std::to_string(value);
            created.*setting.created = value;
            const auto said = sentenceOf<std::invalid_argument>([&] { readCompany(typed); });
            EXPECT_EQ(said, sentenceOf<ErrorBd>([&] { check(created); }));
            EXPECT_EQ(said.find(setting.sentence), 0U) << said;
            EXPECT_NE(said.find("y no «" + std::to_string(value) + "»"), std::string::npos) << said;
        }
        for (const char* noNumber : {"ocho", "-8", "8,0", " 8", "99999999999"}) {
            typed.*setting.typed = noNumber;
            EXPECT_NE(sentenceOf<std::invalid_argument>([&] { readCompany(typed); }).find(noNumber), std::string::npos);
        }
    }
}

TEST(NewCompanies, NamesAreShortPrintableTexts) {
    for (const std::string& name :
         {std::string(), std::string(" \t"), std::string("A\nB"), std::string("\xC3"), std::string(61, 'x')}) {
        const auto said = sentenceOf<std::invalid_argument>([&] { readCompany({.name = name}); });
        EXPECT_NE(said, "") << name;
        EXPECT_EQ(said, sentenceOf<ErrorBd>([&] { check({.name = name, .fiscalYear = 2026}); }));
    }
    std::string longest;
    for (int i = 0; i < 60; ++i) longest += "ñ";
    EXPECT_EQ(readCompany({.name = "  " + longest + "  "}).name, longest);
}

TEST(NewCompanies, WhatIsNotTypedTakesItsDefault) {
    const NewCompany company = readCompany({.name = "Una"});
    EXPECT_GE(company.fiscalYear, 2026);
    EXPECT_EQ(company.accountDigits, 8);
    EXPECT_EQ(company.province, 28);
    EXPECT_EQ(company.nameOrder, 0);
    EXPECT_EQ(readCompany({.name = "Una", .nameOrder = "Apellidos"}).nameOrder, 1);
    EXPECT_THROW(readCompany({.name = "Una", .nameOrder = "edad"}), std::invalid_argument);
}

}  // namespace
}  // namespace FendaMaestros::testing
