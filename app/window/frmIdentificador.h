#pragma once

#include <functional>
#include <string>

#include "app/window/DirectWindow.h"

namespace FendaMaestros {

/// Asks for one text (an identifier, an account, a postal code) and shows what a rule says of it, without the blanks
/// around it, as often as the person likes. `hint` stands there before.
class frmIdentificador final : public DirectWindow {
public:
    using Rule = std::function<std::string(const std::string& typed)>;

    frmIdentificador(std::string caption, std::string fieldCaption, std::string commandCaption, Rule rule,
                     std::string hint = {});

private:
    void comprobar();

    Rule rule_;
    Label Label1;
    TextBox Text1;
    Label lblResultado;
    CommandButton cmdComprobar;
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
