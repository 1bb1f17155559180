#include "SessionContract.h"

namespace FendaMaestros::tests {
namespace {

class ScreenTexts : public SessionContract {};

TEST_P(ScreenTexts, GiveTheRowsOfTheCompany) {
    insertCompany();
    for (const auto& [sql, rows] : screenTexts()) {
        SCOPED_TRACE(sql);
        try {
            EXPECT_EQ(read(sql)->RecordCount(), rows);
        } catch (const ErrorBd& error) {
            ADD_FAILURE() << error.what() << " (" << error.nativeText() << ")";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, ScreenTexts, ::testing::ValuesIn(backends()), nameOf);

}  // namespace
}  // namespace FendaMaestros::tests
