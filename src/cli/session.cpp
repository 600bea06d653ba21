#include "cli/session.h"

namespace tagmend {
namespace {

/// All zero, hence in .bss: nothing of them stands in the program file or is touched at start-up.
constinit ImageFile image_file;
constinit IptcStore iptc_store;
constinit App13Result app13_result;
constinit EditList exif_edit_list;
constinit EditList iptc_edit_list;

}  // namespace

Session open_session() {
  return {.image = image_file,
          .iptc = iptc_store,
          .app13 = app13_result,
          .exif_edits = exif_edit_list,
          .iptc_edits = iptc_edit_list,
          .options = {}};
}

}  // namespace tagmend
