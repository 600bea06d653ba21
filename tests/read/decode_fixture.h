// Decodes single values, as bytes that a file may hold, into their texts.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "common/bytes.h"
#include "common/context_fixture.h"
#include "common/memory_readers.h"
#include "read/decode.h"

namespace tagmend::test {

constexpr bool II = false;
constexpr bool MM = true;

/// A value and the text that it is to have.
struct DecodeCase {
  std::uint32_t tag;
  std::uint16_t type;
  std::uint32_t count;
  Bytes bytes;
  bool big_endian;
  std::string expected;
};

class DecodeTest : public ContextTest {
 protected:
  /// The text that `decode` gives a value; read errors are left in errors_.
  template <typename Decode>
  std::string shown(const DecodeCase& value, Decode decode) {
    Bytes bytes = value.bytes;
    ByteCursor cursor = cursor_over(bytes, 1000, value.big_endian);
    auto room = std::make_unique<std::array<char, 2000>>();
    TextBuffer text(*room);
    decode(StoredValue{cursor, value.tag, value.type, value.count}, text);
    errors_ = cursor.error_count;
    EXPECT_EQ(std::string(room->data()), text.text());
    return room->data();
  }
  std::string shown_of_kind(IfdKind kind, const DecodeCase& value) {
    return shown(value, [&](const StoredValue& stored, TextBuffer& text) {
      FieldEntry entry;
      entry.kind = kind;
      entry.tag = value.tag;
      entry.level = 3;
      entry.seq = 7;
      entry.ifd.id = 11;
      decode_by_kind(stored, entry, text, context_);
    });
  }
  void expect_of_kind(IfdKind kind, const std::vector<DecodeCase>& cases) {
    for (const DecodeCase& value : cases) {
      EXPECT_EQ(shown_of_kind(kind, value), value.expected)
          << "kind " << static_cast<int>(kind) << ", tag " << std::hex << value.tag;
      EXPECT_EQ(errors_, 0U) << value.expected;
    }
  }

  std::uint32_t errors_ = 0;
};

}  // namespace tagmend::test
