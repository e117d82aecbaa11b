// Boxes of the system that ask the user for a medium.
#pragma once

namespace quilmark {

// Calls on a drive without a medium fail in every thread of the process, where the system would ask for
// one and hold the thread until somebody answers. For the start of each program.
void NeverAskForMedia();

}  // namespace quilmark
