// The name under which a thread shows in debuggers and lists.
#pragma once

namespace quilmark {

// Names the calling thread; systems show the first 15 characters. Silent where that fails.
void NameThisThread(const char* name);

}  // namespace quilmark
