// The layers of the tree: no file includes one of a layer above its own, and no includes form a
// circle.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct LayerRow {
  std::string_view prefix;  ///< of the path below src/
  int layer;
};

/// The first row that matches decides, so that single files stand in front of their folder.
constexpr std::array<LayerRow, 18> layer_rows = {{
    {"support/", 0},
    {"dictionary/", 1},
    // Syntax of texts: knows the dictionary's types, but no image file.
    {"encode/field_list", 2},
    {"encode/list_", 2},
    {"encode/repeated_value", 2},
    {"encode/date_", 2},
    {"encode/charset_option", 2},
    // Records that pass between the layers above.
    {"read/image_file.h", 3},
    {"read/read_context.h", 3},
    {"encode/edit_list.", 3},
    {"read/", 4},
    {"encode/", 4},
    {"iptc/", 5},
    {"containers/", 5},
    {"write/", 6},
    {"cli/", 7},
    {"main.cpp", 8},
    {"", -1},
}};

int layer_of(std::string_view file) {
  for (const LayerRow& row : layer_rows) {
    if (file.starts_with(row.prefix)) {
      return row.layer;
    }
  }
  return -1;
}

/// File → files of the tree that it includes, all by their path below src/.
using Includes = std::map<std::string, std::vector<std::string>>;

Includes read_includes() {
  constexpr std::string_view directive = "#include \"";
  Includes includes;
  for (const auto& entry : fs::recursive_directory_iterator(TAGMEND_SOURCES)) {
    if (!entry.is_regular_file()) {
      continue;
    }
    auto& included = includes[entry.path().lexically_relative(TAGMEND_SOURCES).string()];
    std::ifstream file(entry.path());
    for (std::string line; std::getline(file, line);) {
      if (line.starts_with(directive)) {
        const std::size_t end = line.find('"', directive.size());
        included.push_back(line.substr(directive.size(), end - directive.size()));
      }
    }
  }
  return includes;
}

TEST(Includes, EveryFileIsOfALayer) {
  for (const auto& [file, included] : read_includes()) {
    EXPECT_NE(layer_of(file), -1) << file;
    for (const std::string& target : included) {
      EXPECT_TRUE(fs::exists(fs::path(TAGMEND_SOURCES) / target))
          << file << " includes " << target << ", which is not a path below src/";
    }
  }
}

TEST(Includes, NoneClimbsALayer) {
  for (const auto& [file, included] : read_includes()) {
    for (const std::string& target : included) {
      EXPECT_LE(layer_of(target), layer_of(file)) << file << " includes " << target;
    }
  }
}

TEST(Includes, FormNoCircle) {
  const Includes includes = read_includes();
  enum class Mark { none, open, done };
  std::map<std::string, Mark> marks;
  const std::function<void(const std::string&, const std::string&)> visit =
      [&](const std::string& file, const std::string& trail) {
        Mark& mark = marks[file];
        ASSERT_NE(mark, Mark::open) << "a circle: " << trail << file;
        if (mark == Mark::done || !includes.contains(file)) {
          return;
        }
        mark = Mark::open;
        for (const std::string& target : includes.at(file)) {
          visit(target, trail + file + " > ");
        }
        mark = Mark::done;
      };
  for (const auto& [file, included] : includes) {
    visit(file, "");
  }
}

}  // namespace
