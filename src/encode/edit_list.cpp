#include "encode/edit_list.h"

#include "support/text_buffer.h"

namespace tagmend {
namespace {

/// The next free entry; null when the list is full.
EditEntry* take_entry(EditList& list) {
  return list.count < EditList::capacity ? &list.entries[list.count++] : nullptr;
}

}  // namespace

bool append_edit(EditList& list, std::uint16_t field, std::uint16_t type, std::string_view value) {
  EditEntry* const entry = take_entry(list);
  if (entry == nullptr) {
    return false;
  }
  entry->op = EditOp::add;
  entry->field = field;
  entry->type = type;
  copy_text(entry->value, value);
  return true;
}

bool append_removal(EditList& list, std::uint16_t field) {
  EditEntry* const entry = take_entry(list);
  if (entry == nullptr) {
    return false;
  }
  entry->op = EditOp::remove;
  entry->field = field;
  return true;
}

}  // namespace tagmend
