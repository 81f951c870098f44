// A Jet file, read with libmdb: handles that close themselves, what its tables and columns say, and the value of a
// field from the bytes that libmdb finds for it.
#pragma once

#include <glib.h>  // before mdbtools.h, which includes it as C
#include <mdbtools.h>

#include <memory>
#include <span>
#include <string>

#include "database/engine/value.h"
#include "database/jet_import/jet_header.h"
#include "database/jet_import/source.h"

namespace jet_import {

struct MdbClose {
  void operator()(MdbHandle* handle) const noexcept { mdb_close(handle); }
  void operator()(MdbTableDef* table) const noexcept { mdb_free_tabledef(table); }
};
using MdbFilePointer = std::unique_ptr<MdbHandle, MdbClose>;
using MdbTablePointer = std::unique_ptr<MdbTableDef, MdbClose>;

/// Every object of the file, whether it is a table or not.
std::span<MdbCatalogEntry*> catalogue_entries(MdbHandle& file);

/// The user's own tables without the linked ones, and the names of the linked ones.
std::vector<MdbCatalogEntry*> user_tables(MdbHandle& file);
std::vector<std::string> linked_tables(MdbHandle& file);

/// Reads a table with its columns. Raises 3343 where the table's definition cannot be read.
MdbTablePointer read_table(MdbCatalogEntry& entry);

/// The columns that our databases can hold, in the order of SourceTable::fields.
std::vector<const MdbColumn*> held_columns(const MdbTableDef& table);

/// Raises 3343 where the definition ends before its indexes do.
SourceTable describe(const MdbTableDef& table, JetVersion version);

/// Raises 3343 where the bytes are no value of the column's type, and 6 for money and decimals of more than 15 digits,
/// which a Double would round.
engine::Value mdb_value(MdbHandle& file, JetVersion version, const MdbColumn& column, const MdbField& field);

/// The value of a Memo or an object, which may lie in other pages. Raises 3343 where a part of it is missing.
std::string mdb_long_value(MdbHandle& file, const MdbField& field);

}  // namespace jet_import
