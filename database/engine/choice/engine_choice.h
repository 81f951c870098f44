// Which engine works: the automation objects of the machine, the embedded one, or both, each on its own files. The
// choice that the program makes is open_engine().
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "database/engine/engine.h"

namespace engine {

using EngineFactory = std::unique_ptr<Engine> (*)(std::string_view identifier);

/// Creates an engine object by its programmatic identifier ("DAO.DBEngine.36", "DAO.DBEngine.35"): the automation
/// object of this identifier, with the embedded engine for the files that this one wrote. The embedded engine answers
/// alone, and to both, where neither is registered. Raises 429 where no engine answers.
std::unique_ptr<Engine> open_engine(std::string_view identifier);

/// The identifiers of the automation objects, the newer first.
inline constexpr std::array<std::string_view, 2> automation_identifiers{"DAO.DBEngine.36", "DAO.DBEngine.35"};

/// The embedded engine, where the automation objects are installed too. Raises 429 for an identifier that is not
/// theirs.
std::unique_ptr<Engine> open_embedded_engine(std::string_view identifier);

/// The automation object of exactly this identifier. Raises 429 where there is none, which is so outside Windows.
std::unique_ptr<Engine> open_automation_engine(std::string_view identifier);

/// Opens a file by the engine that wrote it, and creates new ones by the automation objects.
std::unique_ptr<Engine> both_engines(std::unique_ptr<Engine> automation, std::unique_ptr<Engine> embedded);

/// As long as the result lives, all engines of one identifier share one automation object, which is made when the first
/// is opened and let go of with the result. A program holds one for its life. Nothing where there are no such objects.
std::shared_ptr<void> share_automation_objects();

}  // namespace engine
