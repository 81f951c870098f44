// A Jet file behind libmdb: handles that close themselves, and what its tables and columns say.
#pragma once

#include <glib.h>  // before mdbtools.h, which includes it as C
#include <mdbtools.h>

#include <memory>
#include <span>
#include <string>

#include "database/jet_import/jet_header.h"
#include "database/jet_import/source.h"

namespace jet_import {

struct MdbClose {
  void operator()(MdbHandle* handle) const noexcept { mdb_close(handle); }
  void operator()(MdbTableDef* table) const noexcept { mdb_free_tabledef(table); }
};
using MdbFilePointer = std::unique_ptr<MdbHandle, MdbClose>;
using MdbTablePointer = std::unique_ptr<MdbTableDef, MdbClose>;

/// Every object of the file, tables or not.
std::span<MdbCatalogEntry*> catalogue_entries(MdbHandle& file);

/// The user's own tables, not linked ones; or these.
std::vector<MdbCatalogEntry*> user_tables(MdbHandle& file);
std::vector<std::string> linked_tables(MdbHandle& file);

/// With columns. Raises 3343 where the table's definition cannot be read.
MdbTablePointer read_table(MdbCatalogEntry& entry);

/// The columns that a database of ours can hold, in the order of SourceTable::fields.
std::vector<const MdbColumn*> held_columns(const MdbTableDef& table);

/// Raises 3343 where the definition ends before its indexes do.
SourceTable describe(const MdbTableDef& table, JetVersion version);

}  // namespace jet_import
