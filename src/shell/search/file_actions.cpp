#include "shell/search/file_actions.h"

#include <algorithm>
#include <iterator>
#include <shared_mutex>
#include <unordered_set>
#include <utility>

#include "index/tables/volume_index.h"
#include "platform/files.h"
#include "platform/text.h"
#include "search/query/query.h"
#include "search/results/glance.h"
#include "search/results/search_pipeline.h"
#include "shell/actions/action_texts.h"
#include "shell/actions/chosen_file.h"
#include "shell/actions/deletion.h"
#include "shell/actions/path_actions.h"
#include "shell/actions/recent_opens.h"
#include "shell/actions/shell_paths.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

// Keeps other actions away: some calls of the shell hand out keys and clicks before they return.
class ActingMark {
 public:
  explicit ActingMark(SearchView& view) : view_(view) { view.isActing = true; }
  ~ActingMark() { view_.isActing = false; }
  ActingMark(const ActingMark&) = delete;
  ActingMark& operator=(const ActingMark&) = delete;

 private:
  SearchView& view_;
};

// What an action works on: never empty where one runs.
using ChosenFiles = std::vector<ChosenFile>;

// The chosen rows that have a path. Empty where the first has none.
ChosenFiles ReadChosenFiles(const SearchView& view) {
  const auto rows = ShownResults();
  ChosenFiles files;
  for (const uint64_t row : SelectedRows(view.list.selection, rows->size())) {
    auto file = SeeFile((*rows)[static_cast<size_t>(row)]);
    if (!file && files.empty()) return {};
    if (file) files.push_back(std::move(*file));
  }
  return files;
}

std::vector<std::u16string> PathsOf(const ChosenFiles& files) {
  std::vector<std::u16string> paths;
  for (const ChosenFile& file : files) paths.push_back(file.path);
  return paths;
}

void RecordOpened(const ChosenFile& file) {
  if (IsStillThere(file)) RecordRecentOpen(file.hit);
}

void OpenFolder(SearchView& view, const ViewContext&, const ChosenFiles& files) {
  const ChosenFile& file = files.front();
  view.shell.SelectInFileManager(file.path);
  if (const auto folder = FolderOf(file)) {
    RecordRecentOpen(*folder);
    RefreshRecentViewIfNeeded();
  }
}

void Open(SearchView& view, const ViewContext&, const ChosenFiles& files) {
  if (files.size() > kMostOpenedAtOnce && !view.shell.Ask(OpenManyQuestion(files.size()))) return;
  for (const ChosenFile& file : files) {
    view.shell.Execute(ShellVerb::kOpen, file.path);
    RecordOpened(file);
  }
  RefreshRecentViewIfNeeded();
}

void RunAsAdmin(SearchView& view, const ViewContext&, const ChosenFiles& files) {
  view.shell.Execute(ShellVerb::kRunAsAdmin, files.front().path);
  RecordOpened(files.front());
  RefreshRecentViewIfNeeded();
}

void ShowPropertiesOfFirst(SearchView& view, const ViewContext&, const ChosenFiles& files) {
  ShowProperties(view.shell, files.front().path);
}

void CopyPaths(SearchView& view, const ViewContext&, const ChosenFiles& files) {
  std::u16string text;
  for (const ChosenFile& file : files) text += (text.empty() ? u"" : u"\r\n") + file.path;
  view.shell.CopyText(text);
}

template <DropEffect effect>
void CopyFiles(SearchView& view, const ViewContext& context, const ChosenFiles& files) {
  if (!view.shell.CopyFiles(PathsOf(files), effect)) context.window.TellError(ClipboardFailedText());
}

// Has the index know at once of what is gone, and gives the paths of it.
std::vector<std::u16string> FollowDeletion(const ChosenFiles& files, const DeletionOutcome& outcome) {
  ChosenFiles deleted;
  for (size_t i = 0; i < files.size(); ++i) {
    // Whoever says that it is done may have left some of a folder.
    if (outcome.isDone[i] && IsMissingPath(files[i].path)) deleted.push_back(files[i]);
  }
  MarkDeletedInIndex(deleted);
  return PathsOf(deleted);
}

void Recycle(SearchView& view, const ViewContext& context, const ChosenFiles& files) {
  const DeletionOutcome outcome = DeleteAll(view.shell, PathsOf(files), Undo::kYes);
  const auto deleted = FollowDeletion(files, outcome);
  if (outcome.failures != 0) {
    context.window.TellError(RecycleFailedText());
  } else {
    RemovePathsFromResults(view, context, deleted);
  }
  RefreshRecentViewIfNeeded();
}

