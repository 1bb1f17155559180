#pragma once

#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/Composition.h"
#include "app/operations/Operations.h"

class QActionGroup;
class QLabel;

namespace FendaMaestros {

class Tile;

/// The program's main window: the company that is open, and every entry operation in a menu, with its key, and on a
/// tile.
class MainWindow final : public QMainWindow {
public:
    /// Opens the session of a company.
    using Opener = std::function<std::unique_ptr<SesionBd>(const std::string& company)>;

    /// `desktop` must outlive the window. No company is open at first.
    MainWindow(Desktop& desktop, std::vector<std::string> companies, Opener open);

    /// Throws what the opener throws, and ErrorBd when a parameter is missing; then the company that was open stays.
    void openCompany(const std::string& company);
    /// Runs an entry operation. What it throws is shown in a message.
    void start(const Operation& operation);

private:
    void addCompanyMenu();
    void addOperationMenus();
    void addHelpMenu();
    QWidget* makeHeader();
    QWidget* makeTiles();
    /// Runs `action`; an exception is shown in a message under `title` that begins with `failure`, a sentence.
    void guarded(const QString& title, const QString& failure, const std::function<void()>& action);
    void chooseCompany(const QString& name);
    void tickCompany();

    Desktop& desktop_;
    std::vector<std::string> companies_;
    Opener open_;
    std::unique_ptr<OpenCompany> company_;
    QString openName_;
    std::map<const Operation*, Tile*> tiles_;
    QActionGroup* companyChoice_ = nullptr;
    QLabel* companyName_ = nullptr;
    QLabel* companyFacts_ = nullptr;
};

}  // namespace FendaMaestros
