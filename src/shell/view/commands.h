// Numbers of the commands that menus offer. None may change.
#pragma once

#include <cstdint>

namespace quilmark {

// What is done with the chosen files.
inline constexpr uint16_t kCommandOpen = 10001;
inline constexpr uint16_t kCommandOpenFolder = 10002;
inline constexpr uint16_t kCommandDelete = 10003;  // for good
inline constexpr uint16_t kCommandRunAsAdmin = 10004;
inline constexpr uint16_t kCommandCopyPath = 10005;
inline constexpr uint16_t kCommandProperties = 10006;
inline constexpr uint16_t kCommandCopy = 10009;
inline constexpr uint16_t kCommandCut = 10010;
inline constexpr uint16_t kCommandRecycle = 10013;
inline constexpr uint16_t kCommandRename = 10014;
inline constexpr uint16_t kCommandSystemMenu = 10026;

// What the list shows.
inline constexpr uint16_t kCommandShowFilters = 10007;   // the file of the filter tags
inline constexpr uint16_t kCommandResetFilters = 10008;  // after a question
inline constexpr uint16_t kCommandClearRecent = 10011;
inline constexpr uint16_t kCommandRefreshNonNtfs = 10015;
inline constexpr uint16_t kCommandSidebar = 10016;
inline constexpr uint16_t kCommandTopBar = 10017;
inline constexpr uint16_t kCommandViewList = 10018;
inline constexpr uint16_t kCommandViewSmallIcons = 10019;
inline constexpr uint16_t kCommandViewLargeIcons = 10020;
inline constexpr uint16_t kCommandSortByName = 10021;
inline constexpr uint16_t kCommandSortBySize = 10022;
inline constexpr uint16_t kCommandSortByModified = 10023;
inline constexpr uint16_t kCommandSortByCreated = 10024;
inline constexpr uint16_t kCommandSortByPath = 10025;
inline constexpr uint16_t kCommandGridLines = 10027;
inline constexpr uint16_t kCommandInitials = 10028;

// What the window shows.
inline constexpr uint16_t kCommandSettings = 10029;
inline constexpr uint16_t kCommandAnalysis = 10030;
inline constexpr uint16_t kCommandSearch = 10031;
inline constexpr uint16_t kCommandDuplicates = 10036;

// Asked for by a view alone: the chosen files are dragged by the mouse.
inline constexpr uint16_t kCommandDrag = 10101;
inline constexpr uint16_t kCommandFileTypes = 10102;  // of a content search, to be chosen

}  // namespace quilmark
