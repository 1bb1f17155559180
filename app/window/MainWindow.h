#pragma once

#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/Composition.h"
#include "app/LastUsed.h"
#include "app/operations/Operations.h"
#include "app/window/CompanyPlace.h"

class QActionGroup;
class QLabel;
class QMenu;

namespace FendaMaestros {

class Tile;

/// The program's main window: the company that is open, and every entry operation in a menu, with its key, and on a
/// tile.
class MainWindow final : public QMainWindow {
public:
    /// `desktop` and `lastUsed` must outlive the window. No company is open at first; new ones are created in `place`
    /// until one is opened elsewhere.
    MainWindow(Desktop& desktop, CompanyPlace place, PlaceOpener reach, LastUsed& lastUsed);

    /// Opens a company of the place. Throws what the place throws, and ErrorBd when a parameter is missing; then the
    /// company that was open stays.
    void openCompany(const std::string& company);
    /// The same for a company of any place, whose companies the menu offers from then on.
    void openIn(CompanyPlace place, const std::string& company);
    /// As openIn(), with the place still to be reached; false when it cannot be opened, which is told in a message.
    bool openUsed(const UsedCompany& used);
    /// Where there is no company yet: asks how to begin until one is open. False when the person leaves instead.
    bool begin();
    /// Asks for the data of a new company, creates it and opens it.
    void createCompany();
    /// Asks for a place and opens the company that is chosen there.
    void openElsewhere(Place::Kind kind);
    /// Shows the parameters of the company that is open, and opens it anew when some have been changed.
    void changeCompany();
    /// Renumbers or merges sub-accounts of the company that is open, and opens it anew when its digits have changed.
    void renumberAccounts();
    /// Asks where to, and copies the companies of the place.
    void backUpCompanies();
    /// Examines the company that is open, or all of its place.
    void examineCompany();
    /// Shows what a file would bring to the company that is open, and imports it.
    void importFile();
    /// Runs an entry operation. What it throws is shown in a message.
    void start(const Operation& operation);

private:
    void addCompanyMenu();
    /// The companies of the place, above what the menu has besides.
    void fillCompanyMenu(const std::vector<std::string>& names);
    void fillLastUsed();
    void openDemonstration();
    void addOperationMenus();
    void addHelpMenu();
    /// The key of each command of the menus that has one, and what it does.
    std::string keyLines() const;
    void showManual();
    QWidget* makeHeader();
    QWidget* makeTiles();
    /// Runs `action`; an exception is shown in a message under `title` that begins with `failure`, a sentence,
    /// and false is given.
    bool guarded(const QString& title, const QString& failure, const std::function<void()>& action);
    void workWith(std::unique_ptr<OpenCompany> opened, const std::string& company);
    void chooseCompany(const QString& name);
    void tickCompany();

    Desktop& desktop_;
    CompanyPlace place_;
    PlaceOpener reach_;
    LastUsed& lastUsed_;
    /// Where the last backup has been put, or is to be.
    std::string backupFolder_;
    std::unique_ptr<OpenCompany> company_;
    QString openName_;
    std::map<const Operation*, Tile*> tiles_;
    QMenu* companyMenu_ = nullptr;
    QMenu* lastUsedMenu_ = nullptr;
    QActionGroup* companyChoice_ = nullptr;
    QLabel* companyName_ = nullptr;
    QLabel* companyFacts_ = nullptr;
};

}  // namespace FendaMaestros
