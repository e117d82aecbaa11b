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

namespace quilmark {

// Of a name in the list. kOpen where it is open already: its text is selected, and the keys are its.
enum class Editor : uint8_t { kKeep, kOpen, kMove, kClose };
struct EditorPlace {
  Rect place;
  std::u16string text;  // of kOpen
  size_t selected = 0;  // units from the begin, of kOpen
};
enum class Capture : uint8_t {
  kKeep,
  kTake,
  kRelease
};  // of the mouse; kRelease: if it is the window's
enum class Focus : uint8_t { kKeep, kWindow, kSearchBox, kEditor };

struct Effects {
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

  // What comes later counts where both ask for the same.
  void Join(Effects&& later);
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

// Pixels under a finger that moves the content. The first of a gesture says where it stands.
struct PanEvent {
  Point at;  // of the client area
  bool isFirst = false;
};

}  // namespace quilmark
