#pragma once

#include <string>
#include <vector>

#include "app/guion/GuionError.h"
#include "toolkit/Desktop.h"
#include "toolkit/Form.h"

/// The screen on top and its parts as a script names them. What is not there throws GuionError.
namespace FendaMaestros::guion {

/// A row (from 1), a column or an item (from 0) by its number, or by what it shows.
struct Place {
    int number = -1;
    std::string text;

    bool isNumber() const { return number >= 0; }
};

/// As a person reads it in a sentence.
std::string describe(const Place& place);

Form& topScreen(const Desktop& desktop);
/// By name, or a button by its caption without "&".
Control& control(const Form& form, const std::string& name);
template <class T>
T& control(const Form& form, const std::string& name, const char* kind) {
    if (T* typed = dynamic_cast<T*>(&control(form, name))) return *typed;
    fail(name + " no es " + kind);
}

/// A grid or a list.
inline Table& table(const Form& form, const std::string& name) {
    return control<Table>(form, name, "una rejilla ni una lista");
}
/// What a row shows in the columns that are not hidden.
std::vector<std::string> cells(const Table& table, int row);

/// From 0.
int columnOf(const Table& table, const Place& column);
int rowOf(const Table& table, const Place& row);
/// From 0, -1 when there is none such.
int itemOf(const ComboBox& combo, const Place& item);

}  // namespace FendaMaestros::guion
