// Windows, from the module that the library loads for them.
#include <cstdlib>

#include "tests/capi/Host.h"

namespace FendaMaestros::tests {
namespace {

/// The place for windows is what a test says.
class Windows : public ::testing::Test {
protected:
    static void onPlatform(const char* platform) {
        for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) unsetenv(variable);
        if (platform) setenv("QT_QPA_PLATFORM", platform, 1);
    }
};

TEST_F(Windows, AreNotThereWithoutADisplay) {
    onPlatform(nullptr);
    fenda_desktop* desktop = nullptr;
    EXPECT_EQ(fenda_desktop_windows(&desktop), FENDA_NO_WINDOWS);
    EXPECT_EQ(lastError(), "No hay pantalla donde abrir ventanas.");
    ASSERT_OK(fenda_desktop_script("", false, &desktop)) << "all else works on";
    EXPECT_OK(fenda_desktop_close(desktop));
}

TEST_F(Windows, ShowScreensToScriptsAndPeople) {
    onPlatform("offscreen");
    fenda_desktop* desktop = nullptr;
    ASSERT_OK(fenda_desktop_script("escribir 7\nresponder No\ntecla Intro\ncerrar\n", true, &desktop));
    bool released = false;
    fenda_session* const session = openOn(fenda_lent_company(&released));
    fenda_object* object = nullptr;
    ASSERT_OK(fenda_object_new(desktop, nullptr, &object));
    ASSERT_OK(fenda_set_MyBd(object, session));
    EXPECT_OK(fenda_jDepartamentos(object));
    EXPECT_OK(fenda_object_close(object));
    EXPECT_OK(fenda_desktop_close(desktop));

    // For a person, and again: they begin anew.
    ASSERT_OK(fenda_desktop_windows(&desktop));
    ASSERT_OK(fenda_object_new(desktop, nullptr, &object));
    bool valid = true;
    EXPECT_EQ(fenda_msValidaCuentaPlan(object, "430", 2026, false, &valid), FENDA_OTHER) << "without a session";
    EXPECT_OK(fenda_object_close(object));
    EXPECT_OK(fenda_desktop_close(desktop));
    EXPECT_OK(fenda_session_close(session));
    EXPECT_TRUE(released);
}

TEST(Servers, ThatCannotBeReachedAreLost) {
    fenda_session* session = nullptr;
    EXPECT_EQ(fenda_session_open_server("host=/no/hay dbname=conta", nullptr, &session), FENDA_LOST);
    EXPECT_NE(lastError(), "");
}

}  // namespace
}  // namespace FendaMaestros::tests
