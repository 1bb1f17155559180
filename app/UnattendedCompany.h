#pragma once

#include <string>

#include "app/Composition.h"
#include "app/Place.h"
#include "toolkit/Operator.h"

namespace FendaMaestros {

/// A company opened for a command: no screen is shown and nobody is asked. Exporter and printer save where the command
/// says, and what they would tell a person is thrown as std::runtime_error.
class UnattendedCompany final : private Operator {
public:
    /// The first company of the place when `company` is empty. Throws std::exception, in Spanish, when it cannot be
    /// opened.
    UnattendedCompany(const Place& place, const std::string& company);

    Desktop& desktop() { return *desktop_.desktop; }
    /// The file for what is exported or printed from now on.
    void saveTo(const std::string& path) { path_ = path; }

private:
    /// A preview is saved as a PDF file and left.
    void attend(Form& form) override;
    Reply answer(const Message& message) override;
    std::optional<std::string> saveFile(const std::string&, const std::string&) override { return path_; }

    std::string path_;
    GuionDesktop desktop_;
    OpenCompany company_;
};

}  // namespace FendaMaestros
