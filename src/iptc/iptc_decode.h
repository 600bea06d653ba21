// IPTC datasets (IPTC IIM 4, chapter 3) into entries of the store.
#pragma once

#include <string_view>

#include "iptc/iptc_store.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"

namespace tagmend {

/// Adds the datasets from the cursor's position to the end of its buffer, as those of a resource
/// block with this name. What is not understood is passed over and marks the store incomplete. ok
/// or too_many_iptc_fields.
ErrorCode decode_datasets(IptcStore& store, ByteCursor cursor, std::string_view resource_name);

}  // namespace tagmend
