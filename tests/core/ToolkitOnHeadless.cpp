#include "platform/headless/HeadlessDesktop.h"
#include "platform/headless/HeadlessGestures.h"
#include "tests/support/ContractForm.h"

namespace FendaMaestros::contract {

struct Platform {
    static std::unique_ptr<Desktop> desktop(Operator& person) { return std::make_unique<HeadlessDesktop>(person); }
    static std::unique_ptr<Gestures> gestures() { return std::make_unique<HeadlessGestures>(); }

    // Nothing is shown but the controls themselves.
    static std::string seen(Form&, Label& label) { return label.Caption; }
    static std::string seen(Form&, TextBox& box) { return box.Text; }
    static std::string seen(Form&, ComboBox& combo) { return combo.Text(); }
    static bool seen(Form&, CheckBox& check) { return check.Value(); }
    static int seen(Form&, Table& table) { return table.currentRow(); }
    static std::string seen(Form&, Table& table, int row, int column) { return table.cellText(row, column); }
    static std::string seen(Form&, ProgressBar& progress) {
        return std::to_string(progress.Value) + " de " + std::to_string(progress.Max);
    }
};

}  // namespace FendaMaestros::contract

#include "tests/support/ToolkitContract.h"

namespace FendaMaestros::contract {

TEST(HeadlessClock, GoesAheadWithoutLettingAnybodyWait) {
    Person person;
    HeadlessDesktop desktop(person);
    const auto before = desktop.now();
    const auto start = std::chrono::steady_clock::now();
    desktop.wait(std::chrono::hours(1));
    EXPECT_GE(desktop.now() - before, std::chrono::hours(1));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(1));
}

}  // namespace FendaMaestros::contract
