// How the program speaks: which stream a message goes to, which switch silences it, and the two
// ways in which the program ends early. All texts are printf formats; the compiler checks them.
#pragma once

#define TAGMEND_PRINTF(format_index) \
  __attribute__((format(printf, format_index, (format_index) + 1)))

namespace tagmend {

/// Prints on standard error unless errors are suppressed. Standard output is flushed first, so that
/// the two streams keep the program's order when they lead to one file.
void print_error(const char* format, ...) TAGMEND_PRINTF(1);

/// Prints on standard error unless warnings are suppressed, in the same order.
void print_warning(const char* format, ...) TAGMEND_PRINTF(1);

/// Prints on standard output, whatever the switches say.
void print_output(const char* format, ...) TAGMEND_PRINTF(1);

/// Prints on standard output when the verbose flag is set, indented by three blanks a nesting level
/// (21 at most).
void trace(unsigned level, const char* format, ...) TAGMEND_PRINTF(2);

/// Names under which failed consistency checks report their place.
inline constexpr char module_exif[] = "exif.cpp";
inline constexpr char module_writer[] = "exif_write.cpp";
inline constexpr char module_utility[] = "utility.cpp";

/// Does nothing when the condition holds; else prints "ASSERT failed at %d in %s\n" on standard
/// output and ends the program with status 1.
void check_consistency(bool condition, int line, const char* module);

/// Ends the program: runs the clean-up that is registered, flushes both streams, exits.
[[noreturn]] void end_program(int status);

/// Exit statuses of an early end.
inline constexpr int exit_refused = 1;
inline constexpr int exit_internal = 255;

/// What end_program runs first (the removal of a half-written file); null for nothing.
void set_end_cleanup(void (*cleanup)());

}  // namespace tagmend
