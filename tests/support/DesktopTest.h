#pragma once

#include <gtest/gtest.h>

#include "tests/support/ScriptedPerson.h"
#include "ui/ExternalComponents.h"

namespace FendaMaestros::testing {

/// A person at a desktop without a display, who must come to do, say and answer all that was prepared.
class DesktopTest : public ::testing::Test {
protected:
    explicit DesktopTest(HeadlessDesktop::PdfWriter pdf = {}) : desktop(person, std::move(pdf)) {}
    void TearDown() override {
        EXPECT_TRUE(person.visits.empty()) << person.visits.size() << " visits were never made";
        EXPECT_TRUE(person.answers.empty()) << person.answers.size() << " answers were never asked for";
        EXPECT_TRUE(person.files.empty()) << person.files.size() << " files were never asked for";
    }

    /// What the next screen that opens is for.
    void onNextScreen(ScriptedPerson::Visit visit) { person.visits.push_back(std::move(visit)); }

    ScriptedPerson person;
    HeadlessDesktop desktop;
    ComponentRegistry components;
};

}  // namespace FendaMaestros::testing
