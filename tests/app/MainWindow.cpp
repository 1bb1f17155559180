#if defined(FENDA_WITH_QT) && defined(FENDA_WITH_SQLITE)

#include "app/window/MainWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <fstream>
#include <set>

#include "app/Manual.h"
#include "app/window/Display.h"
#include "app/window/Tile.h"
#include "platform/sqlite/DataFolder.h"
#include "platform/sqlite/Session.h"
#include "session/ErrorBd.h"
#include "session/SesionSql.h"
#include "tests/session/TemporaryFolder.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros {

namespace {

class CompaniesInMemory final : public Companies {
public:
    explicit CompaniesInMemory(std::vector<std::string> names) : names_(std::move(names)) {}

    bool exists() const override { return !names_.empty(); }
    std::vector<std::string> list() const override { return names_; }
    void create(const NewCompany& company) const override { names_.push_back(company.name); }
    std::string createDemonstration() const override { return names_.emplace_back("Demostración"); }
    void receive(const std::string&, const std::function<void(ConexionBd&)>&) const override {}
    std::unique_ptr<SesionBd> open(const std::string& company) const override {
        if (company == "Rota") throw ErrorBd(ErrorBd::Kind::NotADatabase, "Está dañada.", 26, "file is not a database");
        ParametrosEmpresa parameters;
        parameters.set("Par_Nombre", company);
        parameters.set("Par_Ejercicio", company == "Antigua" ? 2007 : 2026);
        if (company != "Sin dígitos") parameters.set("Par_CtaNum", 8);
        return std::make_unique<SesionSql>(sqlite::openMemory(), parameters);
    }
    bool examine(const std::string& company, const Tell& tell) const override {
        if (company == "Rota") tell("Está dañada.");
        return company != "Rota";
    }
    Backup backUp(const std::filesystem::path& destination) const override {
        if (destination != "/copias/hoy") throw std::runtime_error("No se puede.");
        return {.companies = names_};
    }

private:
    mutable std::vector<std::string> names_;
};

CompanyPlace placeWith(const Place& place, std::vector<std::string> names) {
    return {place, std::make_shared<CompaniesInMemory>(std::move(names))};
}

CompanyPlace reach(const Place& place) {
    if (place.where == "/datos") return placeWith(place, {"Antigua", "Nueva", "Rota", "Sin dígitos"});
    if (place.where == "/vacia") return placeWith(place, {});
    if (place.where != "service=conta") throw std::runtime_error("No se ha podido conectar.");
    return placeWith(place, {"Lejana", "Rota"});
}

class MainWindowTest : public ::testing::Test {
protected:
    std::shared_ptr<void> display_ = window::openDisplay();
    testing::ScriptedPerson person_;
    HeadlessDesktop desktop_{person_};
    LastUsed used_;
    MainWindow window_{desktop_, reach({Place::Kind::Folder, "/datos"}), reach, used_};

    bool shows(const QString& text) const {
        for (const QLabel* label : window_.findChildren<QLabel*>())
            if (label->text().contains(text)) return true;
        return false;
    }

    void chooseCompany(const QString& name) {
        for (QAction* action : window_.findChildren<QAction*>())
            if (action->data().toString() == name) action->trigger();
    }

    void openNew() { window_.openIn(reach({Place::Kind::Folder, "/datos"}), "Nueva"); }

    static void pressEnter(QWidget& widget) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(&widget, &press);
    }
};

TEST_F(MainWindowTest, ShowsTheCompanyThatIsOpen) {
    openNew();
    EXPECT_TRUE(shows("Nueva") && shows("2026") && shows("2008"));
    chooseCompany("Antigua");
    EXPECT_TRUE(shows("Antigua") && shows("2007") && shows("1990"));
    EXPECT_EQ(InstanciaActual->Plan, 1990);
}

TEST_F(MainWindowTest, F1ListsTheKeysOfTheMenus) {
    for (QAction* action : window_.findChildren<QAction*>())
        if (action->shortcut() == QKeySequence(Qt::Key_F1)) {
            person_.answers = {Answer::Ok};
            action->trigger();
        }
    ASSERT_EQ(person_.messages.size(), 1u);
    for (const char* line : {"\nMayús+F2: Plan de cuentas\n", "\nCtrl+Q: Salir\n", "\nF1: Teclas"})
        EXPECT_NE(person_.messages[0].text.find(line), std::string::npos) << person_.messages[0].text;
}

