#include "cli/filter_options.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "config/extension_list.h"
#include "platform/text.h"
#include "platform/utf.h"
#include "search/sort/sort.h"

namespace quilmark {

namespace {

using Day = std::chrono::year_month_day;

constexpr std::string_view kRange = "..";
constexpr std::string_view kSizeUnits = "bkmgt";
constexpr size_t kMostDecimals = 6;  // a million times the largest unit still fits 64 bits
constexpr int kFirstYear = 1601;     // of a FileTime
constexpr FileTime kTicksPerDay = 24 * 3'600 * kFileTimePerSecond;

constexpr const char* kEmptyRange = "the range is empty";
constexpr const char* kReversedRange = "the range is reversed";

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string FoldAscii(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c); });
  return text;
}

// Takes the digits off the front of `text`, and returns them.
std::string_view TakeDigits(std::string_view& text) {
  const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
  const auto count = static_cast<size_t>(end - text.begin());
  const std::string_view digits = text.substr(0, count);
  text.remove_prefix(count);
  return digits;
}

// Empty if the number is above `most`.
std::optional<uint64_t> NumberOf(std::string_view digits, uint64_t most) {
  uint64_t number = 0;
  for (const char c : digits) {
    const auto digit = static_cast<uint64_t>(c - '0');
    if (number > (most - digit) / 10) return std::nullopt;
    number = number * 10 + digit;
  }
  return number;
}

// Bytes of "10", "10M" or "1.5G", in lower case.
Parsed<int64_t> ParseBytes(std::string_view text) {
  const auto refuse = [whole = Quoted(text)](const char* why) {
    return Parsed<int64_t>{.error = whole + why};
  };
  const std::string_view whole = TakeDigits(text);
  if (whole.empty()) return refuse(" is no size such as 10M");
  std::string_view decimals;
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    decimals = TakeDigits(text);
    if (decimals.empty()) return refuse(" is no size such as 1.5G");
    if (decimals.size() > kMostDecimals) return refuse(" has more than six decimals");
  }
  const size_t unit = text.empty() ? 0 : kSizeUnits.find(text.front());
  if (text.size() > 1 || unit == kSizeUnits.npos)
    return refuse(" has an unknown unit, not B, K, M, G or T");

  const unsigned shift = 10 * static_cast<unsigned>(unit);
  const auto number = NumberOf(whole, uint64_t{std::numeric_limits<int64_t>::max()} >> shift);
  if (!number) return refuse(" is too large");
  uint64_t scale = 1;
  for (size_t i = 0; i < decimals.size(); ++i) scale *= 10;
  const uint64_t part = (*NumberOf(decimals, scale) << shift) / scale;
  return {.value = static_cast<int64_t>((*number << shift) + part)};
}

// True for a day that the calendar has and a FileTime can hold.
bool IsDay(Day day) { return day.ok() && static_cast<int>(day.year()) >= kFirstYear; }

Day DayOf(const LocalTime& time) {
  return {std::chrono::year(time.year), std::chrono::month(static_cast<unsigned>(time.month)),
          std::chrono::day(static_cast<unsigned>(time.day))};
}

Day DayAfter(Day day, int days) { return std::chrono::sys_days(day) + std::chrono::days(days); }

LocalTime MomentOf(Day day, LocalTime time = {}) {
  time.year = static_cast<int>(day.year());
  time.month = static_cast<int>(static_cast<unsigned>(day.month()));
  time.day = static_cast<int>(static_cast<unsigned>(day.day()));
  return time;
}

