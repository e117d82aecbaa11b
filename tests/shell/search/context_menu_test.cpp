#include "shell/search/context_menu.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/utf.h"

namespace quilmark {
namespace {

// A line an entry: its number, ! for a greyed and x for a checked one, its text; > for a row within.
std::string Told(const std::vector<MenuRow>& rows, const std::string& indent = "") {
  std::string lines;
  for (const MenuRow& row : rows) {
    lines += indent + (row.text.empty() ? "-" : row.id == 0 ? "" : std::to_string(row.id) + " ");
    lines += std::string(row.isEnabled ? "" : "! ") + (row.isChecked ? "x " : "") + ToUtf8(row.text);
    lines += "\n" + Told(row.rows, "> ");
  }
  return lines;
}

constexpr char kBelowTheFiles[] =
    "10015 Refresh All Non-NTFS Indexes\n"
    "-\n"
    "View\n"
    "> 10018 x List\n"
    "> 10019 Small Icons\n"
    "> 10020 Large Icons\n"
    "Sort\n"
    "> 10021 By Name\n"
    "> 10022 By Size\n"
    "> 10023 By Modified Time\n"
    "> 10024 By Created Time\n"
    "> 10025 By Path\n"
    "-\n"
    "10016 Filter Layout: Sidebar\n"
    "10017 x Filter Layout: Top Bar\n"
    "-\n"
    "10011 Clear Recent Opens\n"
    "10030 Switch to Analysis\n"
    "10036 Switch to Duplicate Files\n"
    "10029 Settings Center\n";

TEST(ContextMenu, OffersWhatIsDoneWithAFile) {
  EXPECT_EQ(Told(ContextMenuRows({.hasRow = true})),
            std::string("10001 Open\n"
                        "10009 Copy\n"
                        "10010 Cut\n"
                        "10002 Open Containing Folder\n"
                        "10005 Copy Full Path\n"
                        "10004 Run as Administrator\n"
                        "-\n"
                        "10014 Rename\tF2\n"
                        "10013 Move to Recycle Bin\tDelete\n"
                        "10003 Delete Permanently\tShift+Delete\n"
                        "-\n"
                        "10026 System Context Menu...\n"
                        "10006 Properties\n"
                        "-\n") +
                kBelowTheFiles);
}

TEST(ContextMenu, GreysWhatNeedsARowBesideTheRows) {
  EXPECT_EQ(Told(ContextMenuRows({.hasRow = false})),
            std::string("10001 ! Open\n"
                        "10009 ! Copy\n"
                        "10010 ! Cut\n"
                        "10002 ! Open Containing Folder\n"
                        "10005 ! Copy Full Path\n"
                        "10004 ! Run as Administrator\n"
                        "-\n"
                        "10014 ! Rename\tF2\n"
                        "10013 ! Move to Recycle Bin\tDelete\n"
                        "10003 ! Delete Permanently\tShift+Delete\n"
                        "-\n"
                        "10026 ! System Context Menu...\n"
                        "10006 ! Properties\n"
                        "-\n") +
                kBelowTheFiles);
}

TEST(ContextMenu, ChecksTheViewAndTheLayoutInForce) {
  const std::string told = Told(ContextMenuRows({.view = ViewMode::kLargeIcons, .sidebarLayout = true}));
  EXPECT_NE(told.find("10020 x Large"), std::string::npos);
  EXPECT_NE(told.find("10018 List"), std::string::npos);
  EXPECT_NE(told.find("10016 x Filter"), std::string::npos);
  EXPECT_NE(told.find("10017 Filter"), std::string::npos);
}

}  // namespace
}  // namespace quilmark
