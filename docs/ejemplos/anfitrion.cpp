// A host in twenty lines: a real desktop, a data folder, and the component's screens.
#include <iostream>

#include "component/FendaMaes.h"
#include "platform/qt/QtDesktop.h"
#include "platform/sqlite/DataFolder.h"

using namespace FendaMaestros;

int main(int argc, char** argv) try {
    if (argc != 3) throw std::runtime_error("Uso: anfitrion LUGAR EMPRESA");
    QtDesktop desktop;             // windows, messages, printing
    ComponentRegistry components;  // spreadsheets and reports, when the host has them
    const auto session = sqlite::DataFolder(argv[1]).openCompany(argv[2]);

    FendaMaes fenda(desktop, components);
    fenda.MyBd = session.get();
    fenda.MyBdorigen = session.get();  // where accounts are saved
    fenda.jCentros();                  // returns when the clerk has closed the screen

    std::string group = "430";                                    // becomes the next free code
    std::cout << fenda.CrearNuevaCuenta(group, 1, true) << '\n';  // the code, once named and saved

    std::string identifier = "12.345.678-z";
    std::cout << fenda.FnVerificarCif(identifier) << ' ' << identifier << '\n';  // 1 12345678Z
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
