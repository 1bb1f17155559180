#if defined(FENDA_WITH_QT) && defined(FENDA_WITH_SQLITE)

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <fstream>
#include <set>

#include "app/Composition.h"
#include "app/operations/Operations.h"
#include "app/window/Display.h"
#include "app/window/frmAbrir.h"
#include "app/window/frmCopia.h"
#include "app/window/frmDatosEmpresa.h"
#include "app/window/frmImportar.h"
#include "app/window/frmInicio.h"
#include "app/window/frmNuevaEmpresa.h"
#include "app/window/frmRenumerar.h"
#include "app/window/frmRevisar.h"
#include "platform/qt/FormWindow.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtGestures.h"
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

/// The windows that the menus open, those of the program itself included, on a screen of some size.
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

    using Look = std::function<void(Form&, qt::FormWindow&)>;

    /// Looks at each window and closes it.
    void visit(const Look& look) {
        for (const Operation& operation : operations()) visit(look, operation.name, [&] { operation.open(maes); });
        const auto own = [&](Form&& form) { visit(look, form.Caption, [&form] { form.show(); }); };
        const Place kept{Place::Kind::Folder, folder.path() / "datos"};
        const CompanyPlace place{kept, companiesAt(kept)};
        own(frmInicio(desktop));
        own(frmNuevaEmpresa(desktop, place));
        own(frmAbrir(desktop, Place::Kind::Folder, {}));
        own(frmAbrir(desktop, Place::Kind::Server, {}));
        own(frmDatosEmpresa(desktop, *session, "Empresa", nameOf(kept)));
        own(frmCopia(folder.path(), {}));
        own(frmRevisar(place, "Empresa"));
        own(frmImportar());
        for (const int kind : {0, 1, 2}) {
            const Look lookAtKind = [&](Form& form, qt::FormWindow& window) {
                person.hands.choose(form, person.control<ComboBox>(form, "cboQue"), kind);
                look(form, window);
            };
            visit(lookAtKind, "renumerar " + std::to_string(kind), [] { frmRenumerar().show(); });
        }
    }
    void visit(const Look& look, const std::string& name, const std::function<void()>& open) {
        SCOPED_TRACE(name);
        person.visits = {[&](Form& form) {
            look(form, *qt::FormWindow::of(form));
            form.unload();
        }};
        open();
        EXPECT_TRUE(person.visits.empty());
    }

    const tests::TemporaryFolder folder;

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

TEST_P(EveryWindow, TellsItsKeysInTooltipsAndInTheListOfF1) {
    visit([this](Form& form, qt::FormWindow& window) {
        person.answers = {Answer::Ok};
        QtGestures().key(form, {key::F1, shift::Shift});
        ASSERT_TRUE(person.answers.empty());
        const std::string list = person.messages.back().text;
        for (const KeyHint& hint : form.Keys) EXPECT_NE(list.find(hint.does), std::string::npos) << hint.does;
        for (Control* control : form.controls()) {
            const std::string tip = window.viewOf(*control).widget().toolTip().toStdString();
            if (!control->isVisible()) continue;
            for (const KeyHint& hint : control->keys()) {
                EXPECT_NE(tip.find(keyName(hint.stroke)), std::string::npos) << control->Name << ": " << tip;
                EXPECT_NE(list.find(keyName(hint.stroke)), std::string::npos) << control->Name << ": " << list;
            }
        }
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
