#include <QApplication>

#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtGestures.h"

namespace FendaMaestros::contract {

struct Platform {
    static std::unique_ptr<Desktop> desktop(Operator& person) { return std::make_unique<QtDesktop>(&person); }
    static std::unique_ptr<Gestures> gestures() { return std::make_unique<QtGestures>(); }
};

}  // namespace FendaMaestros::contract

#include "tests/support/ToolkitContract.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
