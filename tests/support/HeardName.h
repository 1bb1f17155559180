#pragma once

#include <QAccessible>
#include <QComboBox>
#include <QWidget>
#include <string>

namespace FendaMaestros {

/// What the desktop's accessibility interface calls a widget; a list, whose name may be its item, by its label.
inline std::string heardName(QWidget& widget) {
    const QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&widget);
    if (qobject_cast<QComboBox*>(&widget)) {
        const auto labels = heard->relations(QAccessible::Label);
        if (labels.isEmpty()) return {};
        heard = labels.constFirst().first;
    }
    return heard->text(QAccessible::Name).toStdString();
}

}  // namespace FendaMaestros
