// Where icons come from: the shell of the system and its decoder of pictures. Tests script it.
#pragma once

#include <cstdint>
#include <string>

#include "canvas/icon_image.h"

namespace quilmark {

// What the shell may give for the content of a file.
enum class ShellPicture : uint8_t {
  kThumbnail,  // its picture, or nothing
  kAny,        // its picture, or an icon
};

// What a path counts as, whatever stands there.
enum class IconType : uint8_t { kFile, kFolder };

// The two sizes of the system's icons.
enum class IconScale : uint8_t { kSmall, kLarge };

// A bitmap that was made an icon. `icon` is null where there was none; the sizes are in pixels.
struct IconPicture {
  IconRef icon;
  int width = 0, height = 0;
};

// Any thread, several at a time; no lock of the program is held. What cannot be had is null.
struct IconSource {
  virtual ~IconSource() = default;

  // Makes the thread ready for the calls below, the first time; undone when the thread ends.
  virtual void PrepareThread() = 0;

  // What the shell has for a box of `size` pixels; it may be larger or smaller. Opens the file.
  virtual IconPicture PictureOf(const std::u16string& path, int size, ShellPicture kind) = 0;

  // The file decoded, scaled down where it is larger than the box, in the middle of a box of `size`
  // pixels. Opens the file.
  virtual IconRef DecodedPicture(const std::u16string& path, int size) = 0;

  // By what the path ends with: the disk is not asked, and the path need not exist.
  virtual IconRef IconOfType(const std::u16string& path, IconType type, IconScale scale) = 0;

  // By the file itself, which is asked for it.
  virtual IconRef IconOfFile(const std::u16string& path, IconScale scale) = 0;

  // Objects of the graphics system that the process holds; 0 where the system does not say.
  virtual uint32_t CountGdiObjects() = 0;
};

}  // namespace quilmark
