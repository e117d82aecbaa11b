#include "platform/posix/user_dirs.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

constexpr std::string_view kKey = "XDG_DESKTOP_DIR";

std::optional<std::string> Find(std::string_view text) { return FindUserDir(text, kKey, "/home/me"); }

TEST(UserDirs, ReadsPathsBelowHomeAndAbsoluteOnes) {
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"$HOME/Desktop\"\n"), "/home/me/Desktop");
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"/srv/desk\""), "/srv/desk");
  EXPECT_EQ(Find(" \tXDG_DESKTOP_DIR \t=\t \"/srv/desk\" # behind"), "/srv/desk");
  EXPECT_EQ(FindUserDir("XDG_DESKTOP_DIR=\"$HOME/Desktop\"", kKey, "/home/me/"), "/home/me/Desktop");
  EXPECT_EQ(FindUserDir("XDG_DESKTOP_DIR=\"$HOME/Desktop\"", kKey, "/"), "/Desktop");
}

TEST(UserDirs, PassesOtherLinesOver) {
  EXPECT_EQ(Find("# XDG_DESKTOP_DIR=\"/comment\"\n\nXDG_MUSIC_DIR=\"/music\"\r\n"), std::nullopt);
  EXPECT_EQ(Find("XDG_DESKTOP_DIRS=\"/a\"\nMY_XDG_DESKTOP_DIR=\"/b\"\n"), std::nullopt);
  EXPECT_EQ(Find(""), std::nullopt);
}

TEST(UserDirs, TheLastLineCounts) {
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"/a\"\nXDG_DESKTOP_DIR=\"/b\"\nXDG_DESKTOP_DIR=unquoted\n"), "/b");
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"/a\"\nXDG_DESKTOP_DIR=\"$HOME/\"\n"), std::nullopt);
}

TEST(UserDirs, TheHomeFolderItselfMeansThatThereIsNone) {
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"$HOME/\""), std::nullopt);
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"$HOME\""), std::nullopt);
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"/home/me\""), std::nullopt);
}

TEST(UserDirs, ABackslashTakesTheNextCharacterAsItIs) {
  EXPECT_EQ(Find(R"(XDG_DESKTOP_DIR="$HOME/a \"b\" \\ \$c")"), R"(/home/me/a "b" \ $c)");
  EXPECT_EQ(Find(R"(XDG_DESKTOP_DIR="/open\")"), std::nullopt);
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"/open\\"), std::nullopt);
}

TEST(UserDirs, AValueIsQuotedAndWhole) {
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=/srv/desk"), std::nullopt);
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"/srv/desk"), std::nullopt);
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"relative\""), std::nullopt);
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"$HOMES/Desktop\""), std::nullopt);
  EXPECT_EQ(Find("XDG_DESKTOP_DIR=\"\""), std::nullopt);
  EXPECT_EQ(Find("XDG_DESKTOP_DIR="), std::nullopt);
  EXPECT_EQ(Find("XDG_DESKTOP_DIR"), std::nullopt);
}

TEST(UserDirs, EveryCutOfAGoodFileEndsQuietly) {
  constexpr std::string_view kWhole = "XDG_DESKTOP_DIR=\"$HOME/De\\\"sk\"";
  for (size_t length = 0; length < kWhole.size(); ++length) {
    EXPECT_EQ(Find(kWhole.substr(0, length)), std::nullopt) << length;
  }
  EXPECT_EQ(Find(kWhole), "/home/me/De\"sk");
}

}  // namespace
}  // namespace quilmark
