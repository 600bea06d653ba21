#include "cli/options.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "cli/edit_list_builder.h"
#include "encode/charset_option.h"
#include "support/charset.h"
#include "support/message.h"
#include "support/settings.h"

namespace tagmend {
namespace {

/// A character given as itself or by its number, octal behind a leading 0, of which the low 8 bits
/// count. False when it is neither.
bool parse_character(const char* argument, char& character) {
  if (std::strlen(argument) == 1) {
    character = argument[0];
    return true;
  }
  char* end = nullptr;
  const long number = std::strtol(argument, &end, argument[0] == '0' ? 8 : 10);
  if (end == argument) {
    return false;
  }
  character = static_cast<char>(number & 0xFF);
  return true;
}

bool apply_add(OptionState& state, const char* argument) {
  build_add_list(argument, state.session);
  state.edit_requested = true;
  return true;
}

bool apply_no_backup(OptionState& state, const char*) {
  state.session.options.keep_backup = false;
  return true;
}

bool apply_quote(OptionState& state, const char* argument) {
  if (parse_character(argument, state.session.options.quote_char)) {
    return true;
  }
  print_error("Error: Quote character (-c %s) is invalid\n", argument);
  return false;
}

bool apply_d(OptionState&, const char*) {
  library_settings.option_d = true;
  return true;
}

bool apply_erase(OptionState& state, const char* argument) {
  RunOptions& options = state.session.options;
  const char block = argument[0];
  const bool all = block == 'A' || block == 'a';
  const bool exif = all || block == 'E' || block == 'e';
  const bool flashpix = all || block == 'F' || block == 'f';
  const bool iptc = all || block == 'I' || block == 'i';
  if (!exif && !flashpix && !iptc) {
    print_output("Error: Invalid erase option '-e %s' specified.\n", argument);
    return true;
  }
  options.erase_exif |= exif;
  options.exif_removed |= exif;
  options.erase_flashpix |= flashpix;
  options.erase_iptc |= iptc;
  options.iptc_removed |= iptc;
  return true;
}

bool apply_help(OptionState& state, const char*) {
  state.flags.show_usage = true;
  return true;
}

bool apply_subdirs(OptionState& state, const char*) {
  state.flags.include_subdirs = true;
  return true;
}

bool apply_separator(OptionState&, const char* argument) {
  if (parse_character(argument, library_settings.separator)) {
    return true;
  }
  print_error("Error: Separator character (-j %s) is invalid\n", argument);
  return false;
}

bool apply_charset(OptionState&, const char* argument) { return cs_parse_option(argument) == 0; }

bool apply_quiet(OptionState&, const char*) {
  library_settings.warnings_suppressed = true;
  return true;
}

bool apply_remove(OptionState& state, const char* argument) {
  build_remove_list(argument, state.session);
  state.edit_requested = true;
  return true;
}

bool apply_set_size(OptionState& state, const char*) {
  state.session.options.set_size = true;
  state.session.options.exif_added = true;
  state.edit_requested = true;
  return true;
}

bool apply_thumbnail(OptionState&, const char*) {
  print_warning("Warning: -t option ignored. Thumbnail operations not supported.\n");
  return true;
}

bool apply_unicode(OptionState&, const char*) {
  library_settings.unicode_comment = true;
  return true;
}

bool apply_version(OptionState& state, const char*) {
  state.flags.show_version = true;
  return true;
}

}  // namespace

constexpr std::array<OptionRow, option_count> option_rows = {{
    {'a', true, apply_add,
     "   -a [field-name=value,field-name=value,... | @file-name | @-] \n"
     "            Add the specified EXIF fields.\n"},
    {'b', false, apply_no_backup,
     "   -b       Do not save a backup copy of the original file(s).\n"},
    {'c', true, apply_quote, "   -c x     Specify alternative quote character\n"},
    {'d', false, apply_d, nullptr},
    {'e', true, apply_erase,
     "   -e [e|f|i|a]\n"
     "            Erase meta data:\n"
     "              e = erase EXIF data\n"
     "              f = erase Flashpix data\n"
     "              i = erase IPTC data\n"
     "              a = erase EXIF, Flashpix, and IPTC data\n"},
    {'h', false, apply_help, "   -h       Display usage information.\n"},
    {'i', false, apply_subdirs, "   -i       Include subdirectories.\n"},
    {'j', true, apply_separator,
     "   -j x     Specify alternative separator character to be used for \n"
     "            repeating fields.\n"},
    {'p', true, apply_charset, nullptr},
    {'q', false, apply_quiet, "   -q       Quiet mode. Do not display warning messages\n"},
    {'r', true, apply_remove,
     "   -r [field-name,field-name,... | @file-name | @-] \n"
     "            Remove the specifed EXIF fields\n"},
    {'s', false, apply_set_size,
     "   -s       Set EXIF width/height fields to match actual image\n"},
    {'t', true, apply_thumbnail, nullptr},
    {'u', false, apply_unicode,
     "   -u       Store EXIF 'comment' field as UNICODE (default is ASCII)\n"},
    {'v', false, apply_version, "   -v       Display program version information\n"},
}};

namespace {

/// The rows as getopt wants them. The leading "+" ends the options at the first operand, as POSIX
/// has it; the C library would else look for more behind it.
constexpr auto getopt_letters = [] {
  std::array<char, 2 * option_count + 2> letters{};
  std::size_t length = 0;
  letters[length++] = '+';
  for (const OptionRow& row : option_rows) {
    letters[length++] = row.letter;
    if (row.takes_argument) {
      letters[length++] = ':';
    }
  }
  return letters;
}();

const OptionRow* find_option(int letter) {
  for (const OptionRow& row : option_rows) {
    if (row.letter == letter) {
      return &row;
    }
  }
  return nullptr;
}

/// A run either edits fields or erases blocks.
void drop_conflicting_erase(RunOptions& options) {
  if (!options.erase_exif && !options.erase_flashpix && !options.erase_iptc) {
    return;
  }
  print_warning("Warning: Can't specify -e option with -a, -r, -t, or -s options.\n");
  print_warning("         -e option ignored.\n");
  options.erase_exif = options.erase_flashpix = options.erase_iptc = false;
}

}  // namespace

int parse_options(int argc, char** argv, Session& session, CommandFlags& flags) {
  cs_init();
  flags = {};
  session.options = {};
  session.exif_edits.count = session.exif_edits.saved_count = 0;
  session.iptc_edits.count = session.iptc_edits.saved_count = 0;
  if (argc <= 1) {
    flags.show_version = true;
    return 0;
  }

  OptionState state{.session = session, .flags = flags};
  bool valid = true;
  optind = 0;  // makes the C library start afresh
  for (;;) {
    std::fflush(stdout);  // getopt writes its diagnostics past our own message functions
    const int letter = getopt(argc, argv, getopt_letters.data());
    if (letter == -1) {
      break;
    }
    const OptionRow* row = find_option(letter);
    valid = row != nullptr && row->apply(state, optarg) && valid;
  }

  if (state.edit_requested) {
    drop_conflicting_erase(session.options);
  }
  session.exif_edits.saved_count = session.exif_edits.count;
  session.iptc_edits.saved_count = session.iptc_edits.count;
  return valid ? optind : -1;
}

}  // namespace tagmend
