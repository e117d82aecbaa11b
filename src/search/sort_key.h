// Keys of a sort by text: bytes whose order by memory is the order of the folded texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

namespace quilmark {

// Keys, one behind the other, in blocks that never move. One thread.
//
// ASCII takes one byte a unit, the rest two or three, and a 0 ends the key, so that none begins another
// one. Seven zeros follow at least: a key can be loaded in words.
class SortKeys {
 public:
  // The bytes of a key, its end included.
  std::span<const uint8_t> Add(std::u16string_view folded);

 private:
  std::vector<std::unique_ptr<uint8_t[]>> blocks_;
  uint8_t* next_ = nullptr;
  size_t left_ = 0;  // bytes
};

// One text of a sort. Without initial values: a million of them are made to be written over.
struct KeyEntry {
  uint64_t word;  // the eight bytes of the key that decide next, most significant first
  const uint8_t* key;
  uint32_t length;  // bytes, the end included
  uint32_t row;     // whatever the caller knows it by
};
static_assert(std::is_trivially_default_constructible_v<KeyEntry>);

// Room for entries. What they hold at first is nothing.
class KeyEntries {
 public:
  explicit KeyEntries(size_t count)
      : data_(std::make_unique_for_overwrite<KeyEntry[]>(count)), size_(count) {}
  KeyEntry& operator[](size_t at) { return data_[at]; }
  const KeyEntry& operator[](size_t at) const { return data_[at]; }
  std::span<KeyEntry> All() { return {data_.get(), size_}; }
  std::span<const KeyEntry> All() const { return {data_.get(), size_}; }

 private:
  std::unique_ptr<KeyEntry[]> data_;
  size_t size_;
};

KeyEntry MakeKeyEntry(std::span<const uint8_t> key, uint32_t row);

// How entries follow each other.
struct KeyOrder {
  bool ascending = true;
  // Of entries with equal keys: `before(context, a, b)` in both directions. A strict order of rows.
  bool (*before)(const void* context, uint32_t a, uint32_t b) = nullptr;
  const void* context = nullptr;
};

// On the calling thread.
void SortEntries(std::span<KeyEntry> entries, const KeyOrder& order);

// On several, where there are entries enough.
void SortEntriesOnCores(std::span<KeyEntry> entries, const KeyOrder& order);

}  // namespace quilmark
