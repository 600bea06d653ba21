// The names of the files that are written beside an edited file, and the list of the names that a
// run has written.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tagmend {

/// A file name beside the edited file: at most 99 characters and a NUL.
using SiblingName = std::array<char, 100>;

/// "orvale_%lx%d" with the process number and a counter of the run.
SiblingName make_temp_name();

/// `name` with `suffix` in front of its extension, which starts at its last '.', the first
/// character included; without one at its end. False when the result does not fit (it is then cut).
[[nodiscard]] bool name_with_suffix(std::string_view name, std::string_view suffix,
                                    SiblingName& result);

/// `name` with "(number)" in front of its extension, which starts at its last '.' that is not its
/// first character; `number` above 99 counts as 99. False when the result does not fit (then cut).
[[nodiscard]] bool numbered_name(std::string_view name, unsigned number, SiblingName& result);

/// Whether nothing stands under the name; false also when that cannot be found out.
[[nodiscard]] bool name_is_free(const char* name);

/// Gives a file a name that nothing has yet: `wanted`, or its first free numbered name from 1 to
/// 99, which `wanted` then holds. `give` is called with (file, candidate) and returns 0 or -1 with
/// errno: link or rename. An EEXIST of `give` passes on to the next candidate. Returns 0, or -1
/// with errno (EEXIST when all are taken, ENAMETOOLONG when a candidate does not fit).
[[nodiscard]] int give_free_name(const char* file, SiblingName& wanted,
                                 int (*give)(const char* from, const char* to));

/// Names of at most 100 characters that this run has written in one directory, or for all files
/// among the operands.
struct CreatedFileList {
  static constexpr std::int32_t capacity = 1000;
  static constexpr std::size_t name_limit = 100;
  std::int32_t count;
  char names[capacity][name_limit + 1];
};
static_assert(sizeof(CreatedFileList) == 101004, "a count and 1000 names of 101 bytes");

/// An empty list (tagged memory "CF"), or null after a message.
CreatedFileList* created_list_new();
void created_list_free(CreatedFileList* list);

/// Appends a name. A full list or a name that is too long ends the program with status 1, after a
/// message.
void created_list_add(CreatedFileList& list, std::string_view name);

/// Whether the list holds exactly this name.
[[nodiscard]] bool created_list_contains(const CreatedFileList& list, std::string_view name);

}  // namespace tagmend
