#include "platform/sqlite/Collation.h"

#include <dlfcn.h>
#include <sqlite3.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/sqlite/Check.h"
#include "session/ErrorBd.h"

namespace FendaMaestros::sqlite {

namespace {

using Rank = std::uint8_t;

/// A character that takes no part in the order by itself, or is no ASCII: left to ICU.
constexpr Rank unranked = 0;

struct CloseCollator {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};
using CollatorHandle = std::unique_ptr<UCollator, CloseCollator>;

/// ICU keeps memory that nobody finds any more once it has been unloaded. A host may unload this library and load it
/// again, and again: ICU then stays.
void keepLoaded() {
    Dl_info library{};
    if (dladdr(reinterpret_cast<const void*>(&ucol_open), &library) != 0 && library.dli_fname)
        dlopen(library.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
}

CollatorHandle openCollator(const char* language) {
    UErrorCode status = U_ZERO_ERROR;
    CollatorHandle collator(ucol_open(language, &status));
    // Without data for the language the library gives the order of all others, and says no more than a warning.
    const char* actual = collator ? ucol_getLocaleByType(collator.get(), ULOC_ACTUAL_LOCALE, &status) : nullptr;
    if (U_FAILURE(status) || !actual || actual != std::string_view(language))
        throw ErrorBd(ErrorBd::Kind::Other, "No se encuentra la ordenación española de textos.", status,
                      u_errorName(status));
    return collator;
}

class Collator {
public:
    Collator() : collator_(openCollator("es")) {
        keepLoaded();
        ucol_setStrength(collator_.get(), UCOL_SECONDARY);
        rankAscii();
    }

    int compare(std::string_view a, std::string_view b) const {
        UErrorCode status = U_ZERO_ERROR;
        return ucol_strcollUTF8(collator_.get(), a.data(), static_cast<std::int32_t>(a.size()), b.data(),
                                static_cast<std::int32_t>(b.size()), &status);
    }

    Rank rank(char c) const { return ranks_[static_cast<unsigned char>(c)]; }

private:
    /// Numbers the ASCII characters in ICU's own order, so that most comparisons need no ICU.
    void rankAscii() {
        std::vector<char> characters;
        for (int c = 1; c < 128; ++c) {
            const char character = static_cast<char>(c);
            if (compare({&character, 1}, {}) != 0) characters.push_back(character);
        }
        const auto less = [this](char a, char b) { return compare({&a, 1}, {&b, 1}) < 0; };
        std::ranges::stable_sort(characters, less);
        Rank next = unranked;
        for (std::size_t i = 0; i < characters.size(); ++i) {
            if (i == 0 || less(characters[i - 1], characters[i])) ++next;
            ranks_[static_cast<unsigned char>(characters[i])] = next;
        }
    }

    CollatorHandle collator_;
    std::array<Rank, 256> ranks_{};
};

const Collator& collator() {
    static const Collator instance;
    return instance;
}

std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

/// Nothing of the text follows at `position`, or a character that stands by itself: no accent to be combined.
bool standsAlone(const Collator& order, std::string_view text, std::size_t position) {
    return position >= text.size() || order.rank(text[position]) != unranked;
}

int compareBytes(const Collator& order, std::string_view a, std::string_view b) {
    const auto common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const Rank left = order.rank(a[i]), right = order.rank(b[i]);
        if (left == unranked || right == unranked) return order.compare(a, b);
        if (left == right) continue;
        if (!standsAlone(order, a, i + 1) || !standsAlone(order, b, i + 1)) return order.compare(a, b);
        return left < right ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    const auto rest = (a.size() < b.size() ? b : a).substr(common);
    if (order.rank(rest.front()) == unranked) return order.compare(a, b);
    return a.size() < b.size() ? -1 : 1;
}

int collate(void* order, int sizeA, const void* a, int sizeB, const void* b) {
    const std::string_view left(static_cast<const char*>(a), static_cast<std::size_t>(sizeA));
    const std::string_view right(static_cast<const char*>(b), static_cast<std::size_t>(sizeB));
    return compareBytes(*static_cast<const Collator*>(order), withoutTrailingBlanks(left),
                        withoutTrailingBlanks(right));
}

}  // namespace

int compareSpanish(std::string_view a, std::string_view b) {
    return compareBytes(collator(), withoutTrailingBlanks(a), withoutTrailingBlanks(b));
}

std::string orderVersion(const char* language) {
    UVersionInfo version;
    ucol_getVersion(openCollator(language).get(), version);
    std::array<char, U_MAX_VERSION_STRING_LENGTH> text{};
    u_versionToString(version, text.data());
    return text.data();
}

void registerCollation(sqlite3* database) {
    auto* order = const_cast<Collator*>(&collator());
    check(sqlite3_create_collation_v2(database, "ES", SQLITE_UTF8, order, collate, nullptr), database);
}

}  // namespace FendaMaestros::sqlite
