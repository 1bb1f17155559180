#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QTableView>

#include "platform/qt/FormWindow.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtGestures.h"

namespace FendaMaestros::contract {

struct Platform {
    static std::unique_ptr<Desktop> desktop(Operator& person) { return std::make_unique<QtDesktop>(&person); }
    static std::unique_ptr<Gestures> gestures() { return std::make_unique<QtGestures>(); }

    static std::string seen(Form& form, Label& label) { return widget<QLabel>(form, label).text().toStdString(); }
    static std::string seen(Form& form, TextBox& box) { return widget<QLineEdit>(form, box).text().toStdString(); }
    static std::string seen(Form& form, ComboBox& combo) {
        return widget<QComboBox>(form, combo).currentText().toStdString();
    }
    static bool seen(Form& form, CheckBox& check) { return widget<QCheckBox>(form, check).isChecked(); }
    static int seen(Form& form, Table& table) {
        const QModelIndexList rows = widget<QTableView>(form, table).selectionModel()->selectedRows();
        return rows.isEmpty() ? -1 : rows.constFirst().row();
    }
    static std::string seen(Form& form, Table& table, int row, int column) {
        const QAbstractItemModel& model = *widget<QTableView>(form, table).model();
        return model.data(model.index(row, column)).toString().toStdString();
    }
    static std::string seen(Form& form, ProgressBar& progress) {
        return widget<QProgressBar>(form, progress).text().toStdString();
    }

private:
    template <class Widget>
    static Widget& widget(Form& form, Control& control) {
        return *qobject_cast<Widget*>(&qt::FormWindow::of(form)->viewOf(control).keyWidget());
    }
};

}  // namespace FendaMaestros::contract

#include "tests/support/ToolkitContract.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
