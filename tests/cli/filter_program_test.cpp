// Filters and orders of the console program, against what the file system itself says of a folder made
// for the test.
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>

#include "platform/clock.h"
#include "support/environment.h"
#include "support/ntfs_builder.h"
#include "support/run_program.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

constexpr auto kDay = std::chrono::hours(24);

// What the file system says of an entry below the folder.
struct Entry {
  std::string path;  // "C:\..."
  std::string name;
  bool isDirectory = false;
  uint64_t size = 0;  // of a folder: of all files below it
  fs::file_time_type modified;
};

uint64_t BytesBelow(const fs::path& folder) {
  uint64_t bytes = 0;
  for (const auto& found : fs::recursive_directory_iterator(folder)) {
    if (found.is_regular_file()) bytes += found.file_size();
  }
  return bytes;
}

class Filters : public testing::Test {
 protected:
  // Sizes in bytes, ages from now.
  void SetUp() override {
    const auto age = [](int days) { return kDay * days; };
    Make("a/report.PDF", 1'023, age(0));
    Make("a/report.docx", 1'024, age(2));
    Make("a/deep/report.txt", 1'025, age(6));
    Make("a/deep/er/movie.mp4", 3'000'000, age(8));
    Make("b/empty.txt", 0, age(20));
    Make("b/no extension", 10'240, age(29));
    Make("b/archive.tar.gz", 1'048'576, age(31));
    Make("b/hidden/.txt", 77, age(300));
    Make("old.txt", 5, age(800));
    fs::create_directories(folder.HostPath() / "nothing");
  }
  void Make(const std::string& name, uint64_t size, std::chrono::hours age) const {
    const fs::path path = folder.HostPath() / name;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << std::string(size, 'x');
    fs::last_write_time(path, fs::file_time_type::clock::now() - age - std::chrono::minutes(1));
  }

  std::vector<Entry> Entries() const {
    std::vector<Entry> entries;
    for (const auto& found : fs::recursive_directory_iterator(folder.HostPath())) {
      std::string below = Utf8(fs::relative(found.path(), folder.HostPath()));
      std::replace(below.begin(), below.end(), '/', '\\');
      const bool isFolder = found.is_directory();
      entries.push_back({"C:\\" + below, Utf8(found.path().filename()), isFolder,
                         isFolder ? BytesBelow(found.path()) : found.file_size(),
                         found.last_write_time()});
    }
    return entries;
  }
  // Paths of those that `rule` takes, by name.
  std::vector<std::string> Expected(const std::function<bool(const Entry&)>& rule) const {
    std::vector<std::string> paths;
    for (const Entry& entry : Entries()) {
      if (rule(entry)) paths.push_back(entry.path);
    }
    std::sort(paths.begin(), paths.end());
    return paths;
  }

  ProgramRun Find(std::vector<std::string> options, const std::string& query = "",
                  const std::string& input = {}) const {
    std::vector<std::string> arguments{"find", "--drive-paths"};
    const bool isDialogue = std::find(options.begin(), options.end(), "--interactive") != options.end();
    arguments.insert(arguments.end(), options.begin(), options.end());
    if (!isDialogue) arguments.push_back(query);
    arguments.push_back(Utf8(folder.HostPath()));
    return RunProgram(QUILMARK_PROGRAM, arguments, input);
  }
  std::vector<std::string> Paths(const std::vector<std::string>& options,
                                 const std::string& query = "") const {
    const ProgramRun run = Find(options, query);
    EXPECT_EQ(run.errors, "");
    return Lines(run.output);
  }
  std::vector<std::string> Sorted(const std::vector<std::string>& options,
                                  const std::string& query = "") const {
    auto paths = Paths(options, query);
    std::sort(paths.begin(), paths.end());
    return paths;
  }
  // The program's JSON lines by path.
  std::map<std::string, json> Objects(std::vector<std::string> options) const {
    options.push_back("--json");
    std::map<std::string, json> objects;
    for (const std::string& line : Paths(options)) {
      json object = json::parse(line);
      const std::string path = object["path"];
      objects[path] = std::move(object);
    }
    return objects;
  }

  ScratchFolder folder, config;
  ScopedEnvironment place{"QUILMARK_CONFIG_DIR", Utf8(config.HostPath())};
};

bool IsFileOf(const Entry& entry, uint64_t least, uint64_t most) {
  return !entry.isDirectory && entry.size >= least && entry.size <= most;
}

bool IsYoungerThan(const Entry& entry, int days) {
  return !entry.isDirectory && fs::file_time_type::clock::now() - entry.modified < kDay * days;
}

TEST_F(Filters, SizesKeepTheFilesThatTheFileSystemGivesThem) {
  const auto between = [this](uint64_t least, uint64_t most) {
    const auto paths = Expected([&](const Entry& entry) { return IsFileOf(entry, least, most); });
    EXPECT_FALSE(paths.empty());
    return paths;
  };
  constexpr uint64_t kMost = std::numeric_limits<uint64_t>::max();
  EXPECT_EQ(Sorted({"--size", "1K..10K"}), between(1'024, 10'240));
  EXPECT_EQ(Sorted({"--size", "1025..1048575"}), between(1'025, 1'048'575));
  EXPECT_EQ(Sorted({"--size", "1M"}), between(1'048'576, kMost));
  EXPECT_EQ(Sorted({"--size", "1M.."}), between(1'048'576, kMost));
  EXPECT_EQ(Sorted({"--size", "..1023"}), between(0, 1'023));
  EXPECT_EQ(Sorted({"--size", "0..0"}), between(0, 0));
  EXPECT_EQ(Sorted({"--size", "1G.."}), std::vector<std::string>());
}

TEST_F(Filters, AgesKeepTheFilesChangedSince) {
  const auto younger = [this](int days) {
    const auto paths = Expected([&](const Entry& entry) { return IsYoungerThan(entry, days); });
    EXPECT_FALSE(paths.empty());
    return paths;
  };
  EXPECT_EQ(Sorted({"--modified", "1d"}), younger(1));
  EXPECT_EQ(Sorted({"--modified", "7d"}), younger(7));
  EXPECT_EQ(Sorted({"--modified", "1w"}), younger(7));
  EXPECT_EQ(Sorted({"--modified", "3w"}), younger(21));
  EXPECT_EQ(Sorted({"--modified", "1y"}), younger(365));
}

// The local day of the file system's date, asked of the C library.
std::string LocalDay(fs::file_time_type time) {
  const auto seconds = std::chrono::system_clock::to_time_t(
      std::chrono::time_point_cast<std::chrono::system_clock::duration>(
          std::chrono::file_clock::to_sys(time)));
  char text[16];
  std::strftime(text, sizeof text, "%Y-%m-%d", std::localtime(&seconds));
  return text;
}

TEST_F(Filters, DaysKeepTheFilesChangedOnThem) {
  const auto days = [this](const std::string& first, const std::string& last) {
    return Expected([&](const Entry& entry) {
      const std::string day = LocalDay(entry.modified);
      return !entry.isDirectory && day >= first && day <= last;
    });
  };
  std::map<std::string, std::string> dayOf;
  for (const Entry& entry : Entries()) dayOf[entry.name] = LocalDay(entry.modified);
  const std::string early = dayOf["archive.tar.gz"], late = dayOf["report.txt"];

  EXPECT_THAT(Sorted({"--modified", early}), ElementsAre("C:\\b\\archive.tar.gz"));
  EXPECT_EQ(Sorted({"--modified", early + ".." + late}), days(early, late));
  EXPECT_EQ(Sorted({"--modified", early + ".." + late}).size(), 5u);
  EXPECT_EQ(Sorted({"--modified", ".." + early}), days("", early));
  EXPECT_EQ(Sorted({"--modified", late + ".."}), days(late, "9999"));
  EXPECT_EQ(Sorted({"--modified", "1970-01-01"}), std::vector<std::string>());
}

TEST_F(Filters, ExtensionsAreWhatFollowsTheLastDotInAnyCase) {
  EXPECT_THAT(Sorted({"--ext", "pdf,.DOCX"}), ElementsAre("C:\\a\\report.PDF", "C:\\a\\report.docx"));
  EXPECT_THAT(Sorted({"--ext", "gz"}), ElementsAre("C:\\b\\archive.tar.gz"));
  EXPECT_THAT(Sorted({"--ext", "txt"}), ElementsAre("C:\\a\\deep\\report.txt", "C:\\b\\empty.txt",
                                                    "C:\\b\\hidden\\.txt", "C:\\old.txt"));
  EXPECT_EQ(Sorted({"--ext", "dir"}), Expected([](const Entry& entry) { return entry.isDirectory; }));
}

TEST_F(Filters, CategoriesAreThoseOfTheFilterBar) {
  EXPECT_THAT(Sorted({"--category", "videos"}), ElementsAre("C:\\a\\deep\\er\\movie.mp4"));
  EXPECT_EQ(Sorted({"--category", "Folders"}),
            Expected([](const Entry& entry) { return entry.isDirectory; }));
  EXPECT_EQ(Sorted({"--category", "all files"}), Expected([](const Entry&) { return true; }));
  EXPECT_TRUE(fs::is_empty(config.HostPath())) << "a search writes no settings";
}

TEST_F(Filters, CategoriesOfTheUsersFileAreTaken) {
  config.MakeFile("filters.ini", "All=\nZipped=gz,zip\n");
  EXPECT_THAT(Sorted({"--category", "zipped"}), ElementsAre("C:\\b\\archive.tar.gz"));
  EXPECT_THAT(Sorted({"--category", "folders", "--count"}), ElementsAre("6"));
  EXPECT_THAT(Find({"--category", "documents"}).errors, HasSubstr("no category: All, Folders, Zipped"));
}

TEST_F(Filters, FiltersNarrowEachOther) {
  EXPECT_THAT(
      Sorted({"--category", "documents", "--ext", "txt,mp4", "--size", "1..", "--modified", "1y"}),
      ElementsAre("C:\\a\\deep\\report.txt", "C:\\b\\hidden\\.txt"));
  EXPECT_THAT(Sorted({"--ext", "txt"}, "report"), ElementsAre("C:\\a\\deep\\report.txt"));
  EXPECT_EQ(Sorted({"--category", "folders", "--ext", "txt"}), std::vector<std::string>());
  EXPECT_EQ(Sorted({"--category", "folders", "--size", "0.."}), std::vector<std::string>());
}

TEST_F(Filters, NothingLeftIsExitCodeOne) {
  const ProgramRun run = Find({"--ext", "xyz"}, "report");
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.exitCode, 1) << run.errors;
}

TEST_F(Filters, CountAndLimitActBehindTheFilters) {
  EXPECT_THAT(Paths({"--count", "--size", "1K..10K", "--sort", "size", "--limit", "1"}),
              ElementsAre("3"));
  EXPECT_THAT(Paths({"--size", "1K..", "--sort", "size", "--limit", "2"}),
              ElementsAre("C:\\a\\deep\\er\\movie.mp4", "C:\\b\\archive.tar.gz"));
}

TEST_F(Filters, SizesAndDatesSortAsTheFileSystemGivesThem) {
  auto files = Entries();
  std::erase_if(files, [](const Entry& entry) { return entry.isDirectory; });
  const auto order = [&files](auto key) {
    std::sort(files.begin(), files.end(),
              [key](const Entry& a, const Entry& b) { return key(a) < key(b); });
    std::vector<std::string> paths;
    for (const Entry& entry : files) paths.push_back(entry.path);
    return paths;
  };
  const auto reversed = [](std::vector<std::string> paths) {
    std::reverse(paths.begin(), paths.end());
    return paths;
  };
  const auto bySize = order([](const Entry& entry) { return entry.size; });
  const auto byDate = order([](const Entry& entry) { return entry.modified; });
  EXPECT_EQ(Paths({"--size", "0..", "--sort", "size:asc"}), bySize);
  EXPECT_EQ(Paths({"--size", "0..", "--sort", "size:desc"}), reversed(bySize));
  EXPECT_EQ(Paths({"--size", "0..", "--sort", "size"}), reversed(bySize));
  EXPECT_EQ(Paths({"--size", "0..", "--sort", "modified"}), byDate);
  EXPECT_EQ(Paths({"--size", "0..", "--sort", "modified:desc"}), reversed(byDate));
}

TEST_F(Filters, CreationSortsAsItIsShown) {
  std::vector<std::string> created;
  for (const std::string& line : Paths({"--json", "--size", "0..", "--sort", "created"}))
    created.push_back(json::parse(line)["created"]);
  EXPECT_EQ(created.size(), 9u);
  EXPECT_TRUE(std::is_sorted(created.begin(), created.end())) << testing::PrintToString(created);
}

TEST_F(Filters, SortingLeavesTheWindowsCacheAlone) {
  config.MakeFile("attrcache.v1.bin", "of the window");
  EXPECT_EQ(Paths({"--sort", "size"}).size(), Entries().size());
  std::ifstream file(config.HostPath() / "attrcache.v1.bin");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "of the window");
}

TEST_F(Filters, NamesAndPathsSortWithoutRegardToCase) {
  EXPECT_THAT(Paths({"--sort", "name"}, "report"),
              ElementsAre("C:\\a\\report.docx", "C:\\a\\report.PDF", "C:\\a\\deep\\report.txt"));
  EXPECT_THAT(Paths({"--sort", "name:desc"}, "report"),
              ElementsAre("C:\\a\\deep\\report.txt", "C:\\a\\report.PDF", "C:\\a\\report.docx"));
  EXPECT_THAT(Paths({"--sort", "path"}, "report"),
              ElementsAre("C:\\a\\deep\\report.txt", "C:\\a\\report.docx", "C:\\a\\report.PDF"));
}

TEST_F(Filters, SortingPutsTheHitsOfTwoDrivesTogether) {
  const ProgramRun run =
      RunProgram(QUILMARK_PROGRAM, {"find", "--json", "--drive-paths", "--ext", "docx,pdf,mp4", "--sort",
                                    "size", "", Utf8(folder.HostPath() / "a"), Utf8(folder.HostPath())});
  std::vector<uint64_t> sizes;
  for (const std::string& line : Lines(run.output)) sizes.push_back(json::parse(line)["size"]);
  EXPECT_THAT(sizes, ElementsAre(3'000'000, 3'000'000, 1'024, 1'024, 1'023, 1'023)) << run.errors;
}

TEST_F(Filters, TotalsAreTheBytesBelowAFolder) {
  const auto objects = Objects({"--totals"});
  const auto entries = Entries();
  EXPECT_EQ(objects.size(), entries.size());
  for (const Entry& entry : entries) {
    ASSERT_TRUE(objects.contains(entry.path)) << entry.path;
    EXPECT_EQ(objects.at(entry.path)["size"], entry.size) << entry.path;
  }
}

TEST_F(Filters, TotalsCountFilesThatTheQueryDoesNotFind) {
  const auto lines = Paths({"--json", "--totals", "--ext", "dir", "--sort", "size", "--limit", "2"});
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(json::parse(lines[0])["path"], "C:\\a");
  EXPECT_EQ(json::parse(lines[0])["size"], 1'023 + 1'024 + 1'025 + 3'000'000);
  EXPECT_EQ(json::parse(lines[1])["path"], "C:\\a\\deep");
  EXPECT_EQ(json::parse(lines[1])["size"], 1'025 + 3'000'000);
}

// Seconds since 1970 of "2026-03-01T14:05:09.250Z".
double Seconds(const std::string& text) {
  int year = 0, hour = 0, minute = 0;
  unsigned month = 0, day = 0;
  double second = 0;
  EXPECT_EQ(
      std::sscanf(text.c_str(), "%d-%u-%uT%d:%d:%lfZ", &year, &month, &day, &hour, &minute, &second), 6)
      << text;
  EXPECT_EQ(text.size(), 24u);
  EXPECT_TRUE(text.ends_with('Z')) << text;
  const std::chrono::sys_days days =
      std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
  return static_cast<double>(days.time_since_epoch().count()) * 86'400 + hour * 3'600 + minute * 60 +
         second;
}

TEST_F(Filters, JsonShowsSizesAndTimesAsTheFileSystemGivesThem) {
  const auto objects = Objects({"--modified", "1970-01-01.."});
  EXPECT_EQ(objects.size(), 9u);
  for (const Entry& entry : Entries()) {
    if (entry.isDirectory) continue;
    const json& object = objects.at(entry.path);
    EXPECT_EQ(object["size"], entry.size) << entry.path;
    const std::chrono::duration<double> expected =
        std::chrono::file_clock::to_sys(entry.modified).time_since_epoch();
    EXPECT_NEAR(Seconds(object["modified"]), expected.count(), 0.002) << entry.path;
    EXPECT_GT(Seconds(object["created"]), 0) << entry.path;
  }
}

TEST_F(Filters, JsonLeavesAFoldersSizeOpenWithoutTotals) {
  const auto objects = Objects({"--sort", "modified", "--category", "folders"});
  ASSERT_TRUE(objects.contains("C:\\a"));
  EXPECT_EQ(objects.at("C:\\a")["size"], nullptr);
  EXPECT_TRUE(objects.at("C:\\a")["modified"].is_string());
}

TEST_F(Filters, JsonStaysShortWhereNoAttributesWereRead) {
  EXPECT_THAT(Paths({"--json", "--ext", "pdf", "--sort", "name"}),
              ElementsAre(R"({"path":"C:\\a\\report.PDF","dir":false})"));
}

TEST_F(Filters, DialogueFiltersAndSortsEachAnswer) {
  const auto lines =
      Lines(Find({"--interactive", "--size", "1K..", "--sort", "size:asc", "--totals", "--limit", "2"},
                 "", "report\n\nempty\n")
                .output);
  ASSERT_EQ(lines.size(), 10u) << testing::PrintToString(lines);
  EXPECT_EQ(lines[1], "C:\\a\\report.docx");
  EXPECT_EQ(lines[2], "C:\\a\\deep\\report.txt");
  EXPECT_EQ(lines[3].substr(0, 8), "2 hits, ");
  EXPECT_EQ(lines[5], "C:\\a\\report.docx");
  EXPECT_EQ(lines[7].substr(0, 8), "5 hits, ");
  EXPECT_EQ(lines[9].substr(0, 8), "0 hits, ");
}

TEST_F(Filters, StatsCountWhatIsLeft) {
  EXPECT_THAT(Find({"--stats", "--ext", "pdf"}).errors, HasSubstr("\n1 hits in "));
}

TEST_F(Filters, MistakesAreSaidOnStandardErrorWithExitCodeTwo) {
  const auto expectError = [this](std::vector<std::string> options, const std::string& reason) {
    const ProgramRun run = Find(std::move(options));
    EXPECT_EQ(run.exitCode, 2) << reason;
    EXPECT_EQ(run.output, "") << reason;
    EXPECT_THAT(run.errors, HasSubstr(reason));
  };
  expectError({"--size", ""}, "--size: the range is empty");
  expectError({"--size", "2M..1M"}, "--size: the range is reversed");
  expectError({"--size", "10X"}, "--size: '10x' has an unknown unit");
  expectError({"--size", "99999999999999999999"}, "is too large");
  expectError({"--modified", "2025-02-30"}, "--modified: '2025-02-30' is no day of the calendar");
  expectError({"--modified", "2025-02-01..2025-01-01"}, "--modified: the range is reversed");
  expectError({"--modified", ".."}, "--modified: the range is empty");
  expectError({"--modified", "[7d]"}, "--modified: '[7d]' is no date");
  expectError({"--sort", "date"}, "--sort: 'date' is no column: name, size, modified, created, path");
  expectError({"--ext", ""}, "--ext: no extension is named");
  expectError({"--category", "music"},
              "--category: 'music' is no category: All Files, Folders, Documents");
}

constexpr FileTime kNoonOf2024 = 133'629'264'000'000'000;   // 2024-06-15T12:00:00Z
constexpr FileTime kNewYear2020 = 132'223'104'000'000'000;  // 2020-01-01T00:00:00Z
constexpr FileTime kYear = 315'360'000'000'000;
constexpr uint64_t kImageRoot = MakeReference(5, 1), kDocs = MakeReference(30, 1);

RecordBuilder ImageFile(uint64_t parent, std::u16string_view name, FileTime modified) {
  return RecordBuilder().StandardInformation(0x20).Dates(kNewYear2020, modified).FileName(parent, name);
}

RecordBuilder ListedFile(std::u16string_view name, uint64_t holder) {
  const RecordBuilder::Listed entry{kData, 0, MakeReference(holder, 1), {}};
  return RecordBuilder()
      .StandardInformation(0x20)
      .Dates(kNewYear2020, kNoonOf2024)
      .Resident(kAttributeList, {}, RecordBuilder::ListValue({entry}))
      .FileName(kImageRoot, name);
}

// \Docs\small.txt 100 bytes, \Docs\large.txt 3 MiB of 2021, \listed.txt 5,000 bytes by another record,
// \lost.txt whose size that other record does not tell, \undated.bin 70 bytes of no date.
std::string DatedImage() {
  auto listed = RecordBuilder().NonResident(kData, {}, MappingPairs({{300, 2}}), 5'000);
  return NtfsVolumeBuilder()
      .Record(30, ImageFile(kImageRoot, u"Docs", kNoonOf2024).Finish({.isDirectory = true}))
      .Record(31, ImageFile(kDocs, u"small.txt", kNoonOf2024).Resident(kData, {}, Bytes(100)).Finish({}))
      .Record(32, ImageFile(kDocs, u"large.txt", kNoonOf2024 - 3 * kYear)
                      .NonResident(kData, {}, MappingPairs({{400, 768}}), 3'145'728)
                      .Finish({}))
      .Record(33, ListedFile(u"listed.txt", 34).Finish({}))
      .Record(34, listed.Finish({.baseReference = MakeReference(33, 1)}))
      .Record(35, ListedFile(u"lost.txt", 36).Finish({}))
      .Record(37, RecordBuilder()
                      .StandardInformation(0x20)
                      .FileName(kImageRoot, u"undated.bin")
                      .Resident(kData, {}, Bytes(70))
                      .Finish({}))
      .Image();
}

class ImageFilters : public testing::Test {
 protected:
  ImageFilters() { images.MakeFile("disk.img", DatedImage()); }
  std::vector<std::string> Find(std::vector<std::string> options, const std::string& query = "txt",
                                const std::vector<std::string>& others = {}) const {
    options.insert(options.begin(), "find");
    options.push_back(query);
    options.push_back(Utf8(images.HostPath() / "disk.img"));
    options.insert(options.end(), others.begin(), others.end());
    const ProgramRun run = RunProgram(QUILMARK_PROGRAM, options);
    EXPECT_EQ(run.errors, "");
    return Lines(run.output);
  }

  ScratchFolder images, config;
  ScopedEnvironment place{"QUILMARK_CONFIG_DIR", Utf8(config.HostPath())};
};

TEST_F(ImageFilters, SizesAndDatesNarrowAsInAFolder) {
  EXPECT_THAT(Find({"--size", "1K..1M"}), ElementsAre("C:\\listed.txt"));
  EXPECT_THAT(Find({"--size", "100..5000"}),
              UnorderedElementsAre("C:\\Docs\\small.txt", "C:\\listed.txt"));
  EXPECT_THAT(Find({"--modified", "2021-01-01..2021-12-31"}), ElementsAre("C:\\Docs\\large.txt"));
  EXPECT_THAT(Find({"--modified", "2024-06-14..2024-06-16", "--size", "1..", "--sort", "name"}),
              ElementsAre("C:\\listed.txt", "C:\\Docs\\small.txt"));
  EXPECT_THAT(Find({"--modified", "1d"}), ElementsAre());
}

TEST_F(ImageFilters, SizesAndDatesOrder) {
  EXPECT_THAT(Find({"--sort", "size", "--limit", "3"}),
              ElementsAre("C:\\Docs\\large.txt", "C:\\listed.txt", "C:\\Docs\\small.txt"));
  EXPECT_THAT(Find({"--sort", "modified"}, "large or small"),
              ElementsAre("C:\\Docs\\large.txt", "C:\\Docs\\small.txt"));
  EXPECT_THAT(Find({"--sort", "modified:desc"}, "large or small"),
              ElementsAre("C:\\Docs\\small.txt", "C:\\Docs\\large.txt"));
}

TEST_F(ImageFilters, JsonShowsThemAndLeavesWhatIsNotKnownOpen) {
  EXPECT_THAT(
      Find({"--json", "--sort", "created"}, "small or lost or undated"),
      UnorderedElementsAre(
          R"({"path":"C:\\Docs\\small.txt","dir":false,"size":100,"modified":"2024-06-15T12:00:00.000Z","created":"2020-01-01T00:00:00.000Z"})",
          R"({"path":"C:\\lost.txt","dir":false,"size":null,"modified":null,"created":null})",
          R"({"path":"C:\\undated.bin","dir":false,"size":70,"modified":null,"created":null})"));
}

TEST_F(ImageFilters, TotalsAddUpWhatLiesBelowAFolder) {
  const auto lines = Find({"--json", "--totals", "--ext", "dir"}, "docs");
  ASSERT_EQ(lines.size(), 1u);
  const json docs = json::parse(lines.front());
  EXPECT_EQ(docs["size"], 3'145'728 + 100);
  EXPECT_EQ(docs["modified"], "2024-06-15T12:00:00.000Z");
  EXPECT_THAT(Find({"--totals", "--sort", "size"}, "docs or listed"),
              ElementsAre("C:\\Docs", "C:\\listed.txt"));
}

TEST_F(ImageFilters, AnImageAndAFolderAreOneOrder) {
  const ScratchFolder walked;
  walked.MakeFile("middle.txt", std::string(4'000, 'x'));
  EXPECT_THAT(
      Find({"--drive-paths", "--sort", "size:asc", "--size", "1.."}, "txt", {Utf8(walked.HostPath())}),
      ElementsAre("C:\\Docs\\small.txt", "D:\\middle.txt", "C:\\listed.txt", "C:\\Docs\\large.txt"));
}

}  // namespace
}  // namespace quilmark
