#include "shell/app/filter_file.h"

#include <gtest/gtest.h>

#include "config/config_directory.h"
#include "platform/files.h"
#include "platform/text_file.h"
#include "platform/utf.h"
#include "search/filter/filter_categories.h"
#include "shell/app/app_commands.h"
#include "shell/test_pump.h"
#include "shell/view/commands.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

class FilterFile : public testing::Test {
 protected:
  void Run(uint16_t id) { EXPECT_TRUE(RunAppCommand(app, pump.Context(), id).isTaken); }
  static FilterTable TableOf(std::u16string_view name) {
    const auto bytes = ReadFileBytes(ConfigPath(name));
    return bytes ? ReadCategories(DecodeText(*bytes)) : FilterTable();
  }

  WindowHarness harness;
  AppState& app = harness.app;
  TestPump pump{harness};
  const std::u16string path = ConfigPath(u"filters.ini");
  const FilterTable defaults = DefaultCategories(false);
};

TEST_F(FilterFile, IsShownWithTheDefaultsWhereThereIsNone) {
  Run(kCommandShowFilters);
  EXPECT_EQ(harness.shell.calls, Calls{"select " + ToUtf8(path)});
  EXPECT_EQ(TableOf(u"filters.ini"), defaults);
}

TEST_F(FilterFile, IsShownAsItIs) {
  ASSERT_TRUE(WriteTextFile(path, u"Mine=.one\n"));
  Run(kCommandShowFilters);
  EXPECT_EQ(TableOf(u"filters.ini"), (FilterTable{{u"Mine", {u".one"}}}));
}

TEST_F(FilterFile, IsOpenedWhereItCannotBeShown) {
  harness.shell.selects = false;
  Run(kCommandShowFilters);
  EXPECT_EQ(harness.shell.calls, (Calls{"select " + ToUtf8(path), "open " + ToUtf8(path)}));
}

TEST_F(FilterFile, IsResetForTheNextStart) {
  app.language = u"Old English";
  ASSERT_TRUE(WriteTextFile(path, u"Mine=.one\n"));
  ASSERT_TRUE(WriteTextFile(ConfigPath(u"filters.old_english.ini"), u"Mine=.two\n"));
  const auto inForce = CurrentCategories();
  Run(kCommandResetFilters);
  ASSERT_EQ(harness.shell.questions.size(), 1u);
  EXPECT_EQ(harness.shell.questions[0].text,
            u"Reset filter tags to defaults?\n\n(Restart software to apply UI changes)");
  ASSERT_EQ(harness.shell.notices.size(), 1u);
  EXPECT_EQ(harness.shell.notices[0].text, u"Reset complete.");
  EXPECT_EQ(CurrentCategories(), inForce);
  EXPECT_EQ(TableOf(u"filters.ini"), defaults);
  EXPECT_EQ(ReadFilterCategories(app.language, false), defaults);
}

TEST_F(FilterFile, StaysWhereTheAnswerIsNo) {
  ASSERT_TRUE(WriteTextFile(path, u"Mine=.one\n"));
  harness.shell.saysYes = false;
  Run(kCommandResetFilters);
  EXPECT_EQ(harness.shell.calls, Calls{"ask"});
  EXPECT_EQ(TableOf(u"filters.ini"), (FilterTable{{u"Mine", {u".one"}}}));
}

TEST_F(FilterFile, TellsThatItCannotBeWritten) {
  ASSERT_TRUE(MakeFolder(path));
  Run(kCommandResetFilters);
  EXPECT_TRUE(harness.shell.notices.empty());
  ASSERT_EQ(pump.errors.size(), 1u);
  EXPECT_EQ(pump.errors[0], u"The filter tags could not be written.");
}

}  // namespace
}  // namespace quilmark
