// The memory that a worker unpacks and reads archives in.
#pragma once

#include <cstddef>
#include <memory>
#include <new>

namespace quilmark {

// Room for units that are written before they are read. Grows, and keeps nothing of what was in it.
template <typename Unit>
class RawBuffer {
 public:
  // Room for `count` units, until the next call. Null where memory does not suffice.
  [[nodiscard]] Unit* Room(size_t count) {
    if (count <= capacity_ && units_ != nullptr) return units_.get();
    units_.reset();
    const size_t wanted = (count + kStep - 1) / kStep * kStep;
    units_.reset(new (std::nothrow) Unit[wanted]);
    capacity_ = units_ == nullptr ? 0 : wanted;
    return units_.get();
  }

  // Of what it holds.
  size_t SizeBytes() const { return capacity_ * sizeof(Unit); }

  // Gives back what holds more than `most` units.
  void Trim(size_t most) {
    if (capacity_ <= most) return;
    units_.reset();
    capacity_ = 0;
  }

 private:
  static constexpr size_t kStep = 16 * 1024;
  std::unique_ptr<Unit[]> units_;
  size_t capacity_ = 0;
};

// Larger entries are not looked at.
inline constexpr size_t kLargestEntry = 52'428'800;

// Of one worker, for one file after the other. An entry of n bytes takes n for itself, n for its text, n
// for that without white space, and 2 n for each of the two in UTF-16: 7 n, 350 MiB at the most. Beside
// it stand 64 KiB for reading, the archive's directory, which is no longer than the archive, and for
// each entry 4 bytes and, where it is unpacked, about 100.
struct ArchiveScratch {
  RawBuffer<char> packed, entry, text, compact;
  RawBuffer<char16_t> wide, compactWide;

  size_t SizeBytes() const {
    return packed.SizeBytes() + entry.SizeBytes() + text.SizeBytes() + compact.SizeBytes() +
           wide.SizeBytes() + compactWide.SizeBytes();
  }

  // Gives back what only large entries need.
  void Trim() {
    constexpr size_t kKept = 1 << 20;
    for (RawBuffer<char>* buffer : {&packed, &entry, &text, &compact}) buffer->Trim(kKept);
    for (RawBuffer<char16_t>* buffer : {&wide, &compactWide}) buffer->Trim(kKept);
  }
};

}  // namespace quilmark
