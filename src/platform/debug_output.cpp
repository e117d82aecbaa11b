#include "platform/debug_output.h"

#include <atomic>

#include "platform/debug_sink.h"

namespace quilmark {

static std::atomic<void (*)(std::string_view)> debugListener = nullptr;

void WriteDebugOutput(std::string_view text) {
  SendToDebugger(text);
  if (const auto listener = debugListener.load()) listener(text);
}

void SetDebugOutputListener(void (*listener)(std::string_view)) { debugListener = listener; }

}  // namespace quilmark
