#include "encode/charset_option.h"

#include <algorithm>
#include <string>

#include "encode/field_list.h"
#include "support/ascii.h"
#include "support/charset.h"
#include "support/message.h"
#include "support/settings.h"

namespace tagmend {
namespace {

/// One of the character sets that the option chooses.
struct CharsetChoice {
  const char* name;
  CharsetName LibrarySettings::*setting;
  bool is_set = false;  ///< by an earlier item of the same argument
};

/// Up to the end of the text: what stands behind its NUL has never been written.
void to_upper_case(std::span<char> text) {
  const auto end = std::ranges::find(text, '\0');
  std::transform(text.begin(), end, text.begin(), to_upper);
}

CharsetChoice* find_choice(std::span<CharsetChoice> choices, std::string_view name) {
  for (CharsetChoice& choice : choices) {
    if (choice.name == name) {
      return &choice;
    }
  }
  return nullptr;
}

bool apply_item(std::span<CharsetChoice> choices, const char* name, const char* charset) {
  CharsetChoice* const choice = find_choice(choices, name);
  if (!choice) {
    print_error("Error: Invalid character set type '%s' on -p option.\n", name);
    return false;
  }
  if (choice->is_set) {
    print_warning(
        "Warning: Attempt to set %s character set mutlple times on -p option, only first value "
        "used.\n",
        choice->name);
    return true;
  }
  if (!cs_valid(charset)) {
    print_error("Error: Unrecognised %s Character Set name '%s' on -p option.\n", choice->name,
                charset);
    return false;
  }
  cs_set_name(library_settings.*choice->setting, charset);
  choice->is_set = true;
  return true;
}

}  // namespace

int cs_parse_option(std::string_view argument) {
  CharsetChoice choices[] = {
      {"LOCAL", &LibrarySettings::local_charset},
      {"EXIF", &LibrarySettings::exif_charset},
      {"IPTC", &LibrarySettings::iptc_charset},
  };
  std::string text{argument};
  ListText list{text};
  NameText name;
  ValueText value;
  bool all_accepted = true;
  while (next_add_item(list, library_settings.quote, name, value)) {
    to_upper_case(name);
    to_upper_case(value);
    if (!apply_item(choices, name.data(), value.data())) {
      all_accepted = false;
    }
  }
  return all_accepted ? 0 : 1;
}

}  // namespace tagmend
