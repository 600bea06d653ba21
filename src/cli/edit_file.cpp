#include "cli/edit_file.h"

#include <utility>

#include "cli/metadata_hooks.h"
#include "iptc/apply_iptc_edits.h"
#include "read/file_type.h"
#include "read/read_image_file.h"
#include "support/message.h"
#include "write/apply_edits.h"
#include "write/image_data.h"
#include "write/minimal_exif.h"
#include "write/rewrite.h"

namespace tagmend {
namespace {

/// Edits appended for an earlier file (sizes, version fields) are no edits of this one.
void restore_edit_lists(Session& session) {
  session.exif_edits.count = session.exif_edits.saved_count;
  session.iptc_edits.count = session.iptc_edits.saved_count;
}

SubstitutionContext substitution_of(Session& session) {
  return {.image = &session.image, .iptc = &session.iptc, .dataset_text = &iptc_dataset_text};
}

/// Brings the store and the new IPTC segment up to date.
ErrorCode edit_iptc(const char* name, MFILE& source, Session& session) {
  const RunOptions& options = session.options;
  IptcStore& store = session.iptc;
  session.app13.built = false;  // what an earlier file left there is not this file's
  if (!options.iptc_added && !(options.iptc_removed && store.count > 0)) {
    return ErrorCode::ok;
  }
  const bool applied =
      apply_iptc_edits(store, session.iptc_edits, options.quote_char, substitution_of(session));
  if (!applied) {
    return ErrorCode::ok;
  }
  if (const ErrorCode code = check_image_length(session.image); code != ErrorCode::ok) {
    print_error("Error: Can't open image file %s: %s\n", name, error_text(code));
    return code;
  }
  return build_app13(session.app13, store, source, name);
}

ErrorCode edit_exif(Session& session) {
  EditContext context{.image = session.image,
                      .app13 = session.app13,
                      .options = session.options,
                      .substitution = substitution_of(session)};
  return apply_exif_edits(context, session.exif_edits);
}

/// A TIFF file is refused when pictures of it would be lost; a JPEG file's picture lies outside of
/// its EXIF data, which at worst loses a thumbnail.
ErrorCode check_image_data(ImageFile& image, const RunOptions& options) {
  const bool carried = can_carry_image_data(image);
  const bool exif_stays =
      image.file_type == FileType::jpeg && !options.exif_added && !options.exif_removed;
  image.incomplete |= !carried || leaves_preview_behind(image, exif_stays ? image.metadata_end : 0);
  return image.file_type == FileType::tiff && (!carried || image.images_unread)
             ? ErrorCode::file_type_not_editable
             : ErrorCode::ok;
}

/// What the reader's result means for an edit.
ErrorCode check_loaded(ErrorCode code, ImageFile& image) {
  if (image.read_failed) {
    return ErrorCode::read_failed;
  }
  if (!file_type_info(image.file_type).editable) {
    return ErrorCode::file_type_not_editable;
  }
  if (code == ErrorCode::not_a_jpeg || code == ErrorCode::unknown_file_type) {
    return code;
  }
  if (code != ErrorCode::ok && code != ErrorCode::no_exif_data) {
    image.incomplete = true;
  }
  return ErrorCode::ok;
}

}  // namespace

ErrorCode load_file(std::string_view directory, const char* name, Session& session,
                    MFileHandle& source) {
  ReadContext context{.image = session.image, .iptc = session.iptc, .hooks = metadata_hooks()};
  const ErrorCode read = read_and_keep_open(context, directory, name, source);
  const ErrorCode code = check_loaded(read, session.image);
  if (code != ErrorCode::ok) {
    close_image_file(source, session.image);
  }
  return code;
}

ErrorCode edit_file(const char* name, MFileHandle source, CreatedFileList& created,
                    Session& session) {
  restore_edit_lists(session);
  init_minimal_exif(session.image);
  ErrorCode code = edit_iptc(name, *source, session);
  if (code == ErrorCode::ok) {
    code = edit_exif(session);
  }
  if (code == ErrorCode::ok) {
    code = check_image_data(session.image, session.options);
  }
  if (code != ErrorCode::ok) {
    return code;
  }
  return rewrite_file(name, std::move(source), created, session.image, session.options,
                      session.app13, session.image.incomplete || session.iptc.incomplete);
}

}  // namespace tagmend
