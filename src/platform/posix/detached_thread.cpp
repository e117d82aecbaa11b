#include "platform/detached_thread.h"

#include <pthread.h>

#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace quilmark {

static void NameThisThread(const char* name) {
  constexpr size_t kLongest = 15;  // a longer one is refused as a whole
  pthread_setname_np(pthread_self(), std::string(name).substr(0, kLongest).c_str());
}

bool StartDetachedThread(const char* name, std::function<void()> body) {
  try {
    std::thread([name, body = std::move(body)] {
      NameThisThread(name);
      body();
    }).detach();
  } catch (const std::system_error&) {
    return false;
  }
  return true;
}

}  // namespace quilmark
