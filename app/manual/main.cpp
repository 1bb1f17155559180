// Makes the pictures of the user manual from its scenes, or says which are not those of their scene and screen:
//   fenda_pictures hacer|comprobar MANUAL
// MANUAL is the folder with escenas/NAME.escena, imagenes/NAME.png and ejemplos/.

#include <QApplication>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <stdexcept>
#include <vector>

#include "app/guion/GuionError.h"
#include "app/guion/TemporaryFolder.h"
#include "app/manual/Scene.h"
#include "app/window/Display.h"

namespace {

using namespace FendaMaestros;
namespace fs = std::filesystem;

/// A display of its own, with nobody in front of it and nothing of the person who makes the pictures, on which the
/// largest window with its frame is 1024x600.
std::shared_ptr<void> openStudioDisplay(const fs::path& folder) {
    const fs::path screen = folder / "pantalla.json";
    std::ofstream(screen) << R"({"screens": [{"name": "Manual", "x": 0, "y": 0, "width": 1040, "height": 634}]})";
    qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString("offscreen:configfile=" + screen.string()));
    qputenv("HOME", "/home/ana");
    std::shared_ptr<void> display = window::openDisplay();
    QApplication::setCursorFlashTime(0);
    return display;
}

std::vector<fs::path> filesOf(const fs::path& folder, const std::string& extension) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == extension) files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

/// What is wrong with one scene or its picture; "" when nothing is, which making the picture sees to.
std::string treat(const fs::path& file, const fs::path& manual, bool make) {
    const QString path = QString::fromStdString(manual / "imagenes" / file.stem()) + ".png";
    const manual::Scene scene(file);
    try {
        const manual::Picture picture = scene.play(manual / "ejemplos");
        if (make) manual::write(picture, scene.text(), path);
        return manual::objection(picture, scene.text(), path).toStdString();
    } catch (const GuionError& error) {
        return "línea " + std::to_string(error.line) + ": " + error.reason;
    }
}

/// Pictures that no scene makes any more.
void treatLeftovers(const fs::path& manual, bool make, const auto& complain) {
    for (const fs::path& picture : filesOf(manual / "imagenes", ".png")) {
        if (fs::exists(manual / "escenas" / (picture.stem().string() + ".escena"))) continue;
        if (make)
            fs::remove(picture);
        else
            complain(picture.filename().string(), "ninguna escena hace esta imagen");
    }
}

int run(const std::string& verb, const fs::path& manual) {
    const bool make = verb == "hacer";
    if (!make && verb != "comprobar") throw std::invalid_argument("Se pide hacer o comprobar, y no " + verb + ".");
    const TemporaryFolder folder;
    const std::shared_ptr<void> display = openStudioDisplay(folder.path());
    int faults = 0;
    const auto complain = [&faults](const std::string& what, const std::string& why) {
        std::cerr << what << ": " << why << "\n";
        ++faults;
    };
    const std::vector<fs::path> scenes = filesOf(manual / "escenas", ".escena");
    if (scenes.empty()) throw std::runtime_error("No hay ninguna escena.");
    for (const fs::path& scene : scenes)
        if (const std::string wrong = treat(scene, manual, make); !wrong.empty())
            complain(scene.filename().string(), wrong);
    treatLeftovers(manual, make, complain);
    if (faults > 0 && !make) std::cerr << "Las imágenes se hacen de nuevo con: ./dev manual\n";
    return faults > 0 ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc != 3) throw std::invalid_argument("Uso: fenda_pictures hacer|comprobar MANUAL");
        return run(argv[1], fs::absolute(argv[2]));
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 2;
    }
}
