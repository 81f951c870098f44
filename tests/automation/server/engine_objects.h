// The engine of the test server: its workspaces and the databases opened in them, over the embedded engine.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "database/engine/engine.h"
#include "tests/automation/server/layout_objects.h"
#include "tests/automation/server/scripted_object.h"

namespace test_server {

class EngineObject final : public ScriptedObject<EngineObject> {
 public:
  static constexpr const wchar_t* kind = L"DBEngine";
  static std::span<const Member<EngineObject>> members();
};

class WorkspaceObject final : public ScriptedObject<WorkspaceObject> {
 public:
  static constexpr const wchar_t* kind = L"Workspace";
  static std::span<const Member<WorkspaceObject>> members();
  WorkspaceObject();
  /// A transaction includes all databases of the workspace.
  Variant for_each_database(void (engine::Database::*call)());
  Variant add(std::unique_ptr<engine::Database> database, const std::string& path);

  std::unique_ptr<engine::Engine> engine;

 private:
  std::vector<std::weak_ptr<engine::Database>> databases_;
};

class DatabaseObject final : public ScriptedObject<DatabaseObject> {
 public:
  static constexpr const wchar_t* kind = L"Database";
  static std::span<const Member<DatabaseObject>> members();
  DatabaseObject(std::shared_ptr<engine::Database> held, std::string file)
      : database(std::move(held)), path(std::move(file)) {}
  const std::shared_ptr<TableList>& tables();

  std::shared_ptr<engine::Database> database;
  std::string path;

 private:
  std::shared_ptr<TableList> tables_;
};

}  // namespace test_server
