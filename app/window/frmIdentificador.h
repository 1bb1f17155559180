#pragma once

#include <functional>
#include <string>

#include "app/window/DirectWindow.h"

namespace FendaMaestros {

/// Asks for one text (an identifier, an account, a postal code) and shows what a rule says of it, without the blanks
/// around it, as often as the person likes. `hint` stands there before.
class frmIdentificador final : public DirectWindow {
public:
    struct Finding {
        /// Most rules find a text and nothing else.
        Finding(std::string found, std::string said = {}, StatusKind meant = StatusKind::Plain)
            : text(std::move(found)), advice(std::move(said)), kind(meant) {}
        std::string text;
        std::string advice;  ///< for the status line
        StatusKind kind;
    };
    using Rule = std::function<Finding(const std::string& typed)>;

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
