// Checking a tax identifier against only computing its control character, for a mix of persons and organisations; and
// explaining them as they come in a stream of lines, one in four of them wrong, against only reading the lines.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "taxid/Explicacion.h"
#include "taxid/Validacion.h"

namespace {

long allocations = 0;

}  // namespace

void* operator new(std::size_t bytes) {
    ++allocations;
    if (void* memory = std::malloc(bytes)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

char personControl(const char* digits) {
    unsigned value = 0;
    for (int i = 0; i < 8; ++i) value = value * 10 + static_cast<unsigned>(digits[i] - '0');
    return "TRWAGMYFPDXBNJZSQVHLCKE"[value % 23];
}

char organisationControl(const char* digits) {
    int sum = 0;
    for (int i = 0; i < 7; ++i) {
        const int digit = digits[i] - '0';
        sum += i % 2 == 0 ? digit * 2 / 10 + digit * 2 % 10 : digit;
    }
    return static_cast<char>('0' + (10 - sum % 10) % 10);
}

char controlOf(const std::string& identifier) {
    return identifier[0] == 'A' ? organisationControl(identifier.data() + 1) : personControl(identifier.data());
}

std::vector<std::string> identifiers(int count) {
    std::mt19937 random(23);
    std::vector<std::string> made;
    for (int i = 0; i < count; ++i) {
        const bool organisation = random() % 3 == 0;
        std::string digits = std::to_string(random() % 90'000'000 + 10'000'000);
        if (organisation) digits[0] = 'A';
        digits += controlOf(digits);
        made.push_back(digits);
    }
    return made;
}

template <class Work>
double nanosecondsEach(std::vector<std::string>& values, Work work) {
    double best = 1e9;
    for (int round = 0; round < 15; ++round) {
        const auto start = std::chrono::steady_clock::now();
        for (std::string& value : values) work(value);
        const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
        best = std::min(best, spent.count() / static_cast<double>(values.size()));
    }
    return best;
}

std::string lines(std::vector<std::string> values) {
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i % 4 == 0) values[i].back() = '?';
        text += values[i] + "\n";
    }
    return text;
}

template <class Work>
double nanosecondsALine(const std::string& text, std::size_t count, Work work) {
    double best = 1e9;
    for (int round = 0; round < 15; ++round) {
        std::istringstream input(text);
        const auto start = std::chrono::steady_clock::now();
        for (std::string line; std::getline(input, line);) work(line);
        const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
        best = std::min(best, spent.count() / static_cast<double>(count));
    }
    return best;
}

void measureExplanations(const std::vector<std::string>& values) {
    const std::string text = lines(values);
    std::size_t characters = 0;
    const double reading =
        nanosecondsALine(text, values.size(), [&](const std::string& line) { characters += line.size(); });
    std::string written;
    const double explaining = nanosecondsALine(text, values.size(), [&](const std::string& line) {
        const FendaMaestros::IdentifierExplanation explained = FendaMaestros::explainIdentifier(line);
        written.clear();
        FendaMaestros::appendFullName(written, explained);
        FendaMaestros::appendReason(written, explained);
        FendaMaestros::appendRules(written, explained);
        characters += written.size();
    });
    std::printf("Leer las líneas            %6.1f ns\n", reading);
    std::printf("Leerlas y explicarlas      %6.1f ns   %.2f veces\n", explaining, explaining / reading);
    if (characters == 0) std::abort();
}

}  // namespace

int main() {
    std::vector<std::string> values = identifiers(100'000);
    long right = 0;
    const double control =
        nanosecondsEach(values, [&](std::string& value) { right += controlOf(value) == value.back(); });
    const long before = allocations;
    const double whole =
        nanosecondsEach(values, [&](std::string& value) { right += FendaMaestros::verificarCif(value); });
    const long during = allocations - before;

    std::printf("Carácter de control solo   %6.1f ns\n", control);
    std::printf("Comprobación completa      %6.1f ns   %.2f veces (objetivo 1,50)\n", whole, whole / control);
    std::printf("Reservas de memoria        %6ld\n", during);
    measureExplanations(values);
    return right == 30L * 100'000 ? 0 : 1;
}
