// The photograph that most whole runs start from.
#pragma once

#include <string_view>
#include <vector>

#include "common/image_builder.h"

namespace tagmend::test {

using Chain = std::vector<Ifd>;

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
                  octets(0x9000, kUndefined, "0220"),
                  text(0x9003, "2004:05:01 10:20:30"),
                  octets(0x927C, kUndefined, noise(37, 4)),
                  octets(0x9286, kUndefined, std::string_view("ASCII\0\0\0a word", 14)),
                  octets(0xA000, kUndefined, "0100"),
                  shorts(0xA001, {1}),
                  shorts(0xA002, {640}),
                  shorts(0xA003, {480}),
                  pointer(0xA005, {text(0x0001, "R98"), octets(0x0002, kUndefined, "0100")}),
              }),
      pointer(0x8825, {octets(0x0000, kByte, std::string_view("\2\0\0\0", 4)), text(0x0001, "N"),
                       rationals(0x0002, {45, 1, 27, 1, 30, 1})}),
  });
  return {main, thumbnail};
}

/// The same photograph, signed.
inline Chain camera_of(std::string_view artist) {
  Chain chain = camera();
  set(chain[0], text(0x013B, artist));
  return chain;
}

inline Ifd& exif(Chain& chain) { return nested(chain[0], 0x8769); }
inline Ifd& gps(Chain& chain) { return nested(chain[0], 0x8825); }

}  // namespace tagmend::test
