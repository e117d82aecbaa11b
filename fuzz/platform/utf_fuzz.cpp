// Any bytes: the host pair loses nothing, the text pair gives text that survives the way out and back,
// and the two agree wherever a name is well-formed and has no backslash.
#include <cstdint>
#include <cstdlib>

#include "platform/utf.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);

  const std::u16string name = FromHostBytes(bytes);
  if (name.size() > size || name.find(u'\\') != std::u16string::npos) std::abort();
  if (ToHostBytes(name) != bytes) std::abort();

  const std::u16string text = FromUtf8(bytes);
  const std::string encoded = ToUtf8(text);
  if (FromUtf8(encoded) != text) std::abort();

  const bool isWellFormed = encoded == bytes;
  const bool hasBackslash = bytes.find('\\') != std::string_view::npos;
  if (isWellFormed && !hasBackslash && name != text) std::abort();
  if (!isWellFormed && text.find(u'\uFFFD') == std::u16string::npos) std::abort();
  return 0;
}
