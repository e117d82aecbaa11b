// Any bytes as an archive: an answer each time, the same one twice, within the memory that is told, and
// every read within the archive.
#include "content/archive/zip_walk.h"
#include "platform/generation.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

struct Archive : ByteSource {
  explicit Archive(std::span<const std::byte> all) : bytes(all) {}
  uint64_t Size() const override { return bytes.size(); }
  size_t ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    Require(offset.value + buffer.size() <= bytes.size());
    std::copy_n(bytes.begin() + static_cast<ptrdiff_t>(offset.value), buffer.size(), buffer.begin());
    return buffer.size();
  }
  std::span<const std::byte> bytes;
};

ArchiveQuery MakeQuery() {
  const WideGroups groups{{u"Hello", u"a"}, {u"\u4E2D"}};
  return {MakeArchiveTerms(MakeContentGroups(groups), groups), {"word/*.xml", "*.xml", "*a*b*"}};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ArchiveQuery query = MakeQuery();
  static ArchiveScratch scratch;
  const WorkCheck check(Ticket::Unlimited());
  Archive archive(std::as_bytes(std::span(data, size)));
  const FileMatch outcome = MatchArchive(archive, query, check, scratch);
  Require(outcome == FileMatch::kHit || outcome == FileMatch::kMiss || outcome == FileMatch::kNoArchive);
  Require(size >= 22 || outcome == FileMatch::kNoArchive);
  Require(scratch.SizeBytes() <= 7 * kLargestEntry + (1u << 20));
  if (scratch.SizeBytes() < 1u << 20) Require(MatchArchive(archive, query, check, scratch) == outcome);
  Require(MatchArchive(archive, query, WorkCheck(Ticket()), scratch) == FileMatch::kStale);
  return 0;
}
