// Any bytes as positions of an attribute cache: what is read is written as it was, in memory as in the
// file.
#include <cstdint>
#include <cstdlib>

#include "search/attributes/attr_positions.h"
#include "support/config_folder.h"

using namespace quilmark;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ConfigFolder folder;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const auto read = ReadAttrPositionBytes(std::as_bytes(std::span(input)));
  if (read && AttrPositionBytes(*read) != input) std::abort();
  folder.Write("attrpositions.v1.bin", input);
  const auto loaded = LoadAttrPositions();
  if (loaded != read.value_or(std::vector<AttrPosition>())) std::abort();
  SaveAttrPositions(*loaded);
  if (LoadAttrPositions() != loaded) std::abort();
  return 0;
}
