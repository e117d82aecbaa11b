#include "shell/win32/system/com_thread.h"

#include <ole2.h>

#include <utility>

#include "platform/background.h"

namespace quilmark {

InterfaceApartment::InterfaceApartment() : result_(OleInitialize(nullptr)) {}

InterfaceApartment::~InterfaceApartment() {
  if (SUCCEEDED(result_)) OleUninitialize();
}

void UseComOnThisThread() {
  thread_local bool isUsed = false;
  if (std::exchange(isUsed, true)) return;
  // RPC_E_CHANGED_MODE: another apartment, which serves as well, and is somebody else's to leave.
  if (SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) AtEndOfJob([] { CoUninitialize(); });
}

}  // namespace quilmark
