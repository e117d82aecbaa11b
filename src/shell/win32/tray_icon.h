// The icon in the notification area.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>

#include "shell/win32/gdi.h"

namespace quilmark {

class TrayIcon {
 public:
  void Prepare(HWND window);

  // Adds the icon, or gives a present one the tip. True if it is there afterwards.
  bool AddOrUpdate(bool isAdded, const std::u16string& tip);
  void Remove();  // also from memory

 private:
  NOTIFYICONDATAW record_ = {};
  UniqueIcon owned_;  // empty for the stock icon
};

}  // namespace quilmark
