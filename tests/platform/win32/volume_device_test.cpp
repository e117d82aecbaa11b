// The promises of volume_device.h, kept by the device of Windows over the test driver's volume N:.
#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <memory>
#include <thread>

#include "driver/open_gate.h"
#include "driver/test_volume_server.h"
#include "platform/bytes.h"
#include "platform/volume_device.h"
#include "support/gate.h"
#include "support/mapped_drive.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

using testing::AnyOf;
using testing::Each;

constexpr std::byte kUntouched{0xCD};

Bytes JournalReadFrom(int64_t usn) {
  Bytes input(40);
  StoreLe(std::span(input), 0, usn);
  return input;
}

std::unique_ptr<VolumeDevice> OpenForReading(std::u16string_view drive) {
  uint32_t error = 0;
  auto device = OpenVolumeDevice(drive, VolumeAccess::kRead, error);
  EXPECT_EQ(error, device ? 0u : error);
  return device;
}

// N: answered by a script; `device` is the program's own.
struct VolumeDeviceOverDriver : testing::Test {
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  std::unique_ptr<VolumeDevice> answers = scripts.Open(u"N:");
  TestVolumeServer server{*answers};
  std::unique_ptr<VolumeDevice> device = OpenForReading(u"N:");

  ~VolumeDeviceOverDriver() override { script.HoldJournalReads(false); }

  uint32_t ReadJournal() {
    Bytes block(64);
    return device->Control(kFsctlReadUsnJournal, JournalReadFrom(7), block).error;
  }
  // A read of the journal that the volume does not answer, with its error once it is out.
  std::future<uint32_t> StartWaitingRead() {
    const size_t asked = script.AskedCount(kFsctlReadUsnJournal);
    script.HoldJournalReads(true);
    auto read = std::async(std::launch::async, [this] { return ReadJournal(); });
    EXPECT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, asked + 1));
    return read;
  }
};

