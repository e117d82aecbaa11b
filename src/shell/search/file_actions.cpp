#include "shell/search/file_actions.h"

#include <algorithm>
#include <iterator>
#include <shared_mutex>
#include <unordered_set>
#include <utility>

#include "config/translate.h"
#include "index/tables/volume_index.h"
#include "platform/files.h"
#include "platform/shutdown.h"
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
#include "shell/search/search_places.h"
#include "shell/search/seen_rows.h"
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

// The chosen rows that have a path. Empty where the first has none, and where one of them is not what
// was seen any more: then the user is told, and nothing is chosen.
ChosenFiles ReadChosenFiles(SearchView& view, const ViewContext& context) {
  const auto rows = ChosenSet(view);
  ChosenFiles files;
  bool isSeen = rows != nullptr;
  for (const uint64_t row : SelectedRows(view.list.selection, isSeen ? rows->size() : 0)) {
    auto file = SeeFile((*rows)[static_cast<size_t>(row)]);
    if (!file && files.empty()) return {};
    if (!file) continue;
    isSeen = isSeen && view.chosenFrom.HasBuild(file->hit.volume, file->build);
    files.push_back(std::move(*file));
  }
  const bool hasChoice = view.list.selection.focusRow >= 0 || !view.list.selection.rows.empty();
  if (isSeen || !hasChoice) return files;
  ClearSelection(view.list.selection);
  context.window.SetStatus(
      TranslateOr(u"Status_RowsChanged", u"The list has changed meanwhile. Search and choose again."));
  return {};
}

std::vector<std::u16string> PathsOf(const ChosenFiles& files) {
  std::vector<std::u16string> paths;
  for (const ChosenFile& file : files) paths.push_back(file.path);
  return paths;
}

bool AreShellPaths(const std::vector<std::u16string>& paths) {
  return std::all_of(paths.begin(), paths.end(), IsShellPath);
}

// Nobody is told of a file that the shell cannot be given, as of any other that does not open.
void Execute(SearchView& view, ShellVerb verb, const ChosenFile& file) {
  if (IsShellPath(file.path)) view.shell.Execute(verb, file.path);
}

void RecordOpened(const ChosenFile& file) {
  if (IsStillThere(file)) RecordRecentOpen(file.hit);
}

void OpenFolder(SearchView& view, const ViewContext&, const ChosenFiles& files) {
  const ChosenFile& file = files.front();
  if (IsShellPath(file.path)) view.shell.SelectInFileManager(file.path);
  if (const auto folder = FolderOf(file)) {
    RecordRecentOpen(*folder);
    RefreshRecentViewIfNeeded();
  }
}

void Open(SearchView& view, const ViewContext&, const ChosenFiles& files) {
  if (files.size() > kMostOpenedAtOnce && !view.shell.Ask(OpenManyQuestion(files.size()))) return;
  for (const ChosenFile& file : files) {
    if (ShutdownRequested) return;  // by a message that the shell has handed out
    Execute(view, ShellVerb::kOpen, file);
    RecordOpened(file);
  }
  RefreshRecentViewIfNeeded();
}

void RunAsAdmin(SearchView& view, const ViewContext&, const ChosenFiles& files) {
  Execute(view, ShellVerb::kRunAsAdmin, files.front());
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
  const auto paths = PathsOf(files);
  // None is passed over: all of them, or an error.
  const bool isCopied = AreShellPaths(paths) && view.shell.CopyFiles(paths, effect);
  if (!isCopied) context.window.TellError(ClipboardFailedText());
}

// Has the index know at once of what is gone, and gives the paths of it.
std::vector<std::u16string> FollowDeletion(const ChosenFiles& files, const DeletionOutcome& outcome) {
  ChosenFiles deleted;
  for (size_t i = 0; i < files.size(); ++i) {
    // Whoever says that it is done may have left some of a folder.
    if (outcome.isDone[i] && IsMissingPath(files[i].path)) deleted.push_back(files[i]);
  }
  MarkDeletedInIndex(deleted);
  std::vector<std::u16string> paths = PathsOf(deleted);
  TheRecentOpens().ForgetPlaces(paths);
  return paths;
}

void Recycle(SearchView& view, const ViewContext& context, const ChosenFiles& files) {
  const DeletionOutcome outcome = DeleteAll(view.shell, PathsOf(files), Undo::kYes);
  const auto deleted = FollowDeletion(files, outcome);
  if (ShutdownRequested) return;
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
  if (ShutdownRequested) return;
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

// What was deleted, by ComparablePath, and the last parts of these paths.
struct GonePaths {
  std::unordered_set<std::u16string> paths, names;

  explicit GonePaths(const std::vector<std::u16string>& deleted) {
    for (const std::u16string& path : deleted) {
      const auto [comparable, isNew] = paths.insert(ComparablePath(path));
      if (isNew) names.insert(comparable->substr(comparable->rfind(u'\\') + 1));
    }
  }
};

// True for a hit that was deleted, or that has one of the paths: of those nearly all are marked deleted.
// Waits for whoever writes to the volume.
bool IsGone(const MatchItem& hit, const GonePaths& gone) {
  // A volume that is being built has told nobody of a deletion yet.
  if (hit.volume == nullptr || !IsSearchable(*hit.volume)) return false;
  const VolumeIndex& volume = *hit.volume;
  const std::shared_lock lock(volume.indexLock);
  if (hit.index >= volume.records.size()) return false;
  return volume.records[hit.index].deleted ||
         (gone.names.contains(std::u16string(FoldedNameOf(volume.records[hit.index]))) &&
          gone.paths.contains(ComparablePath(BuildPath(volume, hit.index))));
}

// The held results without what is gone; a content query is too costly to be run again.
void TakeOutOfResults(const std::vector<std::u16string>& paths) {
  const GonePaths gone(paths);
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
  const ChosenFiles files = ReadChosenFiles(view, context);
  if (files.empty()) return {.dirty = ListAreaOf(view, context)};  // they may be chosen no more
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
  const auto paths = PathsOf(ReadChosenFiles(view, context));
  if (paths.empty() || !AreShellPaths(paths)) return {.isTaken = false};
  context.window.CarryOut({.tip = u""});
  // The mouse has gone elsewhere meanwhile.
  return {.isTaken = view.shell.Drag(paths), .rehovers = true};
}

Effects ShowSystemContextMenu(SearchView& view, const ViewContext& context) {
  if (view.isActing) return {};
  const ActingMark mark(view);
  const auto paths = SiblingsOfFirst(PathsOf(ReadChosenFiles(view, context)));
  if (paths.empty() || !AreShellPaths(paths)) return {};
  view.shell.ShowSystemMenu(paths);
  return {.rehovers = true};
}

}  // namespace quilmark
