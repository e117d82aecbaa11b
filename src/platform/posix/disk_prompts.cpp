#include "platform/disk_prompts.h"

namespace quilmark {

void NeverAskForMedia() {}

}  // namespace quilmark
