#include "shell/search/context_menu.h"

#include <string_view>
#include <utility>

#include "config/translate.h"
#include "shell/view/commands.h"

namespace quilmark {

namespace {

struct Entry {
  uint16_t id;  // 0: a line
  std::u16string_view key, english;
};

constexpr Entry kLine = {0, u"", u""};

constexpr Entry kFileEntries[] = {
    {kCommandOpen, u"Menu_Open", u"Open"},
    {kCommandCopy, u"Menu_Copy", u"Copy"},
    {kCommandCut, u"Menu_Cut", u"Cut"},
    {kCommandOpenFolder, u"Menu_OpenContainingFolder", u"Open Containing Folder"},
    {kCommandCopyPath, u"Menu_CopyFullPath", u"Copy Full Path"},
    {kCommandRunAsAdmin, u"Menu_RunAsAdmin", u"Run as Administrator"},
    kLine,
    {kCommandRename, u"Menu_RenameF2", u"Rename\tF2"},
    {kCommandRecycle, u"Menu_MoveToRecycleDelete", u"Move to Recycle Bin\tDelete"},
    {kCommandDelete, u"Menu_DeletePermanentShiftDelete", u"Delete Permanently\tShift+Delete"},
    kLine,
    {kCommandSystemMenu, u"Menu_SystemContext", u"System Context Menu..."},
    {kCommandProperties, u"Menu_Properties", u"Properties"},
    kLine,
};

constexpr Entry kRefreshEntries[] = {
    {kCommandRefreshNonNtfs, u"Menu_RefreshNonNtfs", u"Refresh All Non-NTFS Indexes"},
    kLine,
};

constexpr Entry kViewEntries[] = {
    {kCommandViewList, u"Menu_ViewList", u"List"},
    {kCommandViewSmallIcons, u"Menu_ViewSmallIcons", u"Small Icons"},
    {kCommandViewLargeIcons, u"Menu_ViewLargeIcons", u"Large Icons"},
};

constexpr Entry kSortEntries[] = {
    {kCommandSortByName, u"Menu_SortByName", u"By Name"},
    {kCommandSortBySize, u"Menu_SortBySize", u"By Size"},
    {kCommandSortByModified, u"Menu_SortByModified", u"By Modified Time"},
    {kCommandSortByCreated, u"Menu_SortByCreated", u"By Created Time"},
    {kCommandSortByPath, u"Menu_SortByPath", u"By Path"},
};

constexpr Entry kLayoutEntries[] = {
    kLine,
    {kCommandSidebar, u"Menu_FilterLayoutSidebar", u"Filter Layout: Sidebar"},
    {kCommandTopBar, u"Menu_FilterLayoutTopbar", u"Filter Layout: Top Bar"},
    kLine,
};

constexpr Entry kWindowEntries[] = {
    {kCommandClearRecent, u"Menu_ClearRecent", u"Clear Recent Opens"},
    {kCommandAnalysis, u"Menu_SwitchToAnalysis", u"Switch to Analysis"},
    {kCommandDuplicates, u"Menu_SwitchToDup", u"Switch to Duplicate Files"},
    {kCommandSettings, u"Settings_Title", u"Settings Center"},
};

MenuRow RowOf(const Entry& entry) {
  if (entry.id == 0) return {};
  return {.id = entry.id, .text = TranslateOr(entry.key, entry.english)};
}

template <size_t count>
void Append(std::vector<MenuRow>& rows, const Entry (&entries)[count]) {
  for (const Entry& entry : entries) rows.push_back(RowOf(entry));
}

template <size_t count>
MenuRow SubMenu(std::u16string_view key, std::u16string_view english, const Entry (&entries)[count]) {
  MenuRow menu{.text = TranslateOr(key, english)};
  Append(menu.rows, entries);
  return menu;
}

}  // namespace

std::vector<MenuRow> ContextMenuRows(const ContextMenuState& state) {
  std::vector<MenuRow> rows;
  Append(rows, kFileEntries);
  for (MenuRow& row : rows) row.isEnabled = state.hasRow || row.id == 0;
  Append(rows, kRefreshEntries);
  MenuRow view = SubMenu(u"Menu_View", u"View", kViewEntries);
  view.rows[static_cast<size_t>(state.view)].isChecked = true;
  rows.push_back(std::move(view));
  rows.push_back(SubMenu(u"Menu_Sort", u"Sort", kSortEntries));
  const size_t layout = rows.size();
  Append(rows, kLayoutEntries);
  rows[layout + (state.sidebarLayout ? 1 : 2)].isChecked = true;
  Append(rows, kWindowEntries);
  return rows;
}

}  // namespace quilmark
