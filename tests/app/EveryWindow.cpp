#if defined(FENDA_WITH_QT) && defined(FENDA_WITH_SQLITE)

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <fstream>
#include <set>

#include "app/operations/Operations.h"
#include "app/window/Display.h"
#include "platform/qt/FormWindow.h"
#include "platform/qt/QtDesktop.h"
#include "platform/sqlite/Session.h"
#include "session/SesionSql.h"
#include "tests/session/TemporaryFolder.h"
#include "tests/support/HeardName.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros {

namespace {

/// A display without anybody in front of it, of this size.
std::shared_ptr<void> openDisplayOf(QSize size) {
    const tests::TemporaryFolder folder;
    const std::string path = folder.path() / "pantalla.json";
    std::ofstream(path) << R"({"screens": [{"name": "Prueba", "x": 0, "y": 0, "width": )" << size.width()
                        << R"(, "height": )" << size.height() << "}]}";
    const QByteArray usual = qgetenv("QT_QPA_PLATFORM");
    qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString("offscreen:configfile=" + path));
    std::shared_ptr<void> display = window::openDisplay();
    qputenv("QT_QPA_PLATFORM", usual);
    return display;
}

/// The windows that the menus open, on a screen of some size.
class EveryWindow : public ::testing::TestWithParam<QSize> {
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

    std::shared_ptr<void> display = openDisplayOf(GetParam());
    testing::ScriptedPerson person;
    QtDesktop desktop{&person};
    ComponentRegistry components;
    std::unique_ptr<SesionSql> session;
    FendaMaes maes{desktop, components};
};

constexpr QSize large(1600, 1200);
constexpr QSize small(1024, 600);
/// The small one at scale 2.
constexpr QSize tiny(512, 300);

INSTANTIATE_TEST_SUITE_P(Screens, EveryWindow, ::testing::Values(large, small, tiny),
                         [](const auto& screen) { return "W" + std::to_string(screen.param.width()); });

/// All buttons lie in the window, beside each other; on a tiny screen only those that have not been scrolled away.
TEST_P(EveryWindow, ShowsItsCommandsWhateverTheScreen) {
    visit([](Form& form, qt::FormWindow& window) {
        QCoreApplication::processEvents();
        EXPECT_LE(window.width(), GetParam().width());
        EXPECT_LE(window.height(), GetParam().height());
        const QScrollArea* const body = window.findChild<QScrollArea*>();
        EXPECT_TRUE(!body || body->widget()->width() <= body->viewport()->width());
        EXPECT_TRUE(!body || GetParam() != large || !body->verticalScrollBar()->isVisible());
        std::vector<QRect> taken;
        int outside = 0;
        for (Control* control : form.controls()) {
            const auto* const button = qobject_cast<QAbstractButton*>(&window.viewOf(*control).widget());
            if (!button || !control->isVisible()) continue;
            const bool scrolls = body && body->isAncestorOf(button);
            outside += !scrolls;
            if (scrolls && GetParam() == tiny) continue;
            const QRect place(button->mapTo(&window, QPoint()), button->size());
            EXPECT_TRUE(window.rect().contains(place)) << control->Name;
            EXPECT_EQ(button->visibleRegion().boundingRect().size(), button->size()) << control->Name;
            EXPECT_GE(button->width(), button->minimumSizeHint().width()) << control->Name;
            EXPECT_FALSE(!scrolls && body && place.intersects(body->geometry())) << control->Name;
            for (const QRect& other : taken) EXPECT_FALSE(place.intersects(other)) << control->Name;
            taken.push_back(place);
        }
        EXPECT_GT(outside, 0);
    });
}

TEST_P(EveryWindow, CallsEachControlByItsLabel) {
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
