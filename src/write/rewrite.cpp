#include "write/rewrite.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "read/file_type.h"
#include "read/jpeg_markers.h"
#include "support/file_primitives.h"
#include "support/message.h"
#include "write/exif_generate.h"
#include "write/file_attributes.h"
#include "write/jpeg_rewrite.h"
#include "write/replace_file.h"
#include "write/temp_file.h"

namespace tagmend {
namespace {

/// What a rewrite works with.
struct RewriteJob {
  const ImageFile& image;
  const RunOptions& options;
  const App13Result& app13;
  bool unread_metadata;  ///< the new file may lack something that the original holds
};

ErrorCode create_output(FileType type, SiblingName& temp, MFileHandle& output) {
  ErrorCode result = create_temp_file(temp, output);
  if (result == ErrorCode::ok && type == FileType::jpeg) {
    result = write_u16(*output, marker_soi, true);
  }
  if (result != ErrorCode::ok) {
    print_error("Error: Can't create destination file %s: %s\n", temp.data(), error_text(result));
  }
  return result;
}

ErrorCode write_content(MFILE& input, MFILE& output, RewriteJob& job) {
  if (job.image.file_type != FileType::jpeg) {
    return generate_exif(input, output, 0, job.image);
  }
  JpegRewrite rewrite{.input = input,
                      .output = output,
                      .image = job.image,
                      .options = job.options,
                      .app13 = job.app13};
  const ErrorCode result = rewrite_jpeg(rewrite);
  job.unread_metadata |= rewrite.dropped_unread;
  return result;
}

/// A read that the system failed must not pass for the end of the file.
ErrorCode write_new_file(MFILE& input, MFILE& output, RewriteJob& job) {
  const ErrorCode result = write_content(input, output, job);
  return result == ErrorCode::ok && mferror(input) != 0 ? ErrorCode::read_failed : result;
}

/// Everything must have arrived on stable storage before the new file may take the name: after a
/// power failure the name leads to the old content or to the new, never to an empty file.
ErrorCode finish_output(const MFILE& input, MFileHandle& output, Replacement& files) {
  files.inode = copy_attributes(mfdescriptor(input), mfdescriptor(*output));
  const bool stored = mfflush(*output) == 0 && fsync(mfdescriptor(*output)) == 0;
  const int error = errno;
  const bool closed = mfclose(output.release()) == 0;
  if (stored && closed) {
    return ErrorCode::ok;
  }
  print_error("Error: Can't write new content of %s: %s\n", files.name,
              std::strerror(stored ? errno : error));
  return ErrorCode::write_failed;
}

/// The temporary file, complete; on failure it is gone.
ErrorCode make_new_file(MFileHandle input, CreatedFileList& created, RewriteJob& job,
                        Replacement& files) {
  ErrorCode result = check_image_length(job.image);
  if (result != ErrorCode::ok) {
    print_error("Error openning file %s: %s\n", files.name, error_text(result));
    return result;
  }
  created_list_add(created, files.name);
  MFileHandle output;
  result = create_output(job.image.file_type, files.temp, output);
  if (result == ErrorCode::ok) {
    result = write_new_file(*input, *output, job);
  }
  if (result == ErrorCode::ok) {
    result = finish_output(*input, output, files);
  }
  close_image_file(input, job.image);
  if (result != ErrorCode::ok) {
    discard_temp_file();
  }
  return result;
}

bool keeps_backup(const RewriteJob& job) { return job.options.keep_backup || job.unread_metadata; }

/// What becomes of the backup once the new file has its name.
void settle_backup(const Replacement& files, CreatedFileList& created, const RewriteJob& job) {
  if (!files.backup_made || (!keeps_backup(job) && remove_backup(files))) {
    return;
  }
  if (!job.options.keep_backup && job.unread_metadata) {
    print_warning("Warning: File %s: some metadata could not be read, original kept as '%s'\n",
                  files.name, files.backup.data());
  }
  created_list_add(created, files.backup.data());
}

}  // namespace

ErrorCode rewrite_file(const char* name, MFileHandle source, CreatedFileList& created,
                       const ImageFile& image, const RunOptions& options, const App13Result& app13,
                       bool metadata_incomplete) {
  RewriteJob job{image, options, app13, metadata_incomplete};
  Replacement files{.name = name};
  files.backup = make_backup_name(name);
  ErrorCode result = make_new_file(std::move(source), created, job, files);
  if (result != ErrorCode::ok) {
    return result;
  }
  result = replace_file(files, image.identity, keeps_backup(job));
  if (result == ErrorCode::ok) {
    settle_backup(files, created, job);
  } else if (files.backup_made) {
    created_list_add(created, files.backup.data());
  }
  return result;
}

}  // namespace tagmend
