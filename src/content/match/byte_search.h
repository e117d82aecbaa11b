// The search for byte strings in a block of a file: one pass for all forms of a term.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// One byte string that is looked for, and where its anchors are, which are compared first.
struct ByteForm {
  std::string bytes;    // 1 at least
  size_t rareAt = 0;    // of a byte equal to ByteNeedle::rare
  size_t secondAt = 0;  // of its next rarest byte; that of `rareAt` where there is one byte alone
};

// Byte strings that are looked for in one pass, since the byte `rare` is in each of them.
struct ByteNeedle {
  static constexpr size_t kMostForms = 3;
  std::array<ByteForm, kMostForms> forms;
  size_t count = 0;  // of `forms`; 1 at least
  uint8_t rare = 0;
};

// How common a byte is in files of text, of sources and of programs: 0 is rarest.
unsigned CommonnessOfByte(uint8_t byte);

// The needles that find any of `forms`, of which empty ones are left out and equal ones looked for once.
// One needle where a byte stands in all of them, else one for each. No needle without a form.
std::vector<ByteNeedle> MakeByteNeedles(std::vector<std::string> forms);

// Whether any form of the needle occurs in [first, last). Reads nothing outside of it.
using ByteKernel = bool (*)(const ByteNeedle& needle, const char* first, const char* last);

struct ByteKernelRow {
  const char* name;
  ByteKernel holds;
  bool (*runsHere)();  // the processor has the instructions
};

// Fastest first; the last one runs everywhere.
std::span<const ByteKernelRow> ByteKernels();

// The first of ByteKernels that runs on this processor.
ByteKernel BestByteKernel();

}  // namespace quilmark
