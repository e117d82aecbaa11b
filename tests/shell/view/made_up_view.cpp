#include "shell/view/made_up_view.h"

#include <algorithm>
#include <iterator>

#include "config/contrast.h"
#include "shell/view/tag.h"

namespace quilmark {

namespace {

constexpr uint32_t kKeyUp = 38, kKeyDown = 40;  // virtual key codes

// Pixels at 96 dpi.
constexpr int kMargin = 12, kGap = 8, kControl = 38, kStatus = 26;
constexpr int kComboWidth = 150, kEditWidth = 180, kTagWidth = 120;

// The message and the timers of the product, and those of this view.
constexpr auto kMessages = [] {
  std::array<NumberRow, std::size(kMessageNumbers) + 1> rows;
  std::copy(std::begin(kMessageNumbers), std::end(kMessageNumbers), rows.begin());
  rows.back() = {kMadeUpResults, Owner::kDuplicates};
  return rows;
}();
constexpr auto kTimers = [] {
  std::array<NumberRow, std::size(kTimerNumbers) + 2> rows;
  auto* const own = std::copy(std::begin(kTimerNumbers), std::end(kTimerNumbers), rows.begin());
  own[0] = {kMadeUpScanTimer, Owner::kDuplicates, When::kInEveryMode, Firing::kRepeating};
  own[1] = {kMadeUpAnimationTimer, Owner::kDuplicates, When::kInItsMode, Firing::kOnce};
  return rows;
}();

uint64_t FilesOf(int64_t group) { return group < 0 ? 0 : 2 + static_cast<uint64_t>(group % 4) * 20; }

int ControlsBottom(const ViewContext& context) { return context.Scaled(2 * kMargin + kControl); }
int ListsTop(const ViewContext& context) { return ControlsBottom(context) + context.Scaled(kStatus); }

}  // namespace

MadeUpView::MadeUpView() { fileRows.count = 0; }

std::vector<ControlSpec> MadeUpView::Controls() {
  return {{.kind = ControlKind::kCombo,
           .id = kMadeUpCombo,
           .items = {u"Total size", u"Number of files", u"Name"},
           .chosen = sorted},
          {.kind = ControlKind::kEdit, .id = kMadeUpEdit, .text = filter, .longest = 60},
          {.kind = ControlKind::kTag, .id = kMadeUpTag, .text = u"Exact\r\n(40)"},
          {.kind = ControlKind::kTag, .id = kMadeUpSecondTag, .text = u"Quick\r\n(7)"},
          {.kind = ControlKind::kDay, .id = kMadeUpDay}};
}

void MadeUpView::PlaceLists(const ViewContext& context) {
  const int top = ListsTop(context), middle = context.client.right / 2;
  groups.Place({0, top, middle - context.Scaled(kGap), context.client.bottom}, 0, context);
  files.Place({middle, top, context.client.right, context.client.bottom}, 0, context);
}

std::vector<ControlPlace> MadeUpView::Layout(const ViewContext& context) {
  PlaceLists(context);
  const int top = context.Scaled(kMargin), bottom = top + context.Scaled(kControl);
  int left = context.Scaled(kMargin);
  std::vector<ControlPlace> places;
  for (const auto& [id, width] : {std::pair{kMadeUpCombo, kComboWidth},
                                  {kMadeUpEdit, kEditWidth},
                                  {kMadeUpTag, kTagWidth},
                                  {kMadeUpSecondTag, kTagWidth}}) {
    places.push_back({id, {left, top, left + context.Scaled(width), bottom}});
    left += context.Scaled(width + kGap);
  }
  return places;
}

Effects MadeUpView::LaidOut(const ViewContext&) { return {.syncsBars = true, .rehovers = true}; }

Effects MadeUpView::Leave(const ViewContext&) {
  Effects effects{.tip = u""};
  for (ListView* const list : Lists()) {
    effects.Join(list->Lose());
    effects.Join(list->Leave());
  }
  panned = nullptr;
  return effects;
}

void MadeUpView::Rescale(uint32_t from, uint32_t to) {
  for (ListView* const list : Lists()) list->Rescale(from, to);
}

PaintOutcome MadeUpView::Paint(Canvas& canvas, const ViewContext& context) const {
  const Palette& palette = context.palette;
  const int top = ListsTop(context);
  canvas.Fill({0, 0, context.client.right, top}, palette.toolbar);
  canvas.Fill({0, top, context.client.right, context.client.bottom}, palette.cardBackground);
  Rect status = StatusPlace(context);
  status.left += context.Scaled(kMargin);
  if (status.left < status.right) {
    canvas.Text(status, context.status, {.color = ReadableOn(palette.toolbar, palette.text)});
  }
  const BarColors bars = BarColorsOn(palette, palette.cardBackground);
  PaintOutcome outcome = groups.Paint(canvas, context, bars);
  outcome.Join(files.Paint(canvas, context, bars));
  return outcome;
}

void MadeUpView::PaintControl(Canvas& canvas, const ControlPicture& control,
                              const ViewContext& context) const {
  canvas.Fill(control.place, context.palette.toolbar);
  const TagText text = control.id == kMadeUpTag ? TagText{u"Exact", u"(40)"} : TagText{u"Quick", u"(7)"};
  PaintTag(canvas, context, control.place, text,
           {.isChosen = control.id == tag, .isHot = control.isHot, .hasFocus = control.hasFocus});
}

Effects MadeUpView::NotePaint(const Rect&, const PaintOutcome& outcome, const ViewContext&) {
  outcomes.push_back(outcome);
  return {};
}

ListView& MadeUpView::ListAt(Point point) { return point.x < files.Area().left ? groups : files; }

Effects MadeUpView::Choose(int64_t group, const ViewContext& context) {
  groupRows.chosen = group;
  fileRows.chosen = -1;
  fileRows.count = FilesOf(group);
  files.scrollY = 0;
  PlaceLists(context);
  const Rect row = groups.PlaceOf(static_cast<uint64_t>(group));
  Effects effects{.dirty = ListArea(context)};
  if (row.top < groups.Area().top) {
    effects.Join(groups.ScrollTo(groups.scrollY + row.top - groups.Area().top));
  } else if (row.bottom > groups.Area().bottom) {
    effects.Join(groups.ScrollTo(groups.scrollY + row.bottom - groups.Area().bottom));
  }
  return effects;
}

Effects MadeUpView::Press(const MouseEvent& event, const ViewContext& context) {
  ListView& list = ListAt(event.at);
  ListView& other = &list == &groups ? files : groups;
  Effects effects = other.Lose();  // a thumb whose release got lost
  ListPress press = list.Press(event.at);
  effects.Join(std::move(press.effects));
  if (press.row < 0) return effects;
  effects.focus = Focus::kWindow;
  if (&list == &groups) {
    effects.Join(Choose(press.row, context));
  } else {
    fileRows.chosen = press.row;
    effects.Join({.dirty = files.Area()});
  }
  return effects;
}

Effects MadeUpView::Move(Point at) {
  for (ListView* const list : Lists()) {
    if (list->dragBar != Bar::kNone) return list->Move(at);
  }
  Effects effects = groups.Move(at);
  effects.Join(files.Move(at));
  return effects;
}

Effects MadeUpView::OnMouse(const MouseEvent& event, const ViewContext& context) {
  Effects effects;
  switch (event.kind) {
    case Mouse::kPress:
    case Mouse::kDouble:
      return Press(event, context);
    case Mouse::kMove:
      return Move(event.at);
    case Mouse::kWheel:
      return ListAt(event.at).Wheel(event.delta);
    case Mouse::kTilt:
      return ListAt(event.at).Tilt(event.delta);
    case Mouse::kRelease:
      for (ListView* const list : Lists()) effects.Join(list->Release());
      break;
    case Mouse::kLost:
      for (ListView* const list : Lists()) effects.Join(list->Lose());
      break;
    case Mouse::kLeave:
      for (ListView* const list : Lists()) effects.Join(list->Leave());
      break;
    case Mouse::kRest:
    case Mouse::kRight:
      break;
  }
  return effects;
}

Effects MadeUpView::Rehover(std::optional<Point> mouse, const ViewContext& context) {
  return OnMouse({.kind = mouse ? Mouse::kMove : Mouse::kLeave, .at = mouse.value_or(Point())}, context);
}

Effects MadeUpView::OnPan(const PanEvent& event, const ViewContext&) {
  if (event.isFirst || panned == nullptr) panned = &ListAt(event.at);
  return panned->Pan(event);
}

bool MadeUpView::CanPan(Point at, const ViewContext& context) const {
  return Holds(ListArea(context), at);
}

Effects MadeUpView::OnKey(const KeyEvent& event, const ViewContext& context) {
  const uint32_t key = event.key;
  if (key != kKeyUp && key != kKeyDown) return {.isTaken = false};
  const int64_t wanted = groupRows.chosen + (key == kKeyUp ? -1 : 1);
  if (groupRows.count == 0) return {};
  return Choose(std::clamp<int64_t>(wanted, 0, static_cast<int64_t>(groupRows.count) - 1), context);
}

Effects MadeUpView::OnCommand(uint16_t id, const ViewContext&) {
  commands.push_back(id);
  return {.isTaken = false};
}

Effects MadeUpView::OnScroll(const ScrollEvent& event, const ViewContext&) {
  return groups.Scroll(event);
}

Effects MadeUpView::OnControl(const ControlEvent& event, const ViewContext& context) {
  switch (event.kind) {
    case ControlEvent::kText:
      filter = event.text;
      return {};
    case ControlEvent::kChosen:
      sorted = event.value;
      return {.dirty = ListArea(context)};
    case ControlEvent::kClicked:
      tag = event.id;
      context.window.RedrawTags();
      return {.dirty = ListArea(context)};
    case ControlEvent::kDay:
      day = event.value;
      return {};
    case ControlEvent::kEnter:
      return {.focus = Focus::kWindow};
    default:
      return {.isTaken = false};
  }
}

Effects MadeUpView::OnTimer(uint32_t id, const ViewContext& context) {
  if (id == kMadeUpScanTimer) {
    ++scans;
    return {.dirty = ListArea(context)};
  }
  if (id != kMadeUpAnimationTimer) return {.isTaken = false};
  ++frames;
  context.window.StartTimer(kMadeUpAnimationTimer, 16);
  return {.dirty = ListArea(context)};
}

Effects MadeUpView::OnPosted(const PostedMessage& message, const ViewContext& context) {
  if (message.message != kMadeUpResults) return {.isTaken = false};
  groupRows.count = message.first;
  groupRows.chosen = -1;
  fileRows.count = 0;
  PlaceLists(context);
  context.window.SetStatus(u"Duplicates: " + std::u16string(message.first > 0 ? u"some" : u"none"));
  return {.relayout = true, .dirty = ListArea(context)};
}

bool MadeUpView::HasSizeCursor(Point, const ViewContext&) const { return false; }

std::vector<BarRange> MadeUpView::Bars(const ViewContext&) const {
  return {groups.RangeOf(Bar::kVertical, kVerticalBar)};
}

Rect MadeUpView::StatusPlace(const ViewContext& context) const {
  return {0, ControlsBottom(context), context.client.right, ListsTop(context)};
}

Rect MadeUpView::ListArea(const ViewContext& context) const {
  return {0, ListsTop(context), context.client.right, context.client.bottom};
}

void TakeMadeUpView(AppState& app, MadeUpView& view) {
  app.views[static_cast<size_t>(AppMode::kDuplicates)] = &view;
  app.messageNumbers = kMessages;
  app.timerNumbers = kTimers;
}

}  // namespace quilmark
