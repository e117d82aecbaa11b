#include "support/ntfs_samples.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "platform/utf.h"
#include "support/run_program.h"

namespace quilmark {

namespace fs = std::filesystem;

namespace {

std::string ReadAll(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + file.string());
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string Unpacked(const std::string& program, const fs::path& file) {
  const ProgramRun run = RunProgram(program, {"-dc", file.string()});
  if (run.exitCode != 0) throw std::runtime_error(program + " " + file.string() + ": " + run.errors);
  return run.output;
}

std::string ReadText(const fs::path& file) {
  if (fs::exists(file)) return ReadAll(file);
  if (fs::exists(file.string() + ".xz")) return Unpacked("/usr/bin/xz", file.string() + ".xz");
  return Unpacked("/bin/gzip", file.string() + ".gz");
}

std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells(1);
  for (const char c : line) {
    if (c == '\t') {
      cells.emplace_back();
    } else {
      cells.back() += c;
    }
  }
  return cells;
}

}  // namespace

fs::path NtfsSamplesFolder() {
  const char* const named = std::getenv("QUILMARK_NTFS_SAMPLES");
  const fs::path folder =
      named != nullptr ? fs::path(named) : fs::path(QUILMARK_SOURCE_DIR) / "../shared/ntfs-samples";
  return fs::is_directory(folder) ? folder : fs::path();
}

std::vector<std::string> NtfsSamplesOf(const std::string& kind) {
  std::vector<std::string> names;
  const fs::path folder = NtfsSamplesFolder();
  if (folder.empty()) return names;
  for (const auto& entry : fs::directory_iterator(folder / kind)) {
    if (entry.is_directory()) names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::byte> ReadSample(const fs::path& file) {
  const std::string text = ReadText(file);
  std::vector<std::byte> bytes(text.size());
  std::memcpy(bytes.data(), text.data(), text.size());
  return bytes;
}

fs::path UnpackVolume(const fs::path& sample, const fs::path& folder) {
  const ProgramRun run =
      RunProgram("/bin/tar", {"-xSf", (sample / "volume.tar.xz").string(), "-C", folder.string()});
  if (run.exitCode != 0) throw std::runtime_error(run.errors);
  return folder / "volume.img";
}

std::vector<SampleRow> ReadSampleTable(const fs::path& file) {
  std::istringstream lines(ReadText(file));
  std::string line;
  std::getline(lines, line);
  const auto heading = Cells(line);
  std::vector<SampleRow> rows;
  while (std::getline(lines, line)) {
    const auto cells = Cells(line);
    SampleRow& row = rows.emplace_back();
    for (size_t i = 0; i < heading.size(); ++i) row[heading[i]] = i < cells.size() ? cells[i] : "";
  }
  return rows;
}

uint64_t NumberOf(const SampleRow& row, std::string_view column, int base) {
  const auto cell = row.find(column);
  if (cell == row.end()) throw std::out_of_range(std::string(column));
  return std::strtoull(cell->second.c_str(), nullptr, base);
}

uint64_t ReferenceOf(const SampleRow& row, std::string_view number, std::string_view sequence) {
  return NumberOf(row, number) | NumberOf(row, sequence) << 48;
}

std::u16string NameOfSample(std::string_view text) {
  std::u16string name;
  while (!text.empty()) {
    const size_t plain = std::min(text.find('\\'), text.size());
    name += FromUtf8(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) break;
    const size_t digits = text[1] == 'x' ? 2 : text[1] == 'u' ? 4 : 0;
    const std::string number(text.substr(2, digits));
    name += digits == 0 ? u'\\' : static_cast<char16_t>(std::stoi(number, nullptr, 16));
    text.remove_prefix(2 + digits);
  }
  return name;
}

}  // namespace quilmark
