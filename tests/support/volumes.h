// Volumes made by hand, for the tests of the index and of the search.
#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "index/engine/search_engine.h"
#include "index/tables/volume_index.h"

namespace quilmark {

// The reference of the root folder of a volume made here; its record is the volume's first.
inline constexpr uint64_t kRootFrnOfTests = 0x0005'0000'0000'0005;

// "X:" with nothing but its root folder.
std::unique_ptr<VolumeIndex> MakeTestVolume(std::u16string_view drive = u"C:");

// Appends a record and makes it known by its reference; the index. `frn` 0: the next free one.
uint32_t AddFile(VolumeIndex& volume, std::u16string_view name, uint64_t parentFrn = kRootFrnOfTests,
                 uint64_t frn = 0);
uint32_t AddFolder(VolumeIndex& volume, std::u16string_view name, uint64_t parentFrn = kRootFrnOfTests,
                   uint64_t frn = 0);

// A name of up to `longest` units from a small alphabet, so that random needles hit: letters of both
// cases, a dot, a blank, Cyrillic, ideographs, a surrogate pair.
std::u16string RandomName(std::mt19937& random, size_t longest);

}  // namespace quilmark
