// Any name of a file in each form of a hit: what is printed is one line without control characters where
// a terminal or a program reads it, and the JSON form is well-formed UTF-8 that gives the name again.
#include "cli/hit_writer.h"
#include "platform/drives.h"
#include "platform/utf.h"
#include "search/attributes/attr_cache.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

bool HasControl(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x20; });
}

unsigned HexOf(std::string_view digits) {
  return static_cast<unsigned>(std::stoul(std::string(digits), nullptr, 16));
}

// The string that `json` begins with, its escapes taken out; `json` begins behind it afterwards.
std::string TakeJsonString(std::string_view& json) {
  constexpr std::string_view kEscapes = "\"\"\\\\//b\bf\fn\nr\rt\t";
  Require(json.starts_with('"'));
  std::string text;
  size_t at = 1;
  for (; json.at(at) != '"'; ++at) {
    if (json[at] != '\\') {
      text += json[at];
    } else if (json.at(++at) == 'u') {
      text += static_cast<char>(HexOf(json.substr(at + 1, 4)));  // of a control character
      at += 4;
    } else {
      const size_t escape = kEscapes.find(json[at]);
      Require(escape != kEscapes.npos);
      text += kEscapes[escape + 1];
    }
  }
  json.remove_prefix(at + 1);
  return text;
}

void CheckJson(std::u16string_view path, bool isDirectory, HitFormat format, const HitFacts& facts) {
  const std::string line = FormatHit(path, isDirectory, format, facts);
  Require(!HasControl(line) && ToUtf8(FromUtf8(line)) == line);
  constexpr std::string_view kFront = "{\"path\":";
  Require(line.starts_with(kFront) && line.ends_with('}'));
  std::string_view rest = std::string_view(line).substr(kFront.size());
  const std::string name = TakeJsonString(rest);
  const std::string bytes = ToHostBytes(path);
  if (ToUtf8(FromUtf8(bytes)) == bytes) Require(name == bytes);
  Require(rest.starts_with(isDirectory ? ",\"dir\":true" : ",\"dir\":false"));
  Require((rest.find("\"size\":") != rest.npos) == format.facts);
}

// The rows of a volume that has the name of a file and of a folder, as they come out of a stream.
std::string WrittenHits(std::u16string_view name, size_t rows, std::optional<uint64_t> limit,
                        HitFormat format) {
  VolumeIndex volume;
  volume.drive = u"Q:";
  volume.fileSystem = kNtfs;
  ResultSet results;
  for (size_t i = 0; i < rows; ++i) {
    results.push_back(
        {&volume, AppendRecord(volume, {.frn = 100 + i, .isDirectory = i % 2 != 0}, name)});
    StoreAttr(volume, 100 + i, {.size = 5, .modified = 1, .created = 1, .valid = true});
  }
  char* text = nullptr;
  size_t size = 0;
  std::FILE* const stream = open_memstream(&text, &size);
  Require(WriteHits(results, limit, format, stream) == WriteOutcome::kDone);
  std::fclose(stream);
  const std::string written(text, size);
  std::free(text);
  return written;
}

void CheckWritten(std::u16string_view name, size_t rows, uint64_t limit) {
  name = name.substr(0, std::min<size_t>(name.find(u'\0'), 64));
  const std::string lines = WrittenHits(name, rows, limit, {.json = true, .facts = true});
  const auto count = static_cast<uint64_t>(std::count(lines.begin(), lines.end(), '\n'));
  Require(count == std::min<uint64_t>(rows, limit));
  Require(WrittenHits(name, rows, rows, {.json = true, .facts = true}).starts_with(lines));
  const std::string plain = WrittenHits(name, rows, std::nullopt, {.end = '\0'});
  Require(plain.size() == rows * (ToHostBytes(name).size() + 4));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  const auto flags = input.Take<uint8_t>();
  const HitFacts facts{.size = input.Take<uint64_t>() >> 1,
                       .modified = input.Take<uint64_t>() >> 1,
                       .created = (flags & 1) != 0 ? 0 : input.Take<uint64_t>() >> 1};
  const std::u16string path = (flags & 2) != 0 ? UnitsOf(input.rest) : FromHostBytes(input.RestAsText());
  const bool isDirectory = (flags & 4) != 0;

  CheckWritten(path, flags >> 3 & 3, flags >> 5 & 3);
  Require(FormatHit(path, isDirectory, {.drivePaths = true}) == ToHostBytes(path));
  const std::string shown = FormatHit(path, isDirectory, {.drivePaths = true, .isShown = true});
  Require(!HasControl(shown) && shown.size() == ToHostBytes(path).size());
  CheckJson(path, isDirectory, {.json = true, .drivePaths = true}, facts);
  CheckJson(path, isDirectory, {.json = true, .drivePaths = true, .facts = true}, facts);
  return 0;
}
