#include "support/environment.h"

#include <cstdlib>

namespace quilmark {

static void Set(const std::string& name, const std::optional<std::string>& value) {
#ifdef _WIN32
  _putenv_s(name.c_str(), value.value_or("").c_str());
#else
  value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
#endif
}

ScopedEnvironment::ScopedEnvironment(std::string name, const std::optional<std::string>& value)
    : name_(std::move(name)) {
  if (const char* former = std::getenv(name_.c_str())) former_ = former;
  Set(name_, value);
}

ScopedEnvironment::~ScopedEnvironment() { Set(name_, former_); }

}  // namespace quilmark
