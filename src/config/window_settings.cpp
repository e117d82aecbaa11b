#include "config/window_settings.h"

#include <algorithm>
#include <limits>

#include "config/extension_list.h"
#include "config/settings_file.h"
#include "config/settings_lines.h"
#include "platform/format.h"
#include "platform/mul_div.h"
#include "platform/text.h"

namespace quilmark {

WindowSettings CurrentWindowSettings;

namespace {

constexpr int kLeastWidth = 800;  // pixels at 96 dpi, as all of these
constexpr int kLeastHeight = 500;
constexpr int kLeastColumnWidth = 30;
constexpr size_t kLongestSizeRange = 128;       // units taken from the size box for a save
constexpr size_t kLongestSizeRangeInUse = 127;  // as the box takes them
constexpr int kUsualDpi = 96;

enum class OutOfRange { kIgnored, kClamped };

struct NumberRow {
  std::u16string_view key;
  int WindowSettings::*field;
  int least;
  int most;
  OutOfRange outOfRange;
};
constexpr int kLeastInt = std::numeric_limits<int>::min();
constexpr int kMostInt = std::numeric_limits<int>::max();
constexpr NumberRow kNumberRows[] = {
    {u"sizePreset", &WindowSettings::sizePreset, 0, 4, OutOfRange::kIgnored},
    {u"timePreset", &WindowSettings::timePreset, 0, 4, OutOfRange::kIgnored},
    {u"sizeUnit", &WindowSettings::sizeUnit, 0, 3, OutOfRange::kIgnored},
    {u"timeStart", &WindowSettings::timeStart, kLeastInt, kMostInt, OutOfRange::kIgnored},
    {u"timeEnd", &WindowSettings::timeEnd, kLeastInt, kMostInt, OutOfRange::kIgnored},
    {u"viewMode", &WindowSettings::viewMode, 0, 2, OutOfRange::kIgnored},
    {u"contentMaxFileSizeMB", &WindowSettings::contentMaxFileSizeMB, 0, 0x10'0000, OutOfRange::kClamped},
    {u"contentSearchThreads", &WindowSettings::contentSearchThreads, 0, 64, OutOfRange::kClamped},
};

struct FlagRow {
  std::u16string_view key;
  bool WindowSettings::*field;
};
constexpr FlagRow kFlagRows[] = {
    {u"initialSearchEnabled", &WindowSettings::initialSearchEnabled},
    {u"globalTrimOnToggle", &WindowSettings::globalTrimOnToggle},
    {u"tableGridLines", &WindowSettings::tableGridLines},
};

constexpr std::u16string_view kFileName = u"window.ini";

int DpiOr96(int dpi) { return dpi == 0 ? kUsualDpi : dpi; }

bool FlagOf(std::u16string_view value) {
  const std::u16string folded = FoldText(value);
  return folded != u"0" && folded != u"false" && folded != u"off";
}

bool IsDark(std::u16string_view value) {
  const std::u16string folded = FoldText(value);
  return folded != u"0" && folded != u"false" && folded != u"light";
}

void TakeNumber(const NumberRow& row, int number, WindowSettings& settings) {
  const bool isKept =
      row.outOfRange == OutOfRange::kClamped || (number >= row.least && number <= row.most);
  if (isKept) settings.*row.field = std::clamp(number, row.least, row.most);
}

// Any key that begins with "col" is a column; what is no number behind it is column 0.
void TakeColumn(const KeyValue& pair, WindowSettings& settings) {
  const int column = ParseInt(pair.key.substr(3));
  const int width = ParseInt(pair.value);
  const bool exists = column >= 0 && column < static_cast<int>(settings.columnWidth.size());
  if (exists && width >= kLeastColumnWidth) settings.columnWidth[static_cast<size_t>(column)] = width;
}

void TakeAtLeast(int least, int number, int& kept) {
  if (number >= least) kept = number;
}

void TakePair(const KeyValue& pair, WindowSize& size, WindowSettings& settings) {
  const auto& [key, value] = pair;
  if (key == u"width") return TakeAtLeast(kLeastWidth, ParseInt(value), size.width);
  if (key == u"height") return TakeAtLeast(kLeastHeight, ParseInt(value), size.height);
  if (key.starts_with(u"col")) return TakeColumn(pair, settings);
  for (const NumberRow& row : kNumberRows) {
    if (key == row.key) return TakeNumber(row, ParseInt(value), settings);
  }
  for (const FlagRow& row : kFlagRows) {
    if (key == row.key) settings.*row.field = FlagOf(value);
  }
  if (key == u"sizeRange") settings.sizeRange = value.substr(0, kLongestSizeRangeInUse);
  if (key == u"filterLayout") settings.sidebarLayout = FoldText(value) != u"topbar";
  if (key == u"themeMode") settings.darkTheme = IsDark(value);
  if (key == u"contentSearchExts") settings.contentSearchExts = ParseExtensionList(value);
}

std::u16string SizeAndColumnsText(const WindowSettings& settings, const WindowPlacement& placement) {
  const int dpi = DpiOr96(placement.dpi);
  const auto unscaled = [dpi](int pixels) { return MulDiv(pixels, kUsualDpi, dpi); };
  std::u16string text =
      FormatText(u"width=%d\nheight=%d\n", std::max(unscaled(placement.restored.width), kLeastWidth),
                 std::max(unscaled(placement.restored.height), kLeastHeight));
  for (size_t column = 0; column < settings.columnWidth.size(); ++column) {
    text += FormatText(u"col%d=%d\n", column, unscaled(settings.columnWidth[column]));
  }
  return text;
}

std::u16string FiltersText(const WindowSettings& settings, const WindowPlacement& placement) {
  const std::u16string sizeRange =
      placement.sizeRange ? placement.sizeRange->substr(0, kLongestSizeRange) : settings.sizeRange;
  return FormatText(u"sizePreset=%d\ntimePreset=%d\nsizeUnit=%d\n", settings.sizePreset,
                    settings.timePreset, settings.sizeUnit) +
         FormatText(u"sizeRange=%s\n", sizeRange) +
         FormatText(u"timeStart=%d\ntimeEnd=%d\n", placement.timeStart.value_or(settings.timeStart),
                    placement.timeEnd.value_or(settings.timeEnd));
}

std::u16string ChoicesText(const WindowSettings& settings) {
  return FormatText(u"filterLayout=%s\n", settings.sidebarLayout ? u"sidebar" : u"topbar") +
         FormatText(u"themeMode=%s\n", settings.darkTheme ? u"dark" : u"light") +
         FormatText(u"initialSearchEnabled=%d\n", settings.initialSearchEnabled) +
         FormatText(u"viewMode=%d\n", settings.viewMode) +
         FormatText(u"globalTrimOnToggle=%d\n", settings.globalTrimOnToggle) +
         FormatText(u"tableGridLines=%d\n", settings.tableGridLines);
}

std::u16string ContentSearchText(const WindowSettings& settings) {
  return FormatText(u"contentMaxFileSizeMB=%d\ncontentSearchThreads=%d\n", settings.contentMaxFileSizeMB,
                    settings.contentSearchThreads) +
         u"contentSearchExts=" + JoinExtensionList(settings.contentSearchExts) + u"\n";
}

}  // namespace

void ReadWindowSettings(std::u16string_view text, WindowSize& size, WindowSettings& settings) {
  TextLines lines{text};
  while (const auto pair = NextKeyValue(lines)) TakePair(*pair, size, settings);
}

std::u16string WindowSettingsText(const WindowSettings& settings, const WindowPlacement& placement) {
  return SizeAndColumnsText(settings, placement) + FiltersText(settings, placement) +
         ChoicesText(settings) + ContentSearchText(settings);
}

WindowSize LoadWindowSettings(WindowSize usual, int dpi) {
  WindowSettings settings;
  WindowSize size = usual;
  ReadWindowSettings(ReadSettingsFile(kFileName), size, settings);

  const auto scaled = [dpi](int pixels) { return MulDiv(pixels, DpiOr96(dpi), kUsualDpi); };
  for (int& column : settings.columnWidth) column = scaled(column);
  CurrentWindowSettings = std::move(settings);
  return {scaled(size.width), scaled(size.height)};
}

void SaveWindowSettings(const std::optional<WindowPlacement>& placement, Flushing flushing) {
  if (!placement) return;
  WriteSettingsFile(kFileName, WindowSettingsText(CurrentWindowSettings, *placement), flushing);
}

}  // namespace quilmark
