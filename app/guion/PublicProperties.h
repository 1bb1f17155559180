#pragma once

#include <span>
#include <string>

#include "component/FendaMaes.h"

namespace FendaMaestros {

/// A property of the public class as scripts read and write it: a Boolean is "sí" or "no", a session "sesión" or
/// "ninguna".
struct PublicProperty {
    const char* name;
    bool (*fits)(const std::string& value);
    Variant (*get)(const FendaMaes& component);
    /// `value` must fit; `session` is the one that "sesión" stands for.
    void (*set)(FendaMaes& component, SesionBd* session, const std::string& value);
};

/// In the order of the interface.
std::span<const PublicProperty> publicProperties();
/// The property of that name, whatever its case. Throws std::invalid_argument, in Spanish, when there is none.
const PublicProperty& publicProperty(const std::string& name);
/// As publicProperty(), and throws too when it cannot have that value.
const PublicProperty& checkedProperty(const std::string& name, const std::string& value);

}  // namespace FendaMaestros
