#include "shell/view/effects.h"

#include <utility>

namespace quilmark {

void Effects::Join(Effects&& later) {
  isTaken = isTaken || later.isTaken;
  relayout = relayout || later.relayout;
  placesControls = placesControls || later.placesControls;
  if (later.editor != Editor::kKeep) {
    editor = later.editor;
    editorPlace = std::move(later.editorPlace);
  }
  if (later.capture != Capture::kKeep) capture = later.capture;
  if (later.focus != Focus::kKeep) focus = later.focus;
  syncsBars = syncsBars || later.syncsBars;
  rehovers = rehovers || later.rehovers;
  tracksMouse = tracksMouse || later.tracksMouse;
  if (later.tip) tip = std::move(later.tip);
  dirty = Union(dirty, later.dirty);
  paintsNow = paintsNow || later.paintsNow;
  if (later.menu) menu = std::move(later.menu);
  if (later.command != 0) command = later.command;
}

}  // namespace quilmark
