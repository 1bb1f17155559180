// The same calls through the C interface and in C++, paired in one run: an identifier checked, and the town of a postal
// code looked up. Both begin with the text as a host has it and end with the verdict, or the town.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "component/FendaMaes.h"
#include "include/fenda.h"
#include "platform/headless/HeadlessDesktop.h"
#include "platform/sqlite/DataFolder.h"
#include "tests/session/TemporaryFolder.h"

namespace {

using namespace FendaMaestros;

struct Nobody final : Operator {
    void attend(Form&) override {}
    Reply answer(const Message&) override { return {}; }
    std::optional<std::string> saveFile(const std::string&, const std::string&) override { return std::nullopt; }
};

void require(fenda_status status) {
    if (status == FENDA_OK) return;
    const char* text = "";
    fenda_last_error(&text, nullptr, nullptr);
    std::fprintf(stderr, "%s\n", text);
    std::exit(1);
}

/// Identifiers as people type them: half of them with dots and a hyphen.
std::vector<std::string> identifiers(int count) {
    std::mt19937 random(29);
    std::vector<std::string> made;
    for (int i = 0; i < count; ++i) {
        std::string digits = std::to_string(random() % 90'000'000 + 10'000'000);
        const char letter = "TRWAGMYFPDXBNJZSQVHLCKE"[std::stoul(digits) % 23];
        if (i % 2) digits = digits.substr(0, 2) + "." + digits.substr(2, 3) + "." + digits.substr(5) + "-";
        made.push_back(digits + letter);
    }
    return made;
}

/// Nanoseconds of one call, of each side: the median of rounds in turn.
template <class One, class Other>
void compare(const char* what, int rounds, int each, One&& throughC, Other&& inCpp) {
    std::vector<double> c, cpp, ratios;
    const auto spent = [each](auto&& work) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < each; ++i) work(i);
        return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count() / each;
    };
    for (int round = 0; round < rounds; ++round) {
        cpp.push_back(spent(inCpp));
        c.push_back(spent(throughC));
        ratios.push_back(c.back() / cpp.back());
    }
    std::printf("%-24s C++ %9.1f ns   C %9.1f ns   %.2f veces (objetivo 1,10)\n", what, bench::median(cpp),
                bench::median(c), bench::median(ratios));
}

}  // namespace

int main() {
    const tests::TemporaryFolder folder;
    const std::string data = (folder.path() / "datos").string();
    require(fenda_folder_create_demonstration(data.c_str(), nullptr));

    Nobody nobody;
    HeadlessDesktop desktop(nobody);
    ComponentRegistry components;
    const sqlite::DataFolder companies(data);
    const auto session = companies.open(companies.list().front());
    FendaMaes maes(desktop, components);
    maes.MyBd = session.get();

    fenda_desktop* shown = nullptr;
    fenda_session* opened = nullptr;
    fenda_object* object = nullptr;
    require(fenda_desktop_script("", false, &shown));
    require(fenda_session_open_folder(data.c_str(), nullptr, &opened));
    require(fenda_object_new(shown, nullptr, &object));
    require(fenda_set_MyBd(object, opened));

    const std::vector<std::string> typed = identifiers(10'000);
    const auto text = [&typed](int i) { return typed[static_cast<std::size_t>(i) % typed.size()].c_str(); };
    long right = 0;
    compare(
        "FnVerificarCif", 101, 10'000,
        [&](int i) {
            char identifier[32];
            bool valid = false;
            std::strcpy(identifier, text(i));
            fenda_FnVerificarCif(object, identifier, false, &valid);
            right += valid;
        },
        [&](int i) {
            std::string identifier(text(i));
            right += maes.FnVerificarCif(identifier);
        });
    std::size_t letters = 0;
    compare(
        "FnBuscaPoblacion", 51, 500,
        [&](int) {
            char* town = nullptr;
            fenda_FnBuscaPoblacion(object, "011", "28001", &town);
            letters += std::strlen(town);
            fenda_free(town);
        },
        [&](int) { letters += maes.FnBuscaPoblacion("011", "28001").size(); });

    require(fenda_object_close(object));
    require(fenda_desktop_close(shown));
    require(fenda_session_close(opened));
    return right == 2L * 101 * 10'000 && letters > 0 ? 0 : 1;
}
