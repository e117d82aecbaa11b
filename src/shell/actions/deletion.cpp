#include "shell/actions/deletion.h"

#include <algorithm>
#include <unordered_set>

#include "platform/files.h"
#include "platform/shutdown.h"
#include "platform/text.h"
#include "shell/actions/shell_paths.h"

namespace quilmark {

namespace {

constexpr size_t kLongestOldPath = 259;  // units that the old call takes (MAX_PATH with its NUL)

bool TryInTurn(ShellPort& shell, const std::u16string& path, Undo undo) {
  if (!IsDeletablePath(path)) return false;
  const bool isPlain = IsPlainPath(path);
  if (isPlain && shell.DeleteByOperation(path, undo)) return true;
  if (isPlain && path.size() <= kLongestOldPath && shell.DeleteByOldCall(path, undo)) return true;
  return shell.DeleteDirectly(path);
}

// What was deleted, by ComparablePath.
using DeletedPaths = std::unordered_set<std::u16string>;

bool WentWithItsFolder(const DeletedPaths& deleted, const std::u16string& path) {
  if (deleted.empty()) return false;
  for (auto folder = ParentOfPath(ComparablePath(path)); folder; folder = ParentOfPath(*folder)) {
    if (deleted.contains(*folder)) return IsMissingPath(path);
  }
  return false;
}

}  // namespace

bool RecycleOrDelete(ShellPort& shell, const std::u16string& path) {
  return TryInTurn(shell, path, Undo::kYes);
}

bool DeletePermanently(ShellPort& shell, const std::u16string& path) {
  return TryInTurn(shell, path, Undo::kNo);
}

DeletionOutcome DeleteAll(ShellPort& shell, const std::vector<std::u16string>& paths, Undo undo) {
  DeletionOutcome outcome;
  DeletedPaths deleted;
  for (const std::u16string& path : paths) {
    if (ShutdownRequested) {  // by a message that the shell has handed out
      outcome.isDone.push_back(false);
      continue;
    }
    const bool isDone = WentWithItsFolder(deleted, path) || TryInTurn(shell, path, undo);
    if (isDone) deleted.insert(ComparablePath(path));
    outcome.isDone.push_back(isDone);
    outcome.failures += isDone ? 0 : 1;
  }
  return outcome;
}

bool DeleteEntry(EntryCalls& calls, const std::u16string& path) {
  if (!IsDeletablePath(path)) return false;
  const uint32_t attributes = calls.AttributesOf(path);
  if (attributes == kNoAttributes) return false;
  const uint32_t cleared = attributes & ~(kReadOnlyAttribute | kHiddenAttribute | kSystemAttribute);
  const bool isCleared =
      cleared != attributes && calls.SetAttributes(path, cleared != 0 ? cleared : kNormalAttribute);
  const bool isFolder = (attributes & kFolderAttribute) != 0;
  const bool mayHaveNames = isCleared && (attributes & (kFolderAttribute | kLinkAttribute)) == 0;
  const auto others = mayHaveNames ? calls.OtherNamesOf(path) : std::vector<std::u16string>();
  if (isFolder ? calls.RemoveFolder(path) : calls.RemoveFile(path)) {
    for (const std::u16string& other : others) {
      if (calls.SetAttributes(other, attributes)) break;
    }
    return true;
  }
  if (isCleared) calls.SetAttributes(path, attributes);
  return false;
}

}  // namespace quilmark
