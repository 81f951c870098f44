// Names of the error numbers that the SQL front end raises.
#pragma once

#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

inline constexpr int error_invalid_call = 5;
inline constexpr int error_overflow = 6;
inline constexpr int error_division_by_zero = 11;
inline constexpr int error_type_mismatch = 13;
inline constexpr int error_invalid_pattern = 93;
inline constexpr int error_invalid_null = 94;
inline constexpr int error_table_exists = 3010;
inline constexpr int error_duplicate_value = 3022;
inline constexpr int error_null_in_key = 3058;
inline constexpr int error_too_few_parameters = 3061;
inline constexpr int error_duplicate_destination = 3063;
inline constexpr int error_no_input = 3067;
inline constexpr int error_repeated_table = 3074;
inline constexpr int error_expression_syntax = 3075;
inline constexpr int error_unknown_table = 3078;
inline constexpr int error_ambiguous_field = 3079;
inline constexpr int error_unknown_function = 3085;
inline constexpr int error_order_with_distinct = 3093;
inline constexpr int error_aggregate_in_expression = 3095;
inline constexpr int error_aggregate_in_where = 3096;
inline constexpr int error_aggregate_in_order_by = 3097;
inline constexpr int error_aggregate_in_group_by = 3098;
inline constexpr int error_aggregate_in_join = 3099;
inline constexpr int error_circular_alias = 3103;
inline constexpr int error_repeated_heading = 3104;
inline constexpr int error_field_not_updatable = 3113;
inline constexpr int error_group_on_star = 3121;
inline constexpr int error_not_in_aggregate = 3122;
inline constexpr int error_invalid_name = 3125;
inline constexpr int error_invalid_bracketing = 3126;
inline constexpr int error_insert_unknown_field = 3127;
inline constexpr int error_no_table_to_delete_from = 3128;
inline constexpr int error_no_statement = 3129;
inline constexpr int error_delete_syntax = 3130;
inline constexpr int error_from_syntax = 3131;
inline constexpr int error_group_by_syntax = 3132;
inline constexpr int error_insert_syntax = 3134;
inline constexpr int error_join_syntax = 3135;
inline constexpr int error_missing_semicolon = 3137;
inline constexpr int error_order_by_syntax = 3138;
inline constexpr int error_parameters_syntax = 3139;
inline constexpr int error_select_syntax = 3141;
inline constexpr int error_text_after_end = 3142;
inline constexpr int error_transform_syntax = 3143;
inline constexpr int error_update_syntax = 3144;
inline constexpr int error_field_too_small = 3163;
inline constexpr int error_too_many_fields = 3190;
inline constexpr int error_field_defined_twice = 3191;
inline constexpr int error_not_supported = 3251;
inline constexpr int error_invalid_data_type = 3259;
inline constexpr int error_primary_key_exists = 3283;
inline constexpr int error_constraint_syntax = 3289;
inline constexpr int error_create_table_syntax = 3290;
inline constexpr int error_create_index_syntax = 3291;
inline constexpr int error_field_definition_syntax = 3292;
inline constexpr int error_alter_table_syntax = 3293;
inline constexpr int error_drop_index_syntax = 3294;
inline constexpr int error_drop_syntax = 3295;
inline constexpr int error_subquery_columns = 3306;
inline constexpr int error_union_columns = 3307;
inline constexpr int error_field_required = 3314;
inline constexpr int error_zero_length = 3315;
inline constexpr int error_rule_text = 3316;
inline constexpr int error_rule_breached = 3317;
inline constexpr int error_value_count = 3346;
inline constexpr int error_one_record = 3354;
inline constexpr int error_too_complex = 3360;
inline constexpr int error_no_such_index = 3372;
inline constexpr int error_index_exists = 3375;
inline constexpr int error_no_such_table = 3376;
inline constexpr int error_field_exists = 3380;
inline constexpr int error_no_such_field = 3381;
inline constexpr int error_index_field = 3409;
inline constexpr int error_field_size = 3411;
inline constexpr int error_conversion = 3421;
inline constexpr int error_criterion_mismatch = 3464;

}  // namespace engine::embedded::jet_sql
