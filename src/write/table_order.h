// The order in which the writers keep the field table: by index, then edit_state. After reading it
// is the file's own order; a new entry shares the index of the entry that it follows.
#pragma once

#include "read/image_file.h"

namespace tagmend {

inline bool is_deleted(const FieldEntry& entry) { return entry.index == deleted_index; }

/// Sorts the table; deleted entries come last, entries that compare equal keep their order.
void sort_by_index(ImageFile& image);

/// Cuts the deleted entries off the end of a sorted table.
void drop_deleted(ImageFile& image);

}  // namespace tagmend
