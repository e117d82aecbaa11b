// Stands before the test program's own calls of CreateFileW. Wine opens a device whatever its driver
// answers, so a volume that cannot be opened is played here.
#pragma once

#include <windows.h>

#include <vector>

namespace quilmark {

struct OpenCall {
  DWORD access = 0, share = 0, disposition = 0, flags = 0;
  bool operator==(const OpenCall&) const = default;
};

// For its own lifetime, opens of "\\.\N:" that want any of `denied` fail with error 5. One at a time,
// made and destroyed while no other thread opens a file.
class OpenGate {
 public:
  explicit OpenGate(DWORD denied);
  ~OpenGate();
  OpenGate(const OpenGate&) = delete;
  OpenGate& operator=(const OpenGate&) = delete;

  // Opens of "\\.\N:" so far, denied ones too.
  const std::vector<OpenCall>& Calls() const;
};

}  // namespace quilmark
