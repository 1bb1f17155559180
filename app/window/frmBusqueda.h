#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/window/DirectWindow.h"

namespace FendaMaestros {

/// Offers searches and shows what the last one found, as often as the person likes.
class frmBusqueda final : public DirectWindow {
public:
    struct Search {
        /// With "&" before the letter that starts it.
        std::string caption;
        /// Runs the search and gives what it found, as text.
        std::function<std::string()> run;
    };

    frmBusqueda(std::string caption, std::vector<Search> searches);

private:
    std::vector<Search> searches_;
    std::vector<std::unique_ptr<CommandButton>> cmdBuscar_;
    Label lblResultado{"Elija cómo buscar."};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
