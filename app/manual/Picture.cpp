#include "app/manual/Picture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCryptographicHash>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "app/guion/GuionError.h"
#include "app/guion/GuionPrinter.h"
#include "app/window/MainWindow.h"
#include "platform/qt/FormWindow.h"

namespace FendaMaestros::manual {

namespace {

constexpr int titleHeight = 28;
const QString sceneMark = "Escena";
const QString textMark = "Ventana";

/// Short enough to stand in the file as it is, for any tool to read.
QString markOf(const std::string& text) {
    return QCryptographicHash::hash(QByteArray::fromStdString(text), QCryptographicHash::Sha256).toHex().first(32);
}

/// Windows without a display have no frame: one is painted, the same on every machine.
QImage framed(const QPixmap& content, const QString& title) {
    QImage image(content.size() + QSize(2, titleHeight + 1), QImage::Format_RGB32);
    image.fill(QColor(0x3b4a5a));
    QPainter painter(&image);
    QFont font = QApplication::font();
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(0, 0, image.width(), titleHeight), Qt::AlignCenter, title);
    painter.drawPixmap(1, titleHeight, content);
    return image;
}

QMenu& menuNamed(const MainWindow& window, const QString& caption) {
    for (QAction* action : window.menuBar()->actions())
        if (action->menu() && action->text().remove('&') == caption) return *action->menu();
    guion::fail("la ventana principal no tiene el menú " + guion::literal(caption.toStdString()));
}

void tell(std::ostream& out, const QMenu& menu) {
    for (const QAction* action : menu.actions())
        out << "  " << action->text().toStdString() << " | " << action->shortcut().toString().toStdString()
            << (action->isEnabled() ? "" : " inactivo") << (action->isChecked() ? " marcado" : "") << "\n";
}

std::string textOf(const MainWindow& window, const QString& openMenu) {
    std::ostringstream out;
    out << window.windowTitle().toStdString() << "\n";
    for (const QAction* action : window.menuBar()->actions()) out << action->text().toStdString() << "\n";
    if (!openMenu.isEmpty()) tell(out, menuNamed(window, openMenu));
    for (const QWidget* widget : window.centralWidget()->findChildren<QWidget*>()) {
        if (!widget->isVisible()) continue;
        if (const auto* label = qobject_cast<const QLabel*>(widget)) out << label->text().toStdString() << "\n";
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            out << button->text().toStdString() << (button->isEnabled() ? "" : " inactivo") << "\n";
    }
    return out.str();
}

}  // namespace

Picture pictureOf(const Form& form) {
    qt::FormWindow& window = *qt::FormWindow::of(form);
    window.pull();
    QCoreApplication::processEvents();
    std::ostringstream says;
    guion::printScreen(says, form, 0, {.rows = std::numeric_limits<int>::max()});
    return {framed(window.grab(), window.windowTitle()), says.str()};
}

Picture pictureOf(MainWindow& window, const QString& menu) {
    window.show();
    QCoreApplication::processEvents();
    QPixmap content = window.grab();
    if (!menu.isEmpty()) {
        QMenu& open = menuNamed(window, menu);
        const QRect entry = window.menuBar()->actionGeometry(open.menuAction());
        QPainter(&content).drawPixmap(window.menuBar()->mapTo(&window, entry.bottomLeft()), open.grab());
    }
    return {framed(content, window.windowTitle()), textOf(window, menu)};
}

void write(const Picture& picture, const std::string& scene, const QString& path) {
    if (objection(picture, scene, path).isEmpty() &&
        QImage(path).convertToFormat(QImage::Format_RGB32) == picture.image)
        return;
    QImage marked = picture.image;
    marked.setText(sceneMark, markOf(scene));
    marked.setText(textMark, markOf(picture.says));
    if (!marked.save(path, "PNG")) throw std::runtime_error("No se ha podido escribir " + path.toStdString() + ".");
}

QString objection(const Picture& picture, const std::string& scene, const QString& path) {
    if (!QFileInfo::exists(path)) return "falta la imagen";
    const QImage file(path);
    if (file.isNull()) return "la imagen no se puede leer";
    if (file.text(sceneMark) != markOf(scene)) return "la escena ha cambiado desde que se hizo la imagen";
    if (file.text(textMark) != markOf(picture.says)) return "la pantalla ya no es la de la imagen";
    return {};
}

}  // namespace FendaMaestros::manual
