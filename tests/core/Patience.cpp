#include "tests/support/DesktopTest.h"
#include "ui/Transaction.h"

namespace FendaMaestros::testing {
namespace {

class Patience : public DesktopTest {
protected:
    int tries = 0;

    /// A save that takes its time, and is turned away so many times.
    std::string saveAfter(int refusals, std::chrono::milliseconds time, ErrorBd::Kind kind = ErrorBd::Kind::Busy) {
        return withPatience(desktop, [&] {
            desktop.letPass(time);
            if (tries++ < refusals) throw ErrorBd(kind, "ocupada");
            return std::string("grabada");
        });
    }
};

TEST_F(Patience, SavesAgainWhileTheDataIsBusyForFiveSecondsAtMost) {
    using namespace std::chrono_literals;
    EXPECT_EQ(saveAfter(3, 10ms), "grabada");
    EXPECT_EQ(tries, 4);
    tries = 0;
    EXPECT_THROW(saveAfter(100, 2400ms), ErrorBd);
    EXPECT_EQ(tries, 3) << "begun within the five seconds";
    tries = 0;
    EXPECT_THROW(saveAfter(1, 0ms, ErrorBd::Kind::Other), ErrorBd);
    EXPECT_EQ(tries, 1);
}

}  // namespace
}  // namespace FendaMaestros::testing
