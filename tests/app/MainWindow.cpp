#if defined(FENDA_WITH_QT) && defined(FENDA_WITH_SQLITE)

#include "app/window/MainWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <set>

#include "app/window/Display.h"
#include "app/window/Tile.h"
#include "platform/sqlite/Session.h"
#include "session/ErrorBd.h"
#include "session/SesionSql.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros {

namespace {

std::unique_ptr<SesionBd> openInMemory(const std::string& company) {
    if (company == "Rota") throw ErrorBd(ErrorBd::Kind::NotADatabase, "Está dañada.", 26, "file is not a database");
    ParametrosEmpresa parameters;
    parameters.set("Par_Nombre", company);
    parameters.set("Par_Ejercicio", company == "Antigua" ? 2007 : 2026);
    if (company != "Sin dígitos") parameters.set("Par_CtaNum", 8);
    return std::make_unique<SesionSql>(sqlite::openMemory(), parameters);
}

CompanyPlace connectTo(const std::string& connection) {
    if (connection != "service=conta") throw std::runtime_error("No se ha podido conectar.");
    return {{"Lejana", "Rota"}, openInMemory};
}

class MainWindowTest : public ::testing::Test {
protected:
    std::shared_ptr<void> display_ = window::openDisplay();
    testing::ScriptedPerson person_;
    HeadlessDesktop desktop_{person_};
    MainWindow window_{desktop_, {{"Antigua", "Nueva", "Rota", "Sin dígitos"}, openInMemory}, connectTo};

    bool shows(const QString& text) const {
        for (const QLabel* label : window_.findChildren<QLabel*>())
            if (label->text().contains(text)) return true;
        return false;
    }

    void chooseCompany(const QString& name) {
        for (QAction* action : window_.findChildren<QAction*>())
            if (action->data().toString() == name) action->trigger();
    }

    static void pressEnter(QWidget& widget) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(&widget, &press);
    }
};

TEST_F(MainWindowTest, ShowsTheCompanyThatIsOpen) {
    window_.openCompany("Nueva");
    EXPECT_TRUE(shows("Nueva") && shows("2026") && shows("2008"));
    chooseCompany("Antigua");
    EXPECT_TRUE(shows("Antigua") && shows("2007") && shows("1990"));
    EXPECT_EQ(InstanciaActual->Plan, 1990);
}

TEST_F(MainWindowTest, ACompanyThatCannotBeOpenedLeavesTheOtherOne) {
    window_.openCompany("Nueva");
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
    window_.openCompany("Nueva");
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
    window_.openOnServer();
    EXPECT_TRUE(shows("Nueva"));
    open("Lejana");
    window_.openOnServer();
    EXPECT_TRUE(shows("Lejana"));
    chooseCompany("Nueva");
    EXPECT_TRUE(shows("Lejana"));
}

TEST_F(MainWindowTest, AnOperationThatFailsIsToldAndTheNextOneWorks) {
    window_.openCompany("Nueva");
    person_.answers = {Answer::Ok};
    person_.visits = {[](Form&) { throw std::runtime_error("se acabó"); }, [](Form& form) { form.unload(); }};
    window_.start(*findOperation("jCentros"));
    ASSERT_EQ(person_.messages.size(), 1u);
    EXPECT_EQ(person_.messages[0].text, "No se ha podido terminar «Centros de trabajo».\n\nse acabó");
    window_.start(*findOperation("jCentros"));
    EXPECT_TRUE(person_.visits.empty());
}

TEST_F(MainWindowTest, TilesAreWorkedFromTheKeyboard) {
    window_.openCompany("Nueva");
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
    window_.openCompany("Nueva");
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

}  // namespace

}  // namespace FendaMaestros

#endif
