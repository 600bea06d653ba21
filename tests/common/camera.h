// The photograph that most whole runs start from.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/jpeg_builder.h"

namespace tagmend::test {

using Chain = std::vector<Ifd>;

/// The versions that an edit gives to new IFDs.
inline Entry exif_version() { return octets(0x9000, kUndefined, "0220"); }
inline Entry gps_version() { return octets(0x0000, kByte, Bytes{2, 0, 0, 0}); }

/// The value of a user comment (Exif 2.2): the name of its character code in 8 bytes, and the text.
inline std::string user_comment(const std::string& code, const std::string& value) {
  return code + std::string(8 - code.size(), '\0') + value;
}

/// A camera's metadata: IFD0 with EXIF, Interoperability and GPS IFDs, and a thumbnail in IFD1.
inline Chain camera() {
  Ifd thumbnail = ifd_of({shorts(0x0103, {6}), rationals(0x011A, {72, 1}),
                          image_locator(0x0201, kLong), image_locator(0x0202, kLong)});
  thumbnail.thumbnail = noise(331, 9);
  const Ifd main = ifd_of({
      text(0x010F, "Acme"),
      text(0x0110, "Model 1"),
      shorts(0x0112, {1}),
      rationals(0x011A, {72, 1}),
      rationals(0x011B, {72, 1}),
      shorts(0x0128, {2}),
      text(0x0132, "2004:05:02 11:12:13"),
      pointer(0x8769,
              {
                  rationals(0x829A, {1, 60}),
                  rationals(0x829D, {28, 10}),
                  exif_version(),
                  text(0x9003, "2004:05:01 10:20:30"),
                  octets(0x927C, kUndefined, noise(37, 4)),
                  octets(0x9286, kUndefined, user_comment("ASCII", "a word")),
                  octets(0xA000, kUndefined, "0100"),
                  shorts(0xA001, {1}),
                  shorts(0xA002, {640}),
                  shorts(0xA003, {480}),
                  pointer(0xA005, {text(0x0001, "R98"), octets(0x0002, kUndefined, "0100")}),
              }),
      pointer(0x8825, {gps_version(), text(0x0001, "N"), rationals(0x0002, {45, 1, 27, 1, 30, 1})}),
  });
  return {main, thumbnail};
}

/// What an edit makes for a photograph without metadata, with these fields in its EXIF IFD.
inline Chain minimal(std::vector<Entry> exif_fields = {}) {
  exif_fields.insert(exif_fields.begin(), exif_version());
  return {ifd_of({octets(0x0131, kAscii, "Orvale V2.7.0"), pointer(0x8769, exif_fields)})};
}

/// The same metadata, signed.
inline Chain with_artist(Chain chain, std::string_view artist) {
  set(chain[0], text(0x013B, artist));
  return chain;
}

inline Ifd& exif(Chain& chain) { return nested(chain[0], 0x8769); }
inline Ifd& gps(Chain& chain) { return nested(chain[0], 0x8825); }

/// A JPEG file with this metadata, before an edit and as the writer lays it out.
inline Bytes source_photo(bool big_endian, const Chain& chain) {
  return jpeg({app0_jfif(), source_exif(big_endian, chain), app2_icc(), picture()});
}
inline Bytes written_photo(bool big_endian, const Chain& chain) {
  return jpeg({app0_jfif(), written_exif(big_endian, chain), app2_icc(), picture()});
}

}  // namespace tagmend::test
