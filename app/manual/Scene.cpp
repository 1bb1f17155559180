#include "app/manual/Scene.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "app/Composition.h"
#include "app/guion/GuionOperator.h"
#include "app/guion/GuionParser.h"
#include "app/guion/GuionProgram.h"
#include "app/guion/TemporaryFolder.h"
#include "app/window/MainWindow.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtGestures.h"

namespace FendaMaestros::manual {

namespace {

namespace fs = std::filesystem;

class SameDay final : public QtDesktop {
public:
    using QtDesktop::QtDesktop;
    Date today() const override { return {.year = 2026, .month = 3, .day = 2}; }
};

/// Where the companies are, for who looks at a picture.
const Place shownPlace{Place::Kind::Folder, "/home/ana/.local/share/fenda"};

/// A folder of its own to work in, with copies of the examples.
class WorkingFolder {
public:
    explicit WorkingFolder(const fs::path& examples) : before_(fs::current_path()) {
        if (fs::exists(examples)) fs::copy(examples, folder_.path());
        fs::current_path(folder_.path());
    }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;
    ~WorkingFolder() {
        std::error_code ignored;
        fs::current_path(before_, ignored);
    }

    Place place(const std::string& name) const { return {Place::Kind::Folder, (folder_.path() / name).string()}; }

private:
    fs::path before_;
    TemporaryFolder folder_;
};

/// One scene being played: a script's program, the main window beside it, and the camera.
class Studio {
public:
    Studio(const std::string& scene, const fs::path& examples);

    Picture play();

private:
    /// A command of a scene or of any script.
    Command read(int line, std::string_view text);
    void chooseFromMenus(const std::string& caption);
    void startFirst();
    void photograph(const std::string& menu);
    MainWindow& openWindow();
    MainWindow& makeWindow(const Place& place);

    WorkingFolder folder_;
    Place place_ = folder_.place("datos");
    std::ostringstream unread_;
    std::optional<GuionOperator> person_;
    std::optional<GuionProgram> program_;
    LastUsed lastUsed_;
    std::unique_ptr<MainWindow> window_;
    std::optional<Picture> picture_;
};

Studio::Studio(const std::string& scene, const fs::path& examples) : folder_(examples) {
    std::istringstream lines(scene);
    person_.emplace(parseGuion(lines, [this](int line, std::string_view text) { return read(line, text); }), unread_);
    companiesAt(place_)->createDemonstration();
    GuionDesktop desktop{.display = nullptr,
                         .desktop = std::make_unique<SameDay>(&*person_),
                         .gestures = std::make_unique<QtGestures>(),
                         .pointer = [] { return 0; }};
    program_.emplace(std::move(desktop), TraceSink(), place_);
    program_->start({});
}

Picture Studio::play() {
    person_->run(*program_);
    if (!picture_) guion::fail("la escena no tiene ninguna foto");
    return std::move(*picture_);
}

Command Studio::read(int line, std::string_view text) {
    Words words(line, text);
    Command command{.line = line, .text = std::string(text), .acts = true};
    if (words.take("menu")) {
        command.run = [this, caption = words.text("el texto del menú")](GuionOperator&) { chooseFromMenus(caption); };
    } else if (words.take("primer")) {
        if (!words.take("inicio")) words.fail("se escribe: primer inicio");
        command.run = [this](GuionOperator&) { startFirst(); };
    } else if (words.take("foto")) {
        const std::string menu = words.take("menu") ? words.text("el texto del menú") : "";
        command.run = [this, menu](GuionOperator&) { photograph(menu); };
    } else {
        return parseCommand(line, text);
    }
    words.end();
    return command;
}

MainWindow& Studio::makeWindow(const Place& place) {
    const auto reach = [](const Place& where) { return CompanyPlace{where, companiesAt(where)}; };
    window_ = std::make_unique<MainWindow>(program_->desktop(), CompanyPlace{shownPlace, companiesAt(place)}, reach,
                                           lastUsed_);
    return *window_;
}

/// The main window on the company that the script works with.
MainWindow& Studio::openWindow() {
    if (window_) return *window_;
    const std::string name = program_->session()->Parametros().Item("Par_Nombre").Value.text();
    makeWindow(place_).openIn({shownPlace, companiesAt(place_)}, name);
    return *window_;
}

void Studio::chooseFromMenus(const std::string& caption) {
    const QString wanted = QString::fromStdString(caption);
    for (const QAction* menu : openWindow().menuBar()->actions())
        for (QAction* entry : menu->menu()->actions())
            if (entry->text().remove('&') == wanted) return entry->trigger();
    guion::fail("no hay ningún menú que diga " + guion::literal(caption));
}

void Studio::startFirst() { makeWindow(folder_.place("vacia")).begin(); }

void Studio::photograph(const std::string& menu) {
    if (picture_) guion::fail("una escena tiene una sola foto");
    const Form* const screen = program_->desktop().activeForm();
    picture_ = screen ? pictureOf(*screen) : pictureOf(openWindow(), QString::fromStdString(menu));
}

}  // namespace

Scene::Scene(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("No se puede leer " + file.string() + ".");
    text_.assign(std::istreambuf_iterator<char>(stream), {});
}

Picture Scene::play(const fs::path& examples) const { return Studio(text_, examples).play(); }

}  // namespace FendaMaestros::manual
