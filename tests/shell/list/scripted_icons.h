// A source of icons that answers as a test has it and writes down what it is asked. Its icons are
// counted.
#pragma once

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/utf.h"
#include "shell/list/icon_source.h"

namespace quilmark {

class ScriptedIcons : public IconSource {
 public:
  void PrepareThread() override { ++prepared; }
  IconPicture PictureOf(const std::u16string& path, int size, ShellPicture kind) override {
    const bool isThumbnail = kind == ShellPicture::kThumbnail;
    Note((isThumbnail ? "thumbnail " : "any ") + ToUtf8(path) + " " + std::to_string(size));
    const int side = isThumbnail ? thumbnailSide : anySide;
    return side == 0 ? IconPicture() : IconPicture{NewIcon(), side, std::max(side / 2, 1)};
  }
  IconRef DecodedPicture(const std::u16string& path, int size) override {
    Note("decode " + ToUtf8(path) + " " + std::to_string(size));
    return decodes ? NewIcon() : nullptr;
  }
  IconRef IconOfType(const std::u16string& path, IconType type, IconScale scale) override {
    Note(std::string(type == IconType::kFolder ? "folder " : "file ") + ToUtf8(path) + Told(scale));
    return hasTypes ? NewIcon() : nullptr;
  }
  IconRef IconOfFile(const std::u16string& path, IconScale scale) override {
    Note("itself " + ToUtf8(path) + Told(scale));
    return hasFiles ? NewIcon() : nullptr;
  }
  uint32_t CountGdiObjects() override { return gdiObjects; }

  // How often the source was asked for what begins so.
  size_t Count(std::string_view beginning) const {
    const std::scoped_lock lock(mutex_);
    return static_cast<size_t>(std::count_if(calls_.begin(), calls_.end(), [&](const std::string& one) {
      return std::string_view(one).starts_with(beginning);
    }));
  }
  // What it was asked for since the last time.
  std::vector<std::string> Take() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(calls_, {});
  }

  int thumbnailSide = 0, anySide = 0;  // of the bitmaps; 0: none
  bool decodes = false, hasTypes = true, hasFiles = false;
  std::atomic<uint32_t> gdiObjects = 0;
  std::function<void()> whileAsked;  // on the thread that asks
  std::function<void()> whenGone;    // an icon
  std::atomic<int> prepared = 0;
  std::atomic<int> alive = 0;  // icons that were not destroyed

 private:
  class CountedIcon : public IconImage {
   public:
    explicit CountedIcon(ScriptedIcons& source) : source_(source) { ++source_.alive; }
    ~CountedIcon() override {
      --source_.alive;
      if (source_.whenGone) source_.whenGone();
    }

   private:
    ScriptedIcons& source_;
  };
  static std::string Told(IconScale scale) { return scale == IconScale::kSmall ? " small" : " large"; }
  IconRef NewIcon() { return std::make_shared<const CountedIcon>(*this); }
  void Note(std::string call) {
    {
      const std::scoped_lock lock(mutex_);
      calls_.push_back(std::move(call));
    }
    if (whileAsked) whileAsked();
  }

  mutable std::mutex mutex_;
  std::vector<std::string> calls_;  // guarded by `mutex_`
};

}  // namespace quilmark
