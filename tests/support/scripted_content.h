// A file of a test as whoever reads many files sees it: made of memory, counted, and failing on demand.
#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "platform/file_content.h"

namespace quilmark {

// What a ScriptedContent gives, and what was asked of it. Outlives the content.
struct ContentScript {
  std::string bytes;
  std::optional<uint64_t> size;  // that is told in place of that of `bytes`
  bool hasViews = false;
  ContentOpening opening = ContentOpening::kOpened;
  bool sizeFails = false, viewFails = false, pageFails = false;
  size_t readFailsAt = std::string::npos;  // the first byte that cannot be read
  std::function<void()> beforeRead;        // each read, before its bytes are there

  std::vector<size_t> reads;  // bytes asked for
  int opened = 0, views = 0, open = 0;
};

class ScriptedContent : public FileContent {
 public:
  explicit ScriptedContent(ContentScript& script) : script_(script) {}
  ~ScriptedContent() override { Close(); }

  ContentOpening Open(std::u16string_view) override {
    Close();
    if (script_.opening != ContentOpening::kOpened) return script_.opening;
    ++script_.opened;
    script_.open = 1;
    at_ = 0;
    return ContentOpening::kOpened;
  }
  std::optional<uint64_t> Size() override {
    if (script_.sizeFails) return std::nullopt;
    return script_.size.value_or(script_.bytes.size());
  }
  bool HasViews() const override { return script_.hasViews; }
  std::optional<std::span<const char>> View() override {
    ++script_.views;
    if (script_.viewFails || script_.bytes.empty()) return std::nullopt;
    return script_.bytes;
  }
  bool Look(void (*look)(void*), void* subject) override {
    look(subject);
    return !script_.pageFails;
  }
  std::optional<size_t> Read(std::span<char> buffer) override {
    script_.reads.push_back(buffer.size());
    if (script_.beforeRead) script_.beforeRead();
    if (at_ >= script_.readFailsAt) return std::nullopt;
    const size_t count =
        std::min(buffer.size(), std::min(script_.bytes.size(), script_.readFailsAt) - at_);
    std::memcpy(buffer.data(), script_.bytes.data() + at_, count);
    at_ += count;
    return count;
  }
  void Close() override { script_.open = 0; }

 private:
  ContentScript& script_;
  size_t at_ = 0;
};

}  // namespace quilmark
