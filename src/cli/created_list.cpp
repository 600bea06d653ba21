#include "cli/created_list.h"

#include "support/message.h"

namespace tagmend {

CreatedList new_created_list() {
  CreatedList list(created_list_new());
  if (list == nullptr) {
    print_error("Error: Can't allocate memory for created file list\n");
    end_program(exit_internal);
  }
  return list;
}

}  // namespace tagmend
