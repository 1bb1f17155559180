#include "toolkit/Arrangement.h"

#include "toolkit/Controls.h"

namespace FendaMaestros {

const Label* Arrangement::labelOf(const Control& sought) const {
    if (control == &sought) return label;
    for (const Arrangement& child : children) {
        if (child.control == &sought) return child.label ? child.label : label;
        if (const Label* const found = child.labelOf(sought)) return found;
    }
    return nullptr;
}

}  // namespace FendaMaestros

namespace FendaMaestros::arrange {

namespace {

Arrangement group(Arrangement::Kind kind, std::vector<Arrangement> children) {
    Arrangement node;
    node.kind = kind;
    node.children = std::move(children);
    return node;
}

Arrangement single(Arrangement::Kind kind, Control& control) {
    Arrangement node;
    node.kind = kind;
    node.control = &control;
    return node;
}

}  // namespace

Arrangement column(std::vector<Arrangement> children) { return group(Arrangement::Kind::Column, std::move(children)); }

Arrangement row(std::vector<Arrangement> children) { return group(Arrangement::Kind::Row, std::move(children)); }

Arrangement fields(std::vector<Arrangement> children) { return group(Arrangement::Kind::Fields, std::move(children)); }

Arrangement field(Label& label, Control& control) {
    Arrangement node = single(Arrangement::Kind::Field, control);
    node.label = &label;
    return node;
}

Arrangement field(Label& label, std::vector<Arrangement> controls) {
    Arrangement node = group(Arrangement::Kind::Field, std::move(controls));
    node.label = &label;
    return node;
}

Arrangement framed(Frame& frame, std::vector<Arrangement> children) {
    Arrangement node = group(Arrangement::Kind::Framed, std::move(children));
    node.control = &frame;
    return node;
}

Arrangement buttons(std::vector<Control*> commands) {
    std::vector<Arrangement> children;
    for (Control* command : commands) children.push_back(plain(*command));
    return group(Arrangement::Kind::Buttons, std::move(children));
}

Arrangement filling(Control& control) { return single(Arrangement::Kind::Filling, control); }

Arrangement plain(Control& control) { return single(Arrangement::Kind::Plain, control); }

}  // namespace FendaMaestros::arrange
