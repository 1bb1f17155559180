#include "app/window/MainWindow.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QDir>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>
#include <QVBoxLayout>
#include <exception>
#include <stdexcept>
#include <utility>

#include "app/CommandCopia.h"
#include "app/Manual.h"
#include "app/window/Tile.h"
#include "app/window/frmAbrir.h"
#include "app/window/frmCopia.h"
#include "app/window/frmDatosEmpresa.h"
#include "app/window/frmImportar.h"
#include "app/window/frmInicio.h"
#include "app/window/frmNuevaEmpresa.h"
#include "app/window/frmRenumerar.h"
#include "app/window/frmRevisar.h"
#include "platform/qt/GivingWay.h"
#include "platform/qt/KeyCodes.h"
#include "session/ErrorBd.h"
#include "storage/Parameters.h"
#include "toolkit/KeyHints.h"
#include "ui/Version.h"

namespace FendaMaestros {

namespace {

constexpr int space = 12;

QKeySequence keySequence(KeyStroke stroke) {
    Qt::KeyboardModifiers modifiers;
    if (stroke.shift & shift::Shift) modifiers |= Qt::ShiftModifier;
    if (stroke.shift & shift::Control) modifiers |= Qt::ControlModifier;
    if (stroke.shift & shift::Alt) modifiers |= Qt::AltModifier;
    return QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(qt::qtKeyOf(stroke.code))));
}

/// Throws ErrorBd when one of them is missing.
QString factsOf(const ParametrosEmpresa& parameters) {
    const std::int16_t year = ejercicioActivo(parameters);
    return QString("Ejercicio %1   ·   Plan contable de %2   ·   Subcuentas de %3 dígitos")
        .arg(year)
        .arg(planEnVigor(year))
        .arg(QString::fromStdString(parameters.Item("Par_CtaNum").Value.text()));
}

QString plain(const std::string& caption) { return QString::fromStdString(caption).remove('&'); }

template <class Widget>
Widget* enlarged(Widget* widget, double factor, bool bold) {
    QFont font = widget->font();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(bold);
    widget->setFont(font);
    return widget;
}

}  // namespace

MainWindow::MainWindow(Desktop& desktop, CompanyPlace place, PlaceOpener reach, LastUsed& lastUsed)
    : desktop_(desktop),
      place_(std::move(place)),
      reach_(std::move(reach)),
      lastUsed_(lastUsed),
      backupFolder_(QDir::homePath().toStdString()) {
    addCompanyMenu();
    addOperationMenus();
    addHelpMenu();

    auto* const content = new qt::GivingWay;
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(2 * space, 2 * space, 2 * space, 2 * space);
    column->setSpacing(space);
    column->addWidget(makeHeader());
    column->addWidget(makeTiles());
    column->addStretch();
    auto* const scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setCentralWidget(scroll);
    const QSize wanted = content->sizeHint() + QSize(2 * space, 5 * space + menuBar()->sizeHint().height());
    constexpr QSize frame(16, 64);
    resize(wanted.boundedTo(screen()->availableSize() - frame));
}

// --- which company is open

void MainWindow::openCompany(const std::string& company) {
    auto opened = std::make_unique<OpenCompany>(desktop_, place_.companies->open(company));
    workWith(std::move(opened), company);
}

void MainWindow::openIn(CompanyPlace place, const std::string& company) {
    const std::vector<std::string> names = place.companies->list();
    auto opened = std::make_unique<OpenCompany>(desktop_, place.companies->open(company));
    const CompanyPlace before = std::exchange(place_, std::move(place));
    try {
        workWith(std::move(opened), company);
    } catch (...) {
        place_ = before;
        throw;
    }
    fillCompanyMenu(names);
}

void MainWindow::workWith(std::unique_ptr<OpenCompany> opened, const std::string& company) {
    const ParametrosEmpresa& parameters = opened->session().Parametros();
    const std::int16_t plan = planEnVigor(ejercicioActivo(parameters));
    const QString facts = factsOf(parameters);
    const QString name = QString::fromStdString(storage::companyOf(parameters).name);
    opened->component().Plan = plan;
    company_ = std::move(opened);

    openName_ = QString::fromStdString(company);
    companyName_->setText(name.isEmpty() ? openName_ : name);
    companyFacts_->setText(facts);
    setWindowTitle(companyName_->text() + " — fenda");
    tickCompany();
    lastUsed_.use({place_.place, company});
}

bool MainWindow::openUsed(const UsedCompany& used) {
    const QString name = QString::fromStdString(used.text());
    return guarded(name, "No se ha podido abrir la empresa «" + name + "».",
                   [&] { openIn(reach_(used.place), used.company); });
}

bool MainWindow::begin() {
    using Choice = frmInicio::Choice;
    while (!company_) {
        frmInicio window(desktop_);
        window.show();
        switch (window.choice()) {
            case Choice::Leave:
                return false;
            case Choice::Create:
                createCompany();
                break;
            case Choice::Demonstration:
                openDemonstration();
                break;
            case Choice::OpenFolder:
                openElsewhere(Place::Kind::Folder);
                break;
            case Choice::OpenServer:
                openElsewhere(Place::Kind::Server);
                break;
        }
    }
    return true;
}

