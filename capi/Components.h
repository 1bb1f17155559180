#pragma once

#include "capi/Object.h"

namespace FendaMaestros::capi {

/// Registers the components that the host brings, over those that are there. Both must outlive the registry.
void registerHostComponents(ComponentRegistry& components, const fenda_components& host, const ObjectThing& object);

}  // namespace FendaMaestros::capi
