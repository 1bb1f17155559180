#if defined(FENDA_WITH_QT) && defined(FENDA_WITH_SQLITE)

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QScrollArea>
#include <set>

#include "app/operations/Operations.h"
#include "app/window/Display.h"
#include "platform/qt/FormWindow.h"
#include "platform/qt/QtDesktop.h"
#include "platform/sqlite/Session.h"
#include "session/SesionSql.h"
#include "tests/support/HeardName.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros {

namespace {

/// The windows that the menus open, on a desktop as small as they are made for.
class EveryWindow : public ::testing::Test {
protected:
    EveryWindow() {
        ParametrosEmpresa parameters;
        parameters.set("Par_Ejercicio", 2010);
        parameters.set("Par_CtaNum", 8);
        parameters.set("Par_OrContaNom", 0);
        parameters.set("Par_Provincia", "28");
        session = std::make_unique<SesionSql>(sqlite::openMemory(), parameters);
        maes.MyBd = maes.MyBdorigen = session.get();
    }

    /// Looks at each window and closes it.
    void visit(const std::function<void(Form&, qt::FormWindow&)>& look) {
        for (const Operation& operation : operations()) {
            SCOPED_TRACE(operation.name);
            person.visits = {[&](Form& form) {
                look(form, *qt::FormWindow::of(form));
                form.unload();
            }};
            operation.open(maes);
            EXPECT_TRUE(person.visits.empty());
        }
    }

    std::shared_ptr<void> display = window::openDisplay();
    testing::ScriptedPerson person;
    QtDesktop desktop{&person};
    ComponentRegistry components;
    std::unique_ptr<SesionSql> session;
    FendaMaes maes{desktop, components};
};

/// Buttons, and what scrolls, lie in the window and not over each other; with `all`, no button has been scrolled away.
void expectInSight(Form& form, qt::FormWindow& window, QSize size, bool all) {
    window.resize(size);
    QCoreApplication::processEvents();
    EXPECT_LE(window.width(), size.width());
    EXPECT_LE(window.height(), size.height());
    const QScrollArea* const body = window.findChild<QScrollArea*>();
    EXPECT_TRUE(!body || body->widget()->width() <= body->viewport()->width());
    std::vector<QRect> taken;
    if (body && !all) taken.push_back(body->geometry());
    for (Control* control : form.controls()) {
        const auto* const button = qobject_cast<QAbstractButton*>(&window.viewOf(*control).widget());
        if (!button || !control->isVisible() || (!all && body && body->isAncestorOf(button))) continue;
        const QRect place(button->mapTo(&window, QPoint()), button->size());
        EXPECT_TRUE(window.rect().contains(place)) << control->Name;
        EXPECT_EQ(button->visibleRegion().boundingRect().size(), button->size()) << control->Name;
        EXPECT_GE(button->width(), button->minimumSizeHint().width()) << control->Name;
        for (const QRect& other : taken) EXPECT_FALSE(place.intersects(other)) << control->Name;
        taken.push_back(place);
    }
}

TEST_F(EveryWindow, ShowsAllItsCommandsOnASmallScreen) {
    visit([](Form& form, qt::FormWindow& window) {
        expectInSight(form, window, {1008, 536}, true);
        expectInSight(form, window, {496, 400}, false);
    });
}

TEST_F(EveryWindow, CallsEachControlByItsLabel) {
    visit([](Form& form, qt::FormWindow& window) {
        std::set<std::string> captions{form.Caption};
        for (const Control* control : form.controls())
            captions.insert(QString::fromStdString(control->caption()).remove('&').toStdString());
        for (Control* control : form.controls()) {
            if (!control->takesFocus()) continue;
            const std::string name = heardName(window.viewOf(*control).keyWidget());
            EXPECT_TRUE(!name.empty() && captions.contains(name)) << control->Name << ": " << name;
            const bool ownWindow = dynamic_cast<Table*>(control) || dynamic_cast<PageView*>(control);
            EXPECT_TRUE(name != form.Caption || ownWindow) << control->Name;
        }
    });
}

}  // namespace

}  // namespace FendaMaestros

#endif
