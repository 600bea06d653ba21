#include "write/table_order.h"

#include <algorithm>

namespace tagmend {
namespace {

bool precedes(const FieldEntry& left, const FieldEntry& right) {
  return left.index != right.index ? left.index < right.index : left.edit_state < right.edit_state;
}

}  // namespace

// Insertion sort: an edit leaves one entry out of its place, and entries are large, so the order
// must be restored with few moves.
void sort_by_index(ImageFile& image) {
  const std::span<FieldEntry> table = image.table();
  for (std::size_t next = 1; next < table.size(); ++next) {
    if (!precedes(table[next], table[next - 1])) {
      continue;
    }
    const auto entry = table.begin() + static_cast<std::ptrdiff_t>(next);
    const auto place = std::upper_bound(table.begin(), entry, *entry, precedes);
    const FieldEntry moved = *entry;
    std::copy_backward(place, entry, entry + 1);
    *place = moved;
  }
}

void drop_deleted(ImageFile& image) {
  while (image.field_count > 0 && is_deleted(image.fields[image.field_count - 1])) {
    --image.field_count;
  }
}

}  // namespace tagmend
