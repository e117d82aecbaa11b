// Any two texts: folding and comparing many units at once is what it is unit by unit.
#include "platform/text.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

std::u16string FoldPlainly(std::u16string text) {
  for (char16_t& unit : text) unit = FoldUnit(unit);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  const auto half = input.TakeBytes(input.Take<uint8_t>());
  const std::u16string a = UnitsOf(half), b = UnitsOf(input.rest);
  const std::u16string foldedA = FoldPlainly(a), foldedB = FoldPlainly(b);
  Require(FoldText(a) == foldedA && FoldText(b) == foldedB && FoldText(foldedB) == foldedB);
  std::u16string inPlace = b;
  FoldUnits(inPlace.data(), inPlace.data(), inPlace.size());
  Require(inPlace == foldedB);
  Require(CompareNoCase(a, b) == foldedA <=> foldedB);
  Require(EqualNoCase(a, b) == (foldedA == foldedB));
  return 0;
}
