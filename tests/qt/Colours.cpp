#include <gtest/gtest.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QTableView>
#include <QTimer>
#include <cmath>

#include "platform/qt/CalmStyle.h"
#include "platform/qt/FormWindow.h"
#include "platform/qt/Hands.h"
#include "platform/qt/Look.h"
#include "platform/qt/QtDesktop.h"
#include "tests/support/ContractForm.h"

namespace FendaMaestros::contract {
namespace {

constexpr double forText = 4.5;
constexpr double forLines = 3;
constexpr Color yellow = 65535;
constexpr Color white = 16777215;

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double ratio(const QColor& a, const QColor& b) {
    const double first = luminance(a) + 0.05, second = luminance(b) + 0.05;
    return first > second ? first / second : second / first;
}

/// A dark theme whose quiet colours are too quiet.
QPalette darkTheme() {
    QPalette dark(QColor(45, 45, 48), QColor(37, 37, 40));
    dark.setColor(QPalette::Base, QColor(30, 30, 32));
    dark.setColor(QPalette::Highlight, QColor(20, 60, 110));
    dark.setColor(QPalette::HighlightedText, QColor(120, 130, 140));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        dark.setColor(role, QColor(212, 212, 212));
        dark.setColor(QPalette::Disabled, role, QColor(78, 78, 80));
    }
    return dark;
}

/// What the style makes of a theme, for a program that shows it.
QPalette polished(QPalette theme) {
    qt::CalmStyle().polish(theme);
    return theme;
}

/// Windows under a theme that a desktop has chosen.
class Colours : public testing::TestWithParam<bool> {
protected:
    void SetUp() override { QApplication::setPalette(GetParam() ? polished(darkTheme()) : QPalette()); }
    void TearDown() override { QApplication::setPalette(QPalette()); }

    QtDesktop desktop;
};

INSTANTIATE_TEST_SUITE_P(LightAndDark, Colours, testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

TEST_P(Colours, stand_out_from_what_they_are_on) {
    const QPalette shown = QApplication::palette();
    EXPECT_EQ(qGray(shown.color(QPalette::Window).rgb()) < 100, GetParam());
    const auto expectPair = [&](QPalette::ColorRole text, QPalette::ColorRole back) {
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const double least = group == QPalette::Disabled ? forLines : forText;
            const double found = ratio(shown.color(group, text), shown.color(group, back));
            EXPECT_GE(found, least) << "role " << text << " on " << back << " in group " << group;
        }
    };
    expectPair(QPalette::WindowText, QPalette::Window);
    for (const auto back : {QPalette::Base, QPalette::AlternateBase, QPalette::Window})
        expectPair(QPalette::Text, back);
    for (const auto back : {QPalette::Button, QPalette::Window}) expectPair(QPalette::ButtonText, back);
    expectPair(QPalette::HighlightedText, QPalette::Highlight);
    for (const QColor& line : {qt::lineColor(shown), qt::focusColor(shown)})
        for (const auto back : {QPalette::Window, QPalette::Base}) EXPECT_GE(ratio(line, shown.color(back)), forLines);
}

TEST_P(Colours, only_a_field_that_can_be_written_in_is_yellow) {
    const QPalette edited = qt::fieldPalette(yellow, false, true);
    EXPECT_EQ(edited.color(QPalette::Base), QColor(255, 255, 0));
    EXPECT_GE(ratio(edited.color(QPalette::Text), Qt::yellow), forText);
    const QPalette theme = QApplication::palette();
    EXPECT_EQ(qt::fieldPalette(yellow, true, true), qt::fieldPalette(white, true, true));
    EXPECT_EQ(qt::fieldPalette(yellow, false, false), QPalette());
    EXPECT_GE(ratio(qt::fieldPalette(white, true, true).color(QPalette::Base), theme.color(QPalette::Text)), forText);
}

bool alike(const QColor& a, const QColor& b) {
    constexpr int little = 40;
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue()) < little;
}

