#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QToolButton>
#include <QWindow>
#include <algorithm>

#include "platform/qt/Contrast.h"
#include "platform/qt/FormWindow.h"
#include "platform/qt/Hands.h"
#include "platform/qt/Memory.h"
#include "platform/qt/OnTop.h"
#include "platform/qt/PageCanvas.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtGestures.h"
#include "tests/support/ContractForm.h"
#include "tests/support/HeardName.h"
#include "tests/support/ScriptedPerson.h"
#include "ui/frmVistaPrevia.h"

namespace FendaMaestros::contract {
namespace {

/// Windows with a person at them: gestures come out of the event loop, as real ones do.
class Windows : public ::testing::Test {
protected:
    /// Does this as soon as the keys typed have done their work and nothing runs; after some seconds also when they
    /// have not.
    void whenHeard(std::function<bool()> heard, std::function<void()> action, int tries = 500) {
        QTimer::singleShot(10, qApp, [=, this] {
            if ((!heard() || !isIdle()) && tries > 0) return whenHeard(heard, action, tries - 1);
            action();
        });
    }
    /// Does these, one after the other, each when the screen or message on top is idle.
    void later(std::vector<std::function<void()>> steps) {
        QTimer::singleShot(0, qApp, [this, steps = std::move(steps)]() mutable {
            if (!isIdle()) return later(std::move(steps));
            const auto step = std::move(steps.front());
            steps.erase(steps.begin());
            if (!steps.empty()) later(std::move(steps));
            step();
        });
    }
    static bool isIdle() {
        QWidget* const top = qt::OnTop::window();
        qt::FormWindow* const window = top ? qt::FormWindow::around(*top) : nullptr;
        return window ? !window->form().isHandling() : qobject_cast<QMessageBox*>(top) != nullptr;
    }
    static QWidget& focused() { return *qt::OnTop::window()->focusWidget(); }
    static void tap(KeyStroke stroke, const QString& text = {}) {
        qt::hands::pressKey(focused(), stroke, text);
        if (qt::OnTop::window()) qt::hands::releaseKey(focused(), stroke, text);
    }
    QLineEdit& field(TextBox& box) { return static_cast<QLineEdit&>(qt::FormWindow::of(form)->viewOf(box).widget()); }

    QTableView& table(Table& shown) {
        return static_cast<QTableView&>(qt::FormWindow::of(form)->viewOf(shown).keyWidget());
    }
    QLabel& statusLine() { return static_cast<QLabel&>(qt::FormWindow::of(form)->viewOf(form.lblEstado).widget()); }

