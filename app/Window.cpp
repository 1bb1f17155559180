#include "app/Window.h"

#include <stdexcept>

#ifdef FENDA_WITH_QT
#include <QApplication>
#include <cstdlib>

#include "app/window/MainWindow.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/Silence.h"
#ifdef FENDA_WITH_SQLITE
#include "platform/sqlite/DataFolder.h"
#endif
#endif

namespace FendaMaestros {

#ifdef FENDA_WITH_QT

namespace {

constexpr const char* platformVariable = "QT_QPA_PLATFORM";

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value && *value;
}

/// The application object with what it keeps pointing at.
struct Windows {
    int argc = 1;
    char name[6] = "fenda";
    char* argv[2] = {name, nullptr};
    QApplication application{argc, argv};
};

}  // namespace

std::shared_ptr<void> openDisplay() {
    const std::runtime_error noDisplay(
        "No hay pantalla donde abrir ventanas; sin ella se puede usar «fenda guion», «fenda nif» y «fenda crear».");
    const bool chosen = isSet(platformVariable);
    if (!chosen) {
        if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY")) throw noDisplay;
        // A display that cannot be reached ends the program, unless there is a last resort.
        ::setenv(platformVariable, isSet("WAYLAND_DISPLAY") ? "wayland;xcb;offscreen" : "xcb;offscreen", 1);
    }
    std::shared_ptr<Windows> windows;
    {
        const qt::Silence silence;
        windows = std::make_shared<Windows>();
    }
    if (!chosen) ::unsetenv(platformVariable);
    if (!chosen && QGuiApplication::platformName() == "offscreen") throw noDisplay;
    return windows;
}

#else

std::shared_ptr<void> openDisplay() {
    throw std::runtime_error("Este programa se ha construido sin ventanas; con --ayuda se ven las demás órdenes.");
}

#endif

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
