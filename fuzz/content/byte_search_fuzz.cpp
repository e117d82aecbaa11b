// Any term and any block: every kernel that this processor runs finds a form of the term where a plain
// search does, and a file that comes in pieces is judged as a whole one.
#include "content/match/byte_search.h"
#include "content/match/group_search.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

std::string_view TextOf(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

bool IsFormIn(const std::string& form, std::string_view block) {
  return !form.empty() && block.find(form) != block.npos;
}

// In two pieces, the second of which begins with the end of the first.
bool IsFoundInPieces(const std::vector<ContentGroup>& groups, std::string_view block) {
  const WorkCheck check(Ticket::Unlimited());
  const size_t half = block.size() / 2, longest = LongestForm(groups);
  const size_t carried = std::min(half, longest == 0 ? 0 : longest - 1);
  TermFound found(groups);
  return found.Search(block.substr(0, half), check) || found.Search(block.substr(half - carried), check);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  const std::u16string term = FromUtf8(TextOf(input.TakeBytes(input.Take<uint8_t>())));
  const auto groups = MakeContentGroups({{term}});
  // A copy of its own: what is read past it is seen.
  const std::vector<char> copy(input.RestAsText().begin(), input.RestAsText().end());
  const std::string_view block(copy.data(), copy.size());
  const bool expected = IsFormIn(groups[0].Utf8Terms[0], block) ||
                        IsFormIn(groups[0].AnsiTerms[0], block) || IsFormIn(WideBytesOf(term), block);
  for (const ByteKernelRow& kernel : ByteKernels()) {
    if (!kernel.runsHere()) continue;
    bool isFound = false;
    for (const ByteNeedle& needle : groups[0].needles[0]) {
      isFound = isFound || kernel.holds(needle, copy.data(), copy.data() + copy.size());
    }
    Require(isFound == expected);
  }
  Require(SearchGroupsInBytes(copy.data(), copy.data() + copy.size(), groups, Ticket::Unlimited()) ==
          expected);
  Require(IsFoundInPieces(groups, block) == expected);
  return 0;
}
