#pragma once

#include <functional>
#include <string>

#include "ui/Pantalla.h"

namespace FendaMaestros {

/// Asks for one identifier and shows what a rule says of it, as often as the person likes.
class frmIdentificador final : public Pantalla {
public:
    using Rule = std::function<std::string(const std::string& typed)>;

    /// `hint` stands where the answer comes.
    frmIdentificador(std::string caption, std::string fieldCaption, std::string commandCaption, std::string hint,
                     Rule rule);

protected:
    void onLoad() override;

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
