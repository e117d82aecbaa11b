#include "platform/file_content.h"

#include <winternl.h>

#include <algorithm>
#include <array>

#include "platform/win32/file_handle.h"
#include "platform/win32/guarded_view.h"
#include "platform/win32/wide.h"

#ifndef FILE_ATTRIBUTE_RECALL_ON_OPEN
#define FILE_ATTRIBUTE_RECALL_ON_OPEN 0x00040000
#endif
#ifndef FILE_ATTRIBUTE_RECALL_ON_DATA_ACCESS
#define FILE_ATTRIBUTE_RECALL_ON_DATA_ACCESS 0x00400000
#endif

namespace quilmark {

namespace {

struct ViewTraits {
  using Value = void*;
  static Value Empty() { return nullptr; }
  static void Close(Value view) { UnmapViewOfFile(view); }
};

// What speaks against opening the file. The folder's entry says it: a question to the file itself may be
// what fetches it. A link may lead to another machine, and its target is met at its own place.
ContentOpening WhyNotOpened(const std::u16string& longPath) {
  constexpr DWORD kElsewhere =
      FILE_ATTRIBUTE_RECALL_ON_OPEN | FILE_ATTRIBUTE_RECALL_ON_DATA_ACCESS | FILE_ATTRIBUTE_OFFLINE;
  WIN32_FIND_DATAW found;
  const UniqueFind find = FindFirst(longPath, found);
  if (!find) return ContentOpening::kCannotOpen;
  if (IsNameSurrogate(found.dwFileAttributes, found.dwReserved0)) return ContentOpening::kLink;
  const bool isElsewhere = (found.dwFileAttributes & kElsewhere) != 0;
  return isElsewhere ? ContentOpening::kPlaceholder : ContentOpening::kOpened;
}

class WindowsContent : public FileContent {
 public:
  ContentOpening Open(std::u16string_view path) override {
    Close();
    const std::u16string longPath = LongPathOf(path);
    const ContentOpening refusal = WhyNotOpened(longPath);
    if (refusal != ContentOpening::kOpened) return refusal;
    file_ = OpenLongPath(longPath, GENERIC_READ, OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN);
    return file_ ? ContentOpening::kOpened : ContentOpening::kCannotOpen;
  }

  std::optional<uint64_t> Size() override {
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file_.Get(), &size)) return std::nullopt;
    return static_cast<uint64_t>(size.QuadPart);
  }

  bool HasViews() const override { return true; }

  std::optional<std::span<const char>> View() override {
    const std::optional<uint64_t> size = Size();
    if (!size || *size == 0) return std::nullopt;
    // With the size that is looked at: a file that was cut short since then has no such mapping.
    mapping_.Reset(CreateFileMappingW(file_.Get(), nullptr, PAGE_READONLY,
                                      static_cast<DWORD>(*size >> 32), static_cast<DWORD>(*size),
                                      nullptr));
    if (!mapping_) return std::nullopt;
    view_.Reset(MapViewOfFile(mapping_.Get(), FILE_MAP_READ, 0, 0, static_cast<size_t>(*size)));
    if (!view_) return std::nullopt;
    seen_ = {static_cast<const char*>(view_.Get()), static_cast<size_t>(*size)};
    return seen_;
  }

  bool Look(void (*look)(void*), void* subject) override { return LookGuarded(seen_, look, subject); }

  std::optional<size_t> Read(std::span<char> buffer) override {
    size_t done = 0;
    while (done < buffer.size()) {
      DWORD got = 0;
      const auto rest = static_cast<DWORD>(std::min<size_t>(buffer.size() - done, 1u << 30));
      if (!ReadFile(file_.Get(), buffer.data() + done, rest, &got, nullptr)) return std::nullopt;
      if (got == 0) break;
      done += got;
    }
    return done;
  }

  void Close() override {
    seen_ = {};
    view_.Reset();
    mapping_.Reset();
    file_.Reset();
  }

 private:
  UniqueFile file_;
  UniqueKernelObject mapping_;
  Unique<ViewTraits> view_;
  std::span<const char> seen_;
};

}  // namespace

std::unique_ptr<FileContent> MakeFileContent(LinksOfFiles) { return std::make_unique<WindowsContent>(); }

void WarmFileContent(std::u16string_view path, uint64_t most) {
  WindowsContent content;
  if (content.Open(path) != ContentOpening::kOpened) return;
  std::array<char, 128 * 1024> buffer;
  for (uint64_t done = 0; done < most;) {
    const auto count = content.Read(buffer);
    if (!count || *count < buffer.size()) return;
    done += *count;
  }
}

}  // namespace quilmark
