// A view beside the search, as the duplicates will be one, over made-up rows: what the window has to be
// good for. Its numbers are none of the product's.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "shell/app/app_state.h"
#include "shell/list/list_view.h"
#include "shell/list/made_up_lists.h"
#include "shell/view/view.h"
#include "shell/view/window_ids.h"

namespace quilmark {

// Controls.
inline constexpr int kMadeUpCombo = 120, kMadeUpEdit = 121, kMadeUpDay = 122;
inline constexpr int kMadeUpTag = 241, kMadeUpSecondTag = 242;
// Timers: of a scan, which goes on while another view is shown, and of an animation, which does not.
inline constexpr uint32_t kMadeUpScanTimer = 30'101, kMadeUpAnimationTimer = 30'102;
// Posted by its jobs; first: how many groups there are.
inline constexpr uint32_t kMadeUpResults = 1'401;

static_assert(AreAllDifferent({kMadeUpCombo,     kMadeUpEdit, kMadeUpDay,  kMadeUpTag,
                               kMadeUpSecondTag, kQueryBox,   kStatusText, kScopeBox,
                               kVerticalBar,     kSizePreset, kTimePreset, kSizeBox,
                               kSecondSizeBox,   kSizeUnit,   kDateFrom,   kDateTo,
                               kHorizontalBar,   kSidebarBar, kFirstTag,   kTrayShow,
                               kTrayExit}));
static_assert(RowOfNumber(kTimerNumbers, kMadeUpScanTimer) == nullptr);
static_assert(RowOfNumber(kTimerNumbers, kMadeUpAnimationTimer) == nullptr);
static_assert(RowOfNumber(kMessageNumbers, kMadeUpResults) == nullptr);

// Groups at the left, the files of the chosen one at the right; above them controls and the status.
struct MadeUpView final : View {
  MadeUpView();

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

  GroupRows groupRows;
  FileRows fileRows;
  ListView groups{groupRows, kGroupStyle};
  ListView files{fileRows, kFileStyle};
  ListView* panned = nullptr;  // by the finger

  int sorted = 0;             // row of the combo
  int day = 0;                // of the field for a day
  int tag = kMadeUpTag;       // the chosen one
  std::u16string filter;      // text of the edit
  int scans = 0, frames = 0;  // ticks of the timers
  std::vector<PaintOutcome> outcomes;
  std::vector<uint16_t> commands;

 private:
  std::array<ListView*, 2> Lists() { return {&groups, &files}; }
  ListView& ListAt(Point point);
  void PlaceLists(const ViewContext& context);
  Effects Press(const MouseEvent& event, const ViewContext& context);
  Effects Move(Point at);
  Effects Choose(int64_t group, const ViewContext& context);
};

// Makes it the third view of the program, with numbers of its own.
void TakeMadeUpView(AppState& app, MadeUpView& view);

}  // namespace quilmark
