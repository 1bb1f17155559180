#pragma once

#include <utility>
#include <vector>

namespace FendaMaestros {

class Control;
class Frame;
class Label;

/// How a form is laid out, in words and not in coordinates: a view turns it into aligned rows with sensible sizes.
/// Built with the functions of namespace `arrange`. The controls belong to the form and must outlive the arrangement.
struct Arrangement {
    enum class Kind {
        Column,   ///< children one below the other
        Row,      ///< children side by side, each as wide as it needs
        Fields,   ///< fields one below the other: labels aligned in one column, controls in the next
        Field,    ///< one labelled control, or several in a line (children) behind one label
        Framed,   ///< children in a frame with its caption
        Buttons,  ///< commands in a line, at the right
        Filling,  ///< a control that takes all the room that is left
        Plain,    ///< a control on its own, as large as it needs
    };

    Kind kind = Kind::Column;
    Control* control = nullptr;  ///< Field (when alone), Framed (the Frame), Filling, Plain
    Label* label = nullptr;      ///< Field; null leaves its place empty
    std::vector<Arrangement> children;

    /// The label that a control stands behind, alone or with others; null when there is none.
    const Label* labelOf(const Control& sought) const;
};

namespace arrange {

Arrangement column(std::vector<Arrangement> children);
Arrangement row(std::vector<Arrangement> children);
Arrangement fields(std::vector<Arrangement> children);
Arrangement field(Label& label, Control& control);
/// Several controls in a line behind one label, such as a code and its name.
Arrangement field(Label& label, std::vector<Arrangement> controls);
Arrangement framed(Frame& frame, std::vector<Arrangement> children);
Arrangement buttons(std::vector<Control*> commands);
Arrangement filling(Control& control);
Arrangement plain(Control& control);

}  // namespace arrange

}  // namespace FendaMaestros
