#pragma once

#include <functional>
#include <memory>

#include "app/Place.h"
#include "session/Companies.h"

namespace FendaMaestros {

/// A place, and the companies that are kept there.
struct CompanyPlace {
    Place place;
    /// Null when no place has been chosen.
    std::shared_ptr<Companies> companies;
};

/// Reaches the companies of a place, of which there may be none yet. Throws std::exception, in Spanish, when it cannot
/// be reached.
using PlaceOpener = std::function<CompanyPlace(const Place& place)>;

}  // namespace FendaMaestros
