// The icon in the notification area.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <string_view>

#include "shell/app/tray_presence.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

// Interface thread. It does not take itself out of the notification area: Remove does.
class TrayIcon {
 public:
  // Names the window that gets kTrayCallback, and loads a picture if there is none yet. Before
  // AddOrUpdate.
  void Prepare(HWND window);

  // Gives it another picture from the next AddOrUpdate on; an empty one changes nothing.
  void TakePicture(UniqueIcon icon);

  // Adds the icon, or gives its tip to one that is there; see PutTrayIcon.
  [[nodiscard]] TrayIconState AddOrUpdate(bool isAdded, const std::u16string& tip);

  // Shows a note at it, for 10 seconds. Without the icon nothing is seen.
  void ShowBalloon(std::u16string_view title, std::u16string_view text);

  // Takes it out of the notification area, and frees its picture.
  void Remove();

 private:
  NOTIFYICONDATAW record_ = {};
  UniqueIcon owned_;  // empty for the stock icon
};

}  // namespace quilmark
