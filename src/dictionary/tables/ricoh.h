// Ricoh: the maker note, its camera information IFD, and custom fields.
#pragma once

#include <iterator>

#include "dictionary/tables/field_row.h"

namespace tagmend::tables {

constexpr FieldRow ricoh_fields[] = {
    {0x0001, str, any, rw, "ro-0001", "Field 0x0001"},
    {0x0002, str, any, rw, "ro-0002", "Field 0x0002"},
    {0x0003, ulg, any, rw, "ro-0003", "Field 0x0003"},
    {0x0005, und, any, rw, "ro-0005", "Field 0x0005"},
    {0x0006, und, any, rw, "ro-0006", "Field 0x0006"},
    {0x1001, und, any, rw, "ro-1001", "Field 0x1001"},
    {0x1002, ulg, any, rw, "ro-1002", "Field 0x1002"},
    {0x2001, und, any, rw_pointer, "ro-2001", "Camera Info Sub-IFD"},
};
static_assert(std::size(ricoh_fields) == 8);

constexpr FieldRow ricoh_info_fields[] = {
    {0x0001, ush, any, rw, "ri-0001", "Field 0x0001"},
    {0x0002, ulg, any, rw, "ri-0002", "Field 0x0002"},
    {0x0003, str, any, rw, "ri-0003", "Field 0x0003"},
    {0x0004, str, any, rw, "ri-0005", "Field 0x0005"},
    {0x0006, ush, any, rw, "ri-0006", "Field 0x0006"},
    {0x0007, ush, any, rw, "ri-0007", "Field 0x0007"},
    {0x0008, ulg, any, rw, "ri-0008", "Field 0x0008"},
    {0x0009, ulg, any, rw, "ri-0009", "Field 0x0009"},
    {0x000A, urt, any, rw, "ri-000a", "Field 0x000a"},
    {0x000B, urt, any, rw, "ri-000b", "Field 0x000b"},
    {0x000C, ulg, any, rw, "ri-000c", "Field 0x000c"},
    {0x000D, ush, any, rw, "ri-000d", "Field 0x000d"},
    {0x000E, ulg, any, rw, "ri-000e", "Field 0x000e"},
    {0x000F, ush, any, rw, "ri-000f", "Field 0x000f"},
    {0x0010, und, any, rw, "ri-0010", "Field 0x0010"},
};
static_assert(std::size(ricoh_info_fields) == 15);

// 0xF501nnnn is the name of custom field nnnn, 0xF502nnnn its value.
constexpr FieldRow ricoh_custom_fields[] = {
    {0xF5010001, str, 32, ro, "rc-name1", "Custom Field 1 Name"},
    {0xF5020001, str, 32, ro, "rc-value1", "Custom Field 1 Value"},
    {0xF5010002, str, 32, ro, "rc-name2", "Custom Field 2 Name"},
    {0xF5020002, str, 32, ro, "rc-value2", "Custom Field 2 Value"},
    {0xF5010003, str, 32, ro, "rc-name3", "Custom Field 3 Name"},
    {0xF5020003, str, 32, ro, "rc-value3", "Custom Field 3 Value"},
    {0xF5010004, str, 32, ro, "rc-name4", "Custom Field 4 Name"},
    {0xF5020004, str, 32, ro, "rc-value4", "Custom Field 4 Value"},
    {0xF5010005, str, 32, ro, "rc-name5", "Custom Field 5 Name"},
    {0xF5020005, str, 32, ro, "rc-value5", "Custom Field 5 Value"},
};
static_assert(std::size(ricoh_custom_fields) == 10);

}  // namespace tagmend::tables
