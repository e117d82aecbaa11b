// The controls of the system that stand in a view, as the view knows them: by number.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "canvas/canvas.h"
#include "canvas/rect.h"

namespace quilmark {

// What a control is.
enum class ControlKind : uint8_t {
  kSearchBox,  // an edit with a rounded frame
  kEdit,       // an edit with a frame
  kCombo,      // a drop list
  kDay,        // a field for a day, with a calendar
  kTag,        // a button that its view paints
};

// A control as it is made, at the start and once.
struct ControlSpec {
  ControlKind kind = ControlKind::kTag;
  int id = 0;
  bool isEnabled = true;
  std::u16string text = {};                // of an edit or a tag
  size_t longest = 0;                      // units that an edit takes
  int listWidth = 0;                       // of a combo, pixels at 96 dpi; 0: as wide as its field
  std::vector<std::u16string> items = {};  // of a combo
  int chosen = 0;                          // of a combo
  int day = 0;                             // as year * 10,000 + month * 100 + day; 0: none, or today
};

// Where a control stands. One that the view in force does not name is hidden.
struct ControlPlace {
  int id = 0;
  Rect place;  // of a combo: of its field
  bool isEnabled = true;

  bool operator==(const ControlPlace&) const = default;
};

inline constexpr int kNameEditor = 0;  // as its events name the editor over a name, which no view makes

// What a control reports. It says what the control holds, so that nobody has to ask the control.
struct ControlEvent {
  enum Kind : uint8_t {
    kText,         // an edit: `text`
    kChosen,       // a combo: `value`, the row, or -1
    kClicked,      // a tag
    kDay,          // a field for a day: `value`
    kEnter,        // in an edit: `text`
    kEscape,       // likewise
    kF4,           // likewise, in the search box
    kLeft,         // the editor has lost the focus: `text`
    kLeftProgram,  // likewise, and the program with it
  };
  Kind kind = kText;
  int id = 0;
  int value = 0;
  std::u16string text = {};

  bool operator==(const ControlEvent&) const = default;
};

// A control that the system has painted by its owner.
struct ControlPicture {
  int id = 0;
  Rect place;
  bool isHot = false;  // under the mouse
  bool hasFocus = false;
};

// Commands of a scrollbar, as programs and scripts send them. The SB_ values of winuser.h; any other
// does nothing.
enum class ScrollCommand : uint32_t {
  kLineBack = 0,
  kLineOn = 1,
  kPageBack = 2,
  kPageOn = 3,
  kTo = 4,
  kTrackTo = 5,
  kBegin = 6,
  kEnd = 7,
  kDone = 8,
};

// A command to a scrollbar.
struct ScrollEvent {
  bool isVertical = true;
  ScrollCommand command = ScrollCommand::kDone;
  int64_t position = 0;  // one of BarRange
};

// What a hidden scrollbar is told of a list. `last` is the last step of the content, so that
// the greatest position is last + 1 - page.
struct BarRange {
  int id = 0;
  int last = 0, page = 0, position = 0;  // in steps
};

}  // namespace quilmark
