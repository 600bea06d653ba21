// Ownership of the lists of names that the run has written.
#pragma once

#include <memory>

#include "support/file_names.h"

namespace tagmend {

struct CreatedListFree {
  void operator()(CreatedFileList* list) const { created_list_free(list); }
};
using CreatedList = std::unique_ptr<CreatedFileList, CreatedListFree>;

/// An empty list; ends the program (status 255) after a message when there is no memory for it.
CreatedList new_created_list();

}  // namespace tagmend
