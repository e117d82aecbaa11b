// The search view: the box, the filter bar or its sidebar, and the list of results.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "shell/actions/rename_index.h"
#include "shell/actions/shell_port.h"
#include "shell/list/icon_cache.h"
#include "shell/list/repaint_request.h"
#include "shell/search/engine_port.h"
#include "shell/search/result_rows.h"
#include "shell/search/row_text.h"
#include "shell/search/selection.h"
#include "shell/view/view.h"

namespace quilmark {

// What the mouse has chosen and what it holds, beside the state of `ListView`.
struct ListState {
  Selection selection;
  int hoverColumn = -1;
  int hoverTag = -1;  // of the sidebar
  uint64_t lastClickMs = 0;
  int64_t lastClickRow = -1;  // on a name; -1: none to follow
  int dragColumn = -1;        // whose edge is held
  int dragColumnX = 0, dragColumnWidth = 0;
  WheelRest sidebarRest;
  bool dragsSidebar = false;       // the thumb of its bar is held
  std::optional<Point> pressedAt;  // the chosen rows are dragged once the mouse has left it
};

// A name that is being edited.
struct Renaming {
  MatchItem hit;
  RowText row;
  RenameTarget target;
  int64_t index = -1;         // of the row
  uint64_t number = 0;        // of the editing: another may have begun while a question stood
  bool isCommitting = false;  // its question takes the focus away, which must not commit once more
};

// The state of the search view, and its answers to events, which other files of this room give.
// Interface thread, but for what is atomic.
struct SearchView final : View {
  // Both ports outlive the view.
  SearchView(EnginePort& enginePort, ShellPort& shellPort) : engine(enginePort), shell(shellPort) {}

  std::vector<ControlSpec> Controls() override;
  std::vector<ControlPlace> Layout(const ViewContext& context) override;
  Effects LaidOut(const ViewContext& context) override;
  Effects Leave(const ViewContext& context) override;
  void Rescale(uint32_t from, uint32_t to) override;

  PaintOutcome Paint(Canvas& canvas, const ViewContext& context) const override;
  void PaintControl(Canvas& canvas, const ControlPicture& control,
                    const ViewContext& context) const override;
  Effects NotePaint(const Rect& place, const PaintOutcome& outcome, const ViewContext& context) override;

  Effects OnMouse(const MouseEvent& event, const ViewContext& context) override;
  Effects Rehover(std::optional<Point> mouse, const ViewContext& context) override;
  Effects OnPan(const PanEvent& event, const ViewContext& context) override;
  bool CanPan(Point at, const ViewContext& context) const override;
  Effects OnKey(const KeyEvent& event, const ViewContext& context) override;
  Effects OnCommand(uint16_t id, const ViewContext& context) override;
  Effects OnScroll(const ScrollEvent& event, const ViewContext& context) override;
  Effects OnControl(const ControlEvent& event, const ViewContext& context) override;
  Effects OnTimer(uint32_t id, const ViewContext& context) override;
  Effects OnPosted(const PostedMessage& message, const ViewContext& context) override;

  bool HasSizeCursor(Point at, const ViewContext& context) const override;
  std::vector<BarRange> Bars(const ViewContext& context) const override;
  Rect StatusPlace(const ViewContext& context) const override;
  Rect ListArea(const ViewContext& context) const override;

  EnginePort& engine;
  ShellPort& shell;
  IconCache* icons = nullptr;  // outlives the view; null: rows have no icons

  // Box and bar.
  bool isBoxEnabled = false;
  std::vector<char16_t> scopeDrives;  // letters of the entries of the scope box, behind the first two
  std::vector<std::u16string> tagCaptions;  // of the filter categories, see TagCaptions
  int32_t sidebarWidth = 200, headerTop = 90;
  int32_t sidebarScroll = 0;  // first filter tag in view

  // List.
  SeenRows chosenFrom;  // what the selection is made of
  ResultRows source{*this};
  ListView rows{source, {}};
  std::atomic<uint64_t> lastScrollTick = 0;  // milliseconds
  bool thumbDragging = false;
  ListState list;
  std::optional<Renaming> renaming;
  uint64_t renamings = 0;  // begun so far
  bool isActing = false;   // on files: what comes in while the shell is asked begins no other action
  int32_t pathColumnWidth = 0;  // as fitted to the rows in view; the stored width is its least

  // Results.
  uint64_t shownGeneration = 0;              // of the latest results that were final
  std::u16string answeredText;               // of the search box, when they came
  std::atomic<bool> keepScrollOnce = false;  // the next final results go back to savedScrollY
  int64_t savedScrollY = 0;

  // What is still to be done.
  RepaintRequest repaint;       // of the list
  uint64_t listPaintedMs = 0;   // when all of it was
  int64_t paintedScrollY = 0;   // of the latest paint
  bool paintedMissing = false;  // with rows of which something was not known yet
  bool filterCountsPending = false;
  bool prewarmRunning = false;  // sorting waits
  int prewarmRounds = 0;
};

}  // namespace quilmark
