#include "app/operations/Arguments.h"

#include <charconv>
#include <stdexcept>

#include "app/YesOrNo.h"

namespace FendaMaestros {

namespace {

template <class Number>
Number wholeNumber(const std::string& given) {
    Number value = 0;
    const auto [end, error] = std::from_chars(given.data(), given.data() + given.size(), value);
    if (error != std::errc() || end != given.data() + given.size())
        throw std::invalid_argument("Se esperaba un número entero, y no «" + given + "».");
    return value;
}

}  // namespace

std::string Arguments::text(std::size_t index, std::string absent) const {
    return index < texts_.size() ? texts_[index] : absent;
}

bool Arguments::flag(std::size_t index, bool absent) const {
    if (index >= texts_.size()) return absent;
    if (const auto value = readYesOrNo(texts_[index])) return *value;
    throw std::invalid_argument("Se esperaba sí o no, y no «" + texts_[index] + "».");
}

std::int16_t Arguments::number(std::size_t index, std::int16_t absent) const {
    return index < texts_.size() ? wholeNumber<std::int16_t>(texts_[index]) : absent;
}

std::int32_t Arguments::identity(std::size_t index) const {
    return index < texts_.size() ? wholeNumber<std::int32_t>(texts_[index]) : 0;
}

}  // namespace FendaMaestros
