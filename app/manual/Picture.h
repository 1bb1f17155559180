#pragma once

#include <QImage>
#include <QString>
#include <QWidget>
#include <string>

namespace FendaMaestros {

class Form;
class MainWindow;

namespace manual {

/// A window as a reader of the manual sees it, and what it says: what a picture shows, whatever fonts a machine has.
struct Picture {
    QImage image;
    /// Names, texts and states of all that is visible, in order.
    std::string says;
};

/// A screen that is shown on a Qt desktop, below a title bar.
Picture pictureOf(const Form& form);
/// The main window; with the menu of this caption open unless it is empty. Throws GuionError when it has no such menu.
Picture pictureOf(MainWindow& window, const QString& menu);

/// Writes the picture with the marks of its scene's text and of what it says. A file that already shows just that is
/// left as it is.
void write(const Picture& picture, const std::string& scene, const QString& path);
/// What is wrong with the file as the picture of this scene, in Spanish; "" when nothing is.
QString objection(const Picture& picture, const std::string& scene, const QString& path);

}  // namespace manual

}  // namespace FendaMaestros
