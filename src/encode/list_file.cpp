// Lists that are read from a file or from the standard input.
#include <cerrno>
#include <cstring>

#include "encode/field_list.h"
#include "support/message.h"
#include "support/mfile.h"

namespace tagmend {
namespace {

std::size_t refuse_list(const char* file_name, int error) {
  print_error("Error: Can't open file list file %s: %s\n", file_name, std::strerror(error));
  return 0;
}

}  // namespace

std::size_t read_list_file(const char* file_name, std::span<char> buffer) {
  if (buffer.empty()) {
    return 0;
  }
  buffer.front() = '\0';

  const bool from_stdin = file_name[0] == '-';
  MFileHandle opened{from_stdin ? nullptr : mfopen(file_name, "rb")};
  MFILE* const file = from_stdin ? mfopen_stdin() : opened.get();
  if (!file) {
    return refuse_list(file_name, errno);
  }
  const std::size_t count = mfread(buffer.data(), 1, buffer.size() - 1, *file);
  // A list that broke off would store the half of a value.
  if (const int error = mferror(*file); error != 0) {
    buffer.front() = '\0';
    return refuse_list(file_name, error);
  }
  buffer[count] = '\0';
  return count;
}

}  // namespace tagmend
