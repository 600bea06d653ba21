// Writes what the fuzz targets start from: `make_seeds DIRECTORY` fills DIRECTORY/<target> with
// seeds from the tests' image builders, and makes DIRECTORY/bytes.dict and DIRECTORY/text.dict from
// the program's tables.
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "common/file_content.h"
#include "encode/date_templates.h"
#include "iptc/iptc_dataset.h"
#include "read/maker_note.h"
#include "sample_files.h"

namespace tagmend::test {
namespace {

using namespace std::string_view_literals;

// ---- Texts --------------------------------------------------------------------------------------

const std::vector<std::string> lists = {
    "artist=x,gps-latitude=1 2 3,comment=[make]",
    "date-taken=\"2004:05:01 10:20:30\", f-number=2.8\nexp-time=1/60",
    R"(ip-keyword=one;two;"three; four",ip-caption="it's \"so\"")",
    "a==1,,b=,=5,c d=\"open",
    "model, th-*, gps-*",
};

const std::vector<std::string> templates = {
    "Taken [yyyy]-[mm]-[mmm]-[dd] [hr].[min].[sec] by [artist]",
    "[file-base]-th.jpg [file-name] [file-ext] [file-size] [file-date-mod]",
    "head[exif-head]one[ip-caption][exif-file]two[exif-tail]three",
    "[ip-keyword] [nosuchname] [[artist]] a\\nb\\[",
    "[file-name-thumb][file-name-audio][file-name-exi][file-name-backup]",
};

std::vector<std::string> dates() {
  std::vector<std::string> texts = {"2004:05:01 10:20:30 +0100", "2004-May-01", "99-12-31"};
  for (const DateTemplate& row : date_templates::table) {
    std::string text(row.shape);
    for (char& c : text) {
      c = c == '9' ? '1' : c;
    }
    const std::size_t month = text.find("XXX");
    if (month != std::string::npos) {
      text.replace(month, 3, "May");
    }
    texts.push_back(text);
  }
  return texts;
}

/// A value that a field of this type may take.
std::string sample_value(const FieldDef& row) {
  if (row.value_map != nullptr) {
    return row.value_map->nickname;
  }
  if (row.is_date) {
    return "2004:05:01 10:20:30";
  }
  if (row.ifd_kind == IfdKind::gps) {
    return "1 2.5 3";
  }
  return row.data_type == DataType::string ? "text [artist]" : "1/60 2.8 -3";
}

// ---- Writing ------------------------------------------------------------------------------------

/// Ends the program when it cannot.
void store(const std::string& path, const Bytes& content) {
  if (!write_file(path, content)) {
    std::perror(path.c_str());
    std::exit(EXIT_FAILURE);
  }
}

void write_seeds(const std::string& directory, const std::vector<Bytes>& seeds) {
  ::mkdir(directory.c_str(), 0777);
  for (std::size_t i = 0; i < seeds.size(); ++i) {
    store(directory + "/" + std::to_string(i), seeds[i]);
  }
}

/// Every text behind each of the prefixes.
std::vector<Bytes> prefixed(const std::vector<Bytes>& prefixes,
                            const std::vector<std::string>& texts) {
  std::vector<Bytes> seeds;
  for (const Bytes& prefix : prefixes) {
    for (const std::string& text : texts) {
      seeds.push_back(joined({prefix, bytes_of(text)}));
    }
  }
  return seeds;
}

std::vector<Bytes> value_seeds() {
  std::vector<Bytes> seeds;
  for (std::uint32_t row = 0; row < field_def_count; row += 3) {
    const FieldDef& def = field_table_defs[row];
    if (!def.editable) {
      continue;
    }
    seeds.push_back(
        joined({big16(row), {static_cast<std::uint8_t>(row)}, bytes_of(sample_value(def))}));
  }
  for (std::uint32_t row = 0; row < iptc_dataset_count; row += 2) {
    seeds.push_back(joined({big16(field_def_count + row), {0}, bytes_of("20040501 10:20:30")}));
  }
  return seeds;
}

using Words = std::set<Bytes>;

void write_dictionary(const std::string& name, const Words& words) {
  std::string lines;
  for (const Bytes& word : words) {
    lines += '"';
    for (const std::uint8_t byte : word) {
      char digits[8];
      std::snprintf(digits, sizeof digits, "\\x%02X", byte);
      lines += digits;
    }
    lines += "\"\n";
  }
  store(name, bytes_of(lines));
}

constexpr std::string_view signatures[] = {
    "Exif\0\0"sv,
    "FPXR\0"sv,
    "Photoshop 3.0\0"sv,
    "8BIM"sv,
    "RMETA\0"sv,
    "ASCII\0"sv,
    "UNICODE\0"sv,
    "JIS\0"sv,
    "RIFF"sv,
    "WAVE"sv,
    "HEAPCCDR"sv,
    "\0TTW"sv,
    "\0MRM"sv,
    "FUJIFILMCCD-RAW"sv,
    "%!PS-Adobe-3.0 EPSF-3.0"sv,
    "%BeginPhotoshop:"sv,
    "\n% "sv,
    "\xC5\xD0\xD3\xC6"sv,
    "II\x2A\0"sv,
    "MM\0\x2A"sv,
    "\xFF\xFF\xFF\xFF"sv,
};

/// Markers, signatures, tags in both orders, datasets and resources.
Words byte_words() {
  Words words;
  for (std::uint8_t code = 0xC0; code < 0xFF; ++code) {
    words.insert({0xFF, code});
  }
  for (const std::string_view text : signatures) {
    words.insert(bytes_of(text));
  }
  for (const FieldDef& row : field_table_defs) {
    for (const bool big : {false, true}) {
      Bytes tag;
      put(tag, 0, row.tag & 0xFFFFU, 2, big);
      words.insert(tag);
    }
  }
  for (const MakerDef& maker : maker_table) {
    words.insert({maker.prefix.begin(), maker.prefix.begin() + maker.header_length});
    words.insert(bytes_of(maker.make));
    words.insert(bytes_of(maker.model));
  }
  for (const IptcDatasetDef& row : iptc_datasets) {
    words.insert(
        {0x1C, static_cast<std::uint8_t>(row.record), static_cast<std::uint8_t>(row.dataset)});
    words.insert(joined({bytes_of("8BIM"), big16(row.resource)}));
  }
  words.erase(Bytes());
  return words;
}

// Templates, and what stands in lists, dates and numbers.
constexpr const char* other_words =
    "file-name file-base file-ext file-dir file-size file-date-mod file-date-created "
    "file-name-full file-name-thumb file-name-audio file-name-exi file-name-backup exif-head "
    "exif-file exif-tail yyyy yy mm mmm dd hr min sec date-taken = , \\\" +0100 -0500 1/60 "
    "4294967295 -2147483648 1e30 Jan Dec";

/// Nicknames of fields, datasets, values and templates.
Words text_words() {
  Words words;
  const auto add = [&words](const char* text) {
    if (text != nullptr && *text != '\0') {
      words.insert(bytes_of(text));
    }
  };
  for (const FieldDef& row : field_table_defs) {
    add(row.nickname);
    for (const ValueMapEntry* value = row.value_map; value && value->nickname; ++value) {
      add(value->nickname);
      add(value->description);
    }
  }
  for (const IptcDatasetDef& row : iptc_datasets) {
    add(row.nickname);
  }
  std::istringstream others(other_words);
  for (std::string word; others >> word;) {
    add(word.c_str());
  }
  return words;
}

void make_all(const std::string& directory) {
  ::mkdir(directory.c_str(), 0777);
  std::vector<Bytes> files = editable_files();
  std::vector<Bytes> edited;
  for (std::size_t i = 0; i < files.size(); ++i) {
    edited.push_back(joined({files[i], {static_cast<std::uint8_t>(2 * i + 1)}}));
    edited.push_back(joined({files[i], {static_cast<std::uint8_t>(i)}}));
  }
  write_seeds(directory + "/edit_file", edited);
  for (const Bytes& file : other_files()) {
    files.push_back(file);
  }
  write_seeds(directory + "/read_file", files);
  write_seeds(directory + "/field_list", prefixed({{0}, {1}, {2}, {3}, {8}, {9}}, lists));
  write_seeds(directory + "/template", prefixed({{0, 0}, {0, 255}, {1, 9}, {2, 100}}, templates));
  write_seeds(directory + "/date_time", prefixed({{}}, dates()));
  write_seeds(directory + "/encode_value", value_seeds());
  const Bytes segment = photoshop({sample_resources()});
  write_seeds(directory + "/iptc_block",
              {joined({{0}, segment}), joined({{4}, segment}),
               joined({{1}, dataset(2, 90, "Oslo"), dataset(1, 90, "\x1B%G")}),
               joined({{2}, sample_resources()})});
  write_seeds(directory + "/eps_block", {eps_file(sample_resources(), true)});
  write_dictionary(directory + "/bytes.dict", byte_words());
  write_dictionary(directory + "/text.dict", text_words());
}

}  // namespace
}  // namespace tagmend::test

int main(int argc, char** argv) {
  if (argc != 2) {
    return EXIT_FAILURE;
  }
  tagmend::test::make_all(argv[1]);
  return EXIT_SUCCESS;
}
