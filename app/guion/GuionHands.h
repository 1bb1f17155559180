#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "app/guion/GuionHost.h"
#include "app/guion/GuionScreen.h"
#include "app/guion/Script.h"

namespace FendaMaestros {

/// The gestures of a script on the screen on top. One that does nothing, or that a message stops on its way, is told in
/// a line; one that cannot be made throws GuionError.
class GuionHands {
public:
    GuionHands(GuionHost& host, std::ostream& out) : host_(host), out_(out) {}

    void type(const std::string& text);
    void key(KeyStroke stroke, int times);
    void go(const std::string& name);
    void press(const std::string& name);
    void tick(const std::string& name, bool value);
    /// An option button, or an item of a combo box.
    void choose(const std::string& name, const std::optional<guion::Place>& item);
    void clickHeader(const std::string& name, const guion::Place& column);
    void clickRow(const std::string& name, const guion::Place& row);
    /// Without a place, on the current row.
    void doubleClickRow(const std::string& name, const std::optional<guion::Place>& row);
    void clickCellButton(const std::string& name, const guion::Place& column);
    void close();
    /// Works the search dialog as a person does: types, goes down to the row, presses Enter.
    void search(Form& dialog, const ExpectedSearch& wanted);

private:
    Form& top() const { return guion::topScreen(host_.desktop()); }
    Control& control(const std::string& name) const { return guion::control(top(), name); }
    template <class T>
    T& control(const std::string& name, const char* kind) const {
        return guion::control<T>(top(), name, kind);
    }
    /// Down to a row, from 0, as far as the list lets one.
    void goDown(Form& dialog, const Table& list, int row);
    /// Whether a person could act on it; says so when not.
    bool reaches(const Control& control);
    /// Makes a gesture; says so when a message stopped it on its way.
    template <class Gesture>
    void act(Gesture&& gesture);
    /// The same on a control, if a person could act on it.
    template <class Gesture>
    void actOn(const Control& control, Gesture&& gesture);
    void note(const std::string& sentence) { out_ << "nota " << sentence << "\n"; }

    GuionHost& host_;
    std::ostream& out_;
};

}  // namespace FendaMaestros
