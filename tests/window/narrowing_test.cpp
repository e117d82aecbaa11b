// The list narrowed and sorted in every way that the window offers.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"
#include "window/known_volume.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

constexpr int kSizePreset = 106, kTimePreset = 107, kSizeBox = 108, kSecondSizeBox = 109,
              kSizeUnit = 110, kDateFrom = 111, kDateTo = 112, kFirstTag = 200, kCustom = 4;

class Narrowing : public ListProgram {
 protected:
  void MakeSized(const fs::path& name, uint64_t size) {
    program.Drive().MakeFile(name);
    fs::resize_file(program.Drive().HostPath() / name, size);
  }
  void SetTime(const fs::path& name, FileTime time) {
    const UniqueFile file(CreateFileW((program.Drive().HostPath() / name).wstring().c_str(),
                                      FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                                      nullptr));
    const FILETIME write = {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
    ASSERT_TRUE(SetFileTime(file.Get(), nullptr, nullptr, &write));
  }
  static FileTime NoonOf(int year, int month, int day) {
    return FileTimeOfLocal({.year = year, .month = month, .day = day, .hour = 12}).value();
  }
  HWND Tag(int index) { return GetDlgItem(program.Window(), kFirstTag + index); }
  void ClickTag(int index) {
    RECT client = {};
    GetClientRect(Tag(index), &client);
    program.Click(Tag(index), client.right / 2, client.bottom / 2);
  }
  void WaitForHits(const std::u16string& category, size_t hits) {
    const std::string count = std::to_string(hits);
    program.ExpectTitle(u"Quilmark - Filter: " + category + u" | Hits: " +
                        std::u16string(count.begin(), count.end()));
    WaitForRows(static_cast<int64_t>(hits));
  }
};

TEST_F(Narrowing, CountsAndShowsEachCategoryAsAWalkOverTheDriveDoes) {
  for (const char* const name :
       {"pick-a.txt", "pick-b.DOCX", "pick-c.md", "pick-d.csv", "pick-e.jpg", "pick-f.PSD", "pick-g.zip",
        "pick-h.exe", "pick-i.dll", "pick-j.ps1", "pick-k.mkv", "pick-l.m3u8", "pick-m.Flac",
        "pick-without-a-dot", "pick-o.txt.bak", "pick.txt/pick-p.pdf", "pick.txt/inner/pick-q.Wav"}) {
    program.Drive().MakeFile(name);
  }
  for (int i = 0; i < 30; ++i) program.Drive().MakeFile("more/pick-" + std::to_string(i) + ".tif");
  struct Category {
    std::u16string name;
    std::vector<std::string> extensions;
  };
  const std::vector<Category> categories = {
      {u"All Files", {}},
      {u"Folders", {}},
      {u"Documents", {".doc", ".docx", ".pdf", ".txt", ".xls", ".xlsx", ".ppt", ".pptx", ".md", ".csv"}},
      {u"Images", {".jpg", ".jpeg", ".png", ".gif", ".bmp", ".webp", ".ico", ".svg", ".tif", ".psd"}},
      {u"Archives", {".zip", ".rar", ".7z", ".tar", ".gz", ".iso", ".cab"}},
      {u"Applications", {".exe", ".msi", ".bat", ".cmd", ".dll", ".sys", ".ps1"}},
      {u"Videos", {".mp4", ".mkv", ".avi", ".mov", ".wmv", ".flv", ".rmvb", ".m3u8"}},
      {u"Audio", {".mp3", ".wav", ".flac", ".aac", ".ogg", ".m4a"}}};
  std::vector<size_t> counts(categories.size());
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(program.Drive().HostPath())) {
    if (!entry.path().filename().string().starts_with("pick")) continue;
    ++counts[0];
    if (entry.is_directory()) {
      ++counts[1];
      continue;
    }
    std::string extension = entry.path().extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    for (size_t i = 2; i < categories.size(); ++i) {
      const auto& all = categories[i].extensions;
      counts[i] += std::find(all.begin(), all.end(), extension) != all.end() ? 1u : 0u;
    }
  }
  EXPECT_EQ(counts, (std::vector<size_t>{48, 1, 5, 32, 1, 3, 2, 2}));

  program.StartAndWait();
  program.SearchFor(u"pick");
  for (size_t i = 0; i < categories.size(); ++i) {
    const std::string count = std::to_string(counts[i]);
    const std::u16string caption =
        categories[i].name + u"\r\n(" + std::u16string(count.begin(), count.end()) + u")";
    WaitUntil("the count of tag " + std::to_string(i),
              [&] { return program.TextOf(Tag(static_cast<int>(i))) == caption; });
  }
  for (const size_t i : {3u, 1u, 2u, 4u, 5u, 6u, 7u, 0u}) {
    TurnAtOnce(-2 * WHEEL_DELTA);
    program.Click(program.Window(), 700, MiddleOf(0));
    WaitUntil("the focus in the list", [this] { return program.Ask(Probe::kSearchBoxFocused) == 0; });
    ClickTag(static_cast<int>(i));
    WaitForHits(categories[i].name, counts[i]);
    EXPECT_EQ(program.Ask(Probe::kScrollY), 0);
    EXPECT_EQ(program.Ask(Probe::kSearchBoxFocused), 1);
    if (i == 2) program.Screenshot("category");
  }
}

