#include "cli/usage.h"

#include "cli/options.h"
#include "support/message.h"

namespace tagmend {

void print_usage() {
  print_output(
      "\n"
      "NAME\n"
      "\n"
      "   tagmend - add or remove EXIF fields from one or more image files\n"
      "\n"
      "SYNOPSIS\n"
      "\n"
      "   tagmend [-biqsu] [-c x] [-j x] \\\n"
      "             [- field-value-list] [-r field-list] file...\n"
      "             file...\n"
      "   tagmend [-i] -e [e|f|i|a] file...\n"
      "   tagmend [-h|v]\n"
      "\n");
  for (const OptionRow& row : option_rows) {
    if (row.usage != nullptr) {
      print_output("%s", row.usage);
    }
  }
  print_output("\n");
}

void print_version() {
  print_output("\ntagmend %s - %s\n\n", "V2.7.0", "24-November-2005");
  print_output("For usage information enter 'tagmend -h'\n\n");
  print_output("Build Ref: M%sB%sU%sL%s\n\n", "1.2 $", "1.2 $", "1.2 $", "1.2 $");
}

}  // namespace tagmend
