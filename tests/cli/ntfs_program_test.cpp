// The console program over NTFS images written by hand.
#include <gmock/gmock.h>

#include <fstream>
#include <future>
#include <nlohmann/json.hpp>

#include "platform/usn_record.h"
#include "support/ntfs_builder.h"
#include "support/run_program.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr uint64_t kRoot = MakeReference(5, 1);
constexpr uint64_t kFirstUsn = 4'096;

NtfsVolumeBuilder Files() {
  return NtfsVolumeBuilder()
      .Folder(30, kRoot, u"Docs")
      .File(31, MakeReference(30, 1), u"report 文件.txt")
      .File(32, kRoot, u"other.bin");
}

struct NtfsProgram : testing::Test {
  ScratchFolder folder;
  std::string Path(const std::string& name) const { return Utf8(folder.HostPath() / name); }
};

TEST_F(NtfsProgram, FindSearchesAnImageAndPrintsDrivePaths) {
  folder.MakeFile("disk.img", Files().Image());
  const ProgramRun run =
      RunProgram(QUILMARK_PROGRAM, {"find", "--drive", "N=" + Path("disk.img"), "report"});
  EXPECT_THAT(Lines(run.output), ElementsAre("N:\\Docs\\report 文件.txt"));
  EXPECT_EQ(run.exitCode, 0) << run.errors;
}

TEST_F(NtfsProgram, AnImageStandsBesideFolders) {
  folder.MakeFile("disk.img", Files().Image());
  folder.MakeFile("walked/report.doc");
  const ProgramRun run = RunProgram(
      QUILMARK_PROGRAM, {"find", "--drive-paths", "report", Path("walked"), Path("disk.img")});
  EXPECT_THAT(Lines(run.output), ElementsAre("C:\\report.doc", "D:\\Docs\\report 文件.txt"));
}

