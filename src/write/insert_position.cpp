#include "write/insert_position.h"

#include <optional>

#include "write/ifd_tree.h"
#include "write/table_order.h"

namespace tagmend {
namespace {

std::size_t live_count(const ImageFile& image) {
  std::size_t count = image.field_count;
  while (count > 0 && is_deleted(image.fields[count - 1])) {
    --count;
  }
  return count;
}

/// Moves from `place` over the entries nested behind it, so that nothing comes between an IFD's
/// entry and its IFDs.
int behind_nested(const ImageFile& image, std::size_t place, std::uint16_t level) {
  const std::size_t live = live_count(image);
  while (place + 1 < live && image.fields[place + 1].level > level) {
    ++place;
  }
  return static_cast<int>(place);
}

/// Whether a new entry of the IFD at `level`, some of whose entries come later in the table, may
/// stand behind `entry` of another kind.
bool ends_search(const FieldEntry& entry, std::uint16_t level, std::uint32_t tag) {
  if (entry.level <= level) {
    return true;
  }
  return entry.level == level + 1 && (entry.ifd.parent & 0xFFFF) < (tag & 0xFFFF);
}

/// The search among the entries of a kind that the table holds; nothing when it holds none.
std::optional<InsertPosition> search_kind(IfdKind kind, std::uint32_t tag, const ImageFile& image) {
  InsertPosition result;
  bool seen = false;
  for (std::size_t place = live_count(image); place-- > 0;) {
    const FieldEntry& entry = image.fields[place];
    if (entry.kind == kind && !entry.ifd.display_only) {
      result.level = entry.level;
      result.seq = entry.seq;
      result.ifd = entry.ifd;
      seen = true;
      if ((entry.tag & 0xFFFF) < tag) {
        result.position = static_cast<int>(place);
        return result;
      }
    } else if (seen && ends_search(entry, result.level, tag)) {
      // An entry of the parent IFD is followed by this kind's own run, which the new entry opens.
      result.position = entry.level < result.level ? static_cast<int>(place)
                                                   : behind_nested(image, place, result.level);
      return result;
    }
  }
  if (!seen) {
    return std::nullopt;
  }
  result.position = before_all;
  return result;
}

int first_of_kind(IfdKind kind, const ImageFile& image) {
  for (std::size_t place = 0; place < live_count(image); ++place) {
    if (image.fields[place].kind == kind) {
      return static_cast<int>(place);
    }
  }
  return nowhere;
}

/// A new IFD that a pointer in IFD0 leads to: it takes the place of that pointer, but never one
/// before the first entry of IFD0.
int pointer_position(std::uint32_t pointer_tag, const ImageFile& image) {
  const auto found = search_kind(IfdKind::camera, pointer_tag, image);
  if (!found) {
    return nowhere;
  }
  return found->position == before_all ? first_of_kind(IfdKind::camera, image) : found->position;
}

/// The first IFD nested in one that lost all its own entries and that this pointer led to; nowhere
/// when there is none.
int first_orphan(std::uint32_t pointer_tag, const ImageFile& image) {
  for (std::size_t place = 0; place < live_count(image); ++place) {
    const FieldEntry& entry = image.fields[place];
    if (entry.level == 2 && usual_parent(entry.ifd.parent) == pointer_tag &&
        !entry.ifd.display_only) {
      return static_cast<int>(place);
    }
  }
  return nowhere;
}

/// The IFD that a pointer in IFD0 leads to, when the table has no entry of it. It takes in what was
/// nested in it before it lost its entries.
void place_behind_pointer(std::uint32_t pointer_tag, const ImageFile& image,
                          InsertPosition& result) {
  result.level = 1;
  result.ifd.parent = pointer_tag;
  if (const int camera = first_of_kind(IfdKind::camera, image); camera != nowhere) {
    result.ifd.around[0] = image.fields[static_cast<std::size_t>(camera)].ifd.id;
  }
  const int orphan = first_orphan(pointer_tag, image);
  if (orphan > 0) {
    result.ifd.around = image.fields[static_cast<std::size_t>(orphan)].ifd.around;
    result.ifd.id = result.ifd.around[1];
    result.position = orphan - 1;
  } else {
    result.position = pointer_position(pointer_tag, image);
  }
}

InsertPosition new_ifd_position(IfdKind kind, const ImageFile& image) {
  InsertPosition result;
  result.new_ifd = true;
  result.ifd = {.id = image.ifd_count,
                .parent = root_main,
                .source_base = image.tiff_header_pos,
                .big_endian = image.big_endian};
  switch (kind) {
    case IfdKind::thumbnail:
      // It comes second in the chain: behind all of IFD0, and in front of further IFDs.
      result.seq = 1;
      result.position =
          static_cast<int>(first_ifd(image.table(), {0, live_count(image)}, result.level).end) - 1;
      return result;
    case IfdKind::gps:
      place_behind_pointer(tag_gps_ifd, image, result);
      return result;
    case IfdKind::image:
      place_behind_pointer(tag_exif_ifd, image, result);
      return result;
    default:
      result.position = nowhere;
      return result;
  }
}

}  // namespace

InsertPosition find_insert_position(IfdKind kind, std::uint32_t tag, const ImageFile& image) {
  if (const auto found = search_kind(kind, tag, image)) {
    return *found;
  }
  return new_ifd_position(kind, image);
}

}  // namespace tagmend
