// A tag: a name and a count in a rounded box, a button of the filter bar or a row of the sidebar.
#pragma once

#include <string>

#include "canvas/canvas.h"
#include "shell/view/view_context.h"

namespace quilmark {

// What a tag says.
struct TagText {
  std::u16string name, count;
};

// Cuts "name\r\ncount" into its parts; a caption without a second line has no count.
TagText SplitCaption(const std::u16string& caption);

// How a tag stands out.
struct TagLook {
  bool isChosen = false;
  bool isHot = false;  // under the mouse
  bool hasFocus = false;
};

// Paints a tag into its place, over the ground that is there.
void PaintTag(Canvas& canvas, const ViewContext& context, const Rect& place, const TagText& text,
              const TagLook& look);

}  // namespace quilmark
