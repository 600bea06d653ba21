// The stored form of an APP13 segment, on which its readers and its builder must agree: Photoshop's
// header, image resource blocks, and in one of them IPTC datasets (IPTC IIM 4, chapter 3).
#pragma once

#include <cstdint>
#include <string_view>

namespace tagmend {

/// What the payload begins with; a NUL follows, and resource blocks behind it.
inline constexpr std::string_view photoshop_header = "Photoshop 3.0";

/// What every resource block begins with.
inline constexpr std::string_view block_signature = "8BIM";

/// What every dataset begins with.
inline constexpr std::uint8_t dataset_marker = 0x1C;

/// Bytes of a dataset in front of its value: marker, record, dataset and length.
inline constexpr std::uint32_t dataset_header_size = 1 + 1 + 1 + 2;

}  // namespace tagmend
