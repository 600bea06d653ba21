// Other processes work on the same photographs at the same time.
#include <errno.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "common/bytes.h"
#include "faults/photo_scene.h"
#include "faults/traced_run.h"

namespace tagmend::test {
namespace {

// ---- Another program replaces the file ----------------------------------------------------------

class Replaced : public TracedTest, public testing::WithParamInterface<Scene> {
 protected:
  void SetUp() override {
    use_memory_file_system();
    TracedTest::SetUp();
  }

  [[nodiscard]] static const Scene& scene() { return GetParam(); }

  /// Replaces the first photograph by the second one's bytes just before the call of that index.
  /// Returns whether there is such a call in the edit of the first.
  static bool replace_before(std::size_t index) {
    const SceneSandbox sandbox(scene());
    const Photo& photo = scene().photos[0];
    const Photo& other = scene().photos[1];
    bool name_was_taken = false;
    bool replaced = false;
    const auto outcome =
        run_traced(sandbox.directory, scene().arguments(), [&](const SystemCall& call) -> Meddling {
          const std::string_view name = call.row->name;
          if (call.index == index) {
            sandbox.directory.add("new", other.before);
            replaced = ::rename(sandbox.directory.path("new").c_str(),
                                sandbox.directory.path(photo.path).c_str()) == 0;
          } else if (!replaced && name.starts_with("rename")) {
            name_was_taken |= call.path.starts_with("orvale_");
          }
          if (!scene().without_links) {
            return {.is_last = replaced};
          }
          return name == "link" ? Meddling{.deed = Meddling::Deed::fail, .number = EPERM}
                                : Meddling{};
        });
    if (!outcome || !replaced || outcome->err.find(other.name()) != std::string::npos) {
      return false;
    }
    SCOPED_TRACE(scene().title + ": replaced before call " + std::to_string(index) + "\n" +
                 outcome->err);
    check_replaced(sandbox, *outcome, name_was_taken);
    return true;
  }

  static void check_replaced(const SceneSandbox& sandbox, const Outcome& outcome,
                             bool name_was_taken) {
    const Photo& photo = scene().photos[0];
    const Photo& other = scene().photos[1];
    EXPECT_EQ(outcome.status, 0);
    bool others_bytes = false;
    for (const auto& [path, content] : sandbox.directory.files()) {
      EXPECT_EQ(path.find("orvale_"), std::string::npos) << path << " was left behind";
      if (path.starts_with("a/")) {
        others_bytes |= content == other.before;
      }
    }
    const Bytes now = sandbox.directory.content(photo.path);
    if (now == other.before) {
      EXPECT_TRUE(name_was_taken || outcome.err.find(photo.name()) != std::string::npos)
          << "no message says that the file was not edited";
    } else {
      EXPECT_EQ(difference(other.after, now), "") << "what the other program wrote is lost";
      EXPECT_TRUE(others_bytes || !scene().keeps_backup());
    }
  }
};

TEST_P(Replaced, AtEveryPoint) {
  std::size_t tried = 0;
  while (replace_before(tried)) {
    ++tried;
  }
  EXPECT_GT(tried, 20U);
  std::printf("%s: replaced at %zu points\n", scene().title.c_str(), tried);
}

std::vector<Scene> file_scenes() {
  std::vector<Scene> all = scenes();
  std::erase_if(all, [](const Scene& scene) { return scene.is_walk(); });
  return all;
}

INSTANTIATE_TEST_SUITE_P(Scenes, Replaced, testing::ValuesIn(file_scenes()),
                         [](const auto& case_info) { return case_info.param.title; });

// ---- Eight processes in one directory -----------------------------------------------------------

constexpr std::size_t process_count = 8;
const Words photo_names = {"one.jpg", "two.jpg", "three.jpg"};

/// The photograph as it is at first, and as each of the processes makes it.
std::vector<Bytes> versions() {
  std::vector<Bytes> all = {photo_by("nobody")};
  for (std::size_t i = 0; i < process_count; ++i) {
    all.push_back(photo_by(std::to_string(i)));
  }
  return all;
}

bool is_one_of(const std::vector<Bytes>& all, const Bytes& content) {
  return std::find(all.begin(), all.end(), content) != all.end();
}

/// All processes at once; meanwhile every look at a photograph must find a whole one.
void run_together(const Sandbox& sandbox, const std::vector<Bytes>& all, bool walk) {
  std::atomic<std::size_t> running = process_count;
  std::vector<std::jthread> processes;
  for (std::size_t i = 0; i < process_count; ++i) {
    processes.emplace_back([&sandbox, &running, i, walk] {
      Words arguments = walk ? Words{"-b", "."} : photo_names;
      arguments.insert(arguments.begin(), {"-a", "artist=" + std::to_string(i)});
      EXPECT_EQ(run(sandbox, arguments).status, 0);
      --running;
    });
  }
  while (running > 0) {
    for (const std::string& name : photo_names) {
      EXPECT_TRUE(is_one_of(all, sandbox.content(name))) << name << " was gone or not whole";
    }
  }
}

TEST(Races, EightProcessesEditOneDirectory) {
  use_memory_file_system();
  constexpr int rounds = 50;
  const std::vector<Bytes> all = versions();
  for (int round = 0; round < rounds && !testing::Test::HasFailure(); ++round) {
    const bool walk = round % 2 == 0;
    SCOPED_TRACE("round " + std::to_string(round));
    Files files;
    for (const std::string& name : photo_names) {
      files[name] = all[0];
    }
    const Sandbox sandbox(files);
    run_together(sandbox, all, walk);
    const Files found = sandbox.files();
    for (const auto& [name, content] : found) {
      EXPECT_EQ(name.find("orvale_"), std::string::npos) << name << " was left behind";
      EXPECT_TRUE(is_one_of(all, content)) << name << " is not whole";
    }
    for (const std::string& name : photo_names) {
      EXPECT_NE(found.at(name), all[0]) << name << ": nobody's edit was done";
      const std::string backup = name.substr(0, name.rfind('.')) + "-be";
      bool kept = walk;
      for (const auto& [path, content] : found) {
        kept |= path.starts_with(backup) && content == all[0];
      }
      EXPECT_TRUE(kept) << "the original of " << name << " is lost";
    }
  }
}

}  // namespace
}  // namespace tagmend::test
