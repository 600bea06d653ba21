#include "support/tagged_memory.h"

#include <cstddef>
#include <new>

#include "support/message.h"

namespace tagmend {
namespace {

/// Stands in front of every block. Only the magic and the tag are ever looked at; the rest is for
/// whoever looks at the heap in a debugger.
struct BlockHeader {
  char magic[2];
  char tag[2];
  std::uint32_t total_size;
  std::uint32_t line;
  std::uint32_t sequence;
};
static_assert(sizeof(BlockHeader) == 16);
static_assert(alignof(std::max_align_t) <= sizeof(BlockHeader),
              "a block is aligned for any type, as the heap's own are");

std::uint32_t next_sequence = 0;

/// The second character that a tag text counts as: a shorter one ends in zero bytes.
char second_character(const char* tag) { return tag[0] == '\0' ? '\0' : tag[1]; }

}  // namespace

void* exif_malloc(std::uint32_t size, const char* tag, int line) {
  if (size == 0) {
    print_error("Attempt to allocate zero bytes: Type=%s, Line=%d, Size=%d\n", tag, line, 0);
    return nullptr;
  }
  void* const allocation = ::operator new(sizeof(BlockHeader) + size, std::nothrow);
  if (allocation == nullptr) {
    print_error("Can't allocate memory: Type=%s, Line=%d, Size=%d\n", tag, line,
                static_cast<int>(size));
    return nullptr;
  }
  auto* const header = new (allocation) BlockHeader{
      .magic = {'E', 'X'},
      .tag = {tag[0], second_character(tag)},
      .total_size = static_cast<std::uint32_t>(sizeof(BlockHeader) + size),
      .line = static_cast<std::uint32_t>(line),
      .sequence = next_sequence++,
  };
  return header + 1;
}

void exif_mfree(void* block, const char* tag) {
  if (block == nullptr) {
    return;
  }
  BlockHeader* const header = static_cast<BlockHeader*>(block) - 1;
  if (header->magic[0] != 'E' || header->magic[1] != 'X' || header->tag[0] != tag[0] ||
      header->tag[1] != second_character(tag)) {
    print_error("Interal Error: exif_mfree buffer type incorrect ('%c%c%c%c' != '%s%s')\n",
                header->magic[0], header->magic[1], header->tag[0], header->tag[1], "EX", tag);
    end_program(exit_internal);
  }
  ::operator delete(header);
}

TaggedBytes make_tagged_bytes(std::uint32_t size, const char* tag, int line) {
  return {static_cast<std::uint8_t*>(exif_malloc(size, tag, line)), TaggedDelete{tag}};
}

std::span<std::uint8_t> WorkBuffer::bytes() {
  if (block == nullptr) {
    block = make_tagged_bytes(work_buffer_size, "CB", __LINE__);
  }
  return {block.get(), block == nullptr ? 0 : work_buffer_size};
}

}  // namespace tagmend
