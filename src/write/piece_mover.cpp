#include "write/piece_mover.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "support/byte_order.h"
#include "support/file_primitives.h"
#include "support/message.h"
#include "write/image_data.h"

namespace tagmend {
namespace {

/// Pieces whose offsets and lengths are read, and written back, in one go.
constexpr std::uint32_t batch_size = 256;
using NumberBytes = std::array<std::uint8_t, std::size_t{batch_size} * 4>;

std::uint32_t load_number(std::span<const std::uint8_t> bytes, std::size_t index,
                          std::uint32_t size, bool big_endian) {
  const auto number = bytes.subspan(index * size, size);
  return size == 2 ? load_u16(number.first<2>(), big_endian)
                   : load_u32(number.first<4>(), big_endian);
}

void store_number(std::span<std::uint8_t> bytes, std::size_t index, std::uint32_t size,
                  std::uint32_t value, bool big_endian) {
  const auto number = bytes.subspan(index * size, size);
  if (size == 2) {
    store_u16(number.first<2>(), static_cast<std::uint16_t>(value), big_endian);
  } else {
    store_u32(number.first<4>(), value, big_endian);
  }
}

/// The numbers of a field, a batch at a time.
struct NumberField {
  const FieldEntry& entry;
  std::uint32_t size;
  NumberBytes bytes{};

  ErrorCode load(MFILE& source, std::uint32_t first, std::uint32_t count) {
    std::size_t got = 0;
    const auto wanted = std::span(bytes).first(std::size_t{count} * size);
    return read_block_at(source, entry.value_pos + std::uint64_t{first} * size, wanted, got);
  }
  [[nodiscard]] std::uint32_t number(std::uint32_t index) const {
    return load_number(bytes, index, size, entry.ifd.big_endian);
  }
};

/// Copies one piece and gives the offset that it now has.
ErrorCode move_piece(const PieceTarget& target, std::int64_t source_pos, std::uint32_t length,
                     std::uint32_t offset_size, std::uint64_t& data_end) {
  if (offset_size == 2 && data_end > 0xFFFF) {
    return ErrorCode::file_type_not_editable;
  }
  if (data_end + length > 0xFFFFFFFE) {
    return ErrorCode::exif_too_long;
  }
  if (length == 0) {
    return ErrorCode::ok;
  }
  if (source_pos < 0) {
    return ErrorCode::end_of_buffer;
  }
  const ErrorCode result =
      copy_from_offsets(target.source, source_pos, target.output,
                        target.base + static_cast<std::int64_t>(data_end), length);
  data_end = round_up_even(data_end + length);
  return result;
}

ErrorCode move_batch(const MovedPieces& pieces, const PieceTarget& target, NumberField& offsets,
                     NumberField& lengths, std::uint32_t first, std::uint32_t count,
                     std::uint64_t& data_end) {
  ErrorCode result = offsets.load(target.source, first, count);
  if (result == ErrorCode::ok) {
    result = lengths.load(target.source, first, count);
  }
  for (std::uint32_t i = 0; i < count && result == ErrorCode::ok; ++i) {
    const std::int64_t source_pos = offsets.entry.ifd.source_base + offsets.number(i);
    const auto new_offset = static_cast<std::uint32_t>(data_end);
    result = move_piece(target, source_pos, lengths.number(i), offsets.size, data_end);
    store_number(offsets.bytes, i, offsets.size, new_offset, offsets.entry.ifd.big_endian);
  }
  if (result != ErrorCode::ok) {
    return result;
  }
  const auto position =
      static_cast<std::uint64_t>(pieces.new_offsets_pos) + std::uint64_t{first} * offsets.size;
  return write_block_at(target.output, position,
                        std::span(offsets.bytes).first(std::size_t{count} * offsets.size),
                        target.image.file_name.data());
}

}  // namespace

ErrorCode move_pieces(const MovedPieces& pieces, const PieceTarget& target,
                      std::uint64_t& data_end) {
  NumberField offsets{*pieces.offsets, integer_size(*pieces.offsets)};
  NumberField lengths{*pieces.lengths, integer_size(*pieces.lengths)};
  if (offsets.size == 0) {
    print_error("Internal Error: Unexpected format (%d) for strip offsets\n",
                static_cast<int>(pieces.offsets->type));
    return ErrorCode::fatal_internal;
  }
  if (lengths.size == 0) {
    print_error("Internal Error: Unexpected format (%d) for strip lengths\n",
                static_cast<int>(pieces.lengths->type));
    return ErrorCode::fatal_internal;
  }
  const std::int64_t position = mftell(target.source);
  if (position < 0) {
    print_error("Can't get original offset into src file %s: %s\n", target.image.file_name.data(),
                std::strerror(errno));
    return ErrorCode::seek_failed;
  }
  const std::uint32_t total = std::min(pieces.offsets->count, pieces.lengths->count);
  ErrorCode result = ErrorCode::ok;
  for (std::uint32_t first = 0; first < total && result == ErrorCode::ok; first += batch_size) {
    const std::uint32_t count = std::min(batch_size, total - first);
    result = move_batch(pieces, target, offsets, lengths, first, count, data_end);
  }
  if (result != ErrorCode::ok) {
    return result;
  }
  return seek_to_offset(target.source, static_cast<std::uint64_t>(position));
}

}  // namespace tagmend
