// The decoders behind decode_by_kind, and what they share.
#pragma once

#include <cstdint>

#include "read/decode.h"

namespace tagmend {

/// Shows the value of one kind of IFD. `entry` is the field's entry, not stored yet.
using KindDecoder = void (*)(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                             ReadContext& context);

void decode_canon(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                  ReadContext& context);
void decode_minolta(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                    ReadContext& context);
void decode_nikon2(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                   ReadContext& context);
void decode_olympus(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                    ReadContext& context);

/// Makers of whose values only one or two have a form of their own.
void decode_by_tag_rule(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                        ReadContext& context);

/// A number through a map of numbers, as decode_value_map shows it.
void decode_map_number(const ValueMapEntry* map, std::uint32_t maker_note_kind,
                       std::uint32_t number, TextBuffer& text);

}  // namespace tagmend
