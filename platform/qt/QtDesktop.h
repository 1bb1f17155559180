#pragma once

#include <memory>

#include "toolkit/Desktop.h"
#include "toolkit/Operator.h"

class QFileDialog;
class QSettings;

namespace FendaMaestros {

namespace qt {
class Memory;
}

/// The desktop as real windows. Makes the program's QApplication unless there is one already; one at a time.
class QtDesktop : public Desktop {
public:
    /// With an operator (which must outlive the desktop) the windows are shown, and it works on them in a person's
    /// place. Throws std::runtime_error, in Spanish, when the program has begun without windows.
    explicit QtDesktop(Operator* person = nullptr);
    ~QtDesktop() override;

    /// From now on windows open where and as large as they were left, columns are as wide as they were dragged, and
    /// files are asked for in the folder of the last one; `settings`, which must outlive the desktop, keeps that. An
    /// operator finds and leaves nothing there.
    void rememberIn(QSettings& settings);

    void processPending() override;
    bool stopAsked() override;
    bool mailFile(const std::string& path) override;
    void wait(std::chrono::milliseconds time) override;
    std::optional<std::string> chooseSaveFile(const std::string& proposal, const std::string& kind) override;
    std::optional<std::string> chooseOpenFile(const std::string& kind) override;
    std::optional<std::string> chooseFolder(const std::string& title, const std::string& begin) override;
    bool openFile(const std::string& path) override;
    bool print(const PagedDocument& document) override;
    void writePdf(const PagedDocument& document, const std::string& path) override;

protected:
    void runModal(Form& form) override;
    Reply showMessage(const Message& message) override;
    void showPointer(int pointer) override;

private:
    struct Program;

    /// Shows the dialog, in the folder of the last file, and remembers that of the file chosen.
    std::optional<std::string> askForFile(QFileDialog& dialog);

    Operator* person_;
    std::unique_ptr<Program> program_;
    std::unique_ptr<qt::Memory> memory_;
};

}  // namespace FendaMaestros
