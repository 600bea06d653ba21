// Templates: texts in which bracketed names stand for values of the file in work.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "read/image_file.h"
#include "support/error_code.h"

namespace tagmend {

struct IptcStore;

/// Where the values of bracketed names come from. `dataset_text` looks a name up in the IPTC
/// dataset table: false when the table does not know it; else `value` is the dataset's text in the
/// store, empty when it has none. Both are null where no IPTC data is at hand.
struct SubstitutionContext {
  ImageFile* image = nullptr;
  IptcStore* iptc = nullptr;
  bool (*dataset_text)(IptcStore* store, std::string_view name, std::string_view& value) = nullptr;
  bool nested = false;  ///< a name's own template is being expanded: such names have no value in it
};

enum class TemplateSection : std::uint16_t { head = 0, file = 1, tail = 2 };

/// Expands `text` into `output` (terminated; as much as fits), or onto the standard output when it
/// is empty. ok when at least one bracketed name that is a field, a dataset or a file variable was
/// met in the section, else no_names_in_template; the output is written in either case.
ErrorCode expand_template(std::string_view text, TemplateSection section, std::span<char> output,
                          const SubstitutionContext& context);

/// The text in front of the last '.'; all of it without one.
std::string_view file_base_name(std::string_view name);

/// The text behind the last '.'; empty without one.
std::string_view file_extension(std::string_view name);

}  // namespace tagmend
