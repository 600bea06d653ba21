#include "support/text_buffer.h"

#include <cstdarg>
#include <cstdio>

namespace tagmend {

void append_format(TextBuffer& buffer, const char* format, ...) {
  const std::span<char> rest = buffer.room.subspan(buffer.length);
  std::va_list arguments;
  va_start(arguments, format);
  const int wanted = std::vsnprintf(rest.data(), rest.size(), format, arguments);
  va_end(arguments);
  if (wanted < 0) {
    rest[0] = '\0';
  } else {
    buffer.length += std::min(static_cast<std::size_t>(wanted), rest.size() - 1);
  }
}

}  // namespace tagmend
