#include "shell/win32/window/quilmark.h"

#include "config/log.h"
#include "platform/disk_prompts.h"
#include "platform/win32/system_function.h"
#include "platform/win32/wide.h"
#include "shell/app/process_start.h"
#include "shell/win32/system/com_thread.h"
#include "shell/win32/system/crash_report.h"
#include "shell/win32/window/process_port.h"

namespace quilmark {

namespace {

GuiResourceCounts CountResources() {
  const HANDLE self = GetCurrentProcess();
  return {GetGuiResources(self, GR_GDIOBJECTS), GetGuiResources(self, GR_USEROBJECTS)};
}

}  // namespace

int RunQuilmark(HINSTANCE instance, wchar_t* commandLine, int showCommand) {
  HardenLibrarySearch();
  NeverAskForMedia();
  InstallCrashReport();
  InstallBackgroundExceptionLog();
  InstallGuiResourceCounter(CountResources);
  const InterfaceApartment apartment;
  Win32Process system(instance, FromWide(commandLine), showCommand);
  return RunProcess(App(), system);
}

}  // namespace quilmark
