#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "session/SesionBd.h"

namespace FendaMaestros {

/// Takes one line of a trace.
using TraceSink = std::function<void(std::string_view line)>;

/// A connection that says every text and every transaction step to `sink`, in order, before it happens.
std::shared_ptr<ConexionBd> traced(std::shared_ptr<ConexionBd> connection, TraceSink sink);

/// A session that says every call of its write builder to `sink`; its connection is traced too. Both arguments are
/// kept.
std::unique_ptr<SesionBd> traced(std::unique_ptr<SesionBd> session, TraceSink sink);

}  // namespace FendaMaestros
