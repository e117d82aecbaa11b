// Many files of a test at once: made of memory, by path, and shared by all readers.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/file_content.h"

namespace quilmark {

// Not changed while somebody reads, but for the counts.
struct ScriptedFiles {
  std::map<std::u16string, std::string, std::less<>> bytes;  // by path; others cannot be opened
  std::function<void(std::u16string_view path)> onOpen;      // any thread
  std::function<void(std::u16string_view path)> beforeRead;  // any thread
  std::atomic<size_t> reads = 0, opened = 0;
};

class ScriptedReader : public FileContent {
 public:
  explicit ScriptedReader(ScriptedFiles& files) : files_(files) {}

  ContentOpening Open(std::u16string_view path) override {
    path_ = path;
    at_ = 0;
    if (files_.onOpen) files_.onOpen(path);
    const auto found = files_.bytes.find(path);
    if (found == files_.bytes.end()) return ContentOpening::kCannotOpen;
    ++files_.opened;
    bytes_ = found->second;
    return ContentOpening::kOpened;
  }
  std::optional<uint64_t> Size() override { return bytes_.size(); }
  bool HasViews() const override { return false; }
  std::optional<std::span<const char>> View() override { return std::nullopt; }
  bool Look(void (*)(void*), void*) override { return false; }
  std::optional<size_t> Read(std::span<char> buffer) override {
    ++files_.reads;
    if (files_.beforeRead) files_.beforeRead(path_);
    const size_t count = std::min(buffer.size(), bytes_.size() - at_);
    std::memcpy(buffer.data(), bytes_.data() + at_, count);
    at_ += count;
    return count;
  }
  void Close() override {}

 private:
  ScriptedFiles& files_;
  std::u16string path_;
  std::string_view bytes_;
  size_t at_ = 0;
};

}  // namespace quilmark
