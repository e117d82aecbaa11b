// File references of NTFS: a record number in the low 48 bits, and above it a sequence number that tells
// the files apart that had the record one after another.
#pragma once

#include <cstdint>

namespace quilmark {

inline constexpr uint64_t kRecordNumberMask = 0x0000'FFFF'FFFF'FFFF;

constexpr uint64_t RecordNumberOf(uint64_t reference) { return reference & kRecordNumberMask; }
constexpr uint16_t SequenceOf(uint64_t reference) { return static_cast<uint16_t>(reference >> 48); }

// REQUIRES number <= kRecordNumberMask
constexpr uint64_t MakeReference(uint64_t number, uint16_t sequence) {
  return number | uint64_t{sequence} << 48;
}

}  // namespace quilmark
