// The text of an IPTC value into the bytes that are stored.
#pragma once

#include <cstdint>
#include <string_view>

#include "encode/template.h"
#include "iptc/iptc_store.h"
#include "support/error_code.h"

namespace tagmend {

/// Encodes a value for a dataset row and appends the bytes to the store's pool; `encoded` refers to
/// them there (empty when the pool is full, which marks the store incomplete). With `check_only`
/// nothing is stored, and a value that depends on the file passes. ok, format_not_supported,
/// edit_not_permitted, invalid_value, value_truncated (the cut value was stored), too_few_values,
/// too_many_values, or a code of the number encoder or the date parser.
ErrorCode iptc_encode_field(std::uint16_t row, std::string_view text, IptcStore& store,
                            std::string_view& encoded, bool check_only,
                            const SubstitutionContext& context);

}  // namespace tagmend