TEST_F(NtfsProgram, AnImageThatIsCutShortSaysSo) {
  auto image = Files().Image();
  folder.MakeFile("whole.img", image);
  image.resize(image.size() - 3 * 4'096);  // one cluster stands behind the volume
  folder.MakeFile("cut.img", image);
  ProgramRun run = RunProgram(QUILMARK_PROGRAM, {"find", "report", Path("whole.img")});
  EXPECT_EQ(run.errors, "");
  run = RunProgram(QUILMARK_PROGRAM, {"find", "report", Path("cut.img")});
  EXPECT_THAT(run.errors,
              HasSubstr("cut.img' is cut short: the last 8192 bytes of its volume are missing"));
  EXPECT_THAT(Lines(run.output), ElementsAre("C:\\Docs\\report 文件.txt"));
  EXPECT_EQ(run.exitCode, 0);
}

TEST_F(NtfsProgram, WhatIsNoVolumeIsRefused) {
  folder.MakeFile("text.txt", std::string(100'000, 'x'));
  auto cut = Files().Image();
  cut.resize(512);
  folder.MakeFile("cut.img", cut);
  for (const char* const name : {"text.txt", "cut.img"}) {
    const ProgramRun run = RunProgram(QUILMARK_PROGRAM, {"find", "x", Path(name)});
    EXPECT_THAT(run.errors, HasSubstr("is neither a folder nor an NTFS volume"));
    EXPECT_EQ(run.exitCode, 2);
  }
}

TEST_F(NtfsProgram, WatchRefusesWhatItCannotFollow) {
  folder.MakeFile("disk.img", Files().Image());
  folder.MakeFile("walked/a.txt");
  ProgramRun run = RunProgram(QUILMARK_PROGRAM, {"watch", Path("disk.img")});
  EXPECT_THAT(run.errors, HasSubstr("has no change journal"));
  EXPECT_EQ(run.exitCode, 2);
  run = RunProgram(QUILMARK_PROGRAM, {"watch", Path("walked")});
  EXPECT_THAT(run.errors, HasSubstr("is no NTFS volume"));
  EXPECT_EQ(run.exitCode, 2);
}

TEST_F(NtfsProgram, WatchEndsAtItsTimeWithoutAChange) {
  folder.MakeFile("disk.img", Files().Journal(7, kFirstUsn, {}).Image());
  const ProgramRun run = RunProgram(QUILMARK_PROGRAM, {"watch", "--for", "0", Path("disk.img")});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.exitCode, 1) << run.errors;
}

// A journal that somebody else writes to while it is followed.
class GrowingImage {
 public:
  explicit GrowingImage(const std::filesystem::path& path) : path_(path) {}

  void Append(uint64_t frn, uint64_t parentFrn, std::u16string_view name, uint32_t reason,
              uint32_t attributes = 0) {
    const size_t offset = journal_.size();
    journal_.resize(offset + UsnRecordLength(name.size()));
    PutUsnRecord(std::span(journal_).subspan(offset),
                 {.frn = FileReference(frn),
                  .parentFrn = FileReference(parentFrn),
                  .usn = static_cast<int64_t>(kFirstUsn + offset),
                  .reason = reason,
                  .attributes = attributes,
                  .name = std::as_bytes(std::span(name))},
                 0);
  }
  std::string Image() const { return Files().Journal(7, kFirstUsn, journal_).Image(); }

  // The records first, then the size that makes them visible.
  void Write() const {
    const MemoryVolume volume = Files().Journal(7, kFirstUsn, journal_).Build();
    std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
    for (auto stretch = volume.stretches.rbegin(); stretch != volume.stretches.rend(); ++stretch) {
      file.seekp(static_cast<std::streamoff>(stretch->first));
      file.write(reinterpret_cast<const char*>(stretch->second.data()),
                 static_cast<std::streamsize>(stretch->second.size()));
      file.flush();
    }
  }

 private:
  std::filesystem::path path_;
  Bytes journal_;
};

// Adds `change` again and again until the program has seen enough of it.
template <typename Change>
ProgramRun RunWhileChanging(const std::vector<std::string>& arguments, GrowingImage& image,
                            Change change) {
  auto run = std::async(std::launch::async, [&] { return RunProgram(QUILMARK_PROGRAM, arguments); });
  for (uint64_t round = 0; run.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready;
       ++round) {
    if (round < 2'400) change(image, 1'000 + round);
    image.Write();
  }
  return run.get();
}

TEST_F(NtfsProgram, WatchPrintsChangesAsTheyHappen) {
  GrowingImage image(folder.HostPath() / "disk.img");
  folder.MakeFile("disk.img", image.Image());

  const ProgramRun run =
      RunWhileChanging({"watch", "--limit", "4", "--drive", "N=" + Path("disk.img")}, image,
                       [](GrowingImage& growing, uint64_t frn) {
                         growing.Append(frn, MakeReference(30, 1), u"new.txt", kUsnReasonFileCreate);
                         growing.Append(frn, MakeReference(30, 1), u"名.txt", kUsnReasonRenameNewName);
                         growing.Append(frn, kRoot, u"名.txt", kUsnReasonRenameNewName);
                         growing.Append(frn, kRoot, u"名.txt", kUsnReasonFileDelete);
                       });

  EXPECT_THAT(Lines(run.output),
              ElementsAre("created  N:\\Docs\\new.txt", "renamed  N:\\Docs\\new.txt -> N:\\Docs\\名.txt",
                          "moved    N:\\Docs\\名.txt -> N:\\名.txt", "deleted  N:\\名.txt"));
  EXPECT_EQ(run.exitCode, 0) << run.errors;
}

TEST_F(NtfsProgram, WatchPrintsJsonLines) {
  GrowingImage image(folder.HostPath() / "disk.img");
  folder.MakeFile("disk.img", image.Image());

  const ProgramRun run = RunWhileChanging(
      {"watch", "--json", "--limit", "2", Path("disk.img")}, image,
      [](GrowingImage& growing, uint64_t frn) {
        growing.Append(frn, kRoot, u"New", kUsnReasonFileCreate, kFileAttributeDirectory);
        growing.Append(frn, kRoot, u"Newer", kUsnReasonRenameNewName);
      });

  const auto lines = Lines(run.output);
  ASSERT_EQ(lines.size(), 2u) << run.errors;
  const auto created = nlohmann::json::parse(lines[0]), renamed = nlohmann::json::parse(lines[1]);
  EXPECT_EQ(created["event"], "created");
  EXPECT_EQ(created["path"], "C:\\New");
  EXPECT_EQ(created["dir"], true);
  EXPECT_FALSE(created.contains("from"));
  EXPECT_EQ(created["time"].get<std::string>().size(), 23u);
  EXPECT_EQ(renamed["from"], "C:\\New");
  EXPECT_EQ(renamed["path"], "C:\\Newer");
}

TEST_F(NtfsProgram, TheEndOfTheJournalIsAnError) {
  GrowingImage image(folder.HostPath() / "disk.img");
  folder.MakeFile("disk.img", image.Image());
  const std::string without = Files().Image();

  auto run = std::async(std::launch::async, [&] {
    return RunProgram(QUILMARK_PROGRAM, {"watch", Path("disk.img")});
  });
  // Started or not: a volume whose journal is gone is refused or ends.
  while (run.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready) {
    std::fstream file(folder.HostPath() / "disk.img", std::ios::in | std::ios::out | std::ios::binary);
    file.write(without.data(), 64 * 1'024);
  }

  const ProgramRun ended = run.get();
  EXPECT_EQ(ended.exitCode, 2);
  EXPECT_THAT(ended.errors, HasSubstr("change journal"));
}

}  // namespace
}  // namespace quilmark