TEST_F(Narrowing, TakesEachPresetOfSizeAndTime) {
  constexpr uint64_t kMegabyte = 1'048'576;
  constexpr FileTime kDay = 24 * 3'600 * kFileTimePerSecond;
  const FileTime now = NowFileTime();
  struct Made {
    const char* name;
    uint64_t size;
    FileTime modified;
  };
  for (const Made& file : {Made{"pick-small.bin", kMegabyte - 1, now + kDay / 2},
                           Made{"pick-medium.bin", kMegabyte, now - 3 * kDay},
                           Made{"pick-large.bin", 100 * kMegabyte, now - 20 * kDay},
                           Made{"pick-huge.bin", 100 * kMegabyte + 1, now - 60 * kDay}}) {
    MakeSized(file.name, file.size);
    SetTime(file.name, file.modified);
  }
  program.StartAndWait();
  program.SearchFor(u"pick");
  WaitForHits(u"All Files", 4);
  const auto expectOnly = [this](const char16_t* name) {
    WaitForRows(1);
    EXPECT_EQ(PathOf(0), PathOnDrive(name));
  };
  Choose(kSizePreset, 1);  // below 1 MB
  expectOnly(u"pick-small.bin");
  Choose(kSizePreset, 3);  // above 100 MB
  WaitUntil("the largest", [this] { return PathOf(0) == PathOnDrive(u"pick-huge.bin"); });
  expectOnly(u"pick-huge.bin");
  Choose(kSizePreset, 2);
  WaitForHits(u"All Files", 2);
  Choose(kTimePreset, 2);  // and of the last seven days
  expectOnly(u"pick-medium.bin");
  Choose(kSizePreset, -1);  // none chosen: all
  WaitForHits(u"All Files", 2);
  Choose(kTimePreset, 3);  // 30 days
  WaitForHits(u"All Files", 3);
  program.Ask(Probe::kRepaint, 1);
  program.Screenshot("thirty-days");
  Choose(kTimePreset, 1);  // today
  expectOnly(u"pick-small.bin");
  Choose(kTimePreset, -1);
  WaitForHits(u"All Files", 4);
}

