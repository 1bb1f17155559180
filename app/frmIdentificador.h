#pragma once

#include <functional>
#include <string>

#include "app/VentanaDirecta.h"

namespace FendaMaestros {

/// Asks for one identifier and shows what a rule says of it, as often as the person likes. `hint` stands there before.
class frmIdentificador final : public VentanaDirecta {
public:
    using Rule = std::function<std::string(const std::string& typed)>;

    frmIdentificador(std::string caption, std::string fieldCaption, std::string commandCaption, Rule rule,
                     std::string hint = {});

protected:
    void onLoad() override;

private:
    void comprobar();

    Rule rule_;
    std::string hint_;
    Label Label1;
    TextBox Text1;
    Label lblResultado;
    CommandButton cmdComprobar;
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
