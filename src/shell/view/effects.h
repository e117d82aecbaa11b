// What a view asks of the pump when it has answered an event.
//
// Windows may answer each of these with a message before the call returns: so they are carried out once
// the view is done with the event and its state is whole, in the order of the fields, but for what is to
// be painted, which is noted first. Those of a view that is not shown are dropped. What never calls back
// (timers, title, texts of controls) is asked of the WindowPort at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "canvas/rect.h"
#include "shell/view/menu.h"

namespace quilmark {

// What becomes of the editor of a name. kOpen of an editor that is open selects its text and gives it
// the focus.
enum class Editor : uint8_t { kKeep, kOpen, kMove, kClose };

// Where the editor of a name stands, and what it holds at first.
struct EditorPlace {
  Rect place;
  std::u16string text;  // of kOpen
  size_t selected = 0;  // units from the begin, of kOpen
};
// What becomes of the capture of the mouse. kRelease gives it back if the window has it.
enum class Capture : uint8_t { kKeep, kTake, kRelease };

// Which part of the window gets the keys.
enum class Focus : uint8_t { kKeep, kWindow, kSearchBox, kEditor };

// What the pump is to do. A default one asks for nothing, and says that the event was taken.
struct [[nodiscard]] Effects {
  bool isTaken = true;          // false: the system's own handling follows
  bool relayout = false;        // the view is laid out anew, and its controls placed
  bool placesControls = false;  // its controls alone
  Editor editor = Editor::kKeep;
  std::optional<EditorPlace> editorPlace;  // of kMove and a kOpen that opens
  Capture capture = Capture::kKeep;
  Focus focus = Focus::kKeep;
  bool syncsBars = false;             // the hidden scrollbars, which keep the state of the list
  bool rehovers = false;              // the view is told where the mouse stands now
  bool tracksMouse = false;           // the window is told when the mouse rests on it and when it leaves
  std::optional<std::u16string> tip;  // beside the mouse; empty text: hidden
  Rect dirty;                         // to be painted again
  bool paintsNow = false;             // and not with the next pause
  std::optional<Menu> menu;           // opened once all else is done; the view is told the choice
  uint16_t command = 0;               // handed to the view once all else is done; 0: none

  // Adds what `later` asks for, which counts where both ask for the same.
  void Join(Effects&& later);
};

// What the mouse has done.
enum class Mouse : uint8_t {
  kPress,
  kDouble,  // the second press of a double click
  kRelease,
  kRight,  // the release of the right button
  kMove,
  kRest,
  kLeave,
  kLost,   // the capture, to another window
  kWheel,  // away from the user is positive
  kTilt,   // to the right is positive
};

// An event of the mouse. Places are pixels of the client area.
struct MouseEvent {
  Mouse kind = Mouse::kMove;
  Point at;       // without a meaning in kLeave and kLost
  int delta = 0;  // of a wheel, 120 a notch
  bool shift = false, ctrl = false;
  bool isHeld = false;  // the left button
};

// A key that was pressed while the window itself has the focus.
struct KeyEvent {
  uint32_t key = 0;  // virtual key code
  bool ctrl = false;
  bool isRepeat = false;  // it is held down
};

// Where a finger stands that moves the content. The first event of a gesture only says where it begins.
struct PanEvent {
  Point at;  // of the client area
  bool isFirst = false;
};

}  // namespace quilmark
