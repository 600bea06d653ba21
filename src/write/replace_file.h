// The moment in which the new file takes the name of the old one.
#pragma once

#include <cstdint>

#include "read/image_file.h"
#include "support/descriptor.h"
#include "support/error_code.h"
#include "support/file_names.h"

namespace tagmend {

/// The names that take part, all in the current directory.
struct Replacement {
  const char* name;          ///< of the file that is edited
  SiblingName temp{};        ///< of the new file, complete and on stable storage
  std::uint64_t inode = 0;   ///< of the new file; 0 when unknown
  SiblingName backup{};      ///< wanted for the original; receives the name used
  bool backup_made = false;  ///< the original stands under the backup name
  Descriptor directory{};    ///< the current one; open, it keeps other runs from replacing here
};

/// Keeps the original under the backup name and lets the new file take its name, so that the name
/// leads to a whole file at every instant: the two change places, and only when what came out is
/// the file that was read does it go. Where the file system can't exchange names, one rename does
/// it if there are hard links, else two, between which the name is missing. An original that is not
/// to be kept goes without a backup name when that is possible. ok, rename_failed, or read_failed
/// when the name no longer leads to the file that was read; each after a message, with the
/// temporary file gone.
ErrorCode replace_file(Replacement& files, const FileIdentity& identity, bool keep_backup);

/// Removes the backup, once the new file's name is on stable storage; keeps it when that can't be
/// had. Returns whether it is gone.
[[nodiscard]] bool remove_backup(const Replacement& files);

/// The backup name of a file; a name that does not fit ends the program (status 1).
SiblingName make_backup_name(const char* name);

}  // namespace tagmend