void MainWindow::createCompany() {
    guarded("Nueva empresa", "No se ha podido crear la empresa.", [&] {
        frmNuevaEmpresa window(desktop_, place_);
        window.show();
        if (!window.company().empty()) openIn(place_, window.company());
    });
}

void MainWindow::openDemonstration() {
    guarded("La demostración", "No se ha podido crear la empresa de demostración.", [&] {
        const BusyPointer busy(desktop_);
        openIn(place_, place_.companies->createDemonstration());
    });
}

void MainWindow::openElsewhere(Place::Kind kind) {
    guarded("Abrir", "No se ha podido abrir la empresa.", [&] {
        frmAbrir window(desktop_, kind, reach_);
        window.show();
        if (!window.company().empty()) openIn(window.place(), window.company());
    });
}

// --- what is done with it

void MainWindow::changeCompany() {
    guarded("Datos de la empresa", "No se han podido cambiar los datos de la empresa.", [&] {
        const std::string company = openName_.toStdString();
        frmDatosEmpresa window(desktop_, company_->session(), company, nameOf(place_.place));
        window.show();
        if (window.changed()) openCompany(company);
    });
}

void MainWindow::renumberAccounts() {
    guarded("Renumerar cuentas", "No se han podido renumerar las cuentas.", [&] {
        const std::string company = openName_.toStdString();
        frmRenumerar window;
        window.show();
        if (window.changedDigits()) openCompany(company);
    });
}

void MainWindow::backUpCompanies() {
    guarded("Copia de seguridad", "No se ha podido hacer la copia de seguridad.", [&] {
        frmCopia window(backupFolder_,
                        [this](const std::string& destination) { return backUp(*place_.companies, destination); });
        window.show();
        if (!window.folder().empty()) backupFolder_ = window.folder();
    });
}

void MainWindow::examineCompany() {
    guarded("Revisar", "No se ha podido revisar la empresa.", [&] {
        frmRevisar window(place_, openName_.toStdString());
        window.show();
    });
}

void MainWindow::importFile() {
    guarded("Importar", "No se ha podido importar.", [] { frmImportar().show(); });
}

void MainWindow::start(const Operation& operation) {
    if (!company_) return;
    if (Tile* const tile = tiles_[&operation]) tile->setFocus();
    statusBar()->hide();
    const QString name = plain(operation.caption);
    guarded(name, "No se ha podido terminar «" + name + "».", [&] { operation.open(company_->component()); });
    const QString left = QString::fromStdString(desktop_.lastWords());
    statusBar()->showMessage(left);
    statusBar()->setVisible(!left.isEmpty());
}

// --- what the window is made of

void MainWindow::addCompanyMenu() {
    companyMenu_ = menuBar()->addMenu("&Empresa");
    companyMenu_->addSeparator();
    companyMenu_->addAction("&Nueva empresa...", this, &MainWindow::createCompany)->setShortcut(QKeySequence::New);
    companyMenu_->addAction("&Abrir...", this, [this] { openElsewhere(Place::Kind::Folder); })
        ->setShortcut(QKeySequence::Open);
    companyMenu_->addAction("Abrir en un ser&vidor...", this, [this] { openElsewhere(Place::Kind::Server); });
    lastUsedMenu_ = companyMenu_->addMenu("Últimas &usadas");
    connect(lastUsedMenu_, &QMenu::aboutToShow, this, &MainWindow::fillLastUsed);
    companyMenu_->addSeparator();
    companyMenu_->addAction("&Datos de la empresa...", this, &MainWindow::changeCompany);
    companyMenu_->addAction("&Importar...", this, &MainWindow::importFile);
    companyMenu_->addAction("Renu&merar cuentas...", this, &MainWindow::renumberAccounts);
    companyMenu_->addAction("&Copia de seguridad...", this, &MainWindow::backUpCompanies);
    companyMenu_->addAction("&Revisar...", this, &MainWindow::examineCompany);
    companyMenu_->addSeparator();
    QAction* const leave = companyMenu_->addAction("&Salir", this, &QWidget::close);
    leave->setShortcut(QKeySequence("Ctrl+Q"));
    fillCompanyMenu({});
}

void MainWindow::fillCompanyMenu(const std::vector<std::string>& names) {
    delete companyChoice_;
    companyChoice_ = new QActionGroup(this);
    QAction* const below = companyMenu_->actions().first();
    for (const std::string& company : names) {
        const QString name = QString::fromStdString(company);
        auto* const choice = new QAction(QString(name).replace('&', "&&"), companyChoice_);
        companyMenu_->insertAction(below, choice);
        choice->setCheckable(true);
        choice->setData(name);
        const auto position = companyChoice_->actions().size();
        if (position <= 9) choice->setShortcut(QKeySequence(QString("Ctrl+%1").arg(position)));
    }
    connect(companyChoice_, &QActionGroup::triggered, this,
            [this](const QAction* choice) { chooseCompany(choice->data().toString()); });
    tickCompany();
}

