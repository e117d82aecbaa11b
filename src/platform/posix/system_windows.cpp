#include "platform/system_windows.h"

namespace quilmark {

bool PostToWindow(PostTarget, const PostedMessage&) { return false; }

}  // namespace quilmark
