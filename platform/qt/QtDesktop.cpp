#include "platform/qt/QtDesktop.h"

#include <QApplication>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFileDialog>
#include <QProcess>
#include <QTimer>
#include <QUrl>
#include <stdexcept>

#include "platform/qt/FormWindow.h"
#include "platform/qt/Hands.h"
#include "platform/qt/InputFilter.h"
#include "platform/qt/Look.h"
#include "platform/qt/Memory.h"
#include "platform/qt/MessageDialog.h"
#include "platform/qt/OnTop.h"
#include "platform/qt/Pdf.h"
#include "platform/qt/Printing.h"
#include "platform/qt/Silence.h"
#include "platform/qt/TypeAhead.h"

namespace FendaMaestros {

/// The application object, when the program has none of its own, and what hands its input to the forms.
struct QtDesktop::Program {
    int argc = 1;
    char name[6] = "fenda";
    char* argv[2] = {name, nullptr};
    std::unique_ptr<QApplication> own;
    qt::InputFilter filter;
    qt::TypeAhead typeAhead{filter};

    Program() {
        if (!QCoreApplication::instance()) own = std::make_unique<QApplication>(argc, argv);
        auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
        if (!application) throw std::runtime_error("Este programa se ha iniciado sin ventanas.");
        qt::applyLook(*application);
        application->installEventFilter(&filter);
        application->installEventFilter(&typeAhead);
    }
};

namespace {

constexpr int arrowAndHourglass = 13;

/// What new windows are shown over.
QWidget* topWindow() {
    if (QWidget* top = qt::OnTop::window()) return top;
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    return QApplication::activeWindow();
}

bool hasDisplay() {
    const QString platform = QGuiApplication::platformName();
    return platform != "offscreen" && platform != "minimal";
}

}  // namespace

QtDesktop::QtDesktop(Operator* person) : person_(person), program_(std::make_unique<Program>()) {}

QtDesktop::~QtDesktop() {
    if (pointer() == arrowAndHourglass) QGuiApplication::restoreOverrideCursor();
}

void QtDesktop::rememberIn(QSettings& settings) {
    if (!person_) memory_ = std::make_unique<qt::Memory>(settings);
}

void QtDesktop::runModal(Form& form) {
    qt::FormWindow::pullAll();
    qt::FormWindow window(form, topWindow());
    const qt::OnTop onTop(window);
    if (memory_) memory_->restore(form, window);
    if (!person_) program_->typeAhead.hold(window.parentWidget());
    window.show();
    window.activateWindow();
    window.hand([&] { form.activate(); });
    window.rethrowFailure();
    if (!person_) {
        window.wait();
        program_->typeAhead.handOver(window);
        if (memory_) memory_->keep(form, window);
        window.hide();
        program_->typeAhead.collect();
    } else if (form.isOpen()) {
        QCoreApplication::processEvents();
        person_->attend(form);
    }
    window.rethrowFailure();
}

Reply QtDesktop::showMessage(const Message& message) {
    std::optional<Reply> scripted;
    if (person_) scripted = person_->answer(message);
    qt::FormWindow::pullAll();
    const std::string title = message.title.empty() ? applicationTitle() : message.title;
    const Reply reply = qt::askInDialog(message, title, topWindow(), scripted, program_->typeAhead);
    qt::FormWindow* const below = activeForm() ? qt::FormWindow::of(*activeForm()) : nullptr;
    if (scripted && reply.key && below) qt::hands::releaseKeyLater(below->keyReceiver(), {reply.key, shift::None});
    return reply;
}

void QtDesktop::showPointer(int pointer) {
    if (pointer == arrowAndHourglass)
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

/// Keys and clicks wait until the running handler is done: a form drops gestures made meanwhile, and what is typed fast
/// would be lost.
bool QtDesktop::stopAsked() {
    qt::FormWindow::pullAll();
    const qt::InputFilter::StopWatch watch(program_->filter);
    QCoreApplication::processEvents();
    return (person_ && person_->stopsWork()) || watch.escapePressed();
}

bool QtDesktop::mailFile(const std::string& path) {
    if (person_) return true;
    return QProcess::startDetached("xdg-email", {"--attach", QString::fromStdString(path)});
}

void QtDesktop::processPending() {
    qt::FormWindow::pullAll();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtDesktop::wait(std::chrono::milliseconds time) {
    qt::FormWindow::pullAll();
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, [&loop] { loop.quit(); });
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

std::optional<std::string> QtDesktop::chooseSaveFile(const std::string& proposal, const std::string& kind) {
    if (person_) return person_->saveFile(proposal, kind);
    QFileDialog dialog(topWindow(), "Guardar como", {}, QString::fromStdString(kind));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.selectFile(QString::fromStdString(proposal));
    dialog.setDefaultSuffix(QString::fromStdString(proposal).section('.', -1));
    return askForFile(dialog);
}

std::optional<std::string> QtDesktop::chooseOpenFile(const std::string& kind) {
    if (person_) return person_->openFile(kind);
    QFileDialog dialog(topWindow(), "Abrir", {}, QString::fromStdString(kind) + ";;Todos los ficheros (*)");
    dialog.setFileMode(QFileDialog::ExistingFile);
    return askForFile(dialog);
}

std::optional<std::string> QtDesktop::askForFile(QFileDialog& dialog) {
    program_->typeAhead.release();
    qt::FormWindow::pullAll();
    if (memory_ && !memory_->lastFolder().isEmpty()) dialog.setDirectory(memory_->lastFolder());
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    const QString file = dialog.selectedFiles().constFirst();
    if (memory_) memory_->keepFolderOf(file);
    return file.toStdString();
}

std::optional<std::string> QtDesktop::chooseFolder(const std::string& title, const std::string& begin) {
    if (person_) return std::nullopt;
    program_->typeAhead.release();
    qt::FormWindow::pullAll();
    const QString folder =
        QFileDialog::getExistingDirectory(topWindow(), QString::fromStdString(title), QString::fromStdString(begin));
    return folder.isEmpty() ? std::nullopt : std::optional(folder.toStdString());
}

bool QtDesktop::openFile(const std::string& path) {
    if (person_) return true;
    const qt::Silence silence;
    return hasDisplay() && QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

bool QtDesktop::print(const PagedDocument& document) {
    program_->typeAhead.release();
    qt::FormWindow::pullAll();
    if (person_ || !hasDisplay()) throw std::runtime_error("No hay ninguna impresora.");
    return qt::printWithDialog(document, topWindow());
}

void QtDesktop::writePdf(const PagedDocument& document, const std::string& path) {
    FendaMaestros::writePdf(document, path);
}

}  // namespace FendaMaestros