// Reads "2025-01-31", digit by digit.
std::optional<Day> ParseDate(std::string_view text) {
  constexpr std::string_view kShape = "dddd-dd-dd";
  const bool fits =
      std::equal(text.begin(), text.end(), kShape.begin(), kShape.end(),
                 [](char c, char shape) { return shape == 'd' ? IsDigit(c) : c == shape; });
  if (!fits) return std::nullopt;
  const auto part = [text](size_t at, size_t length) {
    return static_cast<int>(*NumberOf(text.substr(at, length), 9'999));
  };
  return DayOf({.year = part(0, 4), .month = part(5, 2), .day = part(8, 2)});
}

Parsed<Day> ParseDay(std::string_view text, FileTime now) {
  const Day today = DayOf(LocalTimeOf(now));
  if (text == "today") return {.value = today};
  if (text == "yesterday") return {.value = DayAfter(today, -1)};
  const auto day = ParseDate(text);
  if (!day) return {.error = Quoted(text) + " is no date such as 2025-01-31, nor today or yesterday"};
  if (!IsDay(*day)) return {.error = Quoted(text) + " is no day of the calendar since 1601"};
  return {.value = *day};
}

// The moments of the days from `first` to `last`.
Parsed<DateRange> RangeOf(std::optional<Day> first, std::optional<Day> last) {
  DateRange range;
  if (first) {
    const auto from = FileTimeOfLocal(MomentOf(*first));
    if (!from) return {.error = "the system's time zone has no such day"};
    range.from = *from;
  }
  if (last) {
    const auto next = FileTimeOfLocal(MomentOf(DayAfter(*last, 1)));
    if (!next || *next == 0) return {.error = "the system's time zone has no such day"};
    range.to = *next - 1;
  }
  return {.value = range};
}

Parsed<DateRange> ParseDayRange(std::string_view first, std::string_view last, FileTime now) {
  if (first.empty() && last.empty()) return {.error = kEmptyRange};
  std::optional<Day> from, to;
  for (const auto& [text, day] : {std::pair(first, &from), std::pair(last, &to)}) {
    if (text.empty()) continue;
    Parsed<Day> parsed = ParseDay(text, now);
    if (!parsed.error.empty()) return {.error = std::move(parsed.error)};
    *day = parsed.value;
  }
  if (from && to && *from > *to) return {.error = kReversedRange};
  return RangeOf(from, to);
}

// The same time of day so many months ago, on the month's last day where it has no such day.
std::optional<FileTime> MonthsBefore(FileTime now, uint64_t months) {
  const LocalTime time = LocalTimeOf(now);
  // A much larger number would wrap the years of a Day.
  if (months / 12 > static_cast<uint64_t>(std::max(time.year - kFirstYear, 0))) return std::nullopt;
  const Day today = DayOf(time);
  Day day = today - std::chrono::months(static_cast<int>(months));
  if (!day.ok()) day = day.year() / day.month() / std::chrono::last;
  return IsDay(day) ? FileTimeOfLocal(MomentOf(day, time)) : std::nullopt;
}

// Reads "7d", "2w", "1mo" and "1y". Empty if the text is no number with letters behind it.
std::optional<Parsed<DateRange>> ParseAge(std::string_view text, FileTime now) {
  std::string_view unit = text;
  const std::string_view digits = TakeDigits(unit);
  const bool isAge = !digits.empty() &&
                     std::all_of(unit.begin(), unit.end(), [](char c) { return c >= 'a' && c <= 'z'; });
  if (!isAge) return std::nullopt;
  constexpr uint64_t kMost = 200'000;  // days since 1601, roughly
  const auto number = NumberOf(digits, kMost);
  std::optional<FileTime> from;
  if (unit == "d" || unit == "w") {
    const FileTime ticks = number.value_or(0) * (unit == "w" ? 7 : 1) * kTicksPerDay;
    if (ticks <= now) from = now - ticks;
  } else if (unit == "mo" || unit == "y") {
    from = MonthsBefore(now, number.value_or(0) * (unit == "y" ? 12 : 1));
  } else {
    return Parsed<DateRange>{.error = Quoted(text) + " has an unknown unit, not d, w, mo or y"};
  }
  if (!number || !from) return Parsed<DateRange>{.error = Quoted(text) + " is too long ago"};
  if (*number == 0) return Parsed<DateRange>{.error = Quoted(text) + " is no time at all"};
  return Parsed<DateRange>{.value = {.from = *from}};
}

struct NamedColumn {
  std::string_view name;
  int column;
};
constexpr NamedColumn kColumns[] = {{"name", kColumnName},
                                    {"size", kColumnSize},
                                    {"modified", kColumnModified},
                                    {"created", kColumnCreated},
                                    {"path", kColumnOfPath}};

}  // namespace

Parsed<std::vector<std::u16string>> ParseExtensions(const std::string& text) {
  auto extensions = ParseExtensionList(FromHostBytes(text));
  if (extensions.empty()) return {.error = "no extension is named"};
  for (const std::u16string& extension : extensions) {
    // What follows the last dot is compared, so that this one could not match.
    if (extension.find(u'.', 1) == extension.npos) continue;
    return {.error = Quoted(ToHostBytes(extension).substr(1)) + " has a dot within"};
  }
  const bool selectsFolders = IsFolderCategory({.label = {}, .extensions = extensions});
  if (selectsFolders && extensions.size() > 1)
    return {.error = "dir and folder stand for folders and take no other extension beside them"};
  return {.value = std::move(extensions)};
}

Parsed<SizeRange> ParseSizeRange(const std::string& typed) {
  const std::string text = FoldAscii(typed);
  const size_t dots = text.find(kRange);
  const std::string least = text.substr(0, dots);
  const std::string most = dots == text.npos ? std::string() : text.substr(dots + kRange.size());
  if (least.empty() && most.empty()) return {.error = kEmptyRange};
  SizeRange range;
  for (const auto& [bound, bytes] : {std::pair(&least, &range.least), std::pair(&most, &range.most)}) {
    if (bound->empty()) continue;
    Parsed<int64_t> parsed = ParseBytes(*bound);
    if (!parsed.error.empty()) return {.error = std::move(parsed.error)};
    *bytes = parsed.value;
  }
  if (range.most >= 0 && range.least > range.most) return {.error = kReversedRange};
  return {.value = range};
}

Parsed<DateRange> ParseDateRange(const std::string& typed, FileTime now) {
  const std::string folded = FoldAscii(typed);
  const std::string_view text = folded;
  const size_t dots = text.find(kRange);
  if (dots != text.npos)
    return ParseDayRange(text.substr(0, dots), text.substr(dots + kRange.size()), now);
  if (text.empty()) return {.error = kEmptyRange};
  if (auto age = ParseAge(text, now)) return std::move(*age);
  return ParseDayRange(text, text, now);
}

Parsed<SortOrder> ParseSortOrder(const std::string& typed) {
  const std::string text = FoldAscii(typed);
  const size_t colon = text.find(':');
  const std::string name = text.substr(0, colon);
  const auto* const row = std::find_if(std::begin(kColumns), std::end(kColumns),
                                       [&](const NamedColumn& column) { return column.name == name; });
  if (row == std::end(kColumns)) {
    return {.error = Quoted(name) + " is no column: name, size, modified, created, path"};
  }
  SortOrder order{row->column, row->column != kColumnSize};
  if (colon == text.npos) return {.value = order};
  const std::string direction = text.substr(colon + 1);
  if (direction != "asc" && direction != "desc")
    return {.error = Quoted(direction) + " is no direction: asc, desc"};
  order.ascending = direction == "asc";
  return {.value = order};
}

Parsed<size_t> FindCategory(const FilterTable& table, const std::string& name) {
  const std::u16string wanted = FromUtf8(name);
  std::string labels;
  for (size_t i = 0; i < table.size(); ++i) {
    if (EqualNoCase(table[i].label, wanted)) return {.value = i};
    labels += (i == 0 ? "" : ", ") + ToUtf8(table[i].label);
  }
  return {.error = Quoted(name) + " is no category: " + labels};
}

}  // namespace quilmark
