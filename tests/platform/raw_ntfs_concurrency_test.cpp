// Closing a device that is in use. Run under ThreadSanitizer as well.
#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "platform/ntfs/mft_reader.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

using testing::AnyOf;

constexpr uint64_t kRoot = MakeReference(kRootRecord.value, 1);

uint32_t Ask(VolumeDevice& device, uint32_t code, const std::vector<uint64_t>& input) {
  Bytes block(4'096);
  return device.Control(code, std::as_bytes(std::span(input)), block).error;
}

TEST(RawNtfsConcurrency, CloseAgainstCallsEndsThemAllWithTheSameAnswer) {
  NtfsVolumeBuilder builder;
  for (uint64_t number = 20; number < 80; ++number) builder.File(number, kRoot, u"file");
  const MemoryVolume volume = builder.Build();
  for (int round = 0; round < 100; ++round) {
    const auto device = OpenRawNtfs(volume.Open());
    Ask(*device, kFsctlCreateUsnJournal, {0, 0});
    std::atomic<int> calls = 0;
    std::thread caller([&] {
      uint32_t error = 0;
      for (; error != kErrorInvalidHandle; ++calls) {
        error = Ask(*device, kFsctlEnumUsnData, {0, 0, INT64_MAX});
        EXPECT_THAT(error, AnyOf(0u, kErrorOperationAborted, kErrorInvalidHandle));
      }
    });
    while (calls < round % 5) std::this_thread::yield();
    EXPECT_EQ(device->Close(), 0u);
    EXPECT_EQ(Ask(*device, kFsctlQueryUsnJournal, {}), kErrorInvalidHandle);
    caller.join();
  }
}

// Tells when the first byte of a stretch is asked for.
class SignallingSource : public ByteSource {
 public:
  SignallingSource(const MemoryVolume& volume, uint64_t place, std::atomic<bool>& isAsked)
      : source_(volume.Open()), place_(place), isAsked_(isAsked) {}
  uint64_t Size() const override { return source_->Size(); }
  size_t ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    if (offset.value >= place_) isAsked_ = true;
    return source_->ReadAt(offset, buffer);
  }

 private:
  std::unique_ptr<ByteSource> source_;
  const uint64_t place_;
  std::atomic<bool>& isAsked_;
};

TEST(RawNtfsConcurrency, CloseEndsACallThatWouldGoOnForHours) {
  // A journal of 4 TiB of empty pages.
  constexpr uint64_t kJournalClusters = uint64_t{1} << 30, kPlace = 2'000;
  auto volume =
      NtfsVolumeBuilder()
          .Journal(7, 0, {})
          .Record(24, RecordBuilder()
                          .FileName(MakeReference(kExtendRecord.value, 1), u"$UsnJrnl")
                          .NonResident(kData, u"$J", MappingPairs({{kPlace, kJournalClusters}}),
                                       kJournalClusters * kBuiltClusterBytes)
                          .Resident(kData, u"$Max", Bytes(32))
                          .Finish({}))
          .Build();
  constexpr uint64_t kClusters = kPlace + kJournalClusters;
  volume.stretches[0] =
      MakeBootSector(kBuiltClusterBytes, kBuiltRecordBytes, kClusters, kBuiltMftCluster, 2);
  volume.size = (kClusters + 1) * kBuiltClusterBytes;
  std::atomic<bool> isReading = false;
  const auto device =
      OpenRawNtfs(std::make_unique<SignallingSource>(volume, kPlace * kBuiltClusterBytes, isReading));
  ASSERT_NE(device, nullptr);
  uint32_t error = 0;
  std::thread caller([&] { error = Ask(*device, kFsctlReadUsnJournal, {0, 0x100, 0, 0, 0}); });
  while (!isReading) std::this_thread::yield();

  EXPECT_EQ(device->Close(), 0u);

  caller.join();
  EXPECT_EQ(error, kErrorOperationAborted);
  EXPECT_EQ(Ask(*device, kFsctlReadUsnJournal, {0, 0x100, 0, 0, 0}), kErrorInvalidHandle);
}

}  // namespace
}  // namespace quilmark
