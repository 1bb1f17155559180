// Each keystroke in the search dialog over 100,000 rows, the best of seven dialogs; the first one also folds all texts.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "session/FoundRows.h"

namespace {

using namespace FendaMaestros;

std::shared_ptr<Recordset> accounts(int count) {
    const char* names[] = {"Construcciones", "Áridos", "Peña",     "Núñez",
                           "Transportes",    "García", "Hermanos", "Logística"};
    auto rows = std::make_shared<Recordset>(std::vector<std::string>{"PCta_Id", "Cuenta", "PCta_Des"});
    std::mt19937 random(7);
    for (int row = 0; row < count; ++row) {
        std::string text = std::to_string(43'000'000 + row);
        for (int word = 0; word < 4; ++word) text.append(" ").append(names[random() % 8]);
        rows->appendInteger(row);
        rows->appendText(text);
        rows->appendText("");
    }
    return rows;
}

}  // namespace

int main() {
    const auto rows = accounts(100'000);
    std::vector<std::pair<std::string, double>> best;
    for (const char* typed : {"n", "nu", "nun", "nune", "nunez", "nunez garcia", "s", "a", "a e", "zzz", "430999"})
        best.emplace_back(typed, 1e9);

    for (int dialog = 0; dialog < 7; ++dialog) {
        auto found = std::make_shared<FoundRows>(rows, 1);
        for (auto& [typed, milliseconds] : best) {
            const auto start = std::chrono::steady_clock::now();
            found = found->search(typed);
            const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
            milliseconds = std::min(milliseconds, spent.count());
        }
    }
    for (const auto& [typed, milliseconds] : best) std::printf("%-14s %6.1f ms\n", typed.c_str(), milliseconds);
}
