// The options of the command line: what each means to the run, and its lines in the usage text.
#pragma once

#include <array>

#include "cli/session.h"

namespace tagmend {

struct CommandFlags {
  bool show_usage = false;       ///< -h
  bool show_version = false;     ///< -v, and a command line without arguments
  bool include_subdirs = false;  ///< -i
};

/// What the options change while they are parsed.
struct OptionState {
  Session& session;
  CommandFlags& flags;
  bool edit_requested = false;  ///< -a, -r or -s was given
};

struct OptionRow {
  char letter;
  bool takes_argument;
  bool (*apply)(OptionState& state, const char* argument);  ///< false: the command line is wrong
  const char* usage;  ///< its lines in the usage text; null for options that it leaves out
};

inline constexpr std::size_t option_count = 15;

/// In the order of the usage text.
extern const std::array<OptionRow, option_count> option_rows;

/// Parses the options in the order given, up to the first operand. Returns the index of the first
/// operand, or -1 (after a message) when the command line is in error.
int parse_options(int argc, char** argv, Session& session, CommandFlags& flags);

}  // namespace tagmend
