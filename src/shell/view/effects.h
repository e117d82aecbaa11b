// What a view asks of the pump when it has answered an event.
//
// Windows may answer each of these with a message before the call returns: so they are carried out once
// the view is done with the event and its state is whole, in the order of the fields. What never calls
// back (timers, title, captions) is asked of the WindowPort at once.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "canvas/rect.h"

namespace quilmark {

enum class Capture : uint8_t {
  kKeep,
  kTake,
  kRelease
};                                             // of the mouse; kRelease: if it is the window's
enum class Editor : uint8_t { kKeep, kOpen };  // of the name of the row that has the focus
enum class Focus : uint8_t { kKeep, kWindow };

struct Effects {
  Editor editor = Editor::kKeep;
  Capture capture = Capture::kKeep;
  Focus focus = Focus::kKeep;
  bool syncsBars = false;             // the hidden scrollbars, which keep the state of the list
  bool tracksMouse = false;           // the window is told when the mouse rests on it and when it leaves
  bool savesSettings = false;         // with the size of the window
  std::optional<std::u16string> tip;  // beside the mouse; empty text: hidden
};

enum class Mouse : uint8_t {
  kPress,
  kDouble,  // the second press of a double click
  kRelease,
  kMove,
  kRest,
  kLeave,
  kLost,   // the capture, to another window
  kWheel,  // away from the user is positive
  kTilt,   // to the right is positive
};

struct MouseEvent {
  Mouse kind = Mouse::kMove;
  Point at;       // of the client area; not of kLeave and kLost
  int delta = 0;  // of a wheel, 120 a notch
  bool shift = false, ctrl = false;
};

}  // namespace quilmark
