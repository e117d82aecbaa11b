#include "content/archive/hostile_archives.h"

#include <cstdint>

#include "support/zip_builder.h"

namespace quilmark {

namespace {

constexpr size_t kStep = 97;
constexpr uint32_t kNoSize = 0xFFFF'FFFF;

std::string Run(const std::string& text) { return "<w:t>" + text + "</w:t>"; }

ZipEntry Part(const std::string& text = "text") { return {.name = "a.xml", .data = Run(text)}; }

// The field of 64-bit numbers in a record's extra data.
std::string Zip64Field(const std::vector<uint64_t>& numbers) {
  std::string field = LeBytes(1, 2) + LeBytes(8 * numbers.size(), 2);
  for (const uint64_t number : numbers) field += LeBytes(number, 8);
  return field;
}

void AddDamage(std::vector<HostileArchive>& all) {
  const std::string whole = OfficeArchive();
  for (size_t at = 0; at < whole.size(); at += kStep) {
    all.push_back({"cut at " + std::to_string(at), whole.substr(0, at)});
    all.push_back({"begins at " + std::to_string(at), whole.substr(at)});
    std::string changed = whole;
    changed[at] = static_cast<char>(changed[at] ^ 0xFF);
    all.push_back({"changed at " + std::to_string(at), changed});
  }
}

void AddSizes(std::vector<HostileArchive>& all) {
  const auto add = [&all](const std::string& name, const ZipEntry& entry, const ZipFrame& frame = {}) {
    all.push_back({name, MakeZip({entry, Part()}, frame)});
  };
  for (const uint32_t size : {0u, 1u, 11u, 100u, 52'428'800u, 52'428'801u, 0xFFFF'FFFEu, kNoSize}) {
    ZipEntry entry = Part();
    entry.size = size;
    add("claims a size of " + std::to_string(size), entry);
    entry = Part();
    entry.packedSize = size;
    add("claims a packed size of " + std::to_string(size), entry);
    entry.method = kStored;
    add("claims a stored size of " + std::to_string(size), entry);
    entry = Part();
    entry.localOffset = size;
    add("claims to be at " + std::to_string(size), entry);
  }
  for (const uint64_t number :
       {uint64_t{0}, uint64_t{30}, uint64_t{52'428'800}, ~uint64_t{0}, ~uint64_t{0} - 60}) {
    ZipEntry entry = Part();
    entry.size = kNoSize;
    entry.packedSize = kNoSize;
    entry.localOffset = kNoSize;
    for (const auto& numbers :
         {std::vector{number, number, number}, std::vector{uint64_t{4}, number, uint64_t{0}},
          std::vector{number, uint64_t{4}, uint64_t{0}}, std::vector{number}}) {
      entry.extra = Zip64Field(numbers);
      add("has wide numbers of " + std::to_string(number) + ", " + std::to_string(numbers.size()),
          entry);
    }
    ZipFrame frame{.isZip64 = true, .directoryOffset = number};
    add("has its directory at " + std::to_string(number), Part(), frame);
    frame = {.isZip64 = true, .directorySize = number};
    add("has a directory of " + std::to_string(number), Part(), frame);
    frame = {.isZip64 = true, .directoryOffset = 60 - number, .directorySize = number};
    add("has a directory that wraps by " + std::to_string(number), Part(), frame);
    frame = {.isZip64 = true, .entryCount = number};
    add("has entries of a number of " + std::to_string(number), Part(), frame);
  }
}

void AddStreams(std::vector<HostileArchive>& all) {
  const std::vector<std::string> streams{std::string("\x05\0\0\0", 4),
                                         std::string("\x05\0\0\0\0\0\0\0", 8),
                                         "\x07",
                                         "\xFF\xFF\xFF\xFF",
                                         "",
                                         std::string("\x01\xFF\xFF\0\0", 5),
                                         std::string("\x01\x05\0\xFA\xFF", 5),
                                         std::string(70'000, '\x55'),
                                         "\x4B\x4C\x04"};
  for (const std::string& stream : streams) {
    ZipEntry entry{.name = "a.xml", .packed = stream, .size = 52'428'800};
    all.push_back({"has a stream of " + std::to_string(stream.size()), MakeZip({entry, Part()})});
    entry.size = 5;
    all.push_back({"has a stream of 5 from " + std::to_string(stream.size()), MakeZip({entry, Part()})});
  }
}

void AddKinds(std::vector<HostileArchive>& all) {
  for (const unsigned flags : {0x1u, 0x41u, 0x40u, 0x20u, 0x2000u, 0x8u, 0x800u, 0xFFFFu}) {
    ZipEntry entry = Part();
    entry.flags = static_cast<uint16_t>(flags);
    all.push_back({"has flags " + std::to_string(flags), MakeZip({entry, Part()})});
  }
  for (const unsigned method : {1u, 6u, 9u, 12u, 14u, 95u, 99u, 0xFFFFu}) {
    ZipEntry entry = Part();
    entry.method = static_cast<uint16_t>(method);
    all.push_back({"is packed by " + std::to_string(method), MakeZip({entry, Part()})});
  }
  for (const std::string& name :
       {std::string("../../a.xml"), std::string("a\0b.xml", 7), std::string("\0", 1), std::string(),
        std::string(600, 'x') + ".xml", std::string(65'000, '*'), std::string("\xFF\xFE.xml"),
        std::string("C:\\a.xml"), std::string("/a.xml"), std::string("a.xml/"), std::string("NUL")}) {
    ZipEntry entry = Part();
    entry.name = name;
    all.push_back({"has a name of " + std::to_string(name.size()), MakeZip({entry, Part()})});
  }
  for (const std::string& extra : {std::string("\x01"), std::string("\x01\0\xFF\xFF", 4),
                                   std::string("\x01\0\0\0", 4), std::string(65'000, '\x01')}) {
    ZipEntry entry = Part();
    entry.size = kNoSize;
    entry.extra = extra;
    all.push_back({"has extra data of " + std::to_string(extra.size()), MakeZip({entry, Part()})});
  }
}

// Entries that share bytes: each that is read costs as much as all of them hold.
void AddOverlaps(std::vector<HostileArchive>& all) {
  const std::string zeros = Deflate(std::string(1 << 20, '\0'));
  std::vector<ZipEntry> entries{{.name = "0.xml", .data = std::string(1 << 20, '\0'), .packed = zeros}};
  for (int i = 1; i < 2000; ++i) {
    ZipEntry entry = entries[0];
    entry.name = std::to_string(i) + ".xml";
    entry.hasLocal = false;
    entry.localOffset = 0;
    entries.push_back(entry);
  }
  all.push_back({"has 2,000 entries of the same bytes", MakeZip(entries)});
  for (size_t i = 0; i < entries.size(); ++i) entries[i].crc = static_cast<uint32_t>(i);
  all.push_back({"has 2,000 entries of the same bytes, of other checksums", MakeZip(entries)});
  all.push_back(
      {"has 2,000 entries of the same bytes, of other packed sizes", MakeZip(StretchedEntries(2000))});
  std::string nested = MakeZip({Part()});
  for (int i = 0; i < 20; ++i)
    nested = MakeZip({{.name = "a.xml", .data = nested}, {.name = "b.xml", .data = nested}});
  all.push_back({"holds itself", nested});
  entries.clear();
  std::string inner = "PK\x03\x04";
  for (int i = 0; i < 50; ++i) {
    ZipEntry entry = Part(std::string(static_cast<size_t>(i) * 10, 'x') + inner);
    entry.method = kStored;
    entry.localOffset = static_cast<uint32_t>(i * 7);
    entries.push_back(entry);
  }
  all.push_back({"has entries that lie across each other", MakeZip(entries)});
}

void AddFrames(std::vector<HostileArchive>& all) {
  const std::vector<ZipEntry> entries{Part()};
  all.push_back({"is empty", ""});
  all.push_back({"has 21 bytes", std::string(21, 'P')});
  all.push_back({"has no entries", MakeZip({})});
  all.push_back({"has no entries, widely", MakeZip({}, {.isZip64 = true})});
  all.push_back({"stands behind a program", MakeZip(entries, {.before = std::string(5000, 'M')})});
  all.push_back(
      {"stands behind a program, widely", MakeZip(entries, {.before = "MZ", .isZip64 = true})});
  all.push_back({"has an end in its comment",
                 MakeZip(entries, {.comment = "PK\x05\x06" + std::string(40, '\0')})});
  all.push_back(
      {"has a comment of all there is", MakeZip(entries, {.comment = std::string(65'535, 'c')})});
  for (const uint64_t count : {0u, 2u, 3u, 65'535u}) {
    all.push_back({"claims entries: " + std::to_string(count), MakeZip(entries, {.entryCount = count})});
  }
  for (const uint64_t at : {0u, 1u, 1000u, 0xFFFF'FFFFu}) {
    all.push_back(
        {"claims its directory at " + std::to_string(at), MakeZip(entries, {.directoryOffset = at})});
    all.push_back(
        {"claims a directory of " + std::to_string(at), MakeZip(entries, {.directorySize = at})});
  }
}

}  // namespace

std::string OfficeArchive() {
  std::string body =
      "<?xml version=\"1.0\"?><w:document><w:body><w:p><w:r><w:t>A needle.</w:t></w:r></w:p>";
  for (unsigned i = 0; i < 400; ++i) {
    body += "<w:p w:id=\"" + std::to_string(i * 2'654'435'761u) + "\"><w:r>" +
            Run(std::to_string(i * 40'503u)) + "</w:r></w:p>";
  }
  return MakeZip(
      {{.name = "[Content_Types].xml", .data = "<Types/>"},
       {.name = "_rels/.rels", .data = "<Relationships/>"},
       {.name = "word/document.xml", .data = body + "</w:body></w:document>"},
       {.name = "docProps/core.xml", .data = "<dc:title>Title</dc:title>", .method = kStored}});
}

std::vector<ZipEntry> StretchedEntries(uint32_t count) {
  // 4 KiB that cannot be packed, and zeros.
  std::string data;
  for (uint32_t i = 1; data.size() < 4'096; i = i * 1'664'525 + 1'013'904'223) {
    data += static_cast<char>(i >> 24);
  }
  data.resize(64 * 1'024);
  const std::string packed = Deflate(data);
  std::vector<ZipEntry> entries{{.name = "0.xml", .data = data, .packed = packed}};
  for (uint32_t i = 1; i < count; ++i) {
    ZipEntry entry = entries[0];
    entry.name = std::to_string(i) + ".xml";
    entry.hasLocal = false;
    entry.localOffset = 0;
    entry.packedSize = static_cast<uint32_t>(packed.size()) + i;
    entries.push_back(entry);
  }
  return entries;
}

std::vector<HostileArchive> HostileArchives() {
  std::vector<HostileArchive> all;
  AddDamage(all);
  AddSizes(all);
  AddStreams(all);
  AddKinds(all);
  AddOverlaps(all);
  AddFrames(all);
  return all;
}

}  // namespace quilmark
