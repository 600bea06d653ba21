// The record of the file in work: its identity, its type, where its metadata lies, and the table of
// its fields. There is one, which every read starts afresh.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <type_traits>

#include "dictionary/field_def.h"
#include "support/error_code.h"
#include "support/local_time.h"

namespace tagmend {

enum class FileType : std::uint16_t {
  fujifilm_raf = 0,
  minolta_mrw = 1,
  jpeg = 2,
  tiff = 3,
  wave_audio = 4,
  canon_crw = 5,
  eps = 6,
  eps_dos = 7,
  unknown = 8,
};

struct FileTypeInfo {
  const char* name;
  std::uint32_t jpeg_pointer_pos;  ///< RAF: file offset of the 16-bit pointer to the JPEG image
  std::uint32_t value;             ///< 4 for MRW; read by nothing
  bool editable;
  bool has_iptc_segment;  ///< keeps IPTC data in a block of its own, not in EXIF fields
  bool is_jpeg;
  bool is_eps;
};

/// By FileType code.
extern const std::array<FileTypeInfo, 9> file_types;

inline const FileTypeInfo& file_type_info(FileType type) {
  const auto code = static_cast<std::size_t>(type);
  return file_types[code < file_types.size() ? code : 8];
}

/// How deep IFDs may nest: the deepest real files (raw images in sub-IFDs with maker notes) need 4.
inline constexpr std::uint16_t max_ifd_level = 8;

/// Ids of the IFDs that another lies in, by level.
using EnclosingIfds = std::array<std::uint16_t, max_ifd_level>;

/// What the reader tells of the IFD that an entry was read from; the same for all its entries.
struct IfdPlace {
  std::uint16_t id = 0;  ///< tells IFDs of one file apart: a number in reading order
  EnclosingIfds around{};
  std::uint32_t parent = 0;      ///< tag of the pointer that led to it, or a root code
  std::int64_t source_base = 0;  ///< file offset in the source from which its offsets count
  bool big_endian = false;       ///< byte order of the IFD and of its values in the source
  bool display_only = false;     ///< shown but not written: another entry holds its bytes
};

/// The display text of a field: at most 1999 characters and a NUL; what stands behind it is
/// nobody's. Entries move often and their texts are short: a copy takes no more than the characters
/// that there are.
struct FieldText {
  std::array<char, 2000> room;  ///< always holds a NUL: written through copy_text or a TextBuffer

  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init,hicpp-member-init)
  constexpr FieldText() {
    if (std::is_constant_evaluated()) {
      room.fill('\0');  // the table of the run takes no room in the program file
    } else {
      room.front() = '\0';
    }
  }
  ~FieldText() = default;
  FieldText(const FieldText& other) { *this = other; }
  FieldText& operator=(const FieldText& other) {
    std::memmove(room.data(), other.room.data(), std::strlen(other.room.data()) + 1);
    return *this;
  }
  [[nodiscard]] std::string_view view() const { return room.data(); }
};

/// One field of the file.
struct FieldEntry {
  IfdKind kind = IfdKind::camera;
  std::uint16_t level = 0;       ///< nesting depth; 0 for the main chain
  std::uint32_t seq = 0;         ///< place in the chain; high 16 bits: IFDs of the pointer's array
  std::uint16_t index = 0;       ///< reading order; deleted_index marks a deleted entry
  std::uint16_t edit_state = 0;  ///< order among entries of one index
  std::uint32_t tag = 0;         ///< high 16 bits: element number of an array field
  std::uint32_t def = 0;         ///< row of the field dictionary; 0 without definition
  std::uint32_t value_pos = 0;   ///< file offset of the value's bytes in the source
  std::uint16_t type = 0;        ///< data type code as stored
  std::uint32_t count = 0;       ///< as stored
  std::span<const std::uint8_t> data{};  ///< a value set by an edit, when longer than 4 bytes
  std::array<std::uint8_t, 4> raw{};     ///< the entry's value field as it lies in the file
  bool edited = false;                   ///< set by an edit: `raw` or `data` hold the value
  IfdPlace ifd;                          ///< the IFD it belongs to
  std::array<char, 30> name{};           ///< the field's description
  FieldText text;                        ///< the value as display text
};

