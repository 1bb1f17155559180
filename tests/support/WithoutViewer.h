#pragma once

#include <utility>

#include "toolkit/Desktop.h"
#include "toolkit/Form.h"
#include "toolkit/Operator.h"

namespace FendaMaestros::testing {

/// A desktop that has no program to open or to mail a file with.
class WithoutViewer final : public Desktop {
public:
    explicit WithoutViewer(Operator& person) : person_(person) {}

    void processPending() override {}
    bool stopAsked() override { return false; }
    std::optional<std::string> chooseSaveFile(const std::string& proposal, const std::string& kind) override {
        return person_.saveFile(proposal, kind);
    }
    bool openFile(const std::string&) override { return false; }
    bool mailFile(const std::string&) override { return false; }
    bool print(const PagedDocument&) override { return false; }
    void writePdf(const PagedDocument&, const std::string&) override {}
    void wait(std::chrono::milliseconds) override {}

protected:
    void runModal(Form& form) override {
        form.activate();
        person_.attend(form);
    }
    Reply showMessage(const Message& message) override { return person_.answer(message); }
    void showPointer(int) override {}

private:
    Operator& person_;
};

}  // namespace FendaMaestros::testing
