#include "app/window/RunMainWindow.h"

#include <QApplication>
#include <QSettings>
#include <algorithm>
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
void openFirst(MainWindow& window, const CompanyPlace& place, const std::vector<std::string>& companies) {
    std::exception_ptr failure;
    for (const std::string& name : companies) {
        try {
            return window.openIn(place, name);
        } catch (const std::exception&) {
            if (!failure) failure = std::current_exception();
        }
    }
    std::rethrow_exception(failure);
}

constexpr const char* windowKey = "ventanas/principal";

/// A person sits in front of it. Who started the program from a desktop sees no terminal; without a display nothing is
/// asked and nothing is remembered.
bool isSeen() { return QGuiApplication::platformName() != "offscreen"; }

/// Kept in the desktop's own place for the settings of its programs.
LastUsed rememberedUse(QSettings& settings) {
    static constexpr const char* key = "empresas/ultimas";
    std::vector<std::string> lines;
    for (const QString& line : settings.value(key).toStringList()) lines.push_back(line.toStdString());
    return {lines, [&settings](const std::vector<std::string>& kept) {
                QStringList list;
                for (const std::string& line : kept) list.append(QString::fromStdString(line));
                settings.setValue(key, list);
            }};
}

/// The company used last, in the place chosen when there is one. False when there is none or it cannot be opened.
bool openLastUsed(MainWindow& window, const LastUsed& lastUsed, const CompanyPlace& place, bool isChosen) {
    const std::vector<UsedCompany> used = lastUsed.all();
    if (!isChosen) return !used.empty() && window.openUsed(used.front());
    const Place kept = withoutSecrets(place.place);
    const auto here = std::ranges::find(used, kept, &UsedCompany::place);
    if (here == used.end()) return false;
    try {
        window.openIn(place, here->company);
        return true;
    } catch (const std::exception&) {
        // Whoever opens the first one instead tells what is wrong.
        return false;
    }
}

/// False when the person leaves instead.
bool openAtStart(MainWindow& window, const CompanyPlace& place, const std::string& company) {
    if (!company.empty()) {
        if (!isSeen() && !place.companies->exists()) place.companies->createDemonstration();
        window.openIn(place, company);
        return true;
    }
    std::vector<std::string> names;
    if (place.companies->exists()) names = place.companies->list();
    if (names.empty() && place.place.kind == Place::Kind::Server) firstCompany(*place.companies, place.place);
    if (names.empty() && isSeen()) return window.begin();
    if (names.empty()) names.push_back(place.companies->createDemonstration());
    openFirst(window, place, names);
    return true;
}

/// Nothing is remembered without `settings`.
int runOn(QtDesktop& desktop, QSettings* settings, const std::optional<Place>& chosen, const std::string& company) {
    const PlaceOpener reach = [&desktop](const Place& place) {
        CompanyPlace reached{place, companiesAt(place)};
        if (isSeen())
            reached.companies->tellTo([&desktop](const std::string& sentence) {
                desktop.ask({sentence, message::Ok + message::Exclamation, "Fenda"});
            });
        return reached;
    };
    LastUsed lastUsed;
    if (settings) {
        lastUsed = rememberedUse(*settings);
        desktop.rememberIn(*settings);
    }
    const CompanyPlace place = reach(chosen ? *chosen : Place{Place::Kind::Folder, ownDataFolder().string()});
    MainWindow window(desktop, place, reach, lastUsed);
    const bool isOpen = company.empty() && openLastUsed(window, lastUsed, place, chosen.has_value());
    if (!isOpen && !openAtStart(window, place, company)) return 0;
    if (settings) window.restoreGeometry(settings->value(windowKey).toByteArray());
    window.show();
    const int status = QApplication::exec();
    if (settings) settings->setValue(windowKey, window.saveGeometry());
    return status;
}

}  // namespace

int runMainWindow(const std::optional<Place>& chosen, const std::string& company) {
    const std::shared_ptr<void> display = openDisplay();
    const auto settings = isSeen() ? std::make_unique<QSettings>("fenda", "fenda") : nullptr;
    QtDesktop desktop;
    try {
        return runOn(desktop, settings.get(), chosen, company);
    } catch (const std::exception& failure) {
        if (isSeen()) desktop.ask({failure.what(), message::Critical, "Fenda"});
        throw;
    }
}

}  // namespace FendaMaestros::window
