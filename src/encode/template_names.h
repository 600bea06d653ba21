// The names that stand in brackets in a template, and their values for the file in work.
#pragma once

#include <array>
#include <string_view>

#include "encode/template.h"
#include "support/error_code.h"

namespace tagmend {

/// The value of a name: a text of the file's records, or one that was put together in `scratch`.
struct NameValue {
  std::string_view text;
  std::array<char, 2001> scratch;
};

/// Looks a name up among the EXIF fields, the IPTC datasets and the file variables, in this order:
/// ok, field_not_present (known, but the file has no such value) or unknown_field.
ErrorCode substitute_name(std::string_view name, NameValue& value,
                          const SubstitutionContext& context);

}  // namespace tagmend
