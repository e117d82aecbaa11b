#include "index/device/file_record_read.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

constexpr uint64_t kFile = MakeReference(60, 3);

struct FileRecords : testing::Test {
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  std::shared_ptr<VolumeDevice> device = scripts.Open(u"N:");
  ControlBuffer<8'192> scratch;

  FileRecordRead ReadAfter(Bytes answer) {
    script.Queue(kFsctlGetNtfsFileRecord, {.output = std::move(answer)});
    return ReadFileRecord(*device, kFile, scratch.bytes);
  }
};

TEST_F(FileRecords, AreThereWhereTheirSequenceNumberIs) {
  const FileRecordRead read = ReadAfter(FileRecordData(kFile));
  EXPECT_EQ(read.state, FileState::kThere);
  EXPECT_EQ(read.record.data(), scratch.bytes.data() + 12);
  EXPECT_EQ(read.record.size(), FileRecordData(kFile).size() - 12);
}

TEST_F(FileRecords, AreGoneWhereTheRecordIsFree) {
  EXPECT_EQ(ReadAfter(FileRecordData(kFile, false)).state, FileState::kGone);
}

TEST_F(FileRecords, AreGoneWhereAnotherFileHasTheRecord) {
  EXPECT_EQ(ReadAfter(FileRecordData(MakeReference(60, 4))).state, FileState::kGone);
}

TEST_F(FileRecords, AreGoneWhereALowerRecordIsAnswered) {
  EXPECT_EQ(ReadAfter(FileRecordData(MakeReference(59, 3))).state, FileState::kGone);
}

TEST_F(FileRecords, AreNotKnownWhereTheDeviceFailsOrAnswersNonsense) {
  script.QueueError(kFsctlGetNtfsFileRecord, kErrorReadFault);
  EXPECT_EQ(ReadFileRecord(*device, kFile, scratch.bytes).state, FileState::kUnknown);
  EXPECT_EQ(ReadAfter(Bytes(12)).state, FileState::kUnknown) << "no record behind the header";
  Bytes nonsense = FileRecordData(kFile);
  nonsense.resize(40);
  EXPECT_EQ(ReadAfter(nonsense).state, FileState::kUnknown);
}

}  // namespace
}  // namespace quilmark
