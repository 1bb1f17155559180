#pragma once

#include <memory>
#include <string>

#include "app/window/CompanyPlace.h"
#include "app/window/DirectWindow.h"

namespace FendaMaestros {

/// Examines the company that is open, or all of its place, and lists what it finds.
class frmRevisar final : public DirectWindow {
public:
    frmRevisar(CompanyPlace place, std::string company);

private:
    void revisar(const std::vector<std::string>& names);
    void anotar(const std::string& where, const std::string& fault);

    CompanyPlace place_;
    std::string company_;
    Label lblAyuda{
        "Comprueba los ficheros, los índices y que los datos casen entre sí. No cambia nada. Con muchos datos tarda "
        "unos segundos."};
    ListView lstHallazgos;
    CommandButton cmdRevisar{"&Revisar esta empresa"};
    CommandButton cmdTodas{"Revisar &todas"};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
