// Any bytes on standard input: the lines are those between the line ends, and none is lost.
#include <memory>
#include <vector>

#include "platform/console.h"
#include "support/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  if (size == 0) return 0;  // no stream is made of nothing
  std::string bytes(InputOf(data, size).RestAsText());
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(fmemopen(bytes.data(), size, "rb"),
                                                               std::fclose);
  FuzzInput input = InputOf(data, size);
  while (!input.rest.empty()) {
    std::string expected = input.TakeLine();
    if (expected.ends_with('\r')) expected.pop_back();
    Require(ReadStreamLine(stream.get()) == expected);
  }
  Require(!ReadStreamLine(stream.get()) && !ReadStreamLine(stream.get()));
  return 0;
}