// More files than fit, half of 500 and half of 3,000 bytes: 14 of May 2020, 14 of June, 12 of July.
class CustomRanges : public Narrowing {
 protected:
  CustomRanges() {
    for (int i = 0; i < 40; ++i) {
      const std::string name = "pick-" + std::to_string(i) + (i % 2 == 0 ? "-a.bin" : "-b.bin");
      MakeSized(name, i % 2 == 0 ? 500 : 3'000);
      SetTime(name, NoonOf(2020, i < 14 ? 5 : i < 28 ? 6 : 7, 15));
    }
  }
  struct Outcome {
    int64_t filters, scrollY;  // how often the filters were applied, and where the list stands then
    bool operator==(const Outcome&) const = default;
  };
  // Of an act on a list that has been scrolled.
  Outcome After(const std::function<void()>& act) {
    TurnAtOnce(-2 * WHEEL_DELTA);
    EXPECT_EQ(program.Ask(Probe::kScrollY), 200);
    const int64_t before = program.Ask(Probe::kFilterGeneration);
    act();
    const Outcome outcome = {program.Ask(Probe::kFilterGeneration) - before,
                             program.Ask(Probe::kScrollY)};
    TurnAtOnce(100 * WHEEL_DELTA);
    return outcome;
  }
  void Insert(int edit, const wchar_t* text) {
    SendMessageW(GetDlgItem(program.Window(), edit), EM_REPLACESEL, FALSE,
                 reinterpret_cast<LPARAM>(text));
  }
  // Gives a date the keyboard's focus.
  void ClickDate(int picker) {
    const HWND control = GetDlgItem(program.Window(), picker);
    RECT client = {};
    GetClientRect(control, &client);
    program.Click(control, 8, client.bottom / 2);
  }
};

TEST_F(CustomRanges, ActOnlyWhileTheirPresetIsChosen) {
  program.StartAndWait();
  program.SearchFor(u"pick");
  WaitForHits(u"All Files", 40);
  constexpr Outcome kNothing = {0, 200}, kApplied = {1, 0};
  EXPECT_EQ(After([this] { Insert(kSizeBox, L"0"); }), kNothing);
  EXPECT_EQ(After([this] { Insert(kSecondSizeBox, L"0-7"); }), kNothing);
  EXPECT_EQ(After([this] { Choose(kSizeUnit, 1); }), kNothing);
  EXPECT_EQ(After([this] { Choose(kSizePreset, kCustom); }), kApplied);
  EXPECT_EQ(After([this] { Insert(kSizeBox, L"-"); }), kApplied);  // from 0 kilobytes on
  EXPECT_EQ(After([this] { Insert(kSecondSizeBox, L"1"); }), kNothing);
  WaitForHits(u"All Files", 40);
  Insert(kSizeBox, L"1");
  WaitForHits(u"All Files", 20);
  EXPECT_EQ(PathOf(1), PathOnDrive(u"pick-10-a.bin"));
  EXPECT_EQ(After([this] { Choose(kSizeUnit, -1); }), kApplied);  // none chosen: megabytes
  WaitForHits(u"All Files", 40);
  Choose(kSizeUnit, 0);  // bytes
  WaitForHits(u"All Files", 0);
  EXPECT_FALSE(IsWindowVisible(GetDlgItem(program.Window(), kSecondSizeBox)));
  Choose(kSizePreset, 0);
  WaitForHits(u"All Files", 40);
  EXPECT_EQ(After([this] { Choose(kTimePreset, kCustom); }).filters, 1);
  WaitForHits(u"All Files", 0);  // today
  const int64_t before = program.Ask(Probe::kFilterGeneration);
  Insert(kSecondSizeBox, L"2");
  EXPECT_EQ(program.Ask(Probe::kFilterGeneration), before + 1);
}

TEST_F(CustomRanges, TakeTheDatesOfTheirPickers) {
  program.Settings().MakeFile("window.ini", "timePreset=4\ntimeStart=20200601\ntimeEnd=20200701\n");
  program.StartAndWait();
  program.SearchFor(u"pick");
  WaitForHits(u"All Files", 14);
  EXPECT_EQ(program.Ask(Probe::kFirstDay), 20'200'601);
  EXPECT_EQ(program.Ask(Probe::kLastDay), 20'200'701);
  // Month or year, whichever the key changes: the range grows by one of the groups.
  TurnAtOnce(-WHEEL_DELTA / 20);
  EXPECT_GT(program.Ask(Probe::kScrollY), 0);
  ClickDate(kDateFrom);
  program.Press(VK_DOWN);
  WaitForHits(u"All Files", 28);
  EXPECT_LT(program.Ask(Probe::kFirstDay), 20'200'601);
  EXPECT_EQ(program.Ask(Probe::kScrollY), 0);
  ClickDate(kDateTo);
  program.Press(VK_UP);
  WaitForHits(u"All Files", 40);
  EXPECT_GT(program.Ask(Probe::kLastDay), 20'200'701);
  program.Ask(Probe::kRepaint, 1);
  program.Screenshot("custom-dates");
}

class SortingByHeaders : public KnownVolume {
 protected:
  static FileTime NewYear(int year) {
    return FileTimeOfLocal({.year = year, .month = 1, .day = 1}).value();
  }
  int MiddleOfColumn(uint32_t column) {
    int64_t x = 30;
    for (uint32_t left = 0; left < column; ++left) x += program.Ask(Probe::kColumnWidth, left);
    return static_cast<int>(x);
  }
};

TEST_F(SortingByHeaders, TakesEachColumnAndTurnsAround) {
  const uint64_t fileB = AddFile(u"sort-b.bin", AddFolder(u"z")),
                 fileC = AddFile(u"sort-c.bin", AddFolder(u"m")),
                 fileA = AddFile(u"sort-a.bin", AddFolder(u"a"));
  StartWith({{fileB, Known(30, NewYear(2021), NewYear(2013))},
             {fileC, Known(20, NewYear(2020), NewYear(2011))},
             {fileA, Known(10, NewYear(2022), NewYear(2012))}});
  program.SearchFor(u"sort-");
  WaitForRows(3);
  const int64_t a = PathOnDrive(u"a\\sort-a.bin"), b = PathOnDrive(u"z\\sort-b.bin"),
                c = PathOnDrive(u"m\\sort-c.bin");
  struct Click {
    uint32_t column;
    int64_t sortedBy;  // 100 more: from the end
    std::vector<int64_t> rows;
  };
  for (const Click& click : {Click{1, 1, {a, b, c}}, Click{1, 101, {c, b, a}},  // name
                             Click{2, 102, {b, c, a}}, Click{2, 2, {a, c, b}},  // size: largest first
                             Click{3, 3, {c, b, a}}, Click{3, 103, {a, b, c}},  // modified
                             Click{4, 4, {c, a, b}}, Click{4, 104, {b, a, c}},  // created
                             Click{5, 5, {a, c, b}}, Click{5, 105, {b, c, a}}}) {
    ClickRow(1);
    WaitForSelected(1);
    ClickHeader(MiddleOfColumn(click.column));
    WaitUntil("the order " + std::to_string(click.sortedBy), [&] {
      return program.Ask(Probe::kSortedBy) == click.sortedBy && PathOf(0) == click.rows[0] &&
             PathOf(1) == click.rows[1] && PathOf(2) == click.rows[2];
    });
    EXPECT_EQ(Selected(), 0) << "numbers of other rows";
    program.Ask(Probe::kRepaint, 1);
    if (click.sortedBy == 103) program.Screenshot("sorted-by-date");
    if (click.sortedBy == 5) program.Screenshot("sorted-by-path");
  }
  EXPECT_NE(program.MetricsLog().find(u"warm"), std::u16string::npos) << "nothing was asked of the disk";
}

}  // namespace
}  // namespace quilmark
