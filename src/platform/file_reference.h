// File references of NTFS: a record number in the low 48 bits, and above it a sequence number that tells
// the files apart that had the record one after another.
#pragma once

#include "platform/distinct_number.h"

namespace quilmark {

// The place of a FILE record in the $MFT, counted from 0.
using RecordNumber = DistinctNumber<struct RecordNumberKind>;

// The 64 bits by which NTFS names a file.
using FileReference = DistinctNumber<struct FileReferenceKind>;

static_assert(sizeof(RecordNumber) == 8 && sizeof(FileReference) == 8);

// The bits of a record number, and the greatest there can be.
inline constexpr uint64_t kRecordNumberMask = 0x0000'FFFF'FFFF'FFFF;

// The next record of the $MFT.
constexpr RecordNumber& operator++(RecordNumber& number) {
  ++number.value;
  return number;
}

// The record number of a reference that the index keeps as a bare number. Such a number may also be one
// that a walk made up: there the parts mean nothing.
constexpr uint64_t RecordNumberOf(uint64_t frn) { return frn & kRecordNumberMask; }

// The sequence number of the same.
constexpr uint16_t SequenceOf(uint64_t frn) { return static_cast<uint16_t>(frn >> 48); }

// A reference as the index keeps it. REQUIRES number <= kRecordNumberMask
constexpr uint64_t MakeReference(uint64_t number, uint16_t sequence) {
  return number | uint64_t{sequence} << 48;
}

// The record number of a reference, whatever its bits are.
constexpr RecordNumber RecordNumberOf(FileReference reference) {
  return RecordNumber(RecordNumberOf(reference.value));
}

// Its sequence number.
constexpr uint16_t SequenceOf(FileReference reference) { return SequenceOf(reference.value); }

// The reference of the file that has record `number` under `sequence`. REQUIRES number.value <=
// kRecordNumberMask
constexpr FileReference MakeReference(RecordNumber number, uint16_t sequence) {
  return FileReference(MakeReference(number.value, sequence));
}

}  // namespace quilmark
