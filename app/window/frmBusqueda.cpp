#include "app/window/frmBusqueda.h"

namespace FendaMaestros {

frmBusqueda::frmBusqueda(std::string caption, std::vector<Search> searches) : searches_(std::move(searches)) {
    Caption = sTituloVentana = std::move(caption);
    std::vector<Control*> commands;
    for (const Search& search : searches_) {
        auto& button = *cmdBuscar_.emplace_back(std::make_unique<CommandButton>(search.caption));
        button.Click = [this, &search] { lblResultado.Caption = search.run(); };
        add(button, "cmdBuscar(" + std::to_string(commands.size()) + ")");
        commands.push_back(&button);
    }
    add(lblResultado, "lblResultado");
    add(cmdSalir, "cmdSalir");
    cmdSalir.Click = [this] { unload(); };
    commands.push_back(&cmdSalir);
    layOut(arrange::column({arrange::plain(lblResultado), arrange::buttons(commands)}));
}

}  // namespace FendaMaestros
