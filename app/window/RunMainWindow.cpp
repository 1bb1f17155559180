#include "app/window/RunMainWindow.h"

#include <QApplication>
#include <exception>
#include <memory>
#include <vector>

#include "app/Composition.h"
#include "app/window/Display.h"
#include "app/window/MainWindow.h"
#include "platform/qt/QtDesktop.h"

namespace FendaMaestros::window {

namespace {

/// The first company that can be opened. Throws what is wrong with the first of all when none can.
void openFirst(MainWindow& window, const std::vector<std::string>& companies) {
    std::exception_ptr failure;
    for (const std::string& name : companies) {
        try {
            return window.openCompany(name);
        } catch (const std::exception&) {
            if (!failure) failure = std::current_exception();
        }
    }
    std::rethrow_exception(failure);
}

/// Who started the program from a desktop sees no terminal.
bool isSeen() { return QGuiApplication::platformName() != "offscreen"; }

CompanyPlace connectTo(const std::string& connection) {
    const Place place{Place::Kind::Server, connection};
    const std::shared_ptr<Companies> companies = companiesAt(place);
    firstCompany(*companies, place);
    return {companies->list(), [companies](const std::string& name) { return companies->open(name); }};
}

int runOn(QtDesktop& desktop, const Place& place, const std::string& company) {
    const std::unique_ptr<Companies> companies = companiesAt(place);
    if (isSeen())
        companies->tellTo([&desktop](const std::string& sentence) {
            desktop.ask({sentence, message::Ok + message::Exclamation, "Fenda"});
        });
    std::vector<std::string> names;
    if (companies->exists()) names = companies->list();
    if (names.empty() && place.kind == Place::Kind::Server) firstCompany(*companies, place);
    if (names.empty()) names.push_back(companies->createDemonstration());

    MainWindow window(desktop, {names, [&companies](const std::string& name) { return companies->open(name); }},
                      connectTo);
    if (company.empty())
        openFirst(window, names);
    else
        window.openCompany(company);
    window.show();
    return QApplication::exec();
}

}  // namespace

int runMainWindow(const Place& place, const std::string& company) {
    const std::shared_ptr<void> display = openDisplay();
    QtDesktop desktop;
    try {
        return runOn(desktop, place, company);
    } catch (const std::exception& failure) {
        if (isSeen()) desktop.ask({failure.what(), message::Critical, "Fenda"});
        throw;
    }
}

}  // namespace FendaMaestros::window
