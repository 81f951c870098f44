// Decides which engine works: the automation objects of the machine, the embedded one, or both, each on its own files.
// open_engine() is the choice that the program makes.
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "database/engine/engine.h"

namespace engine {

using EngineFactory = std::unique_ptr<Engine> (*)(std::string_view identifier);

/// Creates an engine object by its programmatic identifier ("DAO.DBEngine.36", "DAO.DBEngine.35"). It is the automation
/// object of this identifier; the embedded engine works beside it on the files that the embedded engine wrote. Where
/// neither identifier is registered, the embedded engine answers to both, alone. Raises 429 where no engine answers.
std::unique_ptr<Engine> open_engine(std::string_view identifier);

/// The identifiers of the automation objects, the newer one first.
inline constexpr std::array<std::string_view, 2> automation_identifiers{"DAO.DBEngine.36", "DAO.DBEngine.35"};

/// The embedded engine, even where the automation objects are installed. Raises 429 for an identifier that is not
/// theirs.
std::unique_ptr<Engine> open_embedded_engine(std::string_view identifier);

/// The automation object of exactly this identifier. Raises 429 where there is none, as is always so outside Windows.
std::unique_ptr<Engine> open_automation_engine(std::string_view identifier);

/// Opens a file by the engine that wrote it, and creates new ones by the automation objects.
std::unique_ptr<Engine> both_engines(std::unique_ptr<Engine> automation, std::unique_ptr<Engine> embedded);

/// As long as the result lives, all engines of one identifier share one automation object. It is made when the first
/// engine is opened, and released with the result. A program holds one result for its whole life. Null where there are
/// no such objects.
std::shared_ptr<void> share_automation_objects();

}  // namespace engine
