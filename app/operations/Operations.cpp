#include "app/operations/Operations.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::vector<Operation> ofEveryMenu() {
    std::vector<Operation> all = tableOperations();
    std::ranges::move(accountOperations(), std::back_inserter(all));
    std::ranges::move(identifierOperations(), std::back_inserter(all));
    return all;
}

std::string limitOf(const Operation& operation) {
    const std::size_t most = operation.arguments.size();
    return most == 0 ? " no lleva argumentos" : " lleva " + std::to_string(most) + " argumentos como mucho";
}

void checkArgument(ArgumentKind kind, const Arguments& arguments, std::size_t index) {
    switch (kind) {
        case ArgumentKind::Text:
            return;
        case ArgumentKind::Flag:
            return (void)arguments.flag(index, false);
        case ArgumentKind::Number:
            return (void)arguments.number(index, 0);
        case ArgumentKind::Identity:
            return (void)arguments.identity(index);
    }
}

}  // namespace

// A new one: docs/architecture.md, "The program", names the files.
const std::vector<Operation>& operations() {
    static const std::vector<Operation> all = ofEveryMenu();
    return all;
}

const Operation* findOperation(std::string_view name) {
    const auto found = std::ranges::find_if(
        operations(), [name](const Operation& operation) { return text::equalIgnoringCase(operation.name, name); });
    return found == operations().end() ? nullptr : &*found;
}

void checkArguments(const Operation& operation, const Arguments& arguments) {
    if (arguments.count() > operation.arguments.size())
        throw std::invalid_argument(operation.name + limitOf(operation));
    for (std::size_t index = 0; index < operation.arguments.size(); ++index)
        checkArgument(operation.arguments[index], arguments, index);
}

}  // namespace FendaMaestros
