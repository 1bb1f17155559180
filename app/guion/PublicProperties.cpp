#include "app/guion/PublicProperties.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <stdexcept>

#include "app/YesOrNo.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

bool isSession(const std::string& value) { return text::folded(value) == "sesion"; }

bool fitsSession(const std::string& value) { return isSession(value) || text::folded(value) == "ninguna"; }

std::string nameOf(const SesionBd* session) { return session ? "sesión" : "ninguna"; }

std::optional<std::int16_t> readNumber(const std::string& value) {
    std::int16_t number = 0;
    const char* const end = value.data() + value.size();
    const auto [read, error] = std::from_chars(value.data(), end, number);
    return error == std::errc() && read == end ? std::optional(number) : std::nullopt;
}

using Component = const FendaMaes&;
using Value = const std::string&;

constexpr std::array<PublicProperty, 5> all{{
    {"Cuenta", [](Value) { return true; }, [](Component c) { return Variant(c.Cuenta); },
     [](FendaMaes& c, SesionBd*, Value v) { c.Cuenta = v; }},
    {"bFactu", [](Value v) { return readYesOrNo(v).has_value(); },
     [](Component c) { return Variant(yesOrNo(c.bFactu)); },
     [](FendaMaes& c, SesionBd*, Value v) { c.bFactu = *readYesOrNo(v); }},
    {"Plan", [](Value v) { return readNumber(v).has_value(); }, [](Component c) { return Variant(c.Plan); },
     [](FendaMaes& c, SesionBd*, Value v) { c.Plan = *readNumber(v); }},
    {"MyBdorigen", fitsSession, [](Component c) { return Variant(nameOf(c.MyBdorigen)); },
     [](FendaMaes& c, SesionBd* s, Value v) { c.MyBdorigen = isSession(v) ? s : nullptr; }},
    {"MyBd", fitsSession, [](Component c) { return Variant(nameOf(c.MyBd)); },
     [](FendaMaes& c, SesionBd* s, Value v) { c.MyBd = isSession(v) ? s : nullptr; }},
}};

}  // namespace

std::span<const PublicProperty> publicProperties() { return all; }

const PublicProperty& publicProperty(const std::string& name) {
    const auto found = std::ranges::find_if(
        all, [&name](const PublicProperty& property) { return text::equalIgnoringCase(name, property.name); });
    if (found == all.end()) throw std::invalid_argument("no hay ninguna propiedad " + name);
    return *found;
}

const PublicProperty& checkedProperty(const std::string& name, const std::string& value) {
    const PublicProperty& property = publicProperty(name);
    if (!property.fits(value))
        throw std::invalid_argument("la propiedad " + name + " no puede valer \"" + value + "\"");
    return property;
}

}  // namespace FendaMaestros
