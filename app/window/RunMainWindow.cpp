#include "app/window/RunMainWindow.h"

#include <stdexcept>

#include "app/window/Display.h"

#ifdef FENDA_WITH_QT
#include <QApplication>

#include "app/window/MainWindow.h"
#include "platform/qt/QtDesktop.h"
#ifdef FENDA_WITH_SQLITE
#include "platform/sqlite/DataFolder.h"
#endif
#endif

namespace FendaMaestros {

#if defined(FENDA_WITH_QT) && defined(FENDA_WITH_SQLITE)

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

int runOn(QtDesktop& desktop, const std::filesystem::path& folder, const std::string& company) {
    const sqlite::DataFolder data(folder);
    std::vector<std::string> companies;
    if (data.exists()) companies = data.companies();
    if (companies.empty()) companies.push_back(data.createDemo());

    MainWindow window(desktop, companies, [&data](const std::string& name) { return data.openCompany(name); });
    if (company.empty())
        openFirst(window, companies);
    else
        window.openCompany(company);
    window.show();
    return QApplication::exec();
}

}  // namespace

int runMainWindow(const std::filesystem::path& folder, const std::string& company) {
    const std::shared_ptr<void> display = openDisplay();
    QtDesktop desktop;
    try {
        return runOn(desktop, folder, company);
    } catch (const std::exception& failure) {
        // Who started the program from a desktop sees no terminal.
        const bool seen = QGuiApplication::platformName() != "offscreen";
        if (seen) desktop.ask({failure.what(), message::Critical, "Fenda"});
        throw;
    }
}

#else

int runMainWindow(const std::filesystem::path&, const std::string&) {
    openDisplay();
    throw std::runtime_error("Este programa se ha construido sin base de datos.");
}

#endif

}  // namespace FendaMaestros
