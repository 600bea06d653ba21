#include "containers/eps.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "iptc/iptc_read.h"
#include "support/ascii.h"
#include "support/byte_text.h"
#include "support/message.h"
#include "support/tagged_memory.h"

namespace tagmend {
namespace {

constexpr std::string_view directive = "%BeginPhotoshop:";
constexpr char block_tag[] = "EP";

/// No resource block is shorter; a missing count reads as 0.
constexpr std::uint32_t min_block_length = 3;

/// Hexadecimal text and the place reached in it.
struct HexText {
  std::string_view text;
  std::size_t pos = 0;

  [[nodiscard]] bool at_end() const { return pos >= text.size(); }
};

/// Where the directive begins, up to the first NUL of the text; npos when there is none.
std::size_t find_directive(std::string_view text) {
  text = text.substr(0, text.find('\0'));
  for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
    if (equal_ignoring_case(text.substr(at, directive.size()), directive)) {
      return at;
    }
  }
  return std::string_view::npos;
}

/// The decimal number at the position; one that a message could not print counts as the largest.
std::uint32_t read_byte_count(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  constexpr std::uint64_t largest = std::numeric_limits<std::int32_t>::max();
  std::uint64_t count = 0;
  for (const char character : text) {
    if (!is_digit(character)) {
      break;
    }
    count = std::min(count * 10 + static_cast<std::uint64_t>(character - '0'), largest);
  }
  return static_cast<std::uint32_t>(count);
}

constexpr int invalid_hex = -1;

/// The byte that two characters stand for, or invalid_hex.
int decode_hex_pair(const HexText& hex) {
  if (hex.pos + 2 > hex.text.size()) {
    return invalid_hex;
  }
  const unsigned high = hex_digit_value(hex.text[hex.pos]);
  const unsigned low = hex_digit_value(hex.text[hex.pos + 1]);
  return high == no_hex_digit || low == no_hex_digit ? invalid_hex
                                                     : static_cast<int>(high * 16 + low);
}

/// Moves to the next '%' and, when it opens a line of hexadecimal text, into that line. A text that
/// ends before leaves `line_open` as it is.
void find_line(HexText& hex, bool& line_open) {
  hex.pos = std::min(hex.text.find('%', hex.pos), hex.text.size());
  if (hex.at_end()) {
    return;
  }
  line_open = hex.text.substr(hex.pos).starts_with("% ");
  if (line_open) {
    hex.pos += 2;
  }
}

/// Decodes lines into `block` until it is full or a line that is no hexadecimal text ends it.
/// Returns how many bytes were decoded; `line_open` tells that the decoding did not end as it
/// should.
std::size_t decode_lines(HexText& hex, std::span<std::uint8_t> block, std::size_t byte_count,
                         bool& line_open) {
  std::size_t decoded = 0;
  line_open = false;
  find_line(hex, line_open);
  while (line_open && decoded < byte_count && !hex.at_end()) {
    int byte = decode_hex_pair(hex);
    while (byte != invalid_hex && decoded < block.size()) {
      block[decoded++] = static_cast<std::uint8_t>(byte);
      hex.pos += 2;
      byte = decode_hex_pair(hex);
    }
    if (!hex.at_end()) {
      const char behind = hex.text[hex.pos];
      if (behind != ' ' && behind != '\r' && behind != '\n') {
        print_error("Error: Invalid hexadecimal character found\n");
        break;
      }
      find_line(hex, line_open);
    }
  }
  return decoded;
}

/// Why a block was refused, in a message and a code.
ErrorCode hex_failure(const HexText& hex, std::size_t decoded, std::uint32_t byte_count) {
  if (decoded != byte_count) {
    print_error("EPS hex decode error: final len %d != expected len %d\n",
                static_cast<int>(decoded), static_cast<int>(byte_count));
    return ErrorCode::odd_hex_length;
  }
  if (!hex.at_end()) {
    print_error("EPS hex decode error: invalid hex char found\n");
    return ErrorCode::invalid_hex_digit;
  }
  print_error("EPS hex decode error: ran off end og buffer\n");
  return ErrorCode::end_of_buffer;
}

/// Decodes the lines behind the directive. A block that ends before `byte_count` bytes is refused
/// too: nothing may take for data what the file does not hold.
ErrorCode decode_hex_block(HexText hex, std::uint32_t byte_count, TaggedBytes& block) {
  if (byte_count < min_block_length) {
    return ErrorCode::iptc_invalid;
  }
  // Two characters make a byte: no larger count can be met, and no more room is needed to see that.
  const std::size_t possible = (hex.text.size() - hex.pos) / 2 + 1;
  const auto room = static_cast<std::uint32_t>(std::min<std::size_t>(byte_count, possible));
  block = make_tagged_bytes(room, block_tag, __LINE__);
  if (block == nullptr) {
    return ErrorCode::no_memory;
  }
  bool line_open = false;
  const std::size_t decoded = decode_lines(hex, {block.get(), room}, byte_count, line_open);
  if (line_open || decoded != byte_count) {
    return hex_failure(hex, decoded, byte_count);
  }
  return ErrorCode::ok;
}

}  // namespace

ErrorCode read_eps_photoshop(ReadContext& context, const ByteCursor& data) {
  const std::string_view text = text_of(data.buffer);
  const std::size_t start = find_directive(text);
  if (start == std::string_view::npos) {
    trace(0, "EPSF V3.0 file does not contain a '%s' directive.\n", directive.data());
    return ErrorCode::no_exif_data;
  }
  const HexText hex = {text, start + directive.size()};
  const std::uint32_t byte_count = read_byte_count(text.substr(hex.pos));
  trace(0, "EPSF V3.0: Photoshop block byte count = %d\n", static_cast<int>(byte_count));
  TaggedBytes block;
  const ErrorCode code = decode_hex_block(hex, byte_count, block);
  if (code != ErrorCode::ok) {
    return code;
  }
  // Without a file, no offset in the block leads into the hexadecimal text that it was made of.
  ByteCursor decoded;
  cursor_init(decoded, nullptr, {block.get(), byte_count}, 0);
  decoded.file_type = data.file_type;
  decoded.big_endian = true;
  return walk_resource_blocks(context, decoded, false);
}

}  // namespace tagmend
