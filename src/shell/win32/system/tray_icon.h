// The icon in the notification area.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>

#include "shell/app/tray_presence.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

class TrayIcon {
 public:
  void Prepare(HWND window);

  // The picture from the next AddOrUpdate on; an empty one changes nothing.
  void TakePicture(UniqueIcon icon);

  // Adds the icon, or gives a present one the tip; what became of it.
  TrayIconState AddOrUpdate(bool isAdded, const std::u16string& tip);
  void Remove();  // also from memory

 private:
  NOTIFYICONDATAW record_ = {};
  UniqueIcon owned_;  // empty for the stock icon
};

}  // namespace quilmark
