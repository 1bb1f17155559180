#include "app/guion/Script.h"

#include <algorithm>
#include <array>
#include <span>

#include "app/guion/GuionError.h"

namespace FendaMaestros {

const Command* Script::next() {
    if (read_ == commands_.size()) return nullptr;
    const Command& command = commands_[read_];
    if (read_ > 0 && commands_[read_ - 1].acts) {
        failOnUnused(command.line);
        open_ = read_;
    }
    ++read_;
    return &command;
}

void Script::failOnUnused(int line) const {
    static constexpr std::array names{"", "la respuesta", "el fichero", "la búsqueda", "el error que se esperaba"};
    static_assert(names.size() == std::variant_size_v<Preparation>);
    const auto kind = [](const Command& command) { return command.preparation.index(); };
    const auto read = std::span(commands_).subspan(open_, read_ - open_);
    for (std::size_t at = 1; at < names.size(); ++at) {
        const auto unused = std::ranges::find(read, at, kind);
        if (unused != read.end())
            throw GuionError{line, names[at] + (" de la línea " + std::to_string(unused->line) + " no se ha usado")};
    }
}

}  // namespace FendaMaestros
