#include "encode/edit_list.h"

#include "support/text_buffer.h"

namespace tagmend {

bool append_edit(EditList& list, std::uint16_t field, std::uint16_t type, std::string_view value) {
  if (list.count >= EditList::capacity) {
    return false;
  }
  EditEntry& entry = list.entries[static_cast<std::size_t>(list.count++)];
  entry.op = EditOp::add;
  entry.field = field;
  entry.type = type;
  copy_text(entry.value, value);
  return true;
}

}  // namespace tagmend