TEST_F(MainWindowTest, AManualThatIsNotThereIsNamed) {
    const bool isThere = findManual(QCoreApplication::applicationDirPath().toStdString()).has_value();
    if (!isThere) person_.answers = {Answer::Ok};
    for (QAction* action : window_.findChildren<QAction*>())
        if (action->text() == "&Manual") action->trigger();
    ASSERT_EQ(person_.messages.empty(), isThere);
    for (const Message& told : person_.messages) EXPECT_NE(told.text.find(installedManual), std::string::npos);
}

TEST(Manual, IsTheInstalledOneOrElseThatOfTheSources) {
    const tests::TemporaryFolder folder;
    const std::filesystem::path root = folder.path();
    const auto make = [](const std::filesystem::path& page) {
        std::filesystem::create_directories(page.parent_path());
        std::ofstream(page) << "<html>";
        return page;
    };
    const std::filesystem::path program = root / "build" / "dev" / "app";
    EXPECT_EQ(findManual(program), std::nullopt);
    const auto built = make(root / "build/manual/index.html");
    EXPECT_EQ(findManual(program), built);
    EXPECT_EQ(findManual(root / "usr" / "bin"), built) << "of whatever folder above";
    const auto installed = make(root / "usr/share/doc/fenda/manual/index.html");
    EXPECT_EQ(findManual(root / "usr" / "bin"), installed);
    EXPECT_EQ(findManual(program), built);
}

TEST_F(MainWindowTest, ACompanyThatCannotBeOpenedLeavesTheOtherOne) {
    openNew();
    person_.answers = {Answer::Ok, Answer::Ok};
    chooseCompany("Rota");
    chooseCompany("Sin dígitos");
    ASSERT_EQ(person_.messages.size(), 2u);
    EXPECT_EQ(person_.messages[0].text, "No se ha podido abrir la empresa «Rota».\n\nEstá dañada.\n(código 26)");
    EXPECT_EQ(person_.messages[1].text,
              "No se ha podido abrir la empresa «Sin dígitos».\n\nLa empresa no tiene el parámetro Par_CtaNum.");
    EXPECT_TRUE(shows("Nueva"));
    EXPECT_EQ(instanciaActual().sesion().Parametros().Item("Par_Nombre").Value.text(), "Nueva");
    EXPECT_EQ(instanciaActual().Plan, 2008);
}

TEST_F(MainWindowTest, ACompanyIsOpenedOnAServerThatHasBeenTried) {
    openNew();
    const auto open = [&](const char* company) {
        person_.visits.push_back([this, company](Form& form) {
            auto& field = person_.control<TextBox>(form, "Text1");
            person_.fill(form, "Text1", "host=nadie");
            person_.press(form, "cmdProbar");
            EXPECT_EQ(person_.messages.back().text, "No se ha podido conectar.");
            EXPECT_FALSE(person_.control<CommandButton>(form, "cmdAbrir").Enabled);
            EXPECT_EQ(form.activeControl(), &field);
            person_.fill(form, "Text1", " service=conta ");
            person_.press(form, "cmdProbar");
            auto& list = person_.control<ComboBox>(form, "cboEmpresa");
            person_.hands.choose(form, list, company == std::string("Rota") ? 1 : 0);
            person_.press(form, "cmdAbrir");
        });
    };
    person_.answers = {Answer::Ok, Answer::Ok, Answer::Ok};
    open("Rota");
    window_.openElsewhere(Place::Kind::Server);
    EXPECT_TRUE(shows("Nueva"));
    open("Lejana");
    window_.openElsewhere(Place::Kind::Server);
    EXPECT_TRUE(shows("Lejana"));
    chooseCompany("Nueva");
    EXPECT_TRUE(shows("Lejana"));
}

TEST_F(MainWindowTest, ACompanyOfAFolderIsFoundByItsPath) {
    openNew();
    person_.visits = {[this](Form& form) {
        for (const auto& [typed, said] :
             {std::pair{" ", "Falta la carpeta."}, {"/vacia", "No hay ninguna empresa en la carpeta /vacia."}}) {
            person_.answers = {Answer::Ok};
            person_.fill(form, "Text1", typed);
            person_.enter(form);
            EXPECT_EQ(person_.messages.back().text, said);
        }
        person_.fill(form, "Text1", "/datos");
        person_.enter(form);
        person_.enter(form);
    }};
    window_.openElsewhere(Place::Kind::Folder);
    EXPECT_TRUE(shows("Antigua"));
    EXPECT_EQ(used_.all().size(), 2u);
    EXPECT_EQ(used_.all().front().text(), "Antigua — /datos");
}

