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

/// The program's own windows and the camera.
class Studio {
public:
    explicit Studio(const WorkingFolder& folder) : folder_(folder) {}

    /// A command of a scene or of any script.
    Command read(int line, std::string_view text);
    void chooseFromMenus(GuionHost& host, const std::string& caption);
    void startFirst(GuionHost& host);
    void photograph(GuionHost& host, const std::string& menu);

    std::optional<Picture> picture;

private:
    MainWindow& openWindow(GuionHost& host);
    MainWindow& makeWindow(GuionHost& host, const Place& place);

    const WorkingFolder& folder_;
    LastUsed lastUsed_;
    std::unique_ptr<MainWindow> window_;
};

Command Studio::read(int line, std::string_view text) {
    Words words(line, text);
    Command command{.line = line, .text = std::string(text), .acts = true};
    if (words.take("menu")) {
        command.run = [this, caption = words.text("el texto del menú")](GuionOperator& person) {
            chooseFromMenus(person.host(), caption);
        };
    } else if (words.take("primer")) {
        if (!words.take("inicio")) words.fail("se escribe: primer inicio");
        command.run = [this](GuionOperator& person) { startFirst(person.host()); };
    } else if (words.take("foto")) {
        const std::string menu = words.take("menu") ? words.text("el texto del menú") : "";
        command.run = [this, menu](GuionOperator& person) { photograph(person.host(), menu); };
    } else {
        return parseCommand(line, text);
    }
    words.end();
    return command;
}

MainWindow& Studio::makeWindow(GuionHost& host, const Place& place) {
    const auto reach = [](const Place& where) { return CompanyPlace{where, companiesAt(where)}; };
    window_ =
        std::make_unique<MainWindow>(host.desktop(), CompanyPlace{shownPlace, companiesAt(place)}, reach, lastUsed_);
    return *window_;
}

/// The main window on the company that the script works with.
MainWindow& Studio::openWindow(GuionHost& host) {
    if (window_) return *window_;
    const Place place = folder_.place("datos");
    MainWindow& window = makeWindow(host, place);
    const std::string name = host.session()->Parametros().Item("Par_Nombre").Value.text();
    window.openIn({shownPlace, companiesAt(place)}, name);
    return window;
}

void Studio::chooseFromMenus(GuionHost& host, const std::string& caption) {
    const QString wanted = QString::fromStdString(caption);
    for (const QAction* menu : openWindow(host).menuBar()->actions())
        for (QAction* entry : menu->menu()->actions())
            if (entry->text().remove('&') == wanted) return entry->trigger();
    guion::fail("no hay ningún menú que diga " + guion::literal(caption));
}

void Studio::startFirst(GuionHost& host) { makeWindow(host, folder_.place("vacia")).begin(); }

void Studio::photograph(GuionHost& host, const std::string& menu) {
    if (picture) guion::fail("una escena tiene una sola foto");
    const Form* const screen = host.desktop().activeForm();
    picture = screen ? pictureOf(*screen) : pictureOf(openWindow(host), QString::fromStdString(menu));
}

}  // namespace

Scene::Scene(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("No se puede leer " + file.string() + ".");
    text_.assign(std::istreambuf_iterator<char>(stream), {});
}

Picture Scene::play(const fs::path& examples) const {
    const WorkingFolder folder(examples);
    Studio studio(folder);
    std::istringstream lines(text_);
    std::ostringstream unread;
    GuionOperator person(parseGuion(lines, [&](int line, std::string_view text) { return studio.read(line, text); }),
                         unread);
    const Place place = folder.place("datos");
    companiesAt(place)->createDemonstration();
    GuionProgram program({.display = nullptr,
                          .desktop = std::make_unique<SameDay>(&person),
                          .gestures = std::make_unique<QtGestures>(),
                          .pointer = [] { return 0; }},
                         {}, place);
    program.start({});
    person.run(program);
    if (!studio.picture) guion::fail("la escena no tiene ninguna foto");
    return std::move(*studio.picture);
}

}  // namespace FendaMaestros::manual
