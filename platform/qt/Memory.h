#pragma once

#include <QSettings>
#include <QString>
#include <optional>

#include "toolkit/Controls.h"

class QWidget;

namespace FendaMaestros {
class Form;
}

namespace FendaMaestros::qt {

/// What a person has arranged and finds again the next time: where windows stand and how large they are, how wide
/// columns have been dragged, and the folder of the last file.
class Memory {
public:
    /// `settings` must outlive it. It is the current one as long as it lives.
    explicit Memory(QSettings& settings);
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;
    ~Memory();

    /// Null when nothing is remembered.
    static Memory* current();

    /// The window of a form that has been left before goes where it was, as far as the screen has room there.
    void restore(const Form& form, QWidget& window) const;
    void keep(const Form& form, const QWidget& window);
    /// In pixels; nothing for a column that has never been dragged. Columns are told apart by their captions.
    std::optional<int> columnWidth(const Form& form, const Table& table, const TableColumn& column) const;
    void keepColumnWidth(const Form& form, const Table& table, const TableColumn& column, int width);
    /// "" when there is none.
    QString lastFolder() const;
    /// That of a file.
    void keepFolderOf(const QString& file);

private:
    QSettings& settings_;
};

}  // namespace FendaMaestros::qt