TEST_F(VolumeDeviceOverDriver, AControlCodeGoesOutWithItsInputAndComesBackWithItsOutput) {
  script.Queue(kFsctlReadUsnJournal, {.output = UsnBlockBuilder(9).Record(41, 5, u"a.txt")});
  Bytes block(4'096, kUntouched);

  const auto reply = device->Control(kFsctlReadUsnJournal, JournalReadFrom(0x0102'0304'0506), block);

  const Bytes expected = UsnBlockBuilder(9).Record(41, 5, u"a.txt");
  ASSERT_EQ(reply.error, 0u);
  ASSERT_EQ(reply.bytes, expected.size());
  EXPECT_EQ(Bytes(block.begin(), block.begin() + static_cast<ptrdiff_t>(expected.size())), expected);
  EXPECT_THAT(std::span(block).subspan(expected.size()), Each(kUntouched));
  const auto asked = script.TakeAsked();
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(asked[0].code, kFsctlReadUsnJournal);
  EXPECT_EQ(asked[0].input, JournalReadFrom(0x0102'0304'0506));
  EXPECT_EQ(asked[0].outputSize, 4'096u);
}

TEST_F(VolumeDeviceOverDriver, ABufferedCodeWithoutInputGivesItsOutput) {
  script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 4'096)});
  Bytes data(56);
  const auto reply = device->Control(kFsctlQueryUsnJournal, {}, data);
  EXPECT_EQ(reply.error, 0u);
  EXPECT_EQ(reply.bytes, 56u);
  EXPECT_EQ(data, JournalData(77, 4'096));
}

TEST_F(VolumeDeviceOverDriver, ABlockOf64KiBArrivesWhole) {
  Bytes sent(65'536);
  for (size_t i = 0; i < sent.size(); ++i) sent[i] = static_cast<std::byte>(i * 31 >> 3);
  script.Queue(kFsctlEnumUsnData, {.output = sent});
  Bytes block(65'536);
  const auto reply = device->Control(kFsctlEnumUsnData, Bytes(24), block);
  EXPECT_EQ(reply.error, 0u);
  EXPECT_EQ(reply.bytes, sent.size());
  EXPECT_TRUE(block == sent);
}

TEST_F(VolumeDeviceOverDriver, AShortOutputGivesMoreDataAndNothingBehindItsEnd) {
  script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(1).Record(41, 5, u"a.txt")});
  Bytes memory(128, kUntouched);
  const auto reply = device->Control(kFsctlEnumUsnData, Bytes(24), std::span(memory).first(16));
  EXPECT_EQ(reply.error, kErrorMoreData);
  EXPECT_THAT(std::span(memory).subspan(16), Each(kUntouched));
}

TEST_F(VolumeDeviceOverDriver, ErrorsArriveAsWindowsNumbersThem) {
  for (const uint32_t error :
       {kErrorInvalidFunction, kErrorAccessDenied, kErrorInvalidHandle, kErrorWriteProtect,
        kErrorHandleEof, kErrorInvalidParameter, kErrorMoreData, kErrorOperationAborted,
        kErrorDeviceNotConnected, kErrorJournalNotActive, kErrorJournalEntryDeleted}) {
    SCOPED_TRACE(error);
    script.QueueError(kFsctlEnumUsnData, error);
    Bytes block(64);
    const auto reply = device->Control(kFsctlEnumUsnData, Bytes(24), block);
    EXPECT_EQ(reply.error, error);
    EXPECT_EQ(reply.bytes, 0u);
  }
}

TEST_F(VolumeDeviceOverDriver, CancelEndsAWaitingCallAndNoLaterOne) {
  auto read = StartWaitingRead();

  device->Cancel();

  EXPECT_EQ(read.get(), kErrorOperationAborted);
  script.HoldJournalReads(false);
  EXPECT_EQ(ReadJournal(), 0u);
}

TEST_F(VolumeDeviceOverDriver, CancelWithoutACallHasNoEffect) {
  device->Cancel();
  EXPECT_EQ(ReadJournal(), 0u);
}

TEST_F(VolumeDeviceOverDriver, AWaitingCallEndsWhenItsAnswerComes) {
  auto read = StartWaitingRead();
  script.HoldJournalReads(false);
  EXPECT_EQ(read.get(), 0u);
}

TEST_F(VolumeDeviceOverDriver, CloseEndsAWaitingCallAndRefusesLaterOnes) {
  auto read = StartWaitingRead();

  EXPECT_EQ(device->Close(), 0u);

  EXPECT_EQ(read.get(), kErrorOperationAborted);
  const size_t asked = script.AskedCount(kFsctlReadUsnJournal);
  std::byte sector[512];
  EXPECT_EQ(ReadJournal(), kErrorInvalidHandle);
  EXPECT_EQ(device->ReadAt(ByteOffset(0), sector).error, kErrorInvalidHandle);
  EXPECT_EQ(script.AskedCount(kFsctlReadUsnJournal), asked);
  EXPECT_EQ(device->Close(), 0u);
  device->Cancel();
}

TEST_F(VolumeDeviceOverDriver, TheDestructorGivesTheDeviceBackForAnother) {
  EXPECT_EQ(ReadJournal(), 0u);
  device.reset();
  device = OpenForReading(u"N:");
  ASSERT_NE(device, nullptr);
  EXPECT_EQ(ReadJournal(), 0u);
}

// A closed handle's number may be given to another file at once: a call that comes late must not reach
// it.
TEST_F(VolumeDeviceOverDriver, CloseAndCancelMayComeAtAnyMomentOfACall) {
  for (int round = 0; round < 60; ++round) {
    device = OpenForReading(u"N:");
    ASSERT_NE(device, nullptr);
    std::atomic<int> calls = 0;
    uint32_t last = 0;
    std::thread caller([&] {
      do {
        last = ReadJournal();
        ++calls;
      } while (last == 0 || last == kErrorOperationAborted);
    });
    EXPECT_TRUE(WaitUntil([&] { return calls > 0; }));
    std::thread canceller([&] {
      for (int i = 0; i < round; ++i) device->Cancel();
    });
    EXPECT_EQ(device->Close(), 0u);
    canceller.join();
    caller.join();
    EXPECT_EQ(last, kErrorInvalidHandle) << "round " << round;
  }
}

TEST_F(VolumeDeviceOverDriver, AnOpenThatTheVolumeDeniesGivesItsError) {
  const OpenGate gate(GENERIC_WRITE);
  uint32_t error = 0;
  EXPECT_EQ(OpenVolumeDevice(u"N:", VolumeAccess::kReadWrite, error), nullptr);
  EXPECT_EQ(error, kErrorAccessDenied);
  EXPECT_NE(OpenVolumeDevice(u"N:", VolumeAccess::kRead, error), nullptr);
  EXPECT_EQ(error, 0u);
}

TEST_F(VolumeDeviceOverDriver, ALostDeviceAnswersThatItIsNotConnected) {
  server.LoseDevice();
  std::byte sector[512];
  EXPECT_EQ(ReadJournal(), kErrorDeviceNotConnected);
  EXPECT_EQ(device->ReadAt(ByteOffset(0), sector).error, kErrorDeviceNotConnected);
}

// Gives back where it was read.
struct PlaceDevice : VolumeDevice {
  Reply Control(uint32_t, std::span<const std::byte>, std::span<std::byte>) override {
    return {.error = kErrorInvalidFunction};
  }
  Reply ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    if (offset.value >= kSize) return {.error = kErrorHandleEof};
    const size_t bytes = std::min<uint64_t>(buffer.size(), kSize - offset.value);
    for (size_t i = 0; i < bytes; i += 8) StoreLe(buffer, i, offset.value + i);
    return {.bytes = bytes};
  }
  void Cancel() override {}
  uint32_t Close() override { return 0; }

  static constexpr uint64_t kSize = 0x3'0000'0400;  // 12 GiB and two sectors
};

TEST(VolumeDevice, BytesAreReadAtTheirPlace) {
  PlaceDevice places;
  TestVolumeServer server(places);
  const auto device = OpenForReading(u"N:");
  ASSERT_NE(device, nullptr);
  for (const uint64_t offset : {uint64_t{0}, uint64_t{0x1000}, uint64_t{0x1'0000'0000},
                                uint64_t{0x2'FFFF'F000}, uint64_t{0x200}}) {
    SCOPED_TRACE(offset);
    Bytes buffer(1'024);
    const auto reply = device->ReadAt(ByteOffset(offset), buffer);
    ASSERT_EQ(reply.error, 0u);
    ASSERT_EQ(reply.bytes, buffer.size());
    EXPECT_EQ(LoadLe<uint64_t>(buffer, 0), offset);
    EXPECT_EQ(LoadLe<uint64_t>(buffer, 1'016), offset + 1'016);
  }
}

TEST(VolumeDevice, AReadAcrossTheEndIsShort) {
  PlaceDevice places;
  TestVolumeServer server(places);
  const auto device = OpenForReading(u"N:");
  ASSERT_NE(device, nullptr);
  Bytes buffer(4'096, kUntouched);

  const auto reply = device->ReadAt(ByteOffset(PlaceDevice::kSize - 512), buffer);

  EXPECT_EQ(reply.error, 0u);
  EXPECT_EQ(reply.bytes, 512u);
  EXPECT_THAT(std::span(buffer).subspan(512), Each(kUntouched));
}

TEST(VolumeDevice, ALetterOfAnImageIsReadByItsBytesAndNeverWritten) {
  const ScratchFolder folder;
  folder.MakeFile("disk.img", NtfsVolumeBuilder().File(30, MakeReference(5, 1), u"a.txt").Image());
  const MappedDrive drive(u'Q', folder.PathOf(u"disk.img"));
  uint32_t error = 0;

  EXPECT_EQ(OpenVolumeDevice(u"Q:", VolumeAccess::kReadWrite, error), nullptr);
  EXPECT_EQ(error, kErrorWriteProtect);

  const auto device = OpenForReading(u"Q:");
  ASSERT_NE(device, nullptr);
  Bytes sector(512), data(96);
  EXPECT_EQ(device->ReadAt(ByteOffset(0), sector).bytes, sector.size());
  EXPECT_EQ(device->Control(kFsctlGetNtfsVolumeData, {}, data).error, 0u);
  EXPECT_EQ(LoadLe<uint32_t>(data, 44), kBuiltClusterBytes);
}

TEST(VolumeDevice, ALetterOfAFileWithoutAVolumeCannotBeOpened) {
  const ScratchFolder folder;
  folder.MakeFile("disk.img", std::string(4'096, 'x'));
  const MappedDrive drive(u'Q', folder.PathOf(u"disk.img"));
  uint32_t error = 0;
  EXPECT_EQ(OpenVolumeDevice(u"Q:", VolumeAccess::kRead, error), nullptr);
  EXPECT_EQ(error, kErrorInvalidFunction);
}

TEST(VolumeDevice, ADriveThatIsNotThereCannotBeOpened) {
  uint32_t error = 0;
  EXPECT_EQ(OpenVolumeDevice(u"Q:", VolumeAccess::kRead, error), nullptr);
  EXPECT_EQ(error, 2u);
}

TEST(VolumeDevice, ADriveOfWineHasNoControlCodes) {
  const auto device = OpenForReading(u"C:");
  ASSERT_NE(device, nullptr);
  std::byte data[56];
  EXPECT_THAT(device->Control(kFsctlQueryUsnJournal, {}, data).error, AnyOf(1u, 50u));
}

}  // namespace
}  // namespace quilmark
