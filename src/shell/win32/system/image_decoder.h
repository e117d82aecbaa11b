// Pictures by the system's decoder, and as small as they are shown.
#pragma once

#include <string>

#include "shell/list/icon_source.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

// The first picture of a file in the middle of a box with sides of `size` pixels, clear around it;
// shrunk where it is larger. Empty where it cannot be decoded, and for a file whose content is not on
// this machine: nothing is fetched for a thumbnail. REQUIRES COM on the thread.
[[nodiscard]] UniqueBitmap DecodePicture(const std::u16string& path, int size);

// A bitmap shrunk into a box with sides of `size` pixels; itself where it is not larger, and where it
// cannot be shrunk. REQUIRES COM on the thread.
[[nodiscard]] UniqueBitmap ShrinkBitmap(UniqueBitmap bitmap, int size);

// An icon of a bitmap, and the size of that. Without an icon where the system makes none.
[[nodiscard]] IconPicture IconOfBitmap(const UniqueBitmap& bitmap);

}  // namespace quilmark
