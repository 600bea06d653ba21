// Heap blocks that carry the tag of their owner in front of them, so that a block released by the
// wrong owner is noticed. Nothing is pooled, reused or zeroed.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace tagmend {

/// Returns a block of `size` bytes owned by `tag` (its first two characters count), or null after a
/// message when `size` is 0 or the heap is exhausted. `line` is kept in the block's header.
void* exif_malloc(std::uint32_t size, const char* tag, int line);

/// Releases a block that exif_malloc returned. A block of another tag ends the program (status
/// 255).
void exif_mfree(void* block, const char* tag);

/// Releases through exif_mfree with the tag that the owner expects.
struct TaggedDelete {
  const char* tag = "";
  void operator()(std::uint8_t* block) const { exif_mfree(block, tag); }
};

/// Bytes of a tagged block that its owner releases by going out of scope.
using TaggedBytes = std::unique_ptr<std::uint8_t[], TaggedDelete>;

/// exif_malloc as an owner; null on failure, after the message.
TaggedBytes make_tagged_bytes(std::uint32_t size, const char* tag, int line);

/// Bytes of a file that are looked at in one piece: 256 KiB hold any JPEG segment four times over.
inline constexpr std::uint32_t work_buffer_size = 0x40000;

/// A work buffer that is taken from the heap (tag "CB") only when it is first needed: most values
/// lie in the buffer that the reader already holds.
struct WorkBuffer {
  TaggedBytes block;

  /// The 256 KiB area; empty when it cannot be allocated.
  std::span<std::uint8_t> bytes();
};

}  // namespace tagmend
