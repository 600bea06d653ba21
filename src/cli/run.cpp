#include "cli/run.h"

#include <span>

#include "cli/operands.h"
#include "cli/options.h"
#include "cli/usage.h"
#include "support/message.h"
#include "write/writer_fields.h"

namespace tagmend {
namespace {

bool has_edit_action(const Session& session) {
  const RunOptions& options = session.options;
  return options.set_size || options.erase_exif || options.erase_flashpix || options.erase_iptc ||
         session.exif_edits.count > 0 || session.iptc_edits.count > 0;
}

}  // namespace

int run(int argc, char** argv) {
  init_writer_indexes();
  Session session = open_session();
  CommandFlags flags;
  const int first_operand = parse_options(argc, argv, session, flags);
  if (first_operand < 0) {
    return exit_refused;
  }
  if (flags.show_usage) {
    print_usage();
    return 0;
  }
  if (flags.show_version) {
    print_version();
    return 0;
  }
  if (!has_edit_action(session)) {
    print_error("Error: No valid edit action specified\n");
    return exit_refused;
  }
  const std::span arguments(argv, static_cast<std::size_t>(argc));
  edit_operands(arguments.subspan(static_cast<std::size_t>(first_operand)), flags.include_subdirs,
                session);
  return 0;
}

}  // namespace tagmend
