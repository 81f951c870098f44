// The value of a field of a row, from the bytes that libmdb finds for it.
#pragma once

#include <glib.h>  // before mdbtools.h, which includes it as C
#include <mdbtools.h>

#include <string>

#include "database/engine/value.h"
#include "database/jet_import/jet_header.h"

namespace jet_import {

/// Raises 3343 where the bytes are no value of the column's type, and 6 for money and decimals of more than 15 digits,
/// which a Double would round.
engine::Value mdb_value(MdbHandle& file, JetVersion version, const MdbColumn& column, const MdbField& field);

/// What a Memo or an object stores, which may lie in other pages. Raises 3343 where a part of it is not there.
std::string mdb_long_value(MdbHandle& file, const MdbField& field);

}  // namespace jet_import
