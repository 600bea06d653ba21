#include "write/temp_file.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "support/message.h"

namespace tagmend {
namespace {

/// Names that a killed process of the same number left behind are passed over, up to this many.
constexpr int max_attempts = 100;

constexpr int fatal_signals[] = {SIGINT, SIGTERM, SIGHUP};

/// Read by the signal handler: set only while the signals are blocked.
SiblingName pending_name{};
volatile sig_atomic_t pending = 0;

void remove_pending() {
  if (pending == 0) {
    return;
  }
  const int error = errno;
  unlink(pending_name.data());
  pending = 0;
  errno = error;
}

/// Only async-signal-safe calls. The default action is restored on entry, so that raising the
/// signal again ends the program as the sender meant.
void on_fatal_signal(int signal_number) {
  if (pending != 0) {
    unlink(pending_name.data());
  }
  raise(signal_number);
}

void install_handlers() {
  static bool installed = false;
  if (installed) {
    return;
  }
  installed = true;
  set_end_cleanup(remove_pending);
  // A file-size limit then fails the write that meets it, like a full disk.
  signal(SIGXFSZ, SIG_IGN);
  // A message that nobody reads any more must not end the run in the middle of a file.
  signal(SIGPIPE, SIG_IGN);
  for (const int signal_number : fatal_signals) {
    struct sigaction action {};
    action.sa_handler = on_fatal_signal;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    struct sigaction before {};
    sigaction(signal_number, &action, &before);
    // A signal that the caller chose to ignore (nohup) stays ignored.
    if (before.sa_handler == SIG_IGN) {
      sigaction(signal_number, &before, nullptr);
    }
  }
}

}  // namespace

SignalsHeld::SignalsHeld() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal_number : fatal_signals) {
    sigaddset(&held, signal_number);
  }
  sigprocmask(SIG_BLOCK, &held, &before);
}

SignalsHeld::~SignalsHeld() { sigprocmask(SIG_SETMASK, &before, nullptr); }

// The signals are held so that creating the file and noting its name are one step.
ErrorCode create_temp_file(SiblingName& name, MFileHandle& file) {
  install_handlers();
  const SignalsHeld held;
  for (int attempt = 0; attempt < max_attempts; ++attempt) {
    name = make_temp_name();
    file.reset(mfopen(name.data(), "wbx+"));
    if (file) {
      pending_name = name;
      pending = 1;
      return ErrorCode::ok;
    }
    if (errno != EEXIST) {
      break;
    }
  }
  print_error("Error: Can't open file %s: %s\n", name.data(), std::strerror(errno));
  return ErrorCode::cannot_open_file;
}

void discard_temp_file() { remove_pending(); }

void release_temp_file() { pending = 0; }

}  // namespace tagmend
