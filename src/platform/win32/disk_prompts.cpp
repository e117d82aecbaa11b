#include "platform/disk_prompts.h"

#include <windows.h>

namespace quilmark {

void NeverAskForMedia() { SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS); }

}  // namespace quilmark
