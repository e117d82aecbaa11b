#include "shell/test_pump.h"

#include <utility>

#include "shell/app/routing.h"
#include "shell/app/window_events.h"
#include "support/recording_canvas.h"

namespace quilmark {

namespace {

std::string Told(const Rect& place) {
  return "dirty " + std::to_string(place.top) + ".." + std::to_string(place.bottom);
}

}  // namespace

TestPump::TestPump(WindowHarness& harness)
    : RecordingWindow(harness.app), app_(harness.app), fonts_(harness.fonts) {}

ViewContext TestPump::Context(uint64_t now) {
  return {.dpi = app_.systemDpi,
          .client = {0, 0, app_.clientWidth, app_.clientHeight},
          .palette = CurrentPalette,
          .fonts = fonts_,
          .window = *this,
          .status = status,
          .hasFocus = focus == KeysGoTo::kWindow,
          .nowMs = now};
}

bool TestPump::Send(const MouseEvent& event) {
  const Effects effects = ShownView(app_).OnMouse(event, Context());
  CarryOut(effects);
  return effects.isTaken;
}

bool TestPump::Key(const KeyEvent& event) {
  const Effects effects = ShownView(app_).OnKey(event, Context());
  CarryOut(effects);
  return effects.isTaken;
}

bool TestPump::Timer(uint32_t id) {
  const Effects effects = RouteTimer(app_, Context(), id);
  CarryOut(effects);
  return effects.isTaken;
}

bool TestPump::Post(const PostedMessage& message) {
  const Effects effects = RoutePosted(app_, Context(), message);
  CarryOut(effects);
  return effects.isTaken;
}

bool TestPump::Control(const ControlEvent& event) {
  const Effects effects = RouteControl(app_, Context(), event);
  CarryOut(effects);
  return effects.isTaken;
}

void TestPump::Show(AppMode mode) { CarryOut(SwitchMode(app_, Context(), mode)); }

void TestPump::Paint() {
  RecordingCanvas canvas(std::exchange(dirty, Rect()));
  const PaintOutcome outcome = ShownView(app_).Paint(canvas, Context());
  CarryOut(ShownView(app_).NotePaint(canvas.Shown(), outcome, Context()));
}

void TestPump::TakeScale(uint32_t dpi) {
  if (!TakeScaleChange(app_, dpi)) return;
  CarryOut(CloseEditor(app_, Context()));
  Relayout();
  dirty = Context().client;
}

void TestPump::Create() {
  for (size_t mode = 0; mode < kAppModes; ++mode) {
    for (ControlSpec& spec : TakeControls(app_, static_cast<AppMode>(mode))) {
      const int id = spec.id;
      // A field without a day of its own shows today.
      if (spec.kind == ControlKind::kDay && spec.day == 0) {
        Control({.kind = ControlEvent::kDay, .id = id, .value = kDayOfTheSystem});
      }
      made[id] = std::move(spec);
    }
  }
  Relayout();
}

void TestPump::PressInEditor(ControlEvent::Kind end) {
  Control({.kind = end, .id = kNameEditor, .text = editor->text});
}

void TestPump::ClickControl(int id) {
  focusedControl = id;
  SetFocusTo(KeysGoTo::kControl);
  if (shown.contains(id)) Control({.kind = ControlEvent::kClicked, .id = id});
}

// The window hears of it before the keys are gone.
void TestPump::LeaveProgram() {
  Activate(false);
  SetFocusTo(KeysGoTo::kElsewhere);
}

void TestPump::ComeBack() { Activate(true); }

void TestPump::Activate(bool isActivated) {
  isActive = isActivated;
  const Effects effects =
      OnActivation(app_, Context(), isActivated ? Activation::kActivated : Activation::kDeactivated);
  CarryOut(effects);
  // What the system does by itself.
  if (isActivated && !effects.isTaken) SetFocusTo(KeysGoTo::kWindow);
}

// MainWindow::CarryOut, line by line.
void TestPump::CarryOut(const Effects& effects) {
  if (!IsEmpty(effects.dirty)) trace.push_back(Told(effects.dirty));
  dirty = Union(dirty, effects.dirty);
  if (effects.relayout) Relayout();
  if (effects.placesControls) Place(ShownView(app_).Layout(Context()));
  CarryOutEditor(effects);
  TakeCapture(effects.capture);
  TakeFocus(effects.focus);
  if (effects.syncsBars) bars = ShownView(app_).Bars(Context());
  if (effects.rehovers) CarryOut(ShownView(app_).Rehover(mouse, Context()));
  if (effects.paintsNow) Paint();
  if (effects.menu) OpenMenu(*effects.menu);
  if (effects.command != 0) Run(effects.command);
}

void TestPump::OpenMenu(const Menu& menu) {
  opened.push_back(menu);
  if (chosen != 0) Run(std::exchange(chosen, uint16_t{0}));
}

void TestPump::Run(uint16_t command) {
  commands.push_back(command);
  CarryOut(RouteCommand(app_, Context(), command));
}

void TestPump::Relayout() {
  trace.push_back("layout");
  Place(ShownView(app_).Layout(Context()));
  CarryOut(ShownView(app_).LaidOut(Context()));
}

// A control that is hidden gives the keys to the window.
void TestPump::Place(const std::vector<ControlPlace>& places) {
  shown.clear();
  for (const ControlPlace& place : places) shown[place.id] = place;
  const bool isBoxOpen = shown.contains(kQueryBox) && shown[kQueryBox].isEnabled;
  if (focus == KeysGoTo::kSearchBox && !isBoxOpen) SetFocusTo(KeysGoTo::kWindow);
  if (focus == KeysGoTo::kControl && !shown.contains(focusedControl)) SetFocusTo(KeysGoTo::kWindow);
}

void TestPump::CarryOutEditor(const Effects& effects) {
  switch (effects.editor) {
    case Editor::kOpen:
      if (effects.editorPlace || editor) OpenEditor(effects.editorPlace.value_or(EditorPlace()));
      break;
    case Editor::kMove:
      if (effects.editorPlace && editor) editor->place = effects.editorPlace->place;
      break;
    case Editor::kClose:
      CloseEditorWindow();
      break;
    case Editor::kKeep:
      break;
  }
}

void TestPump::OpenEditor(const EditorPlace& place) {
  if (editor) {
    SetFocusTo(KeysGoTo::kEditor);
    if (editor) editor->selected = editor->text.size();
    return;
  }
  editor = place;
  trace.push_back("create editor");
  SetFocusTo(KeysGoTo::kEditor);
}

// It loses the focus while it is destroyed.
void TestPump::CloseEditorWindow() {
  if (!editor) return;
  trace.push_back("destroy editor");
  isDying_ = true;
  if (focus == KeysGoTo::kEditor) SetFocusTo(KeysGoTo::kWindow);
  isDying_ = false;
  editor.reset();
}

void TestPump::TakeCapture(Capture capture) {
  if (capture == Capture::kTake) hasCapture = true;
  if (capture != Capture::kRelease || !std::exchange(hasCapture, false)) return;
  trace.push_back("lost capture");
  Send({.kind = Mouse::kLost});
}

void TestPump::TakeFocus(Focus wanted) {
  if (wanted == Focus::kWindow) SetFocusTo(KeysGoTo::kWindow);
  const auto box = shown.find(kQueryBox);
  if (wanted == Focus::kSearchBox && box != shown.end() && box->second.isEnabled) {
    SetFocusTo(KeysGoTo::kSearchBox);
  }
  if (wanted == Focus::kEditor && editor) SetFocusTo(KeysGoTo::kEditor);
}

// The former owner is told when the new one has it; what it does may move it once more.
void TestPump::SetFocusTo(KeysGoTo wanted) {
  if (wanted == focus) return;
  const KeysGoTo former = std::exchange(focus, wanted);
  trace.push_back(std::string("focus ") + static_cast<char>(former) + ">" + static_cast<char>(wanted));
  if (former != KeysGoTo::kEditor || !editor || isDying_) return;
  const auto kind = isActive ? ControlEvent::kLeft : ControlEvent::kLeftProgram;
  Control({.kind = kind, .id = kNameEditor, .text = editor->text});
}

// The box takes the focus, and the user answers it.
void TestPump::TellError(const std::u16string& text) {
  trace.push_back("ask");
  const KeysGoTo former = std::exchange(focus, KeysGoTo::kElsewhere);
  if (former == KeysGoTo::kEditor && editor) {
    Control({.kind = ControlEvent::kLeft, .id = kNameEditor, .text = editor->text});
  }
  RecordingWindow::TellError(text);
  Activate(true);
}

std::string TestPump::Trace() const {
  std::string all;
  for (const std::string& each : trace) all += (all.empty() ? "" : " | ") + each;
  return all;
}

}  // namespace quilmark