inline constexpr std::uint32_t field_table_capacity = 200;
inline constexpr std::uint16_t deleted_index = 200;

/// Where the JPEG scan found the first metadata segment of each kind: file offset of its length
/// field, and length as that field gives it; 0 when there is none.
struct JpegSegments {
  std::uint32_t app1_pos = 0, app1_len = 0;
  std::uint32_t fpxr_pos = 0, fpxr_len = 0;  ///< the length of all Flashpix segments together
  std::uint32_t app13_pos = 0, app13_len = 0;
  std::uint32_t app5_pos = 0, app5_len = 0;
  std::uint32_t audio_pos = 0, audio_len = 0;  ///< of WAVE data in a Flashpix stream
  std::uint32_t audio_stream = 0;              ///< the stream's index
  std::uint32_t audio_next = 0;                ///< file offset of the marker behind that segment
};

/// The date taken, cut into texts for templates; computed on first use.
struct DateTakenParts {
  bool computed = false;  ///< the texts below are those of the file in work
  std::array<char, 5> yyyy{};
  std::array<char, 3> yy{}, mm{}, dd{}, hr{}, min{}, sec{};
  std::array<char, 4> mmm{};
};

/// What tells one version of a file from another: a file that another process replaced is noticed.
struct FileIdentity {
  bool known = false;
  std::uint64_t device = 0, inode = 0;
  std::int64_t size = 0;
  std::int64_t modified_sec = 0, modified_nsec = 0;
  bool operator==(const FileIdentity&) const = default;
};

/// All zero until reset_image_file gives it its initial state, so that the one instance of the run
/// takes no room in the program file.
struct ImageFile {
  std::uint32_t field_count = 0;
  std::uint32_t maker_note_kind = 0;                 ///< row of the maker table; 0 is generic
  bool big_endian = false;                           ///< byte order of the EXIF data
  bool maker_note_big_endian = false;                ///< byte order of the maker note
  std::array<std::uint8_t, 12> maker_note_prefix{};  ///< bytes in front of the maker note's IFD
  std::array<char, 256> file_name{};                 ///< as given; cut at 255 characters
  std::array<char, 256> directory{};
  std::array<char, 256> path{};  ///< directory, "/" and file name
  FileType file_type = FileType::fujifilm_raf;
  std::uint32_t file_size = 0;  ///< low 32 bits
  LocalTimeText modified{};
  LocalTimeText changed{};
  DateTakenParts date_taken;
  std::uint32_t thumbnail_offset = 0;  ///< file offset
  std::uint32_t thumbnail_length = 0;
  JpegSegments segments;
  std::uint32_t image_width = 0;  ///< of the last JPEG frame header; 0 when unknown
  std::uint32_t image_height = 0;
  std::uint16_t ifd_count = 0;       ///< IFDs read so far; gives IfdPlace::id
  std::int64_t tiff_header_pos = 0;  ///< file offset of the TIFF header
  std::int64_t metadata_end = 0;     ///< file offset behind the Exif segment, or of a TIFF's end
  bool incomplete = false;           ///< metadata was met that could not be read whole
  bool read_failed = false;          ///< the system could not read the file; not to be edited
  bool images_unread = false;        ///< pages or sub-images not reached, or pages without fields
  FileIdentity identity;             ///< of the file as it was read
  std::array<FieldEntry, field_table_capacity> fields;

  [[nodiscard]] std::span<FieldEntry> table() { return {fields.data(), field_count}; }
  [[nodiscard]] std::span<const FieldEntry> table() const { return {fields.data(), field_count}; }
};

/// Everything but the fields back to its initial state; the table becomes empty.
void reset_image_file(ImageFile& image);

/// Appends a copy of an entry; too_many_fields when the table is full.
ErrorCode append_field(ImageFile& image, const FieldEntry& entry);

/// Order of a sorted table: kind, level, seq, low then high 16 bits of the tag. Negative, 0,
/// positive.
int compare_entries(const FieldEntry& left, const FieldEntry& right);

}  // namespace tagmend
