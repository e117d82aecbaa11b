#include "content/archive/zip_file.h"

#include <cstdint>
#include <optional>

namespace quilmark {

namespace {

constexpr uint64_t kMega = 1'048'576;

// kHit where nothing speaks against reading the file.
FileMatch AskFile(std::u16string_view path, int contentMaxFileSizeMB, FileContent& content) {
  const ContentOpening opening = content.Open(path);
  if (opening == ContentOpening::kPlaceholder) return FileMatch::kPlaceholder;
  if (opening == ContentOpening::kLink || opening == ContentOpening::kNoFile) return FileMatch::kMiss;
  if (opening == ContentOpening::kCannotOpen) return FileMatch::kCannotOpen;
  const std::optional<uint64_t> size = content.Size();
  content.Close();
  if (!size) return FileMatch::kCannotOpen;
  const bool isTooLarge =
      contentMaxFileSizeMB > 0 && *size > static_cast<uint64_t>(contentMaxFileSizeMB) * kMega;
  return isTooLarge ? FileMatch::kTooLarge : FileMatch::kHit;
}

}  // namespace

FileMatch MatchZipFile(std::u16string_view path, const ArchiveQuery& query, const WorkCheck& check,
                       int contentMaxFileSizeMB, ZipFileReader& reader) {
  if (path.starts_with(u"\\\\")) return FileMatch::kNetwork;
  if (!check.GoesOn()) return FileMatch::kStale;
  if (query.terms.groups.empty() || query.innerPatterns.empty()) return FileMatch::kMiss;
  const FileMatch refusal = AskFile(path, contentMaxFileSizeMB, *reader.content);
  if (refusal != FileMatch::kHit) return refusal;
  const std::unique_ptr<ByteSource> source = OpenForReaders(path);
  if (source == nullptr) return FileMatch::kCannotOpen;
  const FileMatch outcome = MatchArchive(*source, query, check, reader.scratch);
  reader.scratch.Trim();
  return outcome;
}

}  // namespace quilmark
