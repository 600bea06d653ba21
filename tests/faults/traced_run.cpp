#include "faults/traced_run.h"

#include <signal.h>
#include <sys/personality.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace tagmend::test {
namespace {

// Where a read is cut short or interrupted the program must go on; where anything else fails it
// must leave everything as it was. A system call of another machine's table alone has no row.
constexpr FailingCall failing_calls[] = {
#ifdef SYS_open
    {SYS_open, "open", 0, -1, {EACCES, EIO, ENOMEM, EINTR}},
    {SYS_stat, "stat", 0, -1, {EACCES, EIO, ENOMEM}},
    {SYS_lstat, "lstat", 0, -1, {EACCES, EIO, ENOMEM}},
    {SYS_access, "access", 0, -1, {EACCES, EIO, ENOMEM}},
    {SYS_link, "link", 0, -1, {EACCES, EPERM, EMLINK, EXDEV, ENOSPC, EDQUOT, EIO, ENOMEM}},
    {SYS_rename, "rename", 0, -1, {EACCES, EXDEV, EMLINK, ENOSPC, EDQUOT, EIO, ENOMEM}},
    {SYS_unlink, "unlink", 0, -1, {EACCES, EIO, ENOMEM}},
#endif
    {SYS_openat, "openat", 1, -1, {EACCES, EIO, ENOMEM, EINTR, ENOSPC, EDQUOT}},
    {SYS_read, "read", -1, 2, {EIO, EINTR, ENOMEM}},
    {SYS_pread64, "pread64", -1, 2, {EIO, EINTR, ENOMEM}},
    {SYS_write, "write", -1, 2, {EIO, EINTR, ENOSPC, EDQUOT}},
    {SYS_pwrite64, "pwrite64", -1, 2, {EIO, EINTR, ENOSPC, EDQUOT}},
    {SYS_copy_file_range, "copy_file_range", -1, 4, {EIO, EINTR, ENOSPC, EDQUOT, EXDEV, ENOMEM}},
    {SYS_lseek, "lseek", -1, -1, {EIO}},
    {SYS_close, "close", -1, -1, {EIO, EINTR, ENOSPC, EDQUOT}},
    {SYS_fsync, "fsync", -1, -1, {EIO, EINTR, ENOSPC, EDQUOT}},
    {SYS_fdatasync, "fdatasync", -1, -1, {EIO, EINTR, ENOSPC, EDQUOT}},
    {SYS_flock, "flock", -1, -1, {EINTR, ENOLCK}},
    {SYS_linkat, "linkat", 1, -1, {EACCES, EPERM, EMLINK, EXDEV, ENOSPC, EDQUOT, EIO, ENOMEM}},
    {SYS_renameat2, "renameat2", 1, -1, {EACCES, EXDEV, EMLINK, ENOSPC, EDQUOT, EIO, EINVAL}},
    {SYS_unlinkat, "unlinkat", 1, -1, {EACCES, EIO, ENOMEM}},
    {SYS_newfstatat, "newfstatat", 1, -1, {EACCES, EIO, ENOMEM}},
    {SYS_fstat, "fstat", -1, -1, {EIO, ENOMEM}},
    {SYS_faccessat, "faccessat", 1, -1, {EACCES, EIO, ENOMEM}},
    {SYS_fchmod, "fchmod", -1, -1, {EACCES, EIO, ENOSPC, EDQUOT}},
    {SYS_fchown, "fchown", -1, -1, {EACCES, EIO, ENOSPC, EDQUOT}},
    {SYS_flistxattr, "flistxattr", -1, -1, {EIO, ENOMEM}},
    {SYS_fgetxattr, "fgetxattr", -1, -1, {EIO, ENOMEM}},
    {SYS_fsetxattr, "fsetxattr", -1, -1, {EACCES, EIO, ENOSPC, EDQUOT}},
    {SYS_getdents64, "getdents64", -1, -1, {EIO, ENOMEM}},
    {SYS_getcwd, "getcwd", -1, -1, {EACCES, ENOMEM}},
    {SYS_chdir, "chdir", 0, -1, {EACCES, EIO, ENOMEM}},
    {SYS_fchdir, "fchdir", -1, -1, {EACCES, EIO}},
    {SYS_mmap, "mmap", -1, -1, {ENOMEM}},
    {SYS_brk, "brk", -1, -1, {ENOMEM}},
};

// Exit status of the child when it can't be traced.
constexpr int not_traceable = 125;

/// The text at an address of the other process, up to its NUL.
std::string text_at(pid_t process, std::uint64_t address) {
  std::string text;
  for (std::uint64_t at = address;; at += sizeof(long)) {
    errno = 0;
    const long word = ::ptrace(PTRACE_PEEKDATA, process, at, nullptr);
    if (errno != 0) {
      return text;
    }
    for (std::size_t i = 0; i < sizeof word; ++i) {
      const char c = static_cast<char>(static_cast<std::uint64_t>(word) >> 8 * i);
      if (c == '\0') {
        return text;
      }
      text += c;
    }
  }
}

#ifdef __x86_64__
constexpr std::array<std::size_t, 6> argument_places = {
    offsetof(user_regs_struct, rdi), offsetof(user_regs_struct, rsi),
    offsetof(user_regs_struct, rdx), offsetof(user_regs_struct, r10),
    offsetof(user_regs_struct, r8),  offsetof(user_regs_struct, r9)};

bool set_register(pid_t process, std::size_t place, std::uint64_t value) {
  return ::ptrace(PTRACE_POKEUSER, process, place, value) == 0;
}

// A call without a number is not made and answers what stands in the register of the answer.
bool answer_instead(pid_t process, std::int64_t answer) {
  return set_register(process, offsetof(user_regs_struct, orig_rax), ~std::uint64_t{0}) &&
         set_register(process, offsetof(user_regs_struct, rax), static_cast<std::uint64_t>(answer));
}

bool set_argument(pid_t process, int argument, std::uint64_t value) {
  return set_register(process, argument_places.at(static_cast<std::size_t>(argument)), value);
}
#else
bool answer_instead(pid_t, std::int64_t) { return false; }
bool set_argument(pid_t, int, std::uint64_t) { return false; }
#endif

bool make_short(pid_t process, const SystemCall& call) {
  const int argument = call.row->length_argument;
  const std::uint64_t length = call.arguments.at(static_cast<std::size_t>(argument));
  return set_argument(process, argument, std::max<std::uint64_t>(1, length / 2));
}

/// `unchanged_break` is the end of the heap: brk answers a failure by leaving it where it is.
bool meddle(pid_t process, const SystemCall& call, const Meddling& meddling,
            std::int64_t unchanged_break) {
  switch (meddling.deed) {
    case Meddling::Deed::fail:
      return answer_instead(process,
                            call.row->number == SYS_brk ? unchanged_break : -meddling.number);
    case Meddling::Deed::shorten:
      return make_short(process, call);
    case Meddling::Deed::signal:
      return ::kill(process, meddling.number) == 0;
    case Meddling::Deed::none:
      break;
  }
  return true;
}

/// An endless loop ends the run; fixed addresses make it ask for memory at the same calls each
/// time.
void before_traced_run() {
  const rlimit limit = {5, 5};
  ::setrlimit(RLIMIT_CPU, &limit);
  ::personality(ADDR_NO_RANDOMIZE);
  if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
    ::_exit(not_traceable);
  }
}

