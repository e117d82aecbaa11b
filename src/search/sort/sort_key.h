// Keys of a sort by text: bytes whose order by memory is the order of the folded texts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/pages.h"

namespace quilmark {

// Keys, one behind the other, in chunks of huge pages that never move. One thread.
//
// ASCII takes one byte a unit, the rest two or three, and a 0 ends the key, so that none begins another
// one. Seven zeros follow at least: a key can be loaded in words.
class SortKeys {
 public:
  // The bytes of a key, its end included.
  std::span<const uint8_t> Add(std::u16string_view folded);

 private:
  std::vector<Pages<uint8_t>> chunks_;
  uint8_t* next_ = nullptr;
  size_t left_ = 0;  // bytes
};

// One text of a sort.
struct KeyEntry {
  uint64_t word = 0;  // the eight bytes of the key that decide next, most significant first
  const uint8_t* key = nullptr;
  uint32_t length = 0;  // bytes, the end included
  uint32_t row = 0;     // whatever the caller knows it by
};

// An array of entries in huge pages: with those of the keys they spare ten thousands of page faults, 16
// of 88 ms for a million names.
class KeyEntries {
 public:
  explicit KeyEntries(size_t count)
      : data_(MakePages<KeyEntry>(std::max<size_t>(count, 1))), size_(count) {}
  KeyEntry& operator[](size_t at) { return data_[at]; }
  const KeyEntry& operator[](size_t at) const { return data_[at]; }
  std::span<KeyEntry> All() { return {data_.get(), size_}; }
  std::span<const KeyEntry> All() const { return {data_.get(), size_}; }

 private:
  Pages<KeyEntry> data_;
  size_t size_;
};

// The entry of a key. REQUIRES one that SortKeys holds and that outlives the entry: entries are compared
// by whole words, and so by the zeros that SortKeys puts behind each key.
KeyEntry MakeKeyEntry(std::span<const uint8_t> key, uint32_t row);

// How entries follow each other.
struct KeyOrder {
  bool ascending = true;
  // Of entries with equal keys: `before(context, a, b)` in both directions. A strict order of rows.
  bool (*before)(const void* context, uint32_t a, uint32_t b) = nullptr;
  const void* context = nullptr;
};

// Puts the entries in order, on the calling thread. Their words change.
void SortEntries(std::span<KeyEntry> entries, const KeyOrder& order);

// The same on several threads, where there are entries enough.
void SortEntriesOnCores(std::span<KeyEntry> entries, const KeyOrder& order);

// Gets sorted entries in pieces, each with the number of its first entry. Several threads call it at the
// same time, each with pieces of its own.
using TakeSorted = std::function<void(size_t first, std::span<const KeyEntry> piece)>;

// SortEntriesOnCores, but what is sorted goes to `take`, in one piece or in many. The entries given are
// left in any order.
void SortEntriesOnCores(std::span<KeyEntry> entries, const KeyOrder& order, const TakeSorted& take);

}  // namespace quilmark