TEST_F(MainWindowTest, ACopyIsMadeWhereThePersonSays) {
    openNew();
    person_.visits = {[this](Form& form) {
        person_.answers = {Answer::Ok, Answer::Ok, Answer::Ok};
        person_.fill(form, "Text1", "/copias");
        person_.enter(form);
        EXPECT_EQ(person_.messages.back().text, "No se puede.");
        person_.fill(form, "Text2", "");
        person_.enter(form);
        EXPECT_EQ(person_.messages.back().text, "Falta el nombre de la copia.");
        person_.fill(form, "Text2", "hoy");
        person_.enter(form);
        EXPECT_NE(person_.messages.back().text.find("\n  Antigua\n"), std::string::npos);
        EXPECT_FALSE(form.isOpen());
    }};
    window_.backUpCompanies();
    person_.visits = {[this](Form& form) {
        EXPECT_EQ(person_.text(form, "Text1"), "/copias");
        person_.escape(form);
    }};
    window_.backUpCompanies();
}

TEST_F(MainWindowTest, WhatIsFoundOrCannotBeCheckedIsListed) {
    openNew();
    person_.visits = {[this](Form& form) {
        const auto& found = person_.control<ListView>(form, "lstHallazgos");
        person_.press(form, "cmdRevisar");
        EXPECT_EQ(found.rowCount(), 0);
        EXPECT_NE(form.statusLine()->Caption.find("nada mal"), std::string::npos);
        person_.press(form, "cmdTodas");
        EXPECT_EQ(found.rowCount(), 2);
        EXPECT_EQ(found.cellText(0, 0) + found.cellText(0, 1), "RotaEstá dañada.");
        EXPECT_EQ(found.cellText(1, 0), "Sin dígitos");
        person_.press(form, "cmdTodas");
        EXPECT_EQ(found.rowCount(), 2);
        person_.escape(form);
    }};
    window_.examineCompany();
}

/// The first start, in a place without companies.
class FirstStart : public MainWindowTest {
protected:
    MainWindow first_{desktop_, reach({Place::Kind::Folder, "/vacia"}), reach, used_};
    testing::ScriptedPerson::Visit press(const char* button) {
        return [this, button](Form& form) { person_.press(form, button); };
    }
};

TEST_F(FirstStart, AsksUntilACompanyIsOpen) {
    person_.visits = {press("cmdServidor"), press("cmdSalir"), press("cmdDemostracion")};
    EXPECT_TRUE(first_.begin());
    EXPECT_EQ(first_.windowTitle(), "Demostración — fenda");
    EXPECT_EQ(used_.all().front().text(), "Demostración — /vacia");
    MainWindow another(desktop_, reach({Place::Kind::Folder, "/vacia"}), reach, used_);
    person_.visits = {press("cmdSalir")};
    EXPECT_FALSE(another.begin());
}

TEST_F(FirstStart, ACompanyIsCheckedWhileItIsTyped) {
    const auto said = [](Form& form, const char* label) {
        return testing::ScriptedPerson::control<Label>(form, label).Caption;
    };
    person_.visits = {press("cmdCrear"), [&](Form& form) {
                          EXPECT_EQ(said(form, "lblLugar"), "Se creará en la carpeta /vacia.");
                          person_.answers = {Answer::Ok, Answer::Ok};
                          person_.press(form, "cmdCrear");
                          EXPECT_EQ(person_.messages.back().text, "Falta el nombre de la empresa.");
                          EXPECT_EQ(form.activeControl()->Name, "txtNombre");
                          person_.hands.type(form, "Peñalba, S.L.");
                          person_.fill(form, "txtEjercicio", "2007");
                          EXPECT_NE(said(form, "lblEjercicio").find("plan contable de 1990"), std::string::npos);
                          person_.fill(form, "txtDigitos", "16");
                          EXPECT_NE(said(form, "lblDigitos").find("y no «16»"), std::string::npos);
                          person_.press(form, "cmdCrear");
                          EXPECT_EQ(form.activeControl()->Name, "txtDigitos") << "nothing has been created";
                          person_.fill(form, "txtDigitos", "5");
                          EXPECT_NE(said(form, "lblDigitos").find("43005"), std::string::npos);
                          person_.enter(form);
                          EXPECT_EQ(form.activeControl()->Name, "cboProvincia") << "Enter goes on to the next field";
                          person_.press(form, "cmdCrear");
                      }};
    EXPECT_TRUE(first_.begin());
    EXPECT_EQ(first_.windowTitle(), "Peñalba, S.L. — fenda");
    person_.visits = {[&](Form& form) {
        person_.fill(form, "txtNombre", "PEÑALBA, S.L.");
        EXPECT_EQ(said(form, "lblNombre"), "Ya hay una empresa con ese nombre.");
        person_.escape(form);
    }};
    first_.createCompany();
}

