// Every system call of an edit that can fail does so, at each of its occurrences, once and from
// then on; reads and writes are cut short; and the program is ended at each of these points.
#include <errno.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "faults/photo_scene.h"
#include "faults/traced_run.h"

namespace tagmend::test {
namespace {

/// The points of one scene at which a run is disturbed.
class SystemCalls : public TracedTest, public testing::WithParamInterface<Scene> {
 protected:
  void SetUp() override {
    use_memory_file_system();
    TracedTest::SetUp();
    if (IsSkipped()) {
      return;
    }
    const SceneSandbox sandbox(scene());
    std::vector<SystemCall> calls;
    const auto record = [&calls](const SystemCall& call) {
      calls.push_back(call);
      return missing_link(call);
    };
    const auto outcome =
        run_traced(sandbox.directory, scene().arguments(), record, scene().environment);
    ASSERT_TRUE(outcome.has_value());
    check_scene(scene(), sandbox, *outcome, {.text = "undisturbed", .must_succeed = true});
    ASSERT_FALSE(HasFailure()) << "The edit itself does not work.";
    calls_ = std::move(calls);
    if (!all_scenes_wanted()) {
      leave_out_second_photo();
    }
  }

  void TearDown() override {
    if (tried_ > 0) {
      std::printf("%s: %zu points were tried\n", scene().title.c_str(), tried_);
    }
  }

  [[nodiscard]] static const Scene& scene() { return GetParam(); }

  /// What the file system of the scene answers, whatever the test does.
  [[nodiscard]] static Meddling missing_link(const SystemCall& call) {
    const std::string_view name = call.row->name;
    if (!scene().without_links || (name != "link" && name != "linkat")) {
      return {};
    }
    return {.deed = Meddling::Deed::fail, .number = EPERM};
  }

  /// The second photograph sees the same calls; it shows whether the run goes on.
  void leave_out_second_photo() {
    if (scene().is_walk()) {
      return;
    }
    std::size_t end = 0;
    while (end < calls_.size() && in_work(end) != 1) {
      ++end;
    }
    calls_.resize(end);
  }

  /// The photograph that is in work when the call is made; past the last before the first.
  [[nodiscard]] std::size_t in_work(std::size_t index) const {
    std::size_t last = scene().photos.size();
    for (std::size_t i = 0; i <= index; ++i) {
      for (std::size_t k = 0; k < scene().photos.size(); ++k) {
        if (calls_[i].path.ends_with(scene().photos[k].name())) {
          last = k;
        }
      }
    }
    return last;
  }

  /// Disturbs the call of that index, and with `from_then_on` all of its kind behind it.
  void disturb(const SystemCall& call, const Meddling& meddling, bool from_then_on,
               Disturbance disturbance) {
    const SceneSandbox sandbox(scene());
    const auto outcome = run_traced(
        sandbox.directory, scene().arguments(),
        [&](const SystemCall& now) -> Meddling {
          const bool is_kind = now.row == call.row && now.prints() == call.prints();
          if (is_kind && (now.index == call.index || (from_then_on && now.index > call.index))) {
            Meddling deed = meddling;
            deed.is_last = !from_then_on && !scene().without_links;
            return deed;
          }
          return missing_link(now);
        },
        scene().environment);
    ASSERT_TRUE(outcome.has_value());
    ++tried_;
    disturbance.is_silent = call.prints();
    disturbance.is_permanent = from_then_on;
    // What can't be removed stays.
    const bool is_removal = std::string_view(call.row->name).starts_with("unlink");
    if (from_then_on && is_removal) {
      disturbance.temps = scene().photos.size();
    }
    disturbance.in_work = in_work(call.index);
    check_scene(scene(), sandbox, *outcome, disturbance);
    EXPECT_TRUE(!disturbance.ended_early || outcome->status == -meddling.number)
        << disturbance.text << ": status " << outcome->status;
  }

  void fail_each(bool from_then_on) {
    for (const SystemCall& call : calls_) {
      for (const int error : call.row->errors) {
        if (error == 0 || (error == EINTR && from_then_on)) {  // no signal comes at every call
          continue;
        }
        disturb(call, {.deed = Meddling::Deed::fail, .number = error}, from_then_on,
                {.text = call.text() + (from_then_on ? " and later fail: " : " fails: ") +
                         std::strerror(error),
                 .must_succeed = is_harmless(call, error)});
      }
    }
  }

  void end_each(std::initializer_list<int> signals) {
    for (const SystemCall& call : calls_) {
      for (const int number : signals) {
        disturb(call, {.deed = Meddling::Deed::signal, .number = number}, false,
                {.text = call.text() + ": " + ::strsignal(number),
                 .ended_early = true,
                 .temps = number == SIGKILL ? 1U : 0U});
      }
    }
  }

  /// A transfer that was interrupted is repeated; what the kernel won't copy is read and written;
  /// a name that can have no second link is renamed.
  [[nodiscard]] static bool is_harmless(const SystemCall& call, int error) {
    const std::string_view name = call.row->name;
    if (name == "copy_file_range") {
      return true;
    }
    if (name == "link") {
      return error == EPERM || error == EMLINK || error == EXDEV;
    }
    const bool opens_directory = name == "openat" && (call.arguments[2] & O_DIRECTORY) != 0;
    return error == EINTR && name != "close" && name != "fsync" && !opens_directory;
  }

  std::vector<SystemCall> calls_;
  std::size_t tried_ = 0;
};

TEST_P(SystemCalls, FailOnce) { fail_each(false); }

TEST_P(SystemCalls, FailFromThenOn) { fail_each(true); }

TEST_P(SystemCalls, MoveFewerBytes) {
  for (const SystemCall& call : calls_) {
    if (call.row->length_argument < 0) {
      continue;
    }
    for (const bool from_then_on : {false, true}) {
      disturb(call, {.deed = Meddling::Deed::shorten}, from_then_on,
              {.text = call.text() + (from_then_on ? " and later" : "") + " cut short",
               .must_succeed = true});
    }
  }
}

TEST_P(SystemCalls, AreTheLast) { end_each({SIGKILL}); }

TEST_P(SystemCalls, AreInterrupted) { end_each({SIGINT, SIGTERM, SIGHUP}); }

/// After a power failure the name leads to one of the two files, and the old one is not yet gone
/// unless the new one is there to stay.
TEST_P(SystemCalls, StoreBeforeTheyReplace) {
  bool stored = false;
  bool taken = false;
  bool directory_stored = false;
  for (const SystemCall& call : calls_) {
    const std::string_view name = call.row->name;
    // Where the original is to be kept, what goes under the temporary name has its backup name too.
    const bool is_original = call.path.find("-be.") != std::string::npos ||
                             (call.path.starts_with("orvale_") && !scene().keeps_backup());
    if (name == "fsync") {
      directory_stored = taken;
      stored = true;
    } else if (name.starts_with("rename") && call.path.starts_with("orvale_")) {
      EXPECT_TRUE(stored) << call.text();
      taken = true;
    } else if (name == "unlink" && is_original) {
      EXPECT_TRUE(directory_stored) << call.text();
    }
    if (scene().is_walk() && name == "chdir") {
      stored = taken = directory_stored = false;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Scenes, SystemCalls, testing::ValuesIn(scenes()),
                         [](const auto& case_info) { return case_info.param.title; });

}  // namespace
}  // namespace tagmend::test
