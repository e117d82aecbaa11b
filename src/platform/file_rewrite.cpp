#include "platform/file_rewrite.h"

#include <algorithm>
#include <string>

#include "platform/files.h"

namespace quilmark {

static size_t StandingOf(const RewritableFile& file, std::string_view bytes) {
  return static_cast<size_t>(std::min<uint64_t>(bytes.size(), file.sizeBytes));
}

// What reaches beyond the file's end goes first: a full disk refuses it while all the rest still stands.
static bool WriteBeyond(RewritableFile& file, std::string_view bytes, size_t standing) {
  if (file.WriteAt(standing, bytes.substr(standing))) return true;
  file.Cut(file.sizeBytes);
  return false;
}

static bool WriteOver(RewritableFile& file, std::string_view bytes) {
  const size_t standing = StandingOf(file, bytes);
  return WriteBeyond(file, bytes, standing) && file.WriteAt(0, bytes.substr(0, standing));
}

bool WriteFileBytes(std::u16string_view path, std::string_view bytes, Flushing flushing) {
  const auto file = OpenForRewrite(path);
  return file != nullptr && WriteOver(*file, bytes) && file->Cut(bytes.size()) &&
         (flushing == Flushing::kLeftToSystem || file->Flush());
}

bool WriteMarkedFileBytes(std::u16string_view path, std::string_view bytes, size_t markBytes) {
  const auto file = OpenForRewrite(path);
  if (file == nullptr) return false;
  const size_t standing = std::max(markBytes, StandingOf(*file, bytes));
  const std::string noMark(markBytes, '\0');
  return WriteBeyond(*file, bytes, standing) && file->WriteAt(0, noMark) && file->Flush() &&
         file->WriteAt(markBytes, bytes.substr(markBytes, standing - markBytes)) &&
         file->Cut(bytes.size()) && file->Flush() && file->WriteAt(0, bytes.substr(0, markBytes)) &&
         file->Flush();
}

}  // namespace quilmark