/// The share of a widget's left edge that has about this colour.
double edgeOf(QWidget& widget, const QColor& color) {
    const QImage picture = widget.grab().toImage();
    int found = 0;
    for (int y = 0; y < picture.height(); ++y) {
        bool here = false;
        for (int x = 0; x < 3; ++x) here = here || alike(picture.pixelColor(x, y), color);
        found += here;
    }
    return static_cast<double>(found) / picture.height();
}

TEST_P(Colours, whatever_has_the_focus_has_the_same_line_around_it) {
    Ficha form(desktop);
    form.Activo.Caption = "Activo";
    form.Nombre.Locked = true;
    QTimer::singleShot(50, qApp, [&] {
        qt::FormWindow& window = *qt::FormWindow::of(form);
        // A busy machine may activate it later: a line is drawn around the focus of the active window alone.
        QDeadlineTimer patience(5000);
        while (!window.isActiveWindow() && !patience.hasExpired()) QCoreApplication::processEvents();
        const QColor line = qt::focusColor(QApplication::palette());
        for (Control* control :
             std::vector<Control*>{&form.Codigo, &form.Nombre, &form.Tipo, &form.Lista, &form.cmdGuardar}) {
            QWidget& widget = window.viewOf(*control).keyWidget();
            EXPECT_TRUE(control == &form.Codigo || edgeOf(widget, line) < 0.1) << control->Name;
            window.hand([&] { form.focus(*control); });
            EXPECT_GT(edgeOf(widget, line), 0.7) << control->Name;
        }
        window.hand([&] { form.close(); });
    });
    form.show();
}

TEST_P(Colours, a_disabled_table_marks_its_row_quietly) {
    const QPalette shown = QApplication::palette();
    const auto mark = [&](QPalette::ColorGroup group) {
        return ratio(shown.color(group, QPalette::Highlight), shown.color(group, QPalette::Base));
    };
    EXPECT_LT(mark(QPalette::Disabled), 2);
    EXPECT_GT(mark(QPalette::Disabled), 1.05);
}

TEST_P(Colours, rows_of_what_is_out_of_use_are_quiet_and_can_be_read) {
    Ficha form(desktop);
    form.Lista.bind(std::make_shared<Rows>(3));
    form.Lista.Inactive = [](int row) { return row == 1; };
    QTimer::singleShot(50, qApp, [&] {
        qt::FormWindow& window = *qt::FormWindow::of(form);
        const auto& rows = static_cast<const QTableView&>(window.viewOf(form.Lista).keyWidget());
        const auto textOf = [&](int row) { return rows.model()->index(row, 0).data(Qt::ForegroundRole); };
        EXPECT_FALSE(textOf(0).isValid() || textOf(2).isValid());
        const QPalette shown = QApplication::palette();
        const auto quiet = textOf(1).value<QColor>();
        for (const auto back : {QPalette::Base, QPalette::AlternateBase}) {
            EXPECT_GE(ratio(quiet, shown.color(back)), forText);
            EXPECT_LT(ratio(quiet, shown.color(back)), ratio(shown.color(QPalette::Text), shown.color(back)) * 0.7);
        }
        window.hand([&] { form.close(); });
    });
    form.show();
}

TEST_P(Colours, a_theme_that_changes_under_a_window_is_followed) {
    Ficha form(desktop);
    form.Codigo.Text = "12";
    form.Nombre.Locked = true;
    QTimer::singleShot(50, qApp, [&] {
        qt::FormWindow& window = *qt::FormWindow::of(form);
        const auto base = [&](TextBox& box) {
            return qGray(window.viewOf(box).widget().palette().color(QPalette::Base).rgb());
        };
        const auto isDark = [&] {
            EXPECT_EQ(base(form.Nombre) < 80, qGray(window.grab().toImage().pixel(3, 3)) < 80);
            return base(form.Nombre) < 80;
        };
        EXPECT_EQ(isDark(), GetParam());
        QApplication::setPalette(GetParam() ? QPalette() : polished(darkTheme()));
        QCoreApplication::processEvents();
        EXPECT_EQ(isDark(), !GetParam());
        window.hand([&] { form.close(); });
    });
    form.show();
}

}  // namespace
}  // namespace FendaMaestros::contract