/// Watches the calls of a process that has just been stopped at its start.
struct Watch {
  pid_t process;
  const Meddler& meddler;
  bool started = false;
  std::size_t count = 0;
  bool done = false;  ///< the program runs on by itself
  bool in_brk = false;
  std::int64_t heap_end = 0;

  // The loader and the C library use absolute paths only.
  void note_start(const SystemCall& call) {
    started = started || call.row->number == SYS_getcwd ||
              (call.row->path_argument >= 0 && !call.path.empty() && call.path[0] != '/');
  }

  bool see_entry(const __ptrace_syscall_info& info) {
    SystemCall call;
    call.row = find_failing_call(info.entry.nr);
    if (call.row == nullptr) {
      return true;
    }
    in_brk = call.row->number == SYS_brk;
    std::copy_n(std::begin(info.entry.args), call.arguments.size(), call.arguments.begin());
    if (const int place = call.row->path_argument; place >= 0) {
      call.path = text_at(process, call.arguments.at(static_cast<std::size_t>(place)));
    }
    note_start(call);
    if (!started) {
      return true;
    }
    call.index = count++;
    const Meddling meddling = meddler(call);
    done = meddling.is_last;
    return meddle(process, call, meddling, heap_end);
  }

  bool see_stop() {
    __ptrace_syscall_info info{};
    if (::ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof info, &info) <= 0) {
      return false;
    }
    if (info.op == PTRACE_SYSCALL_INFO_EXIT && in_brk) {
      heap_end = info.exit.rval;
    }
    if (info.op == PTRACE_SYSCALL_INFO_EXIT) {
      in_brk = false;
    }
    return info.op != PTRACE_SYSCALL_INFO_ENTRY || see_entry(info);
  }

  /// Until the end of the process; its status, or nothing when the tracing failed.
  std::optional<int> follow() {
    constexpr int call_stop = SIGTRAP | 0x80;
    int signal_number = 0;
    for (;;) {
      const auto request = done ? PTRACE_DETACH : PTRACE_SYSCALL;
      if (::ptrace(request, process, nullptr, signal_number) != 0 && errno != ESRCH) {
        return {};
      }
      int status = 0;
      if (::waitpid(process, &status, 0) != process) {
        return {};
      }
      if (!WIFSTOPPED(status)) {
        return status;
      }
      signal_number = WSTOPSIG(status) == call_stop ? 0 : WSTOPSIG(status);
      if (signal_number == 0 && !see_stop()) {
        return {};
      }
    }
  }
};

