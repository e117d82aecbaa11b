// Any bytes as a $MFT: size and dates of each file are numbers that can be shown, agree with what the
// other readers of the same record say, and belong to that file alone.
#include "platform/file_reference.h"
#include "platform/ntfs/mft_enumeration.h"
#include "platform/ntfs/mft_facts.h"
#include "support/fuzz_input.h"
#include "support/mft_source.h"

using namespace quilmark;

namespace {

constexpr uint64_t kMostRecords = 64;

void CheckStream(const NtfsStream& stream, const MftReader& reader) {
  StreamOffset end;
  for (const NtfsExtent& extent : stream.extents) {
    Require(extent.start >= end && extent.length != 0);
    Require((extent.place + extent.length).value <=
            reader.geometry.Clusters().value * reader.geometry.clusterBytes);
    end = extent.End();
  }
  const StreamOffset streamEnd(stream.size);
  for (const StreamOffset offset : {StreamOffset(0), StreamOffset(1), end, streamEnd}) {
    const StreamOffset stored = NextStored(stream, offset);
    Require(stored <= streamEnd && (stored >= offset || stored == streamEnd));
  }
}

// What the record's own unnamed $DATA says, where it stands in no other record.
void CheckSize(MftReader& reader, std::span<const std::byte> record, FileReference reference,
               const FileFacts& facts) {
  const auto stream = FindStreamOfFile(reader, reference, kData, {});
  if (!stream) return;
  CheckStream(*stream, reader);
  if (facts.isDirectory || stream->size == 0 || !ReadAttributeList(reader, record).empty()) return;
  Require(facts.size == stream->size);
  std::vector<std::byte> contents(4'096);
  const size_t got = ReadStream(*reader.source, *stream, StreamOffset(0), contents);
  Require(got <= contents.size() && got <= stream->size);
}

void CheckFile(MftReader& reader, MftEnumeration& enumeration, RecordNumber number) {
  std::vector<std::byte> record(reader.geometry.recordBytes);
  const auto header = ReadRecord(reader, number, record);
  if (!header) {
    Require(!ReadMftFacts(reader, MakeReference(number, 1)));
    return;
  }
  const FileReference reference = MakeReference(number, header->sequence);
  Require(!ReadMftFacts(reader, FileReference(reference.value ^ uint64_t{1} << 48)));
  const auto facts = ReadMftFacts(reader, reference);
  if (!facts) return;
  Require(header->inUse && header->baseReference == FileReference(0));
  Require(std::max({facts->size, facts->modified, facts->created}) <= INT64_MAX);
  Require(facts->isDirectory == header->isDirectory && !(facts->isDirectory && facts->size != 0));
  const auto file = FileAt(reader, enumeration, number);
  const bool isFolder = file && (file->record.attributes & kFileAttributeDirectory) != 0;
  Require(!file || (file->record.frn == reference && isFolder == facts->isDirectory));
  CheckSize(reader, record, reference, *facts);
  const auto sizes = SizesInRecord(record, reference);
  Require(!sizes || sizes->logical == facts->size);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  auto reader = OpenMft(std::make_unique<MftSource>(std::as_bytes(std::span(data, size))));
  if (!reader) return 0;
  CheckStream(reader->mft, *reader);
  MftEnumeration enumeration;
  for (uint64_t number = 0; number < std::min(reader->recordCount, kMostRecords); ++number) {
    CheckFile(*reader, enumeration, RecordNumber(number));
  }
  Require(!ReadMftFacts(*reader, FileReference(reader->recordCount)));
  return 0;
}
