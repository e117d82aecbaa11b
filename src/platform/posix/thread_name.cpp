#include "platform/thread_name.h"

#include <pthread.h>

#include <string>

namespace quilmark {

void NameThisThread(const char* name) {
  constexpr size_t kLongest = 15;  // a longer one is refused as a whole
  pthread_setname_np(pthread_self(), std::string(name).substr(0, kLongest).c_str());
}

}  // namespace quilmark
