#include "platform/qt/Memory.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QWidget>
#include <typeinfo>

#include "toolkit/Form.h"

namespace FendaMaestros::qt {

namespace {

Memory* currentMemory = nullptr;

constexpr const char* folderKey = "ficheros/carpeta";

/// The same for all windows of one kind.
QString kindOf(const Form& form) { return typeid(form).name(); }

QString windowKey(const Form& form) { return "ventanas/" + kindOf(form); }

/// Without the mark of the order at the end of a caption, which may also hold what divides keys.
QString columnKey(const Form& form, const Table& table, const TableColumn& column) {
    static const QRegularExpression mark("[^\\p{L}\\p{N}.)]+$");
    const QByteArray caption = QString::fromStdString(column.Caption).remove(mark).toUtf8().toPercentEncoding();
    return "columnas/" + kindOf(form) + "/" + QString::fromStdString(table.Name) + "/" + caption;
}

}  // namespace

Memory::Memory(QSettings& settings) : settings_(settings) { currentMemory = this; }

Memory::~Memory() { currentMemory = nullptr; }

Memory* Memory::current() { return currentMemory; }

void Memory::restore(const Form& form, QWidget& window) const {
    const QByteArray geometry = settings_.value(windowKey(form)).toByteArray();
    if (!geometry.isEmpty()) window.restoreGeometry(geometry);
}

void Memory::keep(const Form& form, const QWidget& window) {
    settings_.setValue(windowKey(form), window.saveGeometry());
}

std::optional<int> Memory::columnWidth(const Form& form, const Table& table, const TableColumn& column) const {
    const int width = settings_.value(columnKey(form, table, column)).toInt();
    return width > 0 ? std::optional(width) : std::nullopt;
}

void Memory::keepColumnWidth(const Form& form, const Table& table, const TableColumn& column, int width) {
    if (width > 0) settings_.setValue(columnKey(form, table, column), width);
}

QString Memory::lastFolder() const {
    const QString folder = settings_.value(folderKey).toString();
    return QFileInfo(folder).isDir() ? folder : QString();
}

void Memory::keepFolderOf(const QString& file) { settings_.setValue(folderKey, QFileInfo(file).absolutePath()); }

}  // namespace FendaMaestros::qt
