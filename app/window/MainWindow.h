#pragma once

#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/Composition.h"
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
    /// `desktop` must outlive the window. No company is open at first. Without `connect`, servers are not offered.
    MainWindow(Desktop& desktop, CompanyPlace place, ServerConnector connect = {});

    /// Throws what the place throws, and ErrorBd when a parameter is missing; then the company that was open stays.
    void openCompany(const std::string& company);
    /// Asks for a server and opens the company that is chosen there; from then on the menu offers those of the server.
    void openOnServer();
    /// Runs an entry operation. What it throws is shown in a message.
    void start(const Operation& operation);

private:
    void addCompanyMenu();
    void fillCompanyMenu();
    void addOperationMenus();
    void addHelpMenu();
    QWidget* makeHeader();
    QWidget* makeTiles();
    /// Runs `action`; an exception is shown in a message under `title` that begins with `failure`, a sentence.
    void guarded(const QString& title, const QString& failure, const std::function<void()>& action);
    void openFrom(const CompanyPlace& place, const std::string& company);
    void chooseCompany(const QString& name);
    void tickCompany();

    Desktop& desktop_;
    CompanyPlace place_;
    ServerConnector connect_;
    std::unique_ptr<OpenCompany> company_;
    QString openName_;
    std::map<const Operation*, Tile*> tiles_;
    QMenu* companyMenu_ = nullptr;
    QActionGroup* companyChoice_ = nullptr;
    QLabel* companyName_ = nullptr;
    QLabel* companyFacts_ = nullptr;
};

}  // namespace FendaMaestros
