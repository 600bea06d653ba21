#include "iptc/apply_iptc_edits.h"

#include <string>
#include <vector>

#include "iptc/store_fixture.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;

class ApplyIptcEditsTest : public StoreTest {
 protected:
  ApplyIptcEditsTest() : edits_(std::make_unique<EditList>()) {}

  static std::uint16_t row(const std::string& name) {
    return static_cast<std::uint16_t>(find_dataset(name, 0));
  }

  /// "name=value" adds, "name" removes.
  void list(const std::vector<std::string>& edits) {
    for (const std::string& edit : edits) {
      const std::size_t equals = edit.find('=');
      if (equals == std::string::npos) {
        edits_->entries[static_cast<std::size_t>(edits_->count++)] = {
            .op = EditOp::remove, .field = row(edit), .type = 0, .encoded = {}, .value = {}};
      } else {
        ASSERT_TRUE(append_edit(*edits_, row(edit.substr(0, equals)), 2, edit.substr(equals + 1)));
      }
    }
  }

  std::string apply(bool applied = true) {
    const SubstitutionContext context{
        .image = image_.get(), .iptc = store_.get(), .dataset_text = &iptc_dataset_text};
    return errors_of([&] { EXPECT_EQ(apply_iptc_edits(*store_, *edits_, '"', context), applied); });
  }

  /// "record:dataset value", '+' before new values, ';' behind each.
  [[nodiscard]] std::string content() const {
    std::string lines;
    for (const IptcEntry& entry : store_->list()) {
      lines += std::to_string(entry.record) + ":" + std::to_string(entry.dataset) +
               (entry.has_new_value ? " +" + std::string(entry.new_value)
                                    : " " + std::string(entry.text)) +
               ";";
    }
    return lines;
  }

  std::unique_ptr<EditList> edits_;
};

struct Case {
  const char* what;
  std::vector<std::string> edits;
  std::string content;
  const char* messages;
};

TEST_F(ApplyIptcEditsTest, EditsAStoredBlock) {
  const Bytes payload = photoshop({
      resource(1035, "", bytes_of("u1")),
      resource(1028, "",
               joined({dataset(2, 0, Bytes{0, 2}), dataset(2, 90, "Oslo"), dataset(2, 25, "a"),
                       dataset(2, 25, "b")})),
      resource(1000, "", {1}),
  });
  const std::string opaque = "0:0 Opaque data;";
  const std::vector<Case> cases = {
      {"removals",
       {"ip-url", "ip-city", "ip-caption", "ip-city"},
       opaque + "2:0 2;2:25 a;2:25 b;",
       "Warning: Could not delete field 'ip-caption', field not found\n"
       "Warning: Could not delete field 'ip-city', field not found\n"},
      {"the removal of all", {"ip-url", "ip-city", "ip-keyword", "ip-version", "Unknown"}, "", ""},
      {"versions of the user's own",
       {"ip1-version=4", "ip1-env-pri=5", "ip3-version=3", "ip3-version", "ip3-picture-num=7"},
       opaque + "1:0 +\0\4;1:60 +5;2:0 2;2:25 a;2:25 b;2:90 Oslo;3:0 +\0\2;3:10 +7;0:0 u1;"s,
       ""},
      {"a value made from the one it replaces",
       {"ip-city=[ip-city] ([ip-keyword])"},
       opaque + "2:0 2;2:25 a;2:25 b;2:90 +Oslo (a; b);0:0 u1;",
       ""},
      {"a value that cannot be encoded",
       {"ip-date=soon"},
       opaque + "2:0 2;2:25 a;2:25 b;2:90 Oslo;0:0 u1;",
       "Can't add IPTC field ip-date: Date format invalid\n"},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.what);
    ASSERT_EQ(read_segment(payload), ErrorCode::ok);
    store_->entries[0].text = "u1";
    edits_->count = 0;
    list(test.edits);
    EXPECT_EQ(apply(), test.messages);
    EXPECT_EQ(content(), test.content);
    EXPECT_EQ(store_->emptied, test.content.empty());
  }
}

TEST_F(ApplyIptcEditsTest, FullListsAndStoresAreReported) {
  library_settings.warnings_suppressed = true;
  list({"ip-caption=x"});
  list(std::vector<std::string>(199, "ip-city"));
  EXPECT_EQ(apply(), "Warning: Can't add IPTC Dataset 2 version field - edit table full\n");
  EXPECT_EQ(content(), "2:120 +x;");

  library_settings.warnings_suppressed = false;
  reset_iptc_store(*store_);
  edits_->count = 0;
  std::string many = "ip-keyword=k";
  for (int i = 1; i < 199; ++i) {
    many += ";k";
  }
  list({many, "ip-caption=x", "ip-city=y"});
  EXPECT_EQ(apply(), "Warning: Field table full. Some edit actions may not have been performed.\n");
  EXPECT_EQ(store_->count, 200);
  EXPECT_TRUE(content().ends_with("2:120 +x;")) << "neither the city nor the version fit";

  const std::string before = content();
  edits_->count = 0;
  list({"ip-keyword", "ip-city=y"});
  EXPECT_EQ(apply(false),
            "Warning: Field table full. Some edit actions may not have been performed.\n");
  EXPECT_EQ(content(), before);
}

}  // namespace
}  // namespace tagmend::test
