#include "platform/detached_thread.h"

#include <system_error>
#include <thread>
#include <utility>

namespace quilmark {

bool StartDetachedThread(std::function<void()> body) {
  try {
    std::thread(std::move(body)).detach();
  } catch (const std::system_error&) {
    return false;
  }
  return true;
}

}  // namespace quilmark
