#include "support/file_names.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "support/message.h"
#include "support/tagged_memory.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

/// Numbered names stop here, so that a full directory does not make the search endless.
constexpr unsigned highest_number = 99;

int temp_name_counter = 0;

/// Puts `insertion` in front of the extension, which starts at `dot` (npos: there is none). The
/// name may be the text that stands in `result`.
bool insert_before_extension(std::string_view name, std::size_t dot, std::string_view insertion,
                             SiblingName& result) {
  const std::size_t stem = std::min(dot, name.size());
  SiblingName joined;
  TextBuffer text(joined);
  append(text, name.substr(0, stem));
  append(text, insertion);
  append(text, name.substr(stem));
  result = joined;
  return name.size() + insertion.size() < result.size();
}

}  // namespace

SiblingName make_temp_name() {
  SiblingName name;
  std::snprintf(name.data(), name.size(), "orvale_%lx%d", static_cast<unsigned long>(getpid()),
                temp_name_counter++);
  return name;
}

bool name_with_suffix(std::string_view name, std::string_view suffix, SiblingName& result) {
  return insert_before_extension(name, name.rfind('.'), suffix, result);
}

bool numbered_name(std::string_view name, unsigned number, SiblingName& result) {
  std::array<char, 8> insertion;
  TextBuffer text(insertion);
  append_format(text, "(%u)", std::min(number, highest_number));
  const std::size_t dot = name.rfind('.');
  return insert_before_extension(name, dot == 0 ? std::string_view::npos : dot, text.text(),
                                 result);
}

bool name_is_free(const char* name) {
  struct stat status {};
  return lstat(name, &status) != 0 && errno == ENOENT;
}

int give_free_name(const char* file, SiblingName& wanted,
                   int (*give)(const char* from, const char* to)) {
  SiblingName candidate = wanted;
  for (unsigned number = 0; number <= highest_number; ++number) {
    if (number > 0 && !numbered_name(wanted.data(), number, candidate)) {
      errno = ENAMETOOLONG;
      return -1;
    }
    if (!name_is_free(candidate.data())) {
      continue;
    }
    if (give(file, candidate.data()) == 0) {
      wanted = candidate;
      return 0;
    }
    // Somebody else may have taken the name since it was found free.
    if (errno != EEXIST) {
      return -1;
    }
  }
  errno = EEXIST;
  return -1;
}

CreatedFileList* created_list_new() {
  void* const block = exif_malloc(sizeof(CreatedFileList), "CF", __LINE__);
  if (block == nullptr) {
    print_error("Error: Could not allocate memory for created file list\n");
    return nullptr;
  }
  // The names are left as they are, so that their pages stay untouched.
  auto* const list = static_cast<CreatedFileList*>(block);
  list->count = 0;
  return list;
}

void created_list_free(CreatedFileList* list) { exif_mfree(list, "CF"); }

void created_list_add(CreatedFileList& list, std::string_view name) {
  if (list.count >= CreatedFileList::capacity) {
    print_error("Error: Max number of temp files created (%d) - exiting\n",
                CreatedFileList::capacity);
    end_program(exit_refused);
  }
  if (name.size() > CreatedFileList::name_limit) {
    print_error("Error: File name '%.*s' too long - exiting\n", static_cast<int>(name.size()),
                name.data());
    end_program(exit_refused);
  }
  copy_text(list.names[list.count], name);
  ++list.count;
}

bool created_list_contains(const CreatedFileList& list, std::string_view name) {
  const std::span names = std::span(list.names).first(static_cast<std::size_t>(list.count));
  return std::ranges::any_of(names, [name](const auto& slot) { return name == slot; });
}

}  // namespace tagmend
