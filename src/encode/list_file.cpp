// Lists that are read from a file or from the standard input.
#include <cerrno>
#include <cstring>

#include "encode/field_list.h"
#include "support/message.h"
#include "support/mfile.h"

namespace tagmend {

std::size_t read_list_file(const char* file_name, std::span<char> buffer) {
  if (buffer.empty()) {
    return 0;
  }
  buffer.front() = '\0';

  const bool from_stdin = file_name[0] == '-';
  MFileHandle opened{from_stdin ? nullptr : mfopen(file_name, "rb")};
  MFILE* const file = from_stdin ? mfopen_stdin() : opened.get();
  if (!file) {
    print_error("Error: Can't open file list file %s: %s\n", file_name, std::strerror(errno));
    return 0;
  }
  const std::size_t count = mfread(buffer.data(), 1, buffer.size() - 1, *file);
  buffer[count] = '\0';
  return count;
}

}  // namespace tagmend
