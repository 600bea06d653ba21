// The table of maker-note layouts.
#include "read/maker_note.h"

namespace tagmend {
namespace {

/// The bytes with which a maker note begins, in front of its IFD.
struct Prefix {
  std::uint16_t length = 0;
  std::array<std::uint8_t, 12> bytes{};
};

/// All characters of a literal but its terminating NUL.
template <std::size_t size>
constexpr Prefix prefix(const char (&text)[size]) {
  Prefix result{.length = size - 1};
  for (std::size_t i = 0; i + 1 < size; ++i) {
    result.bytes[i] = static_cast<std::uint8_t>(text[i]);
  }
  return result;
}

constexpr Prefix no_prefix{};
constexpr Prefix fujifilm = prefix("FUJIFILM\x0C\0\0\0");
constexpr Prefix pentax = prefix("AOC\0\0\0");
constexpr Prefix pentax_little_endian = prefix("AOC\0II");
constexpr Prefix pentax_big_endian = prefix("AOC\0MM");
constexpr Prefix epson = prefix("EPSON\0\x01\0");
constexpr Prefix olympus1 = prefix("OLYMP\0\x01\0");
constexpr Prefix olympus2 = prefix("OLYMP\0\x02\0");
constexpr Prefix casio = prefix("QVC\0\0\0");
constexpr Prefix nikon1 = prefix("Nikon\0\x01\0");
constexpr Prefix nikon3 = prefix("Nikon\0\x02\0\0\0");
constexpr Prefix nikon3_1 = prefix("Nikon\0\x02\x10\0\0");
constexpr Prefix panasonic = prefix("Panasonic\0\0\0");
constexpr Prefix ricoh = prefix("Ricoh\xAA\0\0");

using enum MakerStructure;
using enum MakerByteOrder;

/// A maker note that is an IFD.
constexpr MakerDef ifd(std::uint32_t kind, const char* make, const char* model,
                       const Prefix& start = no_prefix, MakerStructure structure = shared_base,
                       MakerByteOrder order = as_file) {
  return {kind, true, structure, order, start.length, start.bytes, make, model};
}

/// A maker note that is an ordinary value.
constexpr MakerDef opaque(std::uint32_t kind, const char* make, const char* model) {
  return {kind, false, value, as_file, 0, {}, make, model};
}

constexpr std::uint32_t end_kind = 0xFFFFFFFF;

}  // namespace

// Trailing blanks of makes and models are compared like other characters. The order decides: the
// first row that fits a camera is taken. An earlier row hides 5, 6 and 29 to 31 from that choice;
// they are reached by their prefixes.
constexpr std::array<MakerDef, maker_table_size> maker_table = {{
    opaque(maker_generic, "Generic", "NeVer MaTcH"),
    ifd(1, "Canon", ""),
    ifd(2, "FUJIFILM", "", fujifilm, own_base, little_endian),
    ifd(3, "PENTAX Corporation ", "", pentax),
    ifd(4, "PENTAX Corporation", "", pentax),
    ifd(5, "PENTAX Corporation", "", pentax_little_endian, shared_base, little_endian),
    ifd(6, "PENTAX Corporation", "", pentax_big_endian, shared_base, big_endian),
    ifd(7, "SEIKO EPSON CORP.", "", epson),
    ifd(8, "OLYMPUS OPTICAL CO.,LTD", "C920Z,D450Z", olympus1),
    ifd(9, "OLYMPUS OPTICAL CO.,LTD", "E-20,E-20N,E-20P", olympus1),
    ifd(10, "OLYMPUS OPTICAL CO.,LTD", "E-10        ", olympus1),
    ifd(11, "OLYMPUS CORPORATION    ", "", olympus2),
    ifd(12, "OLYMPUS OPTICAL CO.,LTD", "", olympus1),
    ifd(13, "CASIO", "QV-2000UX"),
    ifd(14, "CASIO", "QV-8000SX"),
    ifd(15, "CASIO", "QV-3500EX"),
    ifd(16, "CASIO", ""),
    ifd(17, "CASIO COMPUTER CO.,LTD ", "", casio),
    ifd(18, "Minolta Co., Ltd.", "DiMAGE 5"),
    ifd(19, "Minolta Co., Ltd.", "DiMAGE 7Hi"),
    opaque(20, "Minolta Co., Ltd.", "DiMAGE G500"),
    ifd(21, "KONICA MINOLTA ", ""),
    ifd(22, "Minolta Co., Ltd.", ""),
    ifd(23, "NIKON", "E5000"),
    ifd(24, "NIKON CORPORATION", "NIKON D1 "),
    ifd(25, "NIKON CORPORATION", "NIKON D1H"),
    ifd(26, "NIKON CORPORATION", "NIKON D1X"),
    ifd(27, "NIKON", ""),
    ifd(28, "NIKON CORPORATION", ""),
    ifd(29, "NIKON", "", nikon1),
    ifd(30, "NIKON CORPORATION", "", nikon3, tiff_header),
    ifd(31, "NIKON CORPORATION", "", nikon3_1, tiff_header),
    ifd(32, "Panasonic", "", panasonic),
    ifd(33, "RICOH      ", "", ricoh),
    opaque(maker_undetermined, "Not YeT Determined", "Not YeT Determined"),
    opaque(end_kind, "End of Table Mark", ""),
}};

namespace {

constexpr bool rows_stand_at_their_kind() {
  for (std::size_t i = 0; i + 1 < maker_table.size(); ++i) {
    if (maker_table[i].kind != i) {
      return false;
    }
  }
  return maker_table.back().kind == end_kind;
}
static_assert(rows_stand_at_their_kind());

}  // namespace

const MakerDef& maker_def(std::uint32_t kind) {
  return maker_table[kind < maker_table.size() - 1 ? kind : maker_generic];
}

}  // namespace tagmend
