// What a JPEG or TIFF file holds, found by a walk of its own: the program's reader is not asked.
// Two files whose maps are equal hold the same metadata and images, wherever these lie in them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <map>
#include <numeric>
#include <string>
#include <utility>

#include "common/image_builder.h"
#include "common/maker_cameras.h"

namespace tagmend::test {

/// Path → value. Fields of numbers have the values as big-endian numbers, fractions reduced, behind
/// the type.
using Holdings = std::map<std::string, Bytes>;

struct FileWalk {
  const Bytes& file;
  const Camera& camera;  ///< whose maker note the file has
  Holdings& found;
  std::size_t base = 0;
  bool big_endian = true;

  /// Bytes behind the end of the file count as zeros.
  [[nodiscard]] std::uint32_t number(std::size_t at, std::size_t size) const {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
      const std::size_t place = at + (big_endian ? i : size - 1 - i);
      value = value << 8U | (place < file.size() ? file[place] : 0U);
    }
    return value;
  }
  [[nodiscard]] Bytes part(std::size_t at, std::size_t size) const {
    const std::size_t start = std::min(at, file.size());
    const auto first = file.begin() + static_cast<std::ptrdiff_t>(start);
    return {first, first + static_cast<std::ptrdiff_t>(std::min(size, file.size() - start))};
  }
};

