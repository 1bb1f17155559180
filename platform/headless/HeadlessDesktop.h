#pragma once

#include <functional>
#include <string>
#include <vector>

#include "toolkit/Desktop.h"
#include "toolkit/Operator.h"

namespace FendaMaestros {

/// A desktop without a display: an operator works on the forms, and every question goes to it. It adds no answer of its
/// own, so that whoever plays the person decides what is unexpected.
class HeadlessDesktop final : public Desktop {
public:
    using PdfWriter = std::function<void(const PagedDocument&, const std::string& path)>;

    /// `person` must outlive the desktop. Without a writer, writing a PDF fails with a message.
    explicit HeadlessDesktop(Operator& person, PdfWriter pdf = {}) : person_(person), pdf_(std::move(pdf)) {}

    void processPending() override {}
    /// Nobody looks on: the clock goes ahead, and other programs get a hundredth of a second at most.
    void wait(std::chrono::milliseconds time) override;
    bool stopAsked() override { return person_.stopsWork(); }
    std::optional<std::string> chooseSaveFile(const std::string& proposal, const std::string& kind) override {
        return person_.saveFile(proposal, kind);
    }
    std::optional<std::string> chooseOpenFile(const std::string& kind) override { return person_.openFile(kind); }
    bool openFile(const std::string& path) override;
    bool mailFile(const std::string& path) override;
    bool print(const PagedDocument&) override;
    void writePdf(const PagedDocument& document, const std::string& path) override;

    /// What mailFile() was asked for, in order.
    const std::vector<std::string>& mailedFiles() const { return mailedFiles_; }
    /// What openFile() was asked for, in order.
    const std::vector<std::string>& openedFiles() const { return openedFiles_; }

protected:
    void runModal(Form& form) override;
    Reply showMessage(const Message& message) override { return person_.answer(message); }
    void showPointer(int) override {}

private:
    Operator& person_;
    PdfWriter pdf_;
    std::vector<std::string> openedFiles_, mailedFiles_;
};

}  // namespace FendaMaestros