    QtDesktop desktop;
    Ficha form{desktop};
};

TEST_F(Windows, the_loop_runs_until_the_screen_closes) {
    later({[&] {
               tap({'1', 0}, "1");
           },
           [&] {
               tap({key::Enter, 0});
           },
           [&] {
               tap({'X', 0}, "x");
           },
           [&] {
               tap({key::Escape, 0});
           }});
    form.show();
    EXPECT_EQ(form.Codigo.Text + form.Nombre.Text, "1x");
}

TEST_F(Windows, are_found_as_they_were_left) {
    const QTemporaryDir folder;
    QSettings settings(folder.filePath("fenda.ini"), QSettings::IniFormat);
    desktop.rememberIn(settings);
    form.Lista.bind(std::make_shared<Rows>(3));
    const auto columnWidth = [&] { return table(form.Lista).columnWidth(0); };
    later({[&] {
        form.Lista.Columns[0].Caption = "Código ▲";
        qt::Memory::current()->keepColumnWidth(form, form.Lista, form.Lista.Columns[0], 171);
        qt::OnTop::window()->resize(733, 517);
        tap({key::Escape, 0});
    }});
    form.show();
    form.Lista.Columns[0].Caption = "Código";
    later({[&] {
        EXPECT_EQ(columnWidth(), 171);
        EXPECT_EQ(qt::OnTop::window()->size(), QSize(733, 517));
        tap({key::Escape, 0});
    }});
    form.show();
}

TEST(OperatedWindows, leave_no_settings_behind) {
    const QTemporaryDir folder;
    QSettings settings(folder.filePath("fenda.ini"), QSettings::IniFormat);
    FendaMaestros::testing::ScriptedPerson person;
    QtDesktop desktop(&person);
    desktop.rememberIn(settings);
    Ficha form(desktop);
    person.files = {"lista.pdf"};
    person.visits = {[&](Form&) {
        desktop.chooseSaveFile("lista.pdf", "PDF");
        qt::OnTop::window()->resize(733, 517);
        form.unload();
    }};
    form.show();
    EXPECT_TRUE(settings.allKeys().isEmpty());
}

TEST_F(Windows, a_handler_that_throws_under_a_nested_loop_reaches_the_caller) {
    Ficha nested(desktop);
    form.cmdGuardar.Click = [&] { nested.show(); };
    nested.cmdGuardar.Click = [] { throw std::runtime_error("sin conexión"); };
    later({[&] { tap({'G', shift::Alt}); }, [&] { tap({'G', shift::Alt}); }});
    EXPECT_THROW(form.show(), std::runtime_error);
    EXPECT_EQ(qt::OnTop::window(), nullptr);
}

TEST_F(Windows, the_key_that_dismisses_a_message_is_released_once_on_the_screen_below) {
    form.cmdGuardar.Click = [&] {
        form.warn(true);
        form.setFocus(form.Codigo);
    };
    std::vector<Control*> places;
    const auto notePlace = [&] { places.push_back(form.activeControl()); };
    later({[&] {
               tap({'G', shift::Alt});
           },
           [&] {
               qt::hands::pressKey(focused(), {key::Enter, 0});
           },
           [&] {
               qt::hands::releaseKey(focused(), {key::Enter, 0});
               notePlace();
               tap({key::Enter, 0});
               notePlace();
               tap({key::Escape, 0});
           }});
    form.show();
    EXPECT_EQ(places, (std::vector<Control*>{&form.Codigo, &form.Nombre}));
}

TEST_F(Windows, messages_are_spanish_and_esc_says_no) {
    std::vector<QString> texts;
    Reply reply;
    later({[&] {
        for (const QPushButton* button : qt::OnTop::window()->findChildren<QPushButton*>())
            texts.push_back(button->text());
        texts.push_back(qt::OnTop::window()->windowTitle());
        EXPECT_TRUE(static_cast<QPushButton&>(focused()).isDefault());
        EXPECT_EQ(static_cast<QPushButton&>(focused()).text(), "&No");
        qt::hands::pressKey(focused(), {key::Escape, 0});
    }});
    reply = desktop.ask({"¿Seguro?", 292, ""});
    EXPECT_EQ(texts, (std::vector<QString>{"&Sí", "&No", "FendaMaestros"}));
    EXPECT_EQ(reply.answer, Answer::No);
    EXPECT_EQ(reply.key, key::Escape);
}

TEST_F(Windows, a_message_taller_than_the_screen_scrolls_beside_its_button) {
    std::string lines;
    for (int line = 1; line <= 200; ++line) lines += "Renglón " + std::to_string(line) + "\n";
    form.cmdGuardar.Click = [&] { form.ask(lines, message::Information, ""); };
    later({[] {
               tap({'G', shift::Alt});
           },
           [] {
               QWidget& box = *qt::OnTop::window();
               const QWidget& button = *box.findChild<QPushButton*>();
               EXPECT_LE(box.height(), box.screen()->availableSize().height());
               EXPECT_TRUE(box.rect().contains(QRect(button.mapTo(&box, QPoint()), button.size())));
               const auto* const text = box.findChild<QScrollArea*>();
               ASSERT_TRUE(text);
               EXPECT_GT(text->verticalScrollBar()->maximum(), 0);
               tap({key::Enter, 0});
           },
           [] {
               tap({key::Escape, 0});
           }});
    form.show();
}

TEST_F(Windows, pasted_text_passes_the_key_filter_and_keeps_the_caret) {
    QApplication::clipboard()->setText("a1b2");
    later({[&] {
        tap({'8', 0}, "8");
        tap({'9', 0}, "9");
        tap({key::Left, 0});
        tap({'V', shift::Control});
        EXPECT_EQ(field(form.Codigo).cursorPosition(), 3);
        EXPECT_EQ(field(form.Codigo).text(), "8129");
        tap({'A', shift::Control});
        tap({'7', 0}, "7");
        tap({key::Escape, 0});
    }});
    form.show();
    EXPECT_EQ(form.Codigo.Text, "7");
}

TEST_F(Windows, a_refused_key_leaves_the_selection_for_the_next_one) {
    later({[&] {
        tap({'1', 0}, "1");
        tap({'2', 0}, "2");
        tap({key::Left, shift::Shift});
        tap({'A', 0}, "a");
        EXPECT_EQ(field(form.Codigo).selectedText(), "2");
        EXPECT_EQ(field(form.Codigo).cursorPosition(), 1);
        tap({'A', shift::Control});
        tap({'A', 0}, "a");
        EXPECT_EQ(field(form.Codigo).selectedText(), "12");
        EXPECT_TRUE(form.Codigo.AllSelected);
        tap({'3', 0}, "3");
        tap({key::Escape, 0});
    }});
    form.show();
    EXPECT_EQ(form.Codigo.Text, "3");
}

/// On their way to a window, as those of a fast typist are when it closes.
void typeAhead(const QString& letters) {
    QWindow* const window = qt::OnTop::window()->windowHandle();
    for (const QChar letter : letters)
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
            QCoreApplication::postEvent(window,
                                        new QKeyEvent(type, letter.toUpper().unicode(), Qt::NoModifier, letter));
}

TEST_F(Windows, what_is_typed_while_a_message_or_a_screen_closes_reaches_the_screen_below) {
    Ficha nested(desktop);
    Answer answer{};
    form.cmdGuardar.Click = [&] {
        answer = form.ask("¿Seguro?", 292, "");
        nested.show();
        desktop.processPending();
        form.setFocus(form.Nombre);
    };
    const auto leave = [&] { tap({key::Escape, 0}); };
    const auto leaveNested = [&] {
        whenHeard([&] { return form.Nombre.Text == "rafaga"; }, leave);
        typeAhead("rafaga");
        tap({key::Escape, 0});
    };
    later({[&] {
               tap({'G', shift::Alt});
           },
           [&] {
               whenHeard([&] { return nested.Codigo.Text == "12"; }, leaveNested);
               typeAhead("12");
               qt::hands::pressKey(focused(), {'S', 0}, "s");
           }});
    form.show();
    EXPECT_EQ(answer, Answer::Yes);
    EXPECT_EQ(nested.Codigo.Text, "12");
    EXPECT_EQ(form.Nombre.Text, "rafaga");
}

TEST_F(Windows, what_is_typed_and_clicked_below_while_a_screen_opens_is_for_that_screen) {
    Ficha nested(desktop);
    form.cmdGuardar.Click = [&] { nested.show(); };
    QWindow* below = nullptr;
    const auto leaveBoth = [&] {
        EXPECT_EQ(nested.Codigo.Text, "12");
        QTableView& rows = table(form.Lista);
        const QPoint at = rows.viewport()->mapTo(rows.window(), rows.viewport()->rect().center());
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, at, below->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(below, &event);
        }
        tap({key::Escape, 0});
        later({[&] {
            EXPECT_EQ(form.activeControl(), &form.cmdGuardar);
            tap({key::Escape, 0});
        }});
    };
    later({[&] {
        below = qt::OnTop::window()->windowHandle();
        whenHeard([&] { return nested.Codigo.Text == "12"; }, leaveBoth);
        QCoreApplication::postEvent(below, new QKeyEvent(QEvent::KeyPress, Qt::Key_G, Qt::AltModifier, "g"));
        typeAhead("12");
    }});
    form.show();
    EXPECT_EQ(form.Codigo.Text, "");
}

TEST_F(Windows, while_a_screen_waits_it_shows_what_it_has_said) {
    std::string seen;
    form.cmdGuardar.Click = [&] {
        form.lblEstado.Caption = "Otro programa ocupa los datos";
        QTimer::singleShot(0, qApp, [&] { seen = statusLine().text().toStdString(); });
        desktop.wait(std::chrono::milliseconds(5));
    };
    later({[&] { tap({'G', shift::Alt}); }, [&] { tap({key::Escape, 0}); }});
    form.show();
    EXPECT_EQ(seen, "Otro programa ocupa los datos");
}

TEST_F(Windows, esc_stops_long_work_and_nothing_else_typed_meanwhile_is_heard) {
    std::vector<bool> asked;
    form.cmdGuardar.Click = [&] {
        form.Enabled = false;
        form.lblEstado.Caption = "16 de 100";
        auto* const window = qt::FormWindow::of(form);
        const auto press = [window](int key) {
            for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
                QApplication::postEvent(window, new QKeyEvent(type, key, Qt::NoModifier));
        };
        press(Qt::Key_X);
        asked.push_back(desktop.stopAsked());
        press(Qt::Key_Escape);
        asked.push_back(desktop.stopAsked());
        asked.push_back(desktop.stopAsked());
        form.Enabled = true;
    };
    std::string shown;
    later({[&] {
               tap({'G', shift::Alt});
           },
           [&] {
               shown = statusLine().text().toStdString();
               EXPECT_TRUE(form.isOpen());
               tap({key::Escape, 0});
           }});
    form.show();
    EXPECT_EQ(asked, (std::vector{false, true, false}));
    EXPECT_EQ(shown, "16 de 100");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(Windows, the_status_line_keeps_its_place_and_what_does_not_fit_is_in_its_tooltip) {
    const std::string whole = "Se ha guardado " + std::string(400, 'x');
    form.cmdGuardar.Click = [&] { form.lblEstado.Caption = whole; };
    later({[&] {
        qt::FormWindow& window = *qt::FormWindow::of(form);
        const QLabel& line = statusLine();
        const QRect place = line.geometry();
        const QSize least = window.minimumSizeHint();
        EXPECT_EQ(place.bottom(), window.rect().bottom());
        EXPECT_GE(place.height(), line.fontMetrics().height());
        EXPECT_EQ(line.accessibleName(), "Línea de estado");
        tap({'G', shift::Alt});
        window.layout()->activate();
        EXPECT_EQ(line.geometry(), place);
        EXPECT_EQ(window.minimumSizeHint(), least);
        EXPECT_TRUE(line.text().startsWith("Se ha guardado xxx") && line.text().endsWith("…"));
        EXPECT_EQ(line.toolTip().toStdString(), whole);
        EXPECT_EQ(line.accessibleName().toStdString(), whole);
        form.cmdGuardar.Click = [&] { form.lblEstado.Caption = "Guardado"; };
        tap({'G', shift::Alt});
        EXPECT_EQ(line.text() + line.toolTip(), "Guardado");
        tap({key::Escape, 0});
    }});
    form.show();
}

/// A window that says what it has found.
struct Finding final : Form {
    explicit Finding(Desktop& desktop) : Form(desktop) {
        add(lblResultado, "lblResultado");
        add(cmdComprobar, "cmdComprobar");
        add(cmdSalir, "cmdSalir");
        layOut(arrange::column({arrange::plain(lblResultado), arrange::buttons({&cmdComprobar, &cmdSalir})}));
        cmdSalir.Click = [this] { unload(); };
        cmdComprobar.Click = [this] { lblResultado.Caption = "No es válido\nEs de una sociedad\nSe espera 2\nNorma"; };
    }
    Label lblResultado{"Sin comprobar"};
    CommandButton cmdComprobar{"&Comprobar"};
    CommandButton cmdSalir{"&Salir"};
};

TEST_F(Windows, a_text_that_comes_to_need_more_lines_is_seen_whole) {
    Finding finding(desktop);
    later({[&] {
               tap({'C', shift::Alt});
           },
           [&] {
               const QWidget& text = qt::FormWindow::of(finding)->viewOf(finding.lblResultado).widget();
               EXPECT_GE(text.height(), text.heightForWidth(text.width()));
               EXPECT_GE(text.height(), 4 * text.fontMetrics().height());
               tap({'S', shift::Alt});
           }});
    finding.show();
}

TEST_F(Windows, what_the_status_line_means_has_a_sign_and_a_colour_that_stands_out_from_light_and_dark) {
    const QPalette before = QApplication::palette();
    for (const QColor& back : {QColor(243, 244, 246), QColor(239, 240, 241), QColor(53, 53, 53), QColor(35, 38, 41)}) {
        QApplication::setPalette(QPalette(back, back));
        std::vector<QColor> inks;
        later({[&] {
            const auto shows = [&](StatusKind kind, const char* text) {
                form.cmdGuardar.Click = [&form = form, kind] { form.lblEstado.say("Hecho", kind); };
                tap({'G', shift::Alt});
                EXPECT_EQ(statusLine().text(), text);
                inks.push_back(statusLine().palette().color(QPalette::WindowText));
            };
            shows(StatusKind::Good, "✓ Hecho");
            shows(StatusKind::Warning, "! Hecho");
            shows(StatusKind::Plain, "Hecho");
            tap({key::Escape, 0});
        }});
        form.show();
        for (const QColor& ink : inks) EXPECT_GE(qt::contrast(ink, back), qt::textContrast) << qPrintable(back.name());
        ASSERT_EQ(inks.size(), 3u);
        EXPECT_NE(inks[0], inks[1]);
        EXPECT_NE(inks[1], inks[2]);
    }
    QApplication::setPalette(before);
}

TEST_F(Windows, each_of_two_quick_clicks_on_a_header_counts) {
    std::vector<int> clicked;
    form.Lista.HeadClick = [&](int column) { clicked.push_back(column); };
    form.Lista.Columns.resize(2);
    form.Lista.bind(std::make_shared<Rows>(2));
    later({[&] {
        QHeaderView& header = *table(form.Lista).horizontalHeader();
        const QPoint at(header.sectionViewportPosition(1) + header.sectionSize(1) / 2, header.height() / 2);
        qt::hands::click(*header.viewport(), at);
        qt::hands::clickAgain(*header.viewport(), at);
        tap({key::Escape, 0});
    }});
    form.show();
    EXPECT_EQ(clicked, (std::vector<int>{1, 1}));
}

TEST_F(Windows, captions_of_wide_buttons_keep_clear_of_the_border) {
    const QPushButton button("Nuevo concepto de tesorería");
    constexpr int bothSides = 20;
    EXPECT_GE(button.sizeHint().width(), button.fontMetrics().horizontalAdvance(button.text()) + bothSides);
}

TEST_F(Windows, what_handlers_change_is_shown_after_the_gesture) {
    later({[&] {
        form.Codigo.KeyPress = [&](int&) {
            form.Nombre.Text = "Central";
            form.Nombre.Locked = true;
            form.Codigo.BackColor = 65535;
            form.Lista.bind(std::make_shared<Rows>(100'000));
            form.cmdGuardar.Enabled = false;
            form.Caption = "Otra";
        };
        tap({'1', 0}, "1");
        const qt::FormWindow& window = *qt::FormWindow::of(form);
        EXPECT_EQ(field(form.Nombre).text(), "Central");
        EXPECT_TRUE(field(form.Nombre).isReadOnly());
        EXPECT_EQ(field(form.Codigo).palette().color(QPalette::Base), QColor(255, 255, 0));
        EXPECT_LT(qGray(field(form.Codigo).palette().color(QPalette::Text).rgb()), 80);
        EXPECT_EQ(table(form.Lista).model()->rowCount(), 100'000);
        EXPECT_EQ(window.windowTitle(), "Otra");
        EXPECT_EQ(window.focusWidget(), &field(form.Codigo));
        tap({key::Escape, 0});
    }});
    form.show();
}

TEST_F(Windows, a_field_that_searches_offers_its_keys_in_a_button_and_in_its_menu) {
    class Searching final : public Ficha {
    public:
        using Ficha::Ficha;
        void onKeyUp(int& code, int shift) override {
            log.push_back("tecla " + std::to_string(code) + " en " + activeControl()->Name);
            Ficha::onKeyUp(code, shift);
        }
    } screen(desktop);
    screen.Nombre.Searches = {
        {{key::F(2)}, "Buscar por nombre"}, {{key::F(1)}, "Buscar por nombre"}, {{key::F(3)}, "Buscar por código"}};
    const auto edit = [&]() -> QLineEdit& {
        return static_cast<QLineEdit&>(qt::FormWindow::of(screen)->viewOf(screen.Nombre).widget());
    };
    const auto button = [&]() -> QToolButton& { return *edit().findChild<QToolButton*>(); };
    const auto openMenu = [&] {
        QContextMenuEvent asked(QContextMenuEvent::Mouse, {4, 4}, edit().mapToGlobal(QPoint(4, 4)));
        QCoreApplication::sendEvent(&edit(), &asked);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    };
    later({[&] {
               EXPECT_EQ(button().toolTip(), "Buscar por nombre (F2)");
               EXPECT_EQ(button().focusPolicy(), Qt::NoFocus);
               qt::hands::clickCenter(button());
               QCoreApplication::sendPostedEvents(qt::FormWindow::of(screen));
           },
           [&] {
               EXPECT_EQ(screen.log, (std::vector<std::string>{"entra Codigo", "sale Codigo", "entra Nombre",
                                                               "tecla 113 en Nombre"}));
               tap({key::Tab, 0});
               EXPECT_EQ(screen.activeControl(), &screen.Tipo) << "Tab passes over the button";
               screen.log.clear();
               QMenu* const menu = openMenu();
               ASSERT_TRUE(menu);
               EXPECT_EQ(menu->actions()[0]->text(), "Buscar por nombre\tF2");
               EXPECT_EQ(menu->actions()[1]->text(), "Buscar por código\tF3");
               EXPECT_TRUE(menu->actions()[2]->isSeparator());
               EXPECT_GT(menu->actions().size(), 7) << "and what can be done to any text";
               menu->actions()[1]->trigger();
               menu->close();
               QCoreApplication::sendPostedEvents(qt::FormWindow::of(screen));
           },
           [&] {
               EXPECT_EQ(screen.log, (std::vector<std::string>{"entra Nombre", "tecla 114 en Nombre"}));
               screen.log.clear();
               qt::FormWindow::of(screen)->hand([&] { screen.setFocus(screen.Codigo); });
               screen.Nombre.Enabled = false;
               qt::FormWindow::pullAll();
               EXPECT_FALSE(button().isEnabled());
               qt::hands::clickCenter(button());
               QCoreApplication::sendPostedEvents(qt::FormWindow::of(screen));
           },
           [&] {
               EXPECT_EQ(screen.activeControl(), &screen.Codigo);
               EXPECT_EQ(screen.log.back(), "entra Codigo");
               tap({key::Escape, 0});
           }});
    screen.show();
}

TEST_F(Windows, a_marked_row_stands_out_in_view_until_something_is_changed) {
    form.cmdGuardar.Click = [&] {
        form.Lista.bind(std::make_shared<Rows>(100'000));
        form.Lista.MarkedRow = 50'000;
    };
    later({[&] {
        tap({'G', shift::Alt});
        const QTableView& rows = table(form.Lista);
        const QModelIndex marked = rows.model()->index(50'000, 0);
        EXPECT_TRUE(rows.viewport()->rect().contains(rows.visualRect(marked)));
        EXPECT_TRUE(marked.data(Qt::FontRole).value<QFont>().bold());
        EXPECT_EQ(rows.currentIndex().row(), 0);
        form.cmdGuardar.Click = {};
        tap({'G', shift::Alt});
        EXPECT_FALSE(marked.data(Qt::FontRole).isValid());
        tap({key::Escape, 0});
    }});
    form.show();
}

TEST_F(Windows, who_does_not_see_a_control_hears_its_label_or_what_it_stands_in) {
    form.fraDatos.Caption = "&Datos";
    form.Activo.Caption = "&Activo";
    form.Lista.Caption = "Fichas";
    std::vector<std::string> names;
    later({[&] {
        form.lblCodigo.Caption = "&Cuenta:";
        tap({'1', 0}, "1");
        for (Control* control : std::vector<Control*>{&form.Codigo, &form.Nombre, &form.Tipo, &form.Activo, &form.Lista,
                                                      &form.Movimientos, &form.cmdGuardar})
            names.push_back(heardName(qt::FormWindow::of(form)->viewOf(*control).keyWidget()));
        tap({key::Escape, 0});
    }});
    form.show();
    EXPECT_EQ(names, (std::vector<std::string>{"Cuenta:", "Datos", "Ficha", "Activo", "Fichas", "Ficha", "Guardar"}));
}

TEST_F(Windows, in_a_small_window_commands_stay_in_sight_and_only_fields_scroll) {
    form.lblCodigo.Caption = std::string(30, 'x');
    form.cmdGuardar.Caption = "&Guardar esta ficha en el fichero de las fichas";
    form.cmdSalir.Caption = "&Salir sin guardar nada de lo que hay en la ficha";
    later({[&] {
        qt::FormWindow& window = *qt::FormWindow::of(form);
        QScrollArea& body = *window.findChild<QScrollArea*>();
        QWidget& save = window.viewOf(form.cmdGuardar).widget();
        QWidget& leave = window.viewOf(form.cmdSalir).widget();
        const auto settled = [&](QSize size) {
            window.resize(size);
            QCoreApplication::processEvents();
            const QRect first(save.mapTo(&window, QPoint()), save.size());
            const QRect second(leave.mapTo(&window, QPoint()), leave.size());
            EXPECT_TRUE(window.rect().contains(first.united(second)));
            EXPECT_FALSE(first.intersects(second));
            EXPECT_LT(second.bottom(), statusLine().y());
            EXPECT_GE(first.top(), body.geometry().bottom());
            EXPECT_GE(save.width(), save.sizeHint().width());
            EXPECT_GE(body.viewport()->width(), body.widget()->width());
            return first.top() == second.top();
        };
        EXPECT_TRUE(settled({900, 700}));
        EXPECT_FALSE(body.verticalScrollBar()->isVisible());
        EXPECT_FALSE(settled({window.minimumSizeHint().width(), 280}));
        EXPECT_LT(window.width(), save.width() + leave.width());
        EXPECT_TRUE(body.verticalScrollBar()->isVisible());
        tap({key::Escape, 0});
    }});
    form.show();
}

/// A page of the paper's usual size, without anything on it.
class BlankPages final : public PagedDocument {
public:
    std::string title() const override { return "Listado"; }
    int pageCount() const override { return 3; }
    Twips pageWidth() const override { return 11906; }
    Twips pageHeight() const override { return 16838; }
    Page page(int) const override { return {}; }
};

TEST_F(Windows, page_keys_scroll_the_page_before_they_turn_it_and_its_size_is_shown) {
    frmVistaPrevia preview(desktop, std::make_shared<BlankPages>());
    auto& pages = *preview.find<PageView>("Pagina");
    const auto& turned = *preview.find<Label>("lblPagina");
    later({[&] {
        auto& canvas = static_cast<qt::PageCanvas&>(qt::FormWindow::of(preview)->viewOf(pages).widget());
        const QScrollBar& bar = *canvas.verticalScrollBar();
        const auto shown = [&] { return canvas.findChild<QLabel*>()->text(); };
        ASSERT_GT(bar.maximum(), 0);
        EXPECT_EQ(shown(), QString("%1 %").arg(canvas.shownPercent()));
        tap({'M', shift::Alt}, "m");
        EXPECT_EQ(shown(), "125 %");
        const auto keysToTurn = [&](int key) {
            const std::string before = turned.Caption;
            int keys = 0;
            while (turned.Caption == before && ++keys < 20) {
                const int place = bar.value();
                tap({key, 0});
                EXPECT_TRUE(bar.value() != place || turned.Caption != before);
            }
            return keys;
        };
        const int down = keysToTurn(key::PageDown);
        EXPECT_GT(down, 2);
        EXPECT_EQ(bar.value(), 0);
        tap({key::PageUp, 0});
        EXPECT_EQ(turned.Caption, "Página 1 de 3");
        EXPECT_EQ(bar.value(), bar.maximum());
        tap({key::End, 0});
        EXPECT_EQ(turned.Caption + std::to_string(bar.value()), "Página 3 de 30");
        tap({key::Escape, 0});
    }});
    preview.show();
}

/// A screen that does not say how it is laid out.
class Suelta : public Form {
public:
    explicit Suelta(Desktop& desktop) : Form(desktop) {
        add(fraDatos, "fraDatos");
        add(lblNombre, "lblNombre", &fraDatos);
        add(Nombre, "Nombre", &fraDatos);
        add(Tipo, "Tipo");
        add(Lista, "Lista");
        add(cmdSalir, "cmdSalir");
    }

    Frame fraDatos;
    Label lblNombre{"Nombre:"};
    TextBox Nombre;
    ComboBox Tipo;
    ListView Lista;
    CommandButton cmdSalir{"&Salir"};
};

TEST_F(Windows, controls_that_no_arrangement_names_are_shown_all_the_same) {
    Suelta loose(desktop);
    loose.Tipo.Visible = false;
    loose.cmdSalir.Click = [&] { loose.unload(); };
    later({[&] {
        qt::FormWindow& window = *qt::FormWindow::of(loose);
        for (Control* control : loose.controls()) {
            const QWidget& widget = window.viewOf(*control).widget();
            EXPECT_EQ(widget.isVisible(), control->Visible) << control->Name;
            EXPECT_TRUE(window.rect().contains(QRect(widget.mapTo(&window, QPoint()), QSize(1, 1)))) << control->Name;
        }
        tap({'S', shift::Alt});
    }});
    loose.show();
}

}  // namespace
}  // namespace FendaMaestros::contract
