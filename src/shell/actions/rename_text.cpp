#include "shell/actions/rename_text.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"
#include "search/query/query.h"

namespace quilmark {

namespace {

// True for the name of a device, also with an extension. Paths without a limit of length reach past the
// system's own test, and a file of such a name can hardly be opened or deleted.
bool IsDeviceName(std::u16string_view name) {
  const std::u16string stem = FoldText(name.substr(0, name.find(u'.')));
  for (const std::u16string_view device : {u"con", u"prn", u"aux", u"nul"}) {
    if (stem == device) return true;
  }
  const bool isNumbered = stem.size() == 4 && (stem.starts_with(u"com") || stem.starts_with(u"lpt"));
  return isNumbered && stem[3] >= u'1' && stem[3] <= u'9';
}

bool IsBadUnit(char16_t unit) {
  return unit < u' ' || std::u16string_view(u"\\/:*?\"<>|").find(unit) != std::u16string_view::npos;
}

}  // namespace

RenameCheck CheckRename(std::u16string_view oldName, std::u16string text) {
  if (text == oldName) return {RenameStep::kClose, std::move(text)};
  TrimQuery(text);
  // The system takes these off a name, but not off one in a path without a limit of length.
  text.erase(text.find_last_not_of(u" .") + 1);
  if (text.empty() || text == oldName) return {RenameStep::kClose, std::move(text)};
  const bool isBad = std::any_of(text.begin(), text.end(), IsBadUnit) || IsDeviceName(text);
  return {isBad ? RenameStep::kInvalid : RenameStep::kRename, std::move(text)};
}

FailedRename AfterFailedRename(bool isGone, CommitEnd end) {
  if (isGone) return FailedRename::kClose;
  return end == CommitEnd::kByLeavingTheProgram ? FailedRename::kKeep : FailedRename::kTell;
}

size_t SelectedStem(std::u16string_view name, bool isDirectory) {
  const size_t dot = isDirectory ? std::u16string_view::npos : name.rfind(u'.');
  return dot == std::u16string_view::npos ? name.size() : dot;
}

}  // namespace quilmark
