// Applying the requested IPTC edits to the store of the file in work.
#pragma once

#include "encode/edit_list.h"
#include "encode/template.h"
#include "iptc/iptc_store.h"

namespace tagmend {

/// Appends the record-version datasets that IIM 4 demands, and that neither the store has nor the
/// user sets, to the edit list.
void add_mandatory_versions(EditList& edits, IptcStore& store);

/// Applies the list (and the mandatory versions, which it appends) to the store; false when the
/// store is full, which leaves it as it was read. `quote` is the quote character of field lists.
/// Problems are reported and passed over.
bool apply_iptc_edits(IptcStore& store, EditList& edits, char quote,
                      const SubstitutionContext& context);

}  // namespace tagmend
