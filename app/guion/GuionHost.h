#pragma once

#include <string>
#include <utility>
#include <vector>

#include "component/FendaMaes.h"
#include "session/Companies.h"
#include "toolkit/Desktop.h"
#include "toolkit/Operator.h"

namespace FendaMaestros {

/// The program around a script: the desktop, the object of the public class and the company it works on. What a script
/// asks wrongly throws std::invalid_argument, in Spanish; other failures are those of the operations themselves.
class GuionHost {
public:
    virtual ~GuionHost() = default;

    virtual Desktop& desktop() = 0;
    virtual Gestures& gestures() = 0;
    /// The pointer as Desktop::setPointer left it.
    virtual int pointer() const = 0;

    /// The object of the public class whose operations a script calls.
    virtual FendaMaes& component() = 0;
    /// The public properties in the order of the interface; a Boolean is "sí" or "no", a session "sesión" or "ninguna".
    virtual std::vector<std::pair<std::string, Variant>> properties() const = 0;
    virtual void setProperty(const std::string& name, const std::string& value) = 0;
    /// A new object of the public class, with properties as after creation: no session.
    virtual void renewObject() = 0;

    /// Creates a company and opens it. Throws std::invalid_argument, in Spanish, for one that makes no sense.
    virtual void createCompany(const TypedCompany& company) = 0;
    virtual void openCompany(const std::string& name) = 0;
    /// The session of the company, traced while that is on. Null when no company is open.
    virtual SesionBd* session() = 0;
    virtual void trace(bool on) = 0;
};

}  // namespace FendaMaestros
