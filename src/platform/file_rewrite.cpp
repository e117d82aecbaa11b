#include "platform/file_rewrite.h"

#include <algorithm>
#include <string>

#include "platform/files.h"

namespace quilmark {

// What reaches beyond the file's end goes first: a full disk refuses it while all the rest still stands.
static bool WriteOver(RewritableFile& file, std::string_view bytes) {
  const auto standing = static_cast<size_t>(std::min<uint64_t>(bytes.size(), file.sizeBytes));
  if (!file.WriteAt(standing, bytes.substr(standing))) {
    file.Cut(file.sizeBytes);
    return false;
  }
  return file.WriteAt(0, bytes.substr(0, standing));
}

bool WriteFileBytes(std::u16string_view path, std::string_view bytes) {
  const auto file = OpenForRewrite(path);
  return file != nullptr && WriteOver(*file, bytes) && file->Cut(bytes.size()) && file->Flush();
}

bool WriteMarkedFileBytes(std::u16string_view path, std::string_view bytes, size_t markBytes) {
  const auto file = OpenForRewrite(path);
  if (file == nullptr) return false;
  const std::string noMark(markBytes, '\0');
  return file->WriteAt(0, noMark) && file->Flush() &&  //
         file->WriteAt(markBytes, bytes.substr(markBytes)) && file->Cut(bytes.size()) && file->Flush() &&
         file->WriteAt(0, bytes.substr(0, markBytes)) && file->Flush();
}

}  // namespace quilmark