void MainWindow::fillLastUsed() {
    lastUsedMenu_->clear();
    for (const UsedCompany& used : lastUsed_.all()) {
        const QString text = QString::fromStdString(used.text()).replace('&', "&&");
        const auto position = lastUsedMenu_->actions().size() + 1;
        lastUsedMenu_->addAction(QString("&%1  %2").arg(position).arg(text), this, [this, used] { openUsed(used); });
    }
}

void MainWindow::addOperationMenus() {
    QMenu* menu = nullptr;
    std::string group;
    for (const Operation& operation : operations()) {
        if (operation.group != group) menu = menuBar()->addMenu(QString::fromStdString(group = operation.group));
        QAction* const action =
            menu->addAction(QString::fromStdString(operation.caption), this, [this, &operation] { start(operation); });
        action->setShortcut(keySequence(operation.key));
        action->setAutoRepeat(false);
    }
}

void MainWindow::addHelpMenu() {
    QMenu* const menu = menuBar()->addMenu("A&yuda");
    menu->addAction("&Manual", this, &MainWindow::showManual);
    QAction* const keys = menu->addAction("&Teclas", this, [this] {
        desktop_.ask({keyLines(), message::Ok + message::Information, "Teclas"});
    });
    keys->setShortcut(keySequence({key::F(1)}));
    menu->addSeparator();
    menu->addAction("&Acerca de fenda", this, [this] {
        desktop_.ask({"fenda " + componentVersion() +
                          "\nMaestros contables: tablas, identificadores fiscales y plan de cuentas.",
                      message::Ok + message::Information, "Acerca de fenda"});
    });
}

std::string MainWindow::keyLines() const {
    QStringList lines;
    for (const QAction* menu : menuBar()->actions())
        for (const QAction* action : menu->menu()->actions()) {
            const QString key = action->shortcut().toString(QKeySequence::PortableText).replace("Shift", "Mayús");
            if (!key.isEmpty()) lines.append(key + ": " + plain(action->text().toStdString()).remove("..."));
        }
    return lines.join('\n').toStdString();
}

void MainWindow::showManual() {
    guarded("Manual", "No se ha podido abrir el manual.", [this] {
        const auto manual = findManual(QCoreApplication::applicationDirPath().toStdString());
        if (!manual)
            throw std::runtime_error(std::string("El manual no está instalado: falta ") + installedManual +
                                     ". Viene en el paquete del programa; en las fuentes se hace con «./dev manual».");
        if (!desktop_.openFile(manual->string()))
            throw std::runtime_error("No hay ningún programa para verlo. Está en " + manual->string());
    });
}

QWidget* MainWindow::makeHeader() {
    auto* const header = new QWidget;
    auto* const column = new QVBoxLayout(header);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(companyName_ = enlarged(new QLabel, 1.9, true));
    column->addWidget(companyFacts_ = enlarged(new QLabel, 1.15, false));
    for (QLabel* label : {companyName_, companyFacts_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    return header;
}

QWidget* MainWindow::makeTiles() {
    auto* const board = new TileBoard;
    std::string group;
    for (const Operation& operation : operations()) {
        if (operation.group != group) {
            group = operation.group;
            board->addHeading(*enlarged(new QLabel(plain(group)), 1.15, true));
        }
        auto* const tile = tiles_[&operation] = new Tile(plain(operation.caption), keySequence(operation.key));
        tile->setToolTip(QString("%1 (%2)").arg(tile->text(), QString::fromStdString(keyName(operation.key))));
        connect(tile, &Tile::clicked, this, [this, &operation] { start(operation); });
        board->addTile(*enlarged(tile, 1.1, false));
    }
    tiles_[&operations().front()]->setFocus();
    return board;
}

// --- what happens in it

bool MainWindow::guarded(const QString& title, const QString& failure, const std::function<void()>& action) {
    std::string reason;
    try {
        action();
        return true;
    } catch (const ErrorBd& error) {
        reason = error.what();
        if (error.nativeCode() != 0) reason += "\n(código " + std::to_string(error.nativeCode()) + ")";
    } catch (const std::exception& error) {
        reason = error.what();
    } catch (...) {
        reason = "Error desconocido.";
    }
    desktop_.ask({failure.toStdString() + "\n\n" + reason, message::Ok + message::Critical, title.toStdString()});
    return false;
}

void MainWindow::chooseCompany(const QString& name) {
    guarded(name, "No se ha podido abrir la empresa «" + name + "».", [&] { openCompany(name.toStdString()); });
    tickCompany();
}

void MainWindow::tickCompany() {
    for (QAction* choice : companyChoice_->actions()) choice->setChecked(choice->data().toString() == openName_);
}

}  // namespace FendaMaestros
