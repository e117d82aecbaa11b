#include "shell/win32/mixed_line.h"

#include <usp10.h>

#include <algorithm>

#include "platform/win32/wide.h"
#include "shell/win32/system_calls.h"

namespace quilmark {

namespace {

constexpr int kAnyCharset = -1;
constexpr wchar_t kLibrary[] = L"usp10.dll";

// The line laid out by the system, the way it draws it. Null if that fails.
class LineLayout {
 public:
  LineLayout(HDC dc, const std::u16string& line)
      : free_(SystemCall<decltype(&ScriptStringFree)>(kLibrary, "ScriptStringFree")),
        placeOf_(SystemCall<decltype(&ScriptStringCPtoX)>(kLibrary, "ScriptStringCPtoX")) {
    const auto analyse = SystemCall<decltype(&ScriptStringAnalyse)>(kLibrary, "ScriptStringAnalyse");
    if (analyse == nullptr || free_ == nullptr || placeOf_ == nullptr || line.empty()) return;
    const auto length = static_cast<int>(line.size()), glyphs = length * 3 / 2 + 16;
    const HRESULT code =
        analyse(dc, Wide(line), length, glyphs, kAnyCharset, SSA_GLYPHS | SSA_FALLBACK | SSA_LINK, 0,
                nullptr, nullptr, nullptr, nullptr, nullptr, &analysis_);
    if (FAILED(code)) analysis_ = nullptr;
  }
  ~LineLayout() {
    if (analysis_ != nullptr) free_(&analysis_);
  }
  LineLayout(const LineLayout&) = delete;
  LineLayout& operator=(const LineLayout&) = delete;

  bool IsReady() const { return analysis_ != nullptr; }

  // Its edges in the order of the text: the left one may be the second.
  PixelSpan PlaceOf(size_t unit) const {
    PixelSpan place;
    const auto at = static_cast<int>(unit);
    const bool isKnown = SUCCEEDED(placeOf_(analysis_, at, FALSE, &place.left)) &&
                         SUCCEEDED(placeOf_(analysis_, at, TRUE, &place.right));
    return isKnown ? place : PixelSpan();
  }

 private:
  decltype(&ScriptStringFree) free_ = nullptr;
  decltype(&ScriptStringCPtoX) placeOf_ = nullptr;
  SCRIPT_STRING_ANALYSIS analysis_ = nullptr;
};

}  // namespace

bool RunsRightToLeft(const std::u16string& text) {
  return std::any_of(text.begin(), text.end(), [](char16_t unit) {
    return (unit >= 0x0590 && unit <= 0x08FF) || (unit >= 0xFB1D && unit <= 0xFDFF) ||
           (unit >= 0xFE70 && unit <= 0xFEFF);
  });
}

std::vector<PixelSpan> SpansOnLine(HDC dc, const std::u16string& line,
                                   const std::vector<TextRange>& ranges) {
  const LineLayout layout(dc, line);
  std::vector<PixelSpan> units;
  if (!layout.IsReady()) return units;
  for (const TextRange& range : ranges) {
    const size_t end = std::min(range.begin + range.length, line.size());
    for (size_t unit = range.begin; unit < end; ++unit) units.push_back(layout.PlaceOf(unit));
  }
  return JoinSpans(std::move(units));
}

}  // namespace quilmark
