// A main window that carries effects out in the order of the real one, and calls back within each call
// as the system does: a change of the focus, a close, a loss of the capture, a question to the user.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "shell/recording_window.h"
#include "shell/window_harness.h"

namespace quilmark {

// Where the keys go: w, s, e, and - where another window of any program has them, c for a control that
// the test has given them.
enum class KeysGoTo : char {
  kWindow = 'w',
  kSearchBox = 's',
  kEditor = 'e',
  kControl = 'c',
  kElsewhere = '-',
};

inline constexpr int kDayOfTheSystem = 20'240'229;  // of a field for a day

// Drives the shown view of a harness. What it does is kept in `trace`, a word or two each.
class TestPump : public RecordingWindow {
 public:
  explicit TestPump(WindowHarness& harness);

  ViewContext Context(uint64_t nowMs);
  ViewContext Context() { return Context(nowMs); }

  // Messages. Each is answered by the shown view or the owner, and its effects are carried out.
  bool Send(const MouseEvent& event);
  bool Press(Point at) { return Send({.kind = Mouse::kPress, .at = at}); }
  bool Key(const KeyEvent& event);
  bool Key(uint32_t key) { return Key({.key = key}); }
  bool Timer(uint32_t id);  // one that is armed
  bool Post(const PostedMessage& message);
  bool Control(const ControlEvent& event);
  void Show(AppMode mode);
  void Paint();
  void TakeScale(uint32_t dpi);  // as WM_DPICHANGED
  void Create();                 // the controls of all views, then the first layout

  // The user and the editor.
  void Type(const std::u16string& text) { editor->text = text; }
  void PressInEditor(ControlEvent::Kind end);  // kEnter or kEscape
  void ClickControl(int id);                   // which takes the focus
  void LeaveProgram();                         // another program is in front
  void ComeBack();

  void CarryOut(const Effects& effects) override;
  void TellError(const std::u16string& text) override;
  void SetFocusTo(KeysGoTo wanted);

  bool HasControl(int id) const { return shown.contains(id); }
  std::string Trace() const;  // all of it, joined by " | "

  std::vector<std::string> trace;
  std::optional<EditorPlace> editor;
  KeysGoTo focus = KeysGoTo::kWindow;
  bool isActive = true, hasCapture = false;
  std::map<int, ControlSpec> made;
  std::map<int, ControlPlace> shown;
  int focusedControl = 0;
  std::vector<BarRange> bars;
  std::optional<Point> mouse;  // over the window
  std::vector<Menu> opened;
  uint16_t chosen = 0;  // from the next menu
  std::vector<uint16_t> commands;
  Rect dirty;  // since the last paint
  uint64_t nowMs = 100'000;

 private:
  void Relayout();
  void Place(const std::vector<ControlPlace>& places);
  void CarryOutEditor(const Effects& effects);
  void OpenEditor(const EditorPlace& place);
  void CloseEditorWindow();
  void TakeCapture(Capture capture);
  void TakeFocus(Focus wanted);
  void OpenMenu(const Menu& menu);
  void Run(uint16_t command);
  void Activate(bool isActivated);

  AppState& app_;
  const TextMeasure& fonts_;
  bool isDying_ = false;  // the editor is being closed: nobody is told of it any more
};

}  // namespace quilmark