namespace walk {

inline std::string hex(std::uint32_t value) {
  char text[16];
  std::snprintf(text, sizeof text, "%02x", value);
  return text;
}

inline std::string characters(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

/// Datasets are told by their values: a TIFF file holds them twice.
inline void datasets(const FileWalk& at, std::size_t pos, std::size_t end,
                     const std::string& path) {
  while (pos + 5 <= end && at.file[pos] == 0x1C) {
    const std::size_t size = at.file[pos + 3] * 256U + at.file[pos + 4];
    at.found[path + "iptc " + std::to_string(at.file[pos + 1]) + ":" +
             std::to_string(at.file[pos + 2]) + "=" + characters(at.part(pos + 5, size))];
    pos += 5 + size;
  }
}

inline void resources(FileWalk at, std::size_t pos, std::size_t end, const std::string& path) {
  const std::size_t start = pos;
  at.big_endian = true;
  while (pos + 12 <= end) {
    const std::uint32_t id = at.number(pos + 4, 2);
    const std::size_t name_size = at.number(pos + 6, 1);
    const std::string name = characters(at.part(pos + 7, name_size));
    pos = start + layout::even(pos + 7 + name_size - start);
    const std::size_t size = at.number(pos, 4);
    pos += 4;
    if (id == 1028) {
      datasets(at, pos, pos + size, path);
    } else {
      // Of a copyright flag, the padding is carried along.
      at.found[path + "resource " + std::to_string(id) + " " + name] =
          at.part(pos, id == 1034 ? 1 : size);
    }
    pos += layout::even(size);
  }
}

inline void ifd(const FileWalk& at, std::size_t pos, const std::string& path);

inline void maker_note(FileWalk at, std::size_t pos, const std::string& path) {
  const Camera& camera = at.camera;
  at.found[path + " header"] = at.part(pos, camera.prefix.size());
  const std::size_t inside = pos + camera.prefix.size();
  if (camera.base == Base::inner) {
    at.base = inside;
    at.big_endian = at.file[inside] == 'M';
    ifd(at, inside + at.number(inside + 4, 4), path + "/");
    return;
  }
  at.base = camera.base == Base::start ? pos : at.base;
  if (camera.order != NoteOrder::file) {
    at.big_endian = camera.order == NoteOrder::big;
  }
  ifd(at, inside, path + "/");
}

/// An IFD entry.
struct Field {
  std::uint32_t tag, type, count;
  std::size_t value;  ///< position
};

inline std::uint32_t number_of(const FileWalk& at, const Field& field, std::size_t index) {
  const std::size_t size = layout::number_size(static_cast<std::uint16_t>(field.type));
  return at.number(field.value + size * index, size);
}

inline Bytes value_of(const FileWalk& at, const Field& field) {
  const auto type = static_cast<std::uint16_t>(field.type);
  const std::size_t size = layout::number_size(type);
  const bool fraction = layout::type_size(type) == 8;
  Bytes out = {static_cast<std::uint8_t>(type)};
  for (std::size_t i = 0; i < (fraction ? 2 : 1) * std::size_t{field.count}; ++i) {
    std::uint32_t number = number_of(at, field, i);
    if (fraction) {
      const std::uint32_t divisor = std::gcd(number, number_of(at, field, i ^ 1U));
      number = divisor > 1 ? number / divisor : number;
    }
    put(out, out.size(), number, size, true);
  }
  return out;
}

/// Image data by its offsets and sizes.
inline void images(const FileWalk& at, const std::string& path, const Field& offsets,
                   const Field& sizes) {
  for (std::size_t i = 0; i < offsets.count; ++i) {
    at.found[path + hex(offsets.tag) + " image " + std::to_string(i)] =
        at.part(at.base + number_of(at, offsets, i), number_of(at, sizes, i));
  }
}

inline void nested(const FileWalk& at, const std::string& path, const Field& field) {
  // Of a single IFD, the value is its offset; of several, it refers to the offsets.
  for (std::size_t i = 0; i < field.count; ++i) {
    std::size_t pos = at.base + at.number(field.value + 4 * i, 4);
    pos += field.tag == 0x2001 ? 20 : 0;  // "[Ricoh Camera Info]"
    ifd(at, pos, path + "." + std::to_string(i) + "/");
  }
}

inline void ifd(const FileWalk& at, std::size_t pos, const std::string& path) {
  const std::size_t count = at.number(pos, 2);
  std::map<std::uint32_t, Field> locators;
  for (std::size_t entry = pos + 2; entry < pos + 2 + 12 * count; entry += 12) {
    Field field{at.number(entry, 2), at.number(entry + 2, 2), at.number(entry + 4, 4), entry + 8};
    const std::size_t size =
        field.count * layout::type_size(static_cast<std::uint16_t>(field.type));
    if (size > 4) {
      field.value = at.base + at.number(entry + 8, 4);
    }
    const bool in_note = path.find("927c/") != std::string::npos;
    const std::string name = path + hex(field.tag);
    switch (in_note && field.tag != 0x0201 && field.tag != 0x0202 ? field.tag << 16U : field.tag) {
      case 0x0111:
      case 0x0117:
      case 0x0144:
      case 0x0145:
      case 0x0201:
      case 0x0202:
        locators[field.tag] = field;
        break;
      case 0x014A:
      case 0x8769:
      case 0x8825:
      case 0xA005:
      case 0x2001'0000:
        nested(at, name, field);
        break;
      case 0x83BB:
        datasets(at, field.value, field.value + size, path);
        break;
      case 0x8649:
        resources(at, field.value, field.value + size, path);
        break;
      default:
        if (field.tag == 0x927C && at.camera.has_ifd()) {
          maker_note(at, field.value, name);
        } else if (in_note && field.tag == 0x0011 && at.camera.kind == IfdKind::nikon3) {
          nested(at, name, field);
        } else {
          at.found[name] = value_of(at, field);
        }
    }
  }
  for (const auto& [offsets, sizes] :
       {std::pair{0x0111U, 0x0117U}, {0x0144U, 0x0145U}, {0x0201U, 0x0202U}}) {
    images(at, path, locators[offsets], locators[sizes]);
  }
  if (const std::uint32_t next = at.number(pos + 2 + 12 * count, 4); next != 0) {
    ifd(at, at.base + next, path + "next/");
  }
}

inline void tiff(FileWalk at, std::size_t base) {
  at.base = base;
  at.big_endian = at.file[base] == 'M';
  ifd(at, base + at.number(base + 4, 4), "tiff/");
}

inline void jpeg(const FileWalk& at) {
  std::map<std::string, int> seen;
  std::size_t pos = 2;
  while (at.number(pos, 2) != 0xFFDA && pos < at.file.size()) {
    const std::size_t end = pos + 2 + at.number(pos + 2, 2);
    const std::string start = hex(at.file[pos + 1]) +
                              characters(at.part(pos + 4, std::min<std::size_t>(end - pos - 4, 4)));
    if (start == "e1Exif") {
      tiff(at, pos + 10);
    } else if (start == "edPhot") {
      resources(at, pos + 18, end, "");
    } else {
      at.found["segment " + start + " " + std::to_string(seen[start]++)] = at.part(pos, end - pos);
    }
    pos = end;
  }
  at.found["image"] = at.part(pos, at.file.size());
}

}  // namespace walk

inline Holdings holdings_of(const Bytes& file, const Camera& camera) {
  Holdings found;
  const FileWalk at{file, camera, found};
  file.at(0) == 0xFF ? walk::jpeg(at) : walk::tiff(at, 0);
  return found;
}

}  // namespace tagmend::test
