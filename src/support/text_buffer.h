// Bounded text: appending stops at the end of a fixed buffer, which is always terminated.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

#include "support/message.h"

namespace tagmend {

/// Copies as much of `text` as fits and terminates it. `destination` holds at least one character.
inline void copy_text(std::span<char> destination, std::string_view text) {
  const std::size_t length = std::min(text.size(), destination.size() - 1);
  std::copy_n(text.begin(), length, destination.begin());
  destination[length] = '\0';
}

/// A text that grows inside `room`, which is at least one character.
struct TextBuffer {
  std::span<char> room;
  std::size_t length = 0;

  explicit TextBuffer(std::span<char> destination) : room(destination) { room[0] = '\0'; }

  [[nodiscard]] bool full() const { return length + 1 >= room.size(); }
  [[nodiscard]] std::string_view text() const { return {room.data(), length}; }
};

/// Appends as much of `text` as fits.
inline void append(TextBuffer& buffer, std::string_view text) {
  copy_text(buffer.room.subspan(buffer.length), text);
  buffer.length += std::min(text.size(), buffer.room.size() - 1 - buffer.length);
}

/// Appends formatted text, cut where the buffer ends.
void append_format(TextBuffer& buffer, const char* format, ...) TAGMEND_PRINTF(2);

}  // namespace tagmend
