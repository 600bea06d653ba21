#include "write/apply_edits.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "encode/encode_field.h"
#include "support/message.h"
#include "write/insert_position.h"
#include "write/table_order.h"
#include "write/writer_fields.h"

namespace tagmend {
namespace {

constexpr auto type_long = static_cast<std::uint16_t>(DataType::unsigned_long);

// ---- Edits that the program adds to those of the user -------------------------------------------

/// -s: the size that the JPEG frame header gives.
void apply_size_edits(const ImageFile& image, EditList& edits) {
  if (image.image_width == 0 || image.image_height == 0) {
    print_error("Error: %s. Could not determine actual image dimensions.\n",
                image.file_name.data());
    return;
  }
  if (edits.count + 2 >= EditList::capacity) {
    print_error("Can't set EXIF data to actual image values, too many fields editted.\n");
    return;
  }
  std::array<char, 16> number;
  const auto append_number = [&](std::uint16_t field, std::uint32_t value) {
    std::snprintf(number.data(), number.size(), "%d", static_cast<int>(value));
    return append_edit(edits, field, type_long, number.data());
  };
  static_cast<void>(append_number(writer_fields().width, image.image_width) &&
                    append_number(writer_fields().height, image.image_height));
}

bool holds_field(const ImageFile& image, const FieldDef& def) {
  return std::ranges::any_of(image.table(), [&](const FieldEntry& entry) {
    return entry.tag == def.tag && entry.kind == def.ifd_kind;
  });
}

/// A TIFF file keeps its IPTC data in two fields of IFD0; they are set from the block built for
/// this file, or go when nothing is left for them.
void append_iptc_field_edits(const EditContext& context, EditList& edits) {
  const App13Result& app13 = context.app13;
  if (!app13.built || file_type_info(context.image.file_type).has_iptc_segment) {
    return;
  }
  if (edits.count + 2 > EditList::capacity) {
    print_warning("Warning: Can't add IPTC fields - edit table full\n");
    return;
  }
  const auto append_field_edit = [&](std::uint16_t row, bool has_value) {
    if (has_value) {
      const auto type = static_cast<std::uint16_t>(field_table_defs[row].data_type);
      static_cast<void>(append_edit(edits, row, type, ""));
    } else if (holds_field(context.image, field_table_defs[row])) {
      static_cast<void>(append_removal(edits, row));
    }
  };
  append_field_edit(writer_fields().iptc_fields, !app13.iptc().empty());
  append_field_edit(writer_fields().photoshop, !app13.blocks().empty());
}

bool adds_field(const EditList& edits, std::uint16_t row) {
  return std::ranges::any_of(edits.list(), [&](const EditEntry& edit) {
    return edit.op == EditOp::add && edit.field == row;
  });
}

/// A new EXIF or GPS IFD must hold the version of the standard that it follows (Exif 2.2, 4.6.5 and
/// 4.6.6); a version that the user asks for stands.
void append_version_edit(IfdKind kind, EditList& edits) {
  if (edits.count + 1 >= EditList::capacity) {
    return;
  }
  std::uint16_t row = 0;
  std::string_view version;
  if (kind == IfdKind::image) {
    row = writer_fields().exif_ver;
    version = new_exif_version;
  } else if (kind == IfdKind::gps) {
    row = writer_fields().gps_ver;
    version = "2.0.0.0";
  } else {
    return;
  }
  if (adds_field(edits, row)) {
    return;
  }
  const auto type = static_cast<std::uint16_t>(field_table_defs[row].data_type);
  static_cast<void>(append_edit(edits, row, type, version));
}

// ---- One edit -----------------------------------------------------------------------------------

/// The bytes of a new value.
struct NewValue {
  std::span<const std::uint8_t> bytes;
  std::uint32_t count = 0;
};

ErrorCode take_block(std::span<const std::uint8_t> block, std::uint16_t type, NewValue& value) {
  if (block.empty()) {
    return ErrorCode::invalid_value;
  }
  const std::uint64_t size = type_sizes[type];
  value.bytes = block;
  value.count = static_cast<std::uint32_t>((block.size() + size - 1) / size);
  return ErrorCode::ok;
}

ErrorCode make_value(const EditContext& context, EditEntry& edit, const InsertPosition& place,
                     NewValue& value) {
  if (edit.field == writer_fields().iptc_fields) {
    return take_block(context.app13.built ? context.app13.iptc() : NewValue{}.bytes, edit.type,
                      value);
  }
  if (edit.field == writer_fields().photoshop) {
    return take_block(context.app13.built ? context.app13.blocks() : NewValue{}.bytes, edit.type,
                      value);
  }
  const EncodeTarget target{.big_endian = place.ifd.big_endian,
                            .layout = context.image.maker_note_kind,
                            .early_check = false};
  const ErrorCode result = exif_encode_field(edit.field, target, edit.value.data(), edit.encoded,
                                             value.count, context.substitution);
  if (result != ErrorCode::ok) {
    return result;
  }
  const std::uint64_t size = value_size(edit.type, value.count);
  if (size > encoded_limit) {
    return ErrorCode::value_too_long;
  }
  value.bytes = std::span(edit.encoded).first(size);
  return ErrorCode::ok;
}

FieldEntry make_entry(const EditEntry& edit, const InsertPosition& place, const NewValue& value) {
  const FieldDef& def = field_table_defs[edit.field];
  FieldEntry entry;
  entry.kind = def.ifd_kind;
  entry.level = place.level;
  entry.seq = place.seq;
  entry.tag = def.tag;
  entry.def = edit.field;
  entry.type = edit.type;
  entry.count = value.count;
  entry.edited = true;
  entry.ifd = place.ifd;
  if (value_size(edit.type, value.count) <= entry.raw.size()) {
    std::ranges::copy(value.bytes.first(std::min(value.bytes.size(), entry.raw.size())),
                      entry.raw.begin());
  } else {
    entry.data = value.bytes;
  }
  return entry;
}

/// Gives the new entry the place behind entry `position`, moving those that share its index one on.
void insert_entry(ImageFile& image, FieldEntry& entry, int position) {
  std::size_t next = 0;
  if (position == before_all) {
    entry.index = 0;
    entry.edit_state = 0;
  } else {
    const FieldEntry& before = image.fields[static_cast<std::size_t>(position)];
    entry.index = before.index;
    entry.edit_state = static_cast<std::uint16_t>(before.edit_state + 1);
    next = static_cast<std::size_t>(position) + 1;
  }
  const std::uint16_t shared =
      position == before_all && image.field_count > 0 ? image.fields[0].index : entry.index;
  for (; next < image.field_count && image.fields[next].index == shared; ++next) {
    ++image.fields[next].edit_state;
  }
  static_cast<void>(append_field(image, entry));
  sort_by_index(image);
}

/// The place of an entry that an edit marked as deleted, so that it can be put back or taken.
struct DeletedEntry {
  bool found = false;
  std::uint16_t index = 0;
  std::uint16_t edit_state = 0;
  std::uint16_t level = 0;
  std::uint32_t seq = 0;
  IfdPlace ifd;
};

DeletedEntry delete_entry(ImageFile& image, const FieldDef& def) {
  for (FieldEntry& entry : image.table()) {
    if (entry.tag != def.tag || entry.kind != def.ifd_kind || entry.ifd.display_only) {
      continue;
    }
    const DeletedEntry deleted{true,        entry.index, entry.edit_state,
                               entry.level, entry.seq,   entry.ifd};
    entry.index = deleted_index;
    sort_by_index(image);
    return deleted;
  }
  return {};
}

/// A value that could not be encoded must not cost the file the value that it had. The entry just
/// marked stands in front of those of its edit state that earlier edits marked.
void restore_entry(ImageFile& image, const FieldDef& def, const DeletedEntry& deleted) {
  if (!deleted.found) {
    return;
  }
  for (FieldEntry& entry : image.table()) {
    if (entry.tag != def.tag || entry.kind != def.ifd_kind || !is_deleted(entry) ||
        entry.ifd.id != deleted.ifd.id || entry.edit_state != deleted.edit_state) {
      continue;
    }
    entry.index = deleted.index;
    sort_by_index(image);
    return;
  }
}

/// A field that was alone in its IFD leaves no other to go by, and where several IFDs are of one
/// kind (each page of a TIFF may have its EXIF IFD) the others are not its own: its new value takes
/// its own place.
void insert_in_place(ImageFile& image, FieldEntry& entry, const DeletedEntry& replaced) {
  entry.index = replaced.index;
  entry.edit_state = replaced.edit_state;
  static_cast<void>(append_field(image, entry));
  sort_by_index(image);
}

ErrorCode add_field(EditContext& context, EditList& edits, EditEntry& edit,
                    const DeletedEntry& replaced) {
  const FieldDef& def = field_table_defs[edit.field];
  InsertPosition place = find_insert_position(def.ifd_kind, def.tag, context.image);
  const bool in_other_ifd = !place.new_ifd && place.ifd.id != replaced.ifd.id;
  const bool in_place = replaced.found && replaced.index != deleted_index &&
                        (place.position == nowhere || in_other_ifd);
  if (in_place) {
    place = {.level = replaced.level, .seq = replaced.seq, .ifd = replaced.ifd};
  } else if (place.position == nowhere) {
    print_error("Can't add field %s, required IFD not found\n", def.description);
    return ErrorCode::field_not_present;
  }
  NewValue value;
  if (place.new_ifd) {
    append_version_edit(def.ifd_kind, edits);
  }
  const ErrorCode result = make_value(context, edit, place, value);
  if (result != ErrorCode::ok) {
    print_error("Can't add EXIF field %s (value '%s'): %s\n", def.description, edit.value.data(),
                error_text(result));
    return result;
  }
  FieldEntry entry = make_entry(edit, place, value);
  if (in_place) {
    insert_in_place(context.image, entry, replaced);
    return ErrorCode::ok;
  }
  if (place.new_ifd) {
    ++context.image.ifd_count;
  }
  insert_entry(context.image, entry, place.position);
  return ErrorCode::ok;
}

/// Applies one edit; `pending` is the failure of an earlier one, which a later addition clears.
void apply_edit(EditContext& context, EditList& edits, EditEntry& edit, ErrorCode& pending) {
  const FieldDef& def = field_table_defs[edit.field];
  const DeletedEntry deleted = delete_entry(context.image, def);
  if (edit.op == EditOp::remove) {
    if (!deleted.found) {
      print_warning("Warning: Could not delete field '%s', field not found\n", def.nickname);
    }
    return;
  }
  const ErrorCode result = add_field(context, edits, edit, deleted);
  if (result == ErrorCode::ok) {
    pending = ErrorCode::ok;
    return;
  }
  restore_entry(context.image, def, deleted);
  if (result != ErrorCode::field_not_present) {
    pending = result;
  }
}

/// Elements of array fields, and fields of a maker note that is carried over as one value, were
/// stored for display only.
void delete_display_entries(ImageFile& image) {
  for (FieldEntry& entry : image.table()) {
    if (entry.tag > 0xFFFF || entry.ifd.display_only) {
      entry.index = deleted_index;
    }
  }
  sort_by_index(image);
}

}  // namespace

ErrorCode apply_exif_edits(EditContext& context, EditList& edits) {
  ImageFile& image = context.image;
  if (context.options.set_size) {
    apply_size_edits(image, edits);
  }
  sort_by_index(image);
  append_iptc_field_edits(context, edits);

  ErrorCode pending = ErrorCode::ok;
  std::size_t next = 0;
  for (; next < edits.count && image.field_count < field_table_capacity; ++next) {
    apply_edit(context, edits, edits.entries[next], pending);
  }
  delete_display_entries(image);
  if (next < edits.count) {
    print_warning("Warning: Field table full. Some edit actions may not have been performed.\n");
  }
  drop_deleted(image);

  const bool has_ifd0 = std::ranges::any_of(
      image.table(), [](const FieldEntry& entry) { return entry.kind == IfdKind::camera; });
  if (!has_ifd0) {
    print_error("Error: Attempt to delete all Camera IFD fields. This is not allowed.\n");
    return ErrorCode::too_many_deleted;
  }
  return pending;
}

}  // namespace tagmend
