// Epson maker notes.
#pragma once

#include <iterator>

#include "dictionary/tables/field_row.h"

namespace tagmend::tables {

constexpr FieldRow epson_fields[] = {
    {0x0209, und, any, rw, "eps-0209", "Field 0x0209"},
    {0x0F00, und, any, rw, "eps-0f00", "Field 0x0f00"},
};
static_assert(std::size(epson_fields) == 2);

}  // namespace tagmend::tables