TEST_F(MainWindowTest, AnOperationThatFailsIsToldAndTheNextOneWorks) {
    openNew();
    person_.answers = {Answer::Ok};
    person_.visits = {[](Form&) { throw std::runtime_error("se acabó"); }, [](Form& form) { form.unload(); }};
    window_.start(*findOperation("jCentros"));
    ASSERT_EQ(person_.messages.size(), 1u);
    EXPECT_EQ(person_.messages[0].text, "No se ha podido terminar «Centros de trabajo».\n\nse acabó");
    window_.start(*findOperation("jCentros"));
    EXPECT_TRUE(person_.visits.empty());
}

TEST_F(MainWindowTest, TilesAreWorkedFromTheKeyboard) {
    openNew();
    window_.show();
    const auto tiles = window_.findChildren<QAbstractButton*>();
    const auto tile = [&](const QString& text) -> QWidget& {
        for (QAbstractButton* button : tiles)
            if (button->text() == text) return *button;
        throw std::logic_error("no tile " + text.toStdString());
    };
    QWidget& first = tile("Centros de trabajo");
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier),
        down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(&first, &right);
    QApplication::sendEvent(&tile("Departamentos"), &down);
    EXPECT_EQ(window_.focusWidget(), &tile("Masas patrimoniales"));

    std::string opened;
    person_.visits = {[&](Form& form) {
        opened = form.Caption;
        form.unload();
    }};
    pressEnter(tile("Masas patrimoniales"));
    EXPECT_NE(opened.find("asas"), std::string::npos) << opened;
}

TEST_F(MainWindowTest, TilesAreEquallyWideInAsManyColumnsAsFit) {
    openNew();
    window_.show();
    const auto columnsAt = [&](int width) {
        window_.resize(width, 540);
        QApplication::processEvents();
        std::set<int> widths, columns;
        for (const QAbstractButton* button : window_.findChildren<QAbstractButton*>()) {
            const auto* const tile = dynamic_cast<const Tile*>(button);
            if (!tile) continue;
            widths.insert(tile->width());
            columns.insert(tile->x());
            EXPECT_LE(tile->mapTo(&window_, QPoint(tile->width(), 0)).x(), window_.width());
        }
        EXPECT_LE(*widths.rbegin() - *widths.begin(), 1) << "pixels that do not divide";
        return columns.size();
    };
    EXPECT_EQ(columnsAt(1008), 3u);
    EXPECT_FALSE(window_.findChild<QScrollArea*>()->verticalScrollBar()->isVisible());
    EXPECT_EQ(columnsAt(620), 2u);
    EXPECT_EQ(columnsAt(400), 1u);
}

TEST_F(MainWindowTest, OtherDigitsHoldInTheWindowThatHasChangedThem) {
    const tests::TemporaryFolder folder;
    const auto kept = std::make_shared<sqlite::DataFolder>(folder.path() / "datos");
    window_.openIn({{Place::Kind::Folder, "/otra"}, kept}, kept->createDemonstration());
    person_.visits = {[&](Form& form) {
        person_.hands.choose(form, person_.control<ComboBox>(form, "cboQue"), 1);
        person_.fill(form, "Text1(6)", "10");
        person_.press(form, "cmdVer");
        person_.answers = {Answer::Yes};
        person_.press(form, "cmdAplicar");
        person_.escape(form);
    }};
    window_.renumberAccounts();
    EXPECT_TRUE(shows("Subcuentas de 10 dígitos"));
    EXPECT_EQ(digitosSubcuenta(instanciaActual().sesion().Parametros()), 10u);
}

}  // namespace

}  // namespace FendaMaestros

#endif
