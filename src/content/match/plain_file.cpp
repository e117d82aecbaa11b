#include "content/match/plain_file.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "content/match/group_search.h"

namespace quilmark {

namespace {

constexpr uint64_t kMega = 1'048'576;

// One file on its way.
struct PlainMatch {
  const std::vector<ContentGroup>& groups;
  const WorkCheck& check;
  PlainFileReader& reader;
  int maxFileSizeMB = 0;
};

bool IsTooLarge(uint64_t size, int maxFileSizeMB) {
  return maxFileSizeMB >= 1 && size > static_cast<uint64_t>(maxFileSizeMB) * kMega;
}

// What a search came to: one that was given up half way has found nothing, whatever it says.
FileMatch MatchOf(bool isFound, const WorkCheck& check) {
  if (!check.GoesOn()) return FileMatch::kStale;
  return isFound ? FileMatch::kHit : FileMatch::kMiss;
}

// How many bytes of a piece are searched again with the next one.
size_t CarryOver(const std::vector<ContentGroup>& groups) {
  const size_t longest = LongestForm(groups);
  return std::min(longest == 0 ? 0 : longest - 1, kMostCarried);
}

void GrowTo(std::vector<char>& buffer, size_t size) {
  if (buffer.size() < size) buffer.resize(size);
}

// The file piece by piece, up to `readSize` bytes at once. The first `inBuffer` bytes were read already.
FileMatch MatchInPieces(const PlainMatch& match, size_t readSize, size_t inBuffer) {
  const size_t carryOver = CarryOver(match.groups);
  std::vector<char>& buffer = match.reader.buffer;
  GrowTo(buffer, carryOver + std::max(readSize, inBuffer));
  TermFound found(match.groups);
  bool isRead = true;
  for (size_t carried = 0;;) {
    if (inBuffer > carried) {
      if (found.Search({buffer.data(), inBuffer}, match.check)) return MatchOf(true, match.check);
      carried = std::min(carryOver, inBuffer);
      std::memmove(buffer.data(), buffer.data() + inBuffer - carried, carried);
    }
    if (!match.check.GoesOn()) return FileMatch::kStale;
    const auto count = match.reader.content->Read({buffer.data() + carried, readSize});
    isRead = count.has_value();
    if (!isRead || *count == 0) break;
    inBuffer = carried + *count;
    match.reader.bytes += *count;
  }
  const FileMatch outcome = MatchOf(found.HasWholeGroup(), match.check);
  return outcome == FileMatch::kMiss && !isRead ? FileMatch::kCannotRead : outcome;
}

// What LookGuarded may leave in the middle: owns nothing.
struct ViewSearch {
  const std::vector<ContentGroup>& groups;
  const WorkCheck& check;
  std::span<const char> view;
  bool isFound = false;
};

void SearchView(void* subject) {
  auto& search = *static_cast<ViewSearch*>(subject);
  search.isFound = SearchGroupsInBytes(search.view.data(), search.view.data() + search.view.size(),
                                       search.groups, search.check);
}

FileMatch MatchMapped(const PlainMatch& match) {
  const auto view = match.reader.content->View();
  if (!view) return FileMatch::kCannotRead;
  match.reader.bytes = view->size();
  ViewSearch search{.groups = match.groups, .check = match.check, .view = *view};
  if (!match.reader.content->Look(SearchView, &search)) return FileMatch::kCannotRead;
  match.reader.content->Close();
  return MatchOf(search.isFound, match.check);
}

// The size of the open file decides how it is read; the first `inBuffer` bytes were read already.
FileMatch MatchBySize(const PlainMatch& match, size_t inBuffer) {
  FileContent& content = *match.reader.content;
  const std::optional<uint64_t> size = content.Size();
  if (!match.check.GoesOn()) return FileMatch::kStale;
  if (!size) return FileMatch::kCannotRead;
  if (*size == 0) return FileMatch::kMiss;
  if (IsTooLarge(*size, match.maxFileSizeMB)) return FileMatch::kTooLarge;
  if (*size > kStreamingThreshold) return MatchInPieces(match, kStreamingRead, inBuffer);
  return content.HasViews() ? MatchMapped(match) : MatchInPieces(match, kCachedRead, inBuffer);
}

// Most files are small: one read has all of them and tells their size too.
FileMatch MatchByRead(const PlainMatch& match) {
  std::vector<char>& buffer = match.reader.buffer;
  GrowTo(buffer, kCachedRead);
  const auto count = match.reader.content->Read({buffer.data(), kCachedRead});
  if (!count) return FileMatch::kCannotRead;
  match.reader.bytes = *count;
  if (*count == kCachedRead) return MatchBySize(match, *count);
  match.reader.content->Close();
  return MatchOf(SearchGroupsInBytes(buffer.data(), buffer.data() + *count, match.groups, match.check),
                 match.check);
}

FileMatch MatchOpened(const PlainMatch& match) {
  if (!match.check.GoesOn()) return FileMatch::kStale;
  return match.reader.content->HasViews() ? MatchBySize(match, 0) : MatchByRead(match);
}

}  // namespace

FileMatch MatchPlainFile(std::u16string_view path, const std::vector<ContentGroup>& groups,
                         const WorkCheck& check, int contentMaxFileSizeMB, PlainFileReader& reader) {
  reader.bytes = 0;
  if (path.starts_with(u"\\\\")) return FileMatch::kNetwork;
  if (!check.GoesOn()) return FileMatch::kStale;
  if (groups.empty()) return FileMatch::kMiss;
  switch (reader.content->Open(path)) {
    case ContentOpening::kCannotOpen:
      return FileMatch::kCannotOpen;
    case ContentOpening::kPlaceholder:
      return FileMatch::kPlaceholder;
    case ContentOpening::kLink:  // what it names is met at its own place
    case ContentOpening::kNoFile:
      return FileMatch::kMiss;
    case ContentOpening::kOpened:
      break;
  }
  const FileMatch outcome = MatchOpened({groups, check, reader, contentMaxFileSizeMB});
  reader.content->Close();
  return outcome;
}

}  // namespace quilmark
