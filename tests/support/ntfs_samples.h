// Volumes, $MFT files and journals of real systems, with what is known of them from elsewhere. They
// stand in a folder beside the checkout, or where QUILMARK_NTFS_SAMPLES says.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// Empty where there is no such folder.
std::filesystem::path NtfsSamplesFolder();

// The folders in `kind` ("volumes", "mft", "usn"), by name.
std::vector<std::string> NtfsSamplesOf(const std::string& kind);

// A file as it is, or unpacked where it stands there as NAME.xz or NAME.gz. Throws where it cannot be
// read.
std::vector<std::byte> ReadSample(const std::filesystem::path& file);

// The one file in volume.tar.xz, unpacked to `folder`.
std::filesystem::path UnpackVolume(const std::filesystem::path& sample,
                                   const std::filesystem::path& folder);

// A table of tab-separated columns; each row by the names of the heading line.
using SampleRow = std::map<std::string, std::string, std::less<>>;
std::vector<SampleRow> ReadSampleTable(const std::filesystem::path& file);

uint64_t NumberOf(const SampleRow& row, std::string_view column, int base = 10);  // 0 where empty
uint64_t ReferenceOf(const SampleRow& row, std::string_view number, std::string_view sequence);

// A name as the tables write it: "\\", "\xNN" and "\uNNNN" are a backslash, a byte and a unit.
std::u16string NameOfSample(std::string_view text);

}  // namespace quilmark
