// Any bytes as the file of the files opened last: few entries, each once and with a path, which come
// back from the text that is written of them.
#include "platform/text.h"
#include "shell/actions/recent_file.h"

#include "platform/text_file.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

// A tab or a blank at its end is a reader's loss.
bool IsPlain(const RecentOpenEntry& entry) {
  return entry.path.find_first_of(u"\r\n") == entry.path.npos &&
         entry.path.size() < kLongestRecentLine - 22 && TrimText(entry.path).size() != 0 &&
         entry.path.ends_with(TrimText(entry.path));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto entries = ReadRecentOpens(DecodeText(InputOf(data, size).RestAsText()));
  Require(entries.size() <= kMostRecentOpens);
  std::vector<RecentOpenEntry> plain;
  for (const RecentOpenEntry& entry : entries) {
    Require(!entry.path.empty() && entry.path.size() <= kLongestRecentLine && entry.volume == nullptr);
    if (IsPlain(entry)) plain.push_back(entry);
  }
  const std::u16string text = RecentOpensText(plain);
  const auto again = ReadRecentOpens(text);
  Require(again.size() == plain.size());
  for (size_t i = 0; i < plain.size(); ++i) {
    Require(again[i].path == plain[i].path && again[i].openedAt == plain[i].openedAt);
    for (size_t other = 0; other < i; ++other) {
      Require(ComparablePath(plain[other].path) != ComparablePath(plain[i].path));
    }
  }
  Require(RecentOpensText(again) == text);
  return 0;
}