std::optional<int> trace(pid_t process, const Meddler& meddler) {
  int status = 0;
  if (::waitpid(process, &status, 0) != process || !WIFSTOPPED(status)) {
    return {};
  }
  std::optional<int> end;
  if (::ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) ==
      0) {
    end = Watch{.process = process, .meddler = meddler}.follow();
  }
  if (!end) {
    ::kill(process, SIGKILL);
    while (::waitpid(process, &status, 0) == process && WIFSTOPPED(status)) {
    }
  }
  return end;
}

std::string find_obstacle() {
#ifdef TAGMEND_SANITIZED
  return "the sanitizers trace the program themselves";
#elif !defined(__x86_64__)
  return "the test knows no other registers than those of x86-64";
#else
  const Sandbox sandbox;
  bool asked = false;
  const auto outcome =
      run_traced(sandbox, {"-a", "artist=x", "no-such-file"}, [&asked](const SystemCall&) {
        asked = true;
        return Meddling{};
      });
  return outcome && asked ? "" : "the kernel does not let this process trace another";
#endif
}

}  // namespace

const FailingCall* find_failing_call(std::uint64_t number) {
  const auto* const row = std::ranges::find(failing_calls, number, &FailingCall::number);
  return row == std::ranges::end(failing_calls) ? nullptr : row;
}

bool SystemCall::prints() const {
  return row->number == SYS_write && (arguments[0] == 1 || arguments[0] == 2);
}

std::string SystemCall::text() const {
  const std::string what = path.empty() ? std::to_string(arguments[0]) : path;
  return std::string(row->name) + "(" + what + "), call " + std::to_string(index);
}

std::optional<Outcome> run_traced(const Sandbox& sandbox, const Words& arguments,
                                  const Meddler& meddler, const Words& environment) {
  const Started started =
      start(sandbox, arguments,
            {.environment = environment, .before_exec = before_traced_run, .without_prefix = true});
  const std::optional<int> status = trace(started.pid, meddler);
  const Outcome outcome = finish(started, status.value_or(0));
  return status ? std::optional(outcome) : std::nullopt;
}

void TracedTest::SetUp() {
  static const std::string obstacle = find_obstacle();
  if (!obstacle.empty()) {
    GTEST_SKIP() << "System calls can't be meddled with here: " << obstacle;
  }
}

}  // namespace tagmend::test
