#include "dictionary/value_map.h"

#include <gtest/gtest.h>

#include <span>
#include <string>

#include "common/field_rows.h"

namespace tagmend::test {
namespace {

TEST(ValueMap, NamesGiveNumbers) {
  constexpr std::int64_t none = -1;
  const struct {
    const char* field;
    std::uint32_t layout;
    const char* text;
    std::int64_t value;
  } cases[] = {
      {"orient", any_layout, "1", 1},
      {"orient", any_layout, "fh-rr", 7},
      {"orient", any_layout, "FV RR", 7},
      {"orient", any_layout, "fv-rr", none},
      {"orient", any_layout, "u", 9},
      {"res-unit", any_layout, "cm", 3},
      {"tf-res-unit", any_layout, "", none},
      {"colour-space", any_layout, "uncalibrated", 65535},
      {"gps-alt-ref", any_layout, "sea level      ", 0},
      {"gps-alt-ref", any_layout, "sea level", none},
      {"meter-mode", any_layout, "multi-spot", 4},  // the description
      {"mns2-embedded-profile", any_layout, "yes ", 1},
      // An entry without a name is found by an empty text.
      {"cn-meter-mode", any_layout, "", 0},
      // The earlier of two entries with one name.
      {"cn-focus-mode", any_layout, "single", 0},
      // The layout decides.
      {"cs-digi-zoom", any_layout, "2x", 65537},
      // Numbers beyond 16 bits and negative ones.
      {"mns1-white-bal", any_layout, "a1-manual", 125829120},
      {"n3-saturation", any_layout, "-1", 65535},
  };
  for (const auto& [name, layout, text, value] : cases) {
    SCOPED_TRACE(std::string(name) + "=" + text);
    const ValueMapEntry* entry = map_lookup(field_named(name).value_map, layout, text);
    EXPECT_EQ(entry ? std::int64_t{entry->value} : none, value);
  }
}

TEST(ValueMap, NamesGiveBytes) {
  const struct {
    const char* field;
    const char* text;
    std::string bytes;  ///< empty when nothing is found
  } cases[] = {
      {"gps-lat-ref", "N", {'N', 0}},
      {"gps-speed-unit", "miles", ""},
      {"n3-flash-comp", "-3.00", "\xEE\x01\x06" + std::string(1, '\0')},
      {"n3-focus-posn", "af-right", {1, 4, 0, 0x10}},
      {"pn-spot-mode", "on1", {0, 1}},
      {"px-lens-id", "smc pentax da 18-55mm f3.5-f5.6 al", "\x04\xFC"},
  };
  for (const auto& [name, text, bytes] : cases) {
    SCOPED_TRACE(std::string(name) + "=" + text);
    const ValueMapBytesEntry* entry =
        map_lookup_bytes(field_named(name).value_map_bytes, any_layout, text);
    const std::string found =
        entry ? std::string(entry->bytes, entry->bytes + entry->length) : std::string();
    EXPECT_EQ(found, bytes);
  }
}

TEST(ValueMap, ValuesGiveEntries) {
  EXPECT_STREQ(map_find_value(field_named("orient").value_map, 0, 7)->description, "FV RR");
  EXPECT_EQ(map_find_value(field_named("orient").value_map, 0, 10), nullptr);
  EXPECT_STREQ(map_find_value(field_named("cn-set-button").value_map, 1, 2)->description,
               "Change ISO Speed");
  const ValueMapBytesEntry* lenses = field_named("px-lens-id").value_map_bytes;
  const std::uint8_t sigma[] = {0x03, 0x2C, 0x00};
  const std::span bytes(sigma);
  EXPECT_STREQ(map_find_bytes(lenses, 3, bytes.first(2))->nickname, "sigma01");
  EXPECT_EQ(map_find_bytes(lenses, 3, bytes), nullptr);
  EXPECT_EQ(map_find_bytes(lenses, 3, bytes.first(1)), nullptr);
  EXPECT_EQ(map_find_bytes(lenses, 3, {}), nullptr);
  EXPECT_EQ(map_find_bytes(nullptr, 0, {}), nullptr);
  EXPECT_EQ(map_lookup(nullptr, any_layout, "x"), nullptr);
}

}  // namespace
}  // namespace tagmend::test
