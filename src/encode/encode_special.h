// Fields whose values are typed in a form of their own: exposure times, F-numbers, versions,
// comments and GPS coordinates.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "dictionary/field_def.h"
#include "encode/encode_field.h"
#include "support/error_code.h"

namespace tagmend {

/// A value that is to be encoded: its text, after the expansion of names, and the field it is for.
struct FieldValue {
  const FieldDef& def;
  const EncodeTarget& target;
  std::string_view text;
};

/// Encodes a value into at least encoded_limit bytes and counts its values.
using FieldEncoder = ErrorCode (*)(const FieldValue& value, std::span<std::uint8_t> output,
                                   std::uint32_t& value_count);

/// The encoder of a field with a form of its own; null for all others.
FieldEncoder find_special_encoder(const FieldDef& def);

}  // namespace tagmend
