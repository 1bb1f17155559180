#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/Place.h"
#include "app/guion/GuionDesktop.h"
#include "component/FendaMaes.h"
#include "session/Companies.h"

/// The one place that knows which adapters the program was built with. What needs one that is missing throws
/// std::runtime_error with a Spanish sentence that says so.
namespace FendaMaestros {

/// Registers the external components that were built: spreadsheets, the report printer and the host's account search.
/// `desktop` must outlive the registry.
void registerComponents(ComponentRegistry& components, Desktop& desktop);

/// The companies of a place: a folder need not be there yet, a server is reached when something is asked of it.
/// What they tell goes to standard error.
std::unique_ptr<Companies> companiesAt(const Place& place);

/// The SQL that makes a server ready for companies.
std::string serverPreparation();
/// Makes a server ready, and gives its name for a person to read, without user and password. Throws std::exception, in
/// Spanish, when that cannot be done.
std::string prepareServer(const std::string& connection);

/// The first company of a place. Throws std::runtime_error, in Spanish, when there is none.
std::string firstCompany(const Companies& companies, const Place& place);

/// `fenda` without a command: the main window over a company, until the person leaves it. Without a place `chosen`, it
/// is the one used last or, for who has used none, one of the user's own folder. In a folder without companies the
/// person is asked how to begin; without a display it gets the demonstration company. `company` is the one to open;
/// when it is empty, the one used last there or else the first. Returns 0. Throws std::exception, in Spanish, when
/// there is no display or no company can be opened.
int runMainWindow(const std::optional<Place>& chosen, const std::string& company);

/// Real windows for a script. Throws std::runtime_error, in Spanish, when there is no display.
GuionDesktop windowDesktop(Operator& person);

/// Writes the pages of a document to a PDF file; empty when nothing was built that can.
std::function<void(const PagedDocument& document, const std::string& path)> pdfWriter();

/// A company that is open: its session, and the component that works on it. Screens work with the newest that lives.
class OpenCompany {
public:
    /// `desktop` must outlive it. `session` is never null.
    OpenCompany(Desktop& desktop, std::unique_ptr<SesionBd> session);

    SesionBd& session() { return *session_; }
    FendaMaes& component() { return component_; }

private:
    std::unique_ptr<SesionBd> session_;
    ComponentRegistry components_;
    FendaMaes component_;
};

}  // namespace FendaMaestros