void Delete(SearchView& view, const ViewContext& context, const ChosenFiles& files) {
  if (!view.shell.Ask(DeleteQuestion(PathsOf(files)))) return;
  const DeletionOutcome outcome = DeleteAll(view.shell, PathsOf(files), Undo::kNo);
  const auto deleted = FollowDeletion(files, outcome);
  if (outcome.failures != 0) context.window.TellError(DeleteFailedText(outcome.failures));
  RemovePathsFromResults(view, context, deleted);
}

struct ActionRow {
  FileAction action;
  void (*run)(SearchView&, const ViewContext&, const ChosenFiles&);
};
constexpr ActionRow kActionRows[] = {
    {FileAction::kOpenFolder, OpenFolder},
    {FileAction::kOpen, Open},
    {FileAction::kDelete, Delete},
    {FileAction::kCopyPath, CopyPaths},
    {FileAction::kCopy, CopyFiles<DropEffect::kCopy>},
    {FileAction::kCut, CopyFiles<DropEffect::kMove>},
    {FileAction::kRunAsAdmin, RunAsAdmin},
    {FileAction::kProperties, ShowPropertiesOfFirst},
    {FileAction::kRecycle, Recycle},
};

// True for a hit that was deleted, or whose path is in the set.
bool IsGone(const MatchItem& hit, const std::unordered_set<std::u16string>& paths) {
  // A volume that is being built has told nobody of a deletion yet.
  if (hit.volume == nullptr || !IsSearchable(*hit.volume)) return false;
  const std::shared_lock lock(hit.volume->indexLock);
  if (hit.index >= hit.volume->records.size()) return false;
  return hit.volume->records[hit.index].deleted ||
         paths.contains(ComparablePath(BuildPath(*hit.volume, hit.index)));
}

// The held results without what is gone; a content query is too costly to be run again.
void TakeOutOfResults(const std::vector<std::u16string>& paths) {
  std::unordered_set<std::u16string> gone;
  for (const std::u16string& path : paths) gone.insert(ComparablePath(path));
  const Ticket ticket = TheSearch().CurrentResults.Latest();
  const SearchResults held = TheSearch().CurrentResults.Get();
  auto rows = std::make_shared<ResultSet>();
  std::copy_if(held.rows->begin(), held.rows->end(), std::back_inserter(*rows),
               [&](const MatchItem& hit) { return !IsGone(hit, gone); });
  PublishResults(ticket, ResultKind::kFinal, std::move(rows), KeepSort::kYes, held.order);
}

}  // namespace

Effects RunFileAction(SearchView& view, const ViewContext& context, FileAction action) {
  if (view.isActing) return {};
  const ActingMark mark(view);
  const ChosenFiles files = ReadChosenFiles(view);
  if (files.empty()) return {};
  for (const ActionRow& row : kActionRows) {
    if (row.action == action) row.run(view, context, files);
  }
  return {};
}

void RemovePathsFromResults(SearchView& view, const ViewContext& context,
                            const std::vector<std::u16string>& paths) {
  std::u16string text = context.window.TextOf(kQueryBox);
  TrimQuery(text);
  view.savedScrollY = view.rows.scrollY;
  view.keepScrollOnce = true;
  if (IsContentPrefix(text)) return TakeOutOfResults(paths);
  if (text.empty() && TheSearch().SuppressRecentView) return RefreshSearchResultsAfterIndexUpdate();
  DoSearchAsync(std::move(text), true, false);
}

Effects BeginFileDrag(SearchView& view, const ViewContext& context) {
  if (view.isActing) return {.isTaken = false};
  const ActingMark mark(view);
  const ChosenFiles files = ReadChosenFiles(view);
  if (files.empty()) return {.isTaken = false};
  context.window.CarryOut({.tip = u""});
  // The mouse has gone elsewhere meanwhile.
  return {.isTaken = view.shell.Drag(PathsOf(files)), .rehovers = true};
}

Effects ShowSystemContextMenu(SearchView& view, const ViewContext&) {
  if (view.isActing) return {};
  const ActingMark mark(view);
  const ChosenFiles files = ReadChosenFiles(view);
  if (files.empty()) return {};
  view.shell.ShowSystemMenu(SiblingsOfFirst(PathsOf(files)));
  return {.rehovers = true};
}

}  // namespace quilmark
