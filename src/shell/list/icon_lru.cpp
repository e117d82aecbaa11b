#include "shell/list/icon_lru.h"

#include <utility>

namespace quilmark {

IconLru::IconLru(size_t capacity) : capacity_(capacity), slots_(capacity + 1) {
  free_.reserve(capacity);
  for (size_t slot = capacity; slot > 0; --slot) free_.push_back(static_cast<uint32_t>(slot));
  positions_.reserve(capacity);
}

void IconLru::Link(uint32_t slot) {
  const uint32_t newest = slots_[0].older;
  slots_[slot].older = newest;
  slots_[slot].newer = 0;
  slots_[newest].newer = slot;
  slots_[0].older = slot;
}

void IconLru::Unlink(uint32_t slot) {
  slots_[slots_[slot].older].newer = slots_[slot].newer;
  slots_[slots_[slot].newer].older = slots_[slot].older;
}

IconRef IconLru::Find(uint64_t key) {
  const auto position = positions_.find(key);
  if (position == positions_.end()) return nullptr;
  Unlink(position->second);
  Link(position->second);
  return slots_[position->second].icon;
}

IconRef IconLru::TakeOldest() {
  const uint32_t oldest = slots_[0].newer;
  Unlink(oldest);
  positions_.erase(slots_[oldest].key);
  free_.push_back(oldest);
  return std::exchange(slots_[oldest].icon, nullptr);
}

IconRef IconLru::Insert(uint64_t key, IconRef icon) {
  IconRef former;
  if (Size() >= capacity_) former = TakeOldest();
  const uint32_t slot = free_.back();
  free_.pop_back();
  slots_[slot].key = key;
  slots_[slot].icon = std::move(icon);
  positions_.emplace(key, slot);
  Link(slot);
  return former;
}

std::vector<IconRef> IconLru::ShrinkTo(size_t count) {
  std::vector<IconRef> taken;
  if (Size() > count) taken.reserve(Size() - count);
  while (Size() > count) taken.push_back(TakeOldest());
  return taken;
}

}  // namespace quilmark
