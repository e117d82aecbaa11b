#include "shell/win32/gdi/mixed_line.h"

#include <algorithm>

#include "platform/win32/system_function.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

constexpr int kAnyCharset = -1;

struct Calls {
  template <typename Function>
  static Function Find(const char* name) {
    return SystemCall<Function>(L"usp10.dll", name);
  }
  decltype(&ScriptStringAnalyse) analyse = Find<decltype(&ScriptStringAnalyse)>("ScriptStringAnalyse");
  decltype(&ScriptStringFree) free = Find<decltype(&ScriptStringFree)>("ScriptStringFree");
  decltype(&ScriptStringCPtoX) placeOf = Find<decltype(&ScriptStringCPtoX)>("ScriptStringCPtoX");
  decltype(&ScriptStringOut) draw = Find<decltype(&ScriptStringOut)>("ScriptStringOut");

  decltype(&ScriptString_pSize) sizeOf = Find<decltype(&ScriptString_pSize)>("ScriptString_pSize");

  bool AreThere() const {
    return analyse != nullptr && free != nullptr && placeOf != nullptr && draw != nullptr &&
           sizeOf != nullptr;
  }
};

const Calls& Uniscribe() {
  static const Calls calls;
  return calls;
}

}  // namespace

bool RunsRightToLeft(std::u16string_view text) {
  return std::any_of(text.begin(), text.end(), [](char16_t unit) {
    return (unit >= 0x0590 && unit <= 0x08FF) || (unit >= 0xFB1D && unit <= 0xFDFF) ||
           (unit >= 0xFE70 && unit <= 0xFEFF);
  });
}

MixedLine::MixedLine(HDC dc, const std::u16string& line) : length_(line.size()) {
  if (line.empty() || !Uniscribe().AreThere()) return;
  const auto length = static_cast<int>(line.size()), glyphs = length * 3 / 2 + 16;
  const HRESULT code = Uniscribe().analyse(dc, Wide(line), length, glyphs, kAnyCharset,
                                           SSA_GLYPHS | SSA_FALLBACK | SSA_LINK, 0, nullptr, nullptr,
                                           nullptr, nullptr, nullptr, &analysis_);
  if (FAILED(code)) analysis_ = nullptr;
}

MixedLine::~MixedLine() {
  if (analysis_ != nullptr) Uniscribe().free(&analysis_);
}

void MixedLine::Draw(int left, int top) const {
  Uniscribe().draw(analysis_, left, top, 0, nullptr, 0, 0, FALSE);
}

int MixedLine::Width() const {
  const SIZE* const size = Uniscribe().sizeOf(analysis_);
  return size != nullptr ? size->cx : 0;
}

// The edges of a unit in the order of the text: the first may lie right of the second.
PixelSpan MixedLine::PlaceOf(size_t unit) const {
  PixelSpan place;
  const auto at = static_cast<int>(unit);
  const bool isKnown = SUCCEEDED(Uniscribe().placeOf(analysis_, at, FALSE, &place.left)) &&
                       SUCCEEDED(Uniscribe().placeOf(analysis_, at, TRUE, &place.right));
  return isKnown ? place : PixelSpan();
}

std::vector<PixelSpan> MixedLine::SpansOf(const std::vector<TextRange>& ranges) const {
  std::vector<PixelSpan> units;
  for (const TextRange& range : ranges) {
    const size_t end = std::min(range.begin + range.length, length_);
    for (size_t unit = range.begin; unit < end; ++unit) units.push_back(PlaceOf(unit));
  }
  return JoinSpans(std::move(units));
}

}  // namespace quilmark
