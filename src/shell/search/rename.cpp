#include "shell/search/rename.h"

#include <utility>

#include "config/translate.h"
#include "platform/files.h"
#include "platform/format.h"
#include "search/results/search_session.h"
#include "shell/actions/recent_opens.h"
#include "shell/search/filter_request.h"
#include "shell/search/rename_place.h"
#include "shell/search/search_places.h"
#include "shell/search/seen_rows.h"

namespace quilmark {

namespace {

std::optional<Renaming> FocusedRow(const SearchView& view) {
  const auto rows = ShownResults();
  const int64_t focus = view.list.selection.focusRow;
  if (focus < 0 || static_cast<uint64_t>(focus) >= rows->size()) return std::nullopt;
  const MatchItem hit = (*rows)[static_cast<size_t>(focus)];
  RowText row = TextOfRow(hit);
  const auto target = SeeForRename(hit);
  if (row.name.empty() || row.folder.empty() || !target) return std::nullopt;
  return Renaming{.hit = hit, .row = std::move(row), .target = *target, .index = focus};
}

Rect PlaceOf(const SearchView& view, const Renaming& renaming) {
  return view.rows.PlaceOf(static_cast<uint64_t>(renaming.index));
}

// Other results may have come while the name was typed.
bool IsStillAt(int64_t index, const MatchItem& hit) {
  const auto rows = ShownResults();
  return static_cast<uint64_t>(index) < rows->size() && (*rows)[static_cast<size_t>(index)] == hit;
}

bool IsEditing(const SearchView& view, uint64_t number) {
  return view.renaming && view.renaming->number == number;
}

Effects Fail(SearchView& view, const ViewContext& context, const std::u16string& why, CommitEnd end) {
  const bool isGone = IsMissingPath(PathOfRow(view.renaming->row));
  const FailedRename next = AfterFailedRename(isGone, end);
  if (next == FailedRename::kClose) return CancelRename(view, context);
  if (next == FailedRename::kKeep) return {};
  const uint64_t number = view.renaming->number;
  context.window.TellError(why);
  if (!IsEditing(view, number)) return {};  // an event that came meanwhile has closed it
  return {.editor = Editor::kOpen};
}

Effects Rename(SearchView& view, const ViewContext& context, const std::u16string& name, CommitEnd end) {
  const Renaming done = *view.renaming;
  RowText renamed = done.row;
  renamed.name = name;
  if (const uint32_t error = RenamePath(PathOfRow(done.row), PathOfRow(renamed)); error != 0) {
    return Fail(view, context,
                FormatText(TranslateOr(u"Msg_RenameFailedFormat", u"Rename failed.\nError: %lu"), error),
                end);
  }
  RenameInIndex(done.target, name);
  UpdateRecentAfterRename(PathOfRow(done.row), PathOfRow(renamed));
  Effects effects = CancelRename(view, context);
  if (end == CommitEnd::kByKey) effects.focus = Focus::kWindow;
  FollowNewResults(KeepFiltered::kNo, HeldResults()->size());
  // Under a filter the rows change now, so that a number means another row.
  const FilterSettings filter = CurrentFilterSettings();
  if (!filter.IsOff()) {
    ClearSelection(view.list.selection);
    view.engine.RefreshFilter(filter);
  } else if (end == CommitEnd::kByKey && IsStillAt(done.index, done.hit)) {
    BeginChoice(view);
    SelectOnly(view.list.selection, done.index);
  }
  effects.Join(RelayoutList(view, context));
  return effects;
}

}  // namespace

Effects OpenRename(SearchView& view, const ViewContext& context) {
  if (view.renaming) return {.editor = Editor::kOpen};
  if (view.isActing) return {};  // a name that is being deleted is given to nothing else
  const ColumnsLayout layout = PlaceColumns(view, context);
  auto focused = FocusedRow(view);
  if (layout.view != ViewMode::kList || !focused) return {};
  const auto place = PlaceOfRenameEditor(layout, PlaceOf(view, *focused), view.rows.scrollX);
  if (!place) return {};
  view.renaming = std::move(focused);
  view.renaming->number = ++view.renamings;
  const RowText& row = view.renaming->row;
  return {.editor = Editor::kOpen,
          .editorPlace = EditorPlace{*place, row.name, SelectedStem(row.name, row.isDirectory)}};
}

Effects MoveRename(const SearchView& view, const ViewContext& context) {
  if (!view.renaming) return {};
  const Rect place = PlaceOfOpenRenameEditor(PlaceColumns(view, context), PlaceOf(view, *view.renaming),
                                             view.rows.scrollX);
  return {.editor = Editor::kMove, .editorPlace = EditorPlace{place}};
}

Effects CancelRename(SearchView& view, const ViewContext& context) {
  if (!view.renaming) return {};
  view.renaming.reset();
  return {.editor = Editor::kClose, .dirty = ListAreaOf(view, context)};
}

Effects CommitRename(SearchView& view, const ViewContext& context, std::u16string text, CommitEnd end) {
  if (!view.renaming || std::exchange(view.renaming->isCommitting, true)) return {};
  const uint64_t number = view.renaming->number;
  Effects effects;
  const RenameCheck check = CheckRename(view.renaming->row.name, std::move(text));
  switch (check.step) {
    case RenameStep::kClose:
      effects = CancelRename(view, context);
      break;
    case RenameStep::kInvalid:
      effects =
          Fail(view, context,
               TranslateOr(u"Msg_RenameInvalidChars", u"The name contains invalid characters."), end);
      break;
    case RenameStep::kRename:
      effects = Rename(view, context, check.name, end);
      break;
  }
  if (IsEditing(view, number)) view.renaming->isCommitting = false;
  return effects;
}

}  // namespace quilmark
