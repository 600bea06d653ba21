// Text conversion between the local, EXIF and IPTC character sets and UTF-16LE, through iconv.
// Every conversion opens and closes its own descriptor. A failed conversion keeps what was
// converted and prints a warning; after a failed open the output is empty. No result exceeds the
// output's size except where a plain copy tells the input's length, as said below.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "support/byte_text.h"
#include "support/settings.h"

namespace tagmend {

/// Sets every default of the settings and reads ORVALE_UNICODE_COMMENT, ORVALE_CS_LOCAL,
/// ORVALE_CS_EXIF and ORVALE_CS_IPTC.
void cs_init();

/// Whether iconv can convert from UTF-16LE to the set.
[[nodiscard]] bool cs_valid(const char* charset);

/// Stores a name, cut to 99 characters, in upper case.
void cs_set_name(CharsetName& destination, std::string_view name);

/// UTF-16LE to local; terminated; returns the bytes written + 1.
std::size_t cs_from_utf16(ByteSpan input, std::span<char> output);

/// Local to UTF-16LE; not terminated; returns the bytes written.
std::size_t cs_to_utf16(std::string_view input, std::span<std::uint8_t> output);

/// IPTC to local; terminated; returns the bytes written + 1.
std::size_t cs_iptc_to_local(ByteSpan input, std::span<char> output);

/// Local to IPTC; returns the bytes written, or the input's length when there is no IPTC set (as
/// many bytes as fit are then copied).
std::size_t cs_local_to_iptc(std::string_view input, std::span<std::uint8_t> output);

/// EXIF to local: terminated, returns the bytes written + 1; without an EXIF set a plain copy of as
/// many bytes as fit, not terminated, returns the input's length.
std::size_t cs_exif_to_local(ByteSpan input, std::span<char> output);

/// Local to EXIF; returns as cs_local_to_iptc does.
std::size_t cs_local_to_exif(std::string_view input, std::span<std::uint8_t> output);

}  // namespace tagmend
