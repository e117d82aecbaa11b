// Icons by their keys, of which those that were wanted last are kept.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "canvas/icon_image.h"

namespace quilmark {

// One thread at a time. Whatever takes an icon out hands it to the caller, who lets go of it where it
// may take its time. Allocates when it is made and in ShrinkTo, and nowhere else.
class IconLru {
 public:
  // Room for `capacity` icons, at least one.
  explicit IconLru(size_t capacity);

  // The icon, which counts as wanted last from now on; null where there is none.
  IconRef Find(uint64_t key);

  // Keeps an icon as the one that was wanted last. Returns the one whose place it takes, null while
  // there is room. REQUIRES a key that Find gives nothing for.
  [[nodiscard]] IconRef Insert(uint64_t key, IconRef icon);

  // Takes out those that were wanted longest ago, until at most `count` are left.
  [[nodiscard]] std::vector<IconRef> ShrinkTo(size_t count);

  // How many icons there are.
  size_t Size() const { return positions_.size(); }

 private:
  // A circle, in which the first slot stands between the newest and the oldest.
  struct Slot {
    uint64_t key = 0;
    IconRef icon;
    uint32_t older = 0, newer = 0;  // places in `slots_`
  };
  void Link(uint32_t slot);
  void Unlink(uint32_t slot);
  IconRef TakeOldest();

  size_t capacity_;
  std::vector<Slot> slots_;
  std::vector<uint32_t> free_;
  boost::unordered_flat_map<uint64_t, uint32_t> positions_;
};

}  // namespace quilmark
