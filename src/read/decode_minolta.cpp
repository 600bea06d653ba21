// Minolta maker notes: the elements of the camera settings arrays.
#include <cmath>

#include "read/decode_array.h"
#include "read/decode_makers.h"
#include "read/value_reader.h"

namespace tagmend {
namespace {

/// The one layout (DiMAGE 7Hi) whose arrays use element 52.
constexpr std::uint32_t maker_minolta_7hi = 19;
constexpr std::uint32_t element_of_7hi = 52;

/// Elements that hold a measure: its format and what the stored number means.
struct MeasureRule {
  std::uint32_t element;
  const char* format;
  double (*measure)(double stored);
};

constexpr auto apex_from_one = [](double stored) { return stored * 0.125 - 1.0; };
constexpr auto apex_from_six = [](double stored) { return stored * 0.125 - 6.0; };
constexpr auto white_balance = [](double stored) { return std::pow(2.0, stored * 0.00390625); };

constexpr MeasureRule measure_rules[] = {
    {9, "%.2f", apex_from_one},                                       // film speed
    {10, "%.2f", apex_from_six},                                      // time
    {11, "%.2f", apex_from_one},                                      // aperture
    {14, "%.2f", [](double stored) { return stored / 3.0 - 2.0; }},   // compensation
    {19, "%.3f", [](double stored) { return stored * 0.00390625; }},  // focal length
    {20, "%.3f", [](double stored) { return stored / 1000.0; }},      // focus distance
    {24, "%3.1f", [](double stored) { return std::pow(2.0, stored * 0.0625 - 0.5); }},
    {29, "%3.2f", white_balance},                                       // red
    {30, "%3.2f", white_balance},                                       // green
    {31, "%3.2f", white_balance},                                       // blue
    {36, "%3.2f", [](double stored) { return (stored - 6.0) / 3.0; }},  // flash
    {45, "%3.2f", apex_from_six},                                       // brightness
};

const MeasureRule* find_measure(std::uint32_t element) {
  for (const MeasureRule& rule : measure_rules) {
    if (rule.element == element) {
      return &rule;
    }
  }
  return nullptr;
}

/// Year, month, day or hour, minute, second: 16, 8 and 8 bits.
void decode_three_parts(std::uint32_t stored, const char* format, TextBuffer& text) {
  append_format(text, format, static_cast<int>(stored >> 16), static_cast<int>(stored >> 8 & 0xFF),
                static_cast<int>(stored & 0xFF));
}

bool decode_element(std::uint32_t element, std::uint32_t, ByteCursor& cursor, TextBuffer& text) {
  if (const MeasureRule* rule = find_measure(element)) {
    // The cameras' own software works in single precision up to here.
    const auto stored = static_cast<float>(cursor_get_u32(cursor));
    append_format(text, rule->format, finite_or_zero(rule->measure(double{stored})));
    return true;
  }
  switch (element) {
    case 17:  // interval length, stored as one less
      append_format(text, "%d", static_cast<std::int32_t>(cursor_get_u32(cursor) + 1));
      return true;
    case 22:
      decode_three_parts(cursor_get_u32(cursor), "%d/%2d/%2d", text);
      blanks_to_zeros(text, 5, 6);
      blanks_to_zeros(text, 8, 9);
      return true;
    case 23:
      decode_three_parts(cursor_get_u32(cursor), "%d:%2d:%2d", text);
      blanks_to_zeros(text, 0, text.length);
      return true;
    case 32:  // saturation, contrast, colour filter: 3 is neutral
    case 33:
    case 42:
      append_format(text, "%d", static_cast<std::int32_t>(cursor_get_u32(cursor) - 3));
      return true;
    default:
      return false;
  }
}

}  // namespace

void decode_minolta(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                    ReadContext& context) {
  ByteCursor elements = value.cursor;
  decode_generic(value, text);
  if (value.tag != 0x0001 && value.tag != 0x0003) {
    return;
  }
  const bool all_numbers = context.image.maker_note_kind == maker_minolta_7hi;
  const ArrayLayout layout = {.tag = value.tag,
                              .type = DataType::unsigned_long,
                              .length = value.count / 4,
                              .unused_number = all_numbers ? 0 : element_of_7hi,
                              .decode = decode_element,
                              .trace_format = trace_element_zeros};
  elements.error_count = 0;
  append_array_elements(elements, entry, layout, context);
  value.cursor.error_count += elements.error_count;
}

}  // namespace tagmend
