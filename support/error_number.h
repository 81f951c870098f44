// The numbers of all errors, the database engine's and the language runtime's. Each number has one name, which all code
// uses. The texts are in the source beside this header.
#pragma once

#include <string>
#include <string_view>

namespace support {

namespace error_number {

enum Number : int {
  none = 0,
  invalid_call = 5,
  overflow = 6,
  out_of_memory = 7,
  division_by_zero = 11,
  type_mismatch = 13,
  out_of_string_space = 14,
  internal_error = 51,
  disk_full = 61,
  permission_denied = 70,
  path_file_access = 75,  ///< path or file cannot be accessed
  path_not_found = 76,
  no_object = 91,
  invalid_pattern = 93,
  invalid_null = 94,
  no_such_element = 340,  ///< no such member of a control array
  already_loaded = 360,   ///< the member is loaded already
  no_such_engine = 429,   ///< no engine, or no other object, of this name
  invalid_argument = 3001,
  database_locked = 3006,         ///< the database is locked exclusively
  table_open_exclusively = 3008,  ///< the table is opened exclusively by another user
  table_exists = 3010,
  no_such_item = 3011,  ///< no object of this name
  no_edit = 3020,
  no_current_record = 3021,
  duplicate_value = 3022,
  file_not_found = 3024,
  no_disk_space = 3026,  ///< not enough space on the disk
  read_only = 3027,
  wrong_password = 3031,
  no_transaction = 3034,
  disk_read_error = 3040,  ///< disk error while reading
  disk_error = 3043,
  invalid_path = 3044,
  file_in_use = 3045,
  damaged_file = 3049,       ///< damaged, or no database of this engine
  file_not_lockable = 3050,  ///< the file cannot be locked
  file_not_opened = 3051,
  too_many_locks = 3052,  ///< too many locks
  null_in_key = 3058,
  cancelled = 3059,
  too_few_parameters = 3061,
  duplicate_destination = 3063,
  select_executed = 3065,
  no_input = 3067,
  repeated_table = 3074,
  expression_syntax = 3075,
  unknown_table = 3078,
  ambiguous_field = 3079,
  unknown_function = 3085,
  order_with_distinct = 3093,
  aggregate_in_expression = 3095,
  aggregate_in_where = 3096,
  aggregate_in_order_by = 3097,
  aggregate_in_group_by = 3098,
  aggregate_in_join = 3099,
  circular_alias = 3103,
  repeated_heading = 3104,
  field_not_updatable = 3113,
  group_on_star = 3121,
  not_in_aggregate = 3122,
  invalid_name = 3125,
  invalid_bracketing = 3126,
  insert_unknown_field = 3127,
  no_table_to_delete_from = 3128,
  no_statement = 3129,
  delete_syntax = 3130,
  from_syntax = 3131,
  group_by_syntax = 3132,
  insert_syntax = 3134,
  join_syntax = 3135,
  missing_semicolon = 3137,
  order_by_syntax = 3138,
  parameters_syntax = 3139,
  select_syntax = 3141,
  text_after_end = 3142,
  transform_syntax = 3143,
  update_syntax = 3144,
  field_too_small = 3163,
  field_not_writable = 3164,
  record_deleted = 3167,
  not_saved_locked_elsewhere = 3186,  ///< cannot be saved: locked by a user of another machine
  not_read_locked_elsewhere = 3187,   ///< cannot be read: locked by a user of another machine
  not_updated_locked_here = 3188,     ///< cannot be updated: locked by another session of this machine
  table_locked = 3189,                ///< the table is locked exclusively
  too_many_fields = 3190,
  field_defined_twice = 3191,
  changed_meanwhile = 3197,  ///< another user has changed the row meanwhile
  database_exists = 3204,
  table_in_use = 3211,
  not_updated_locked = 3218,  ///< cannot be updated: locked
  invalid_operation = 3219,
  not_in_transaction = 3246,
  not_supported = 3251,
  invalid_data_type = 3259,
  not_updated_locked_elsewhere = 3260,  ///< cannot be updated: locked by a user of another machine
  table_locked_elsewhere = 3261,        ///< the table is locked exclusively by a user of another machine
  table_not_lockable = 3262,            ///< the table cannot be locked: in use by a user of another machine
  no_field_defined = 3264,
  item_not_found = 3265,
  field_is_indexed = 3280,
  primary_key_exists = 3283,
  index_already_exists = 3284,
  constraint_syntax = 3289,
  create_table_syntax = 3290,
  create_index_syntax = 3291,
  field_definition_syntax = 3292,
  alter_table_syntax = 3293,
  drop_index_syntax = 3294,
  drop_syntax = 3295,
  subquery_columns = 3306,
  union_columns = 3307,
  field_required = 3314,
  zero_length = 3315,
  rule_text = 3316,
  rule_breached = 3317,
  unknown_format = 3343,
  value_count = 3346,
  one_record = 3354,
  database_open_elsewhere = 3356,  ///< the database is opened exclusively on another machine
  too_complex = 3360,
  no_such_index = 3372,
  index_exists = 3375,
  no_such_table = 3376,
  field_exists = 3380,
  no_such_field = 3381,
  index_field = 3409,
  field_size = 3411,
  object_invalid = 3420,
  conversion = 3421,
  criterion_mismatch = 3464,
};

}  // namespace error_number

/// The text of an error. `detail`, a name or a clause that says more, is put where the text has a place for it. A
/// number without a text gets the text of an internal error.
std::string error_text(int number, std::string_view detail = {});

}  // namespace support
