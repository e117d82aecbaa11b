// Any text for an option that narrows or orders: there is a value or a reason, never both; bounds are in
// order, and what is written anew from a value gives it again.
#include "cli/filter_options.h"
#include "platform/text.h"
#include "platform/utf.h"
#include "search/sort/sort.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

constexpr FileTime kNow = 133'000'000'000'000'000;  // some day of 2022

std::string Written(int64_t bound) { return bound < 0 ? "" : std::to_string(bound); }

void CheckSizes(const std::string& text) {
  const auto sizes = ParseSizeRange(text);
  const SizeRange& range = sizes.value;
  if (!sizes.error.empty()) return Require(range == SizeRange());
  Require(range.least >= -1 && range.most >= -1 && range != SizeRange());
  Require(range.least < 0 || range.most < 0 || range.least <= range.most);
  const auto again =
      ParseSizeRange(Written(range.least) + ".." + Written(range.most) + (range.most < 0 ? "" : "b"));
  Require(again.error.empty() && again.value == range);
}

void CheckDates(const std::string& text, FileTime now) {
  const auto dates = ParseDateRange(text, now);
  Require(dates.error.empty() ? dates.value != DateRange() && dates.value.from <= dates.value.to
                              : dates.value == DateRange());
  const bool isNamed = text.find("..") == text.npos;
  // One day is the span from it to itself.
  if (isNamed && dates.error.empty() && dates.value.to != DateRange().to) {
    Require(ParseDateRange(text + ".." + text, now).value == dates.value);
  }
}

void CheckExtensions(const std::string& text) {
  const auto extensions = ParseExtensions(text);
  Require(extensions.error.empty() != extensions.value.empty());
  for (const std::u16string& extension : extensions.value) {
    Require(extension.starts_with(u'.') && FoldText(extension) == extension);
    Require(extension.rfind(u'.') == 0 && extension.find(u',') == extension.npos);
  }
}

void CheckOrder(const std::string& text) {
  const auto order = ParseSortOrder(text);
  if (!order.error.empty()) return Require(order.value == SortOrder());
  const std::string named = text.substr(0, text.find(':'));
  const auto reversed = ParseSortOrder(named + (order.value.ascending ? ":DESC" : ":ASC"));
  Require(reversed.error.empty() && reversed.value.column == order.value.column);
  Require(reversed.value.ascending != order.value.ascending);
}

void CheckCategory(const std::string& text) {
  const FilterTable table = DefaultCategories(text.size() % 2 != 0);
  const auto row = FindCategory(table, text);
  if (row.error.empty()) Require(EqualNoCase(table.at(row.value).label, FromUtf8(text)));
  for (const FilterCategory& category : table) {
    const bool isNamed = row.error.find(ToUtf8(category.label)) != std::string::npos;
    Require(row.error.empty() || isNamed);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(InputOf(data, size).RestAsText());
  CheckSizes(text);
  for (const FileTime now : {kNow, FileTime{0}, FileTime{INT64_MAX}}) CheckDates(text, now);
  CheckExtensions(text);
  CheckOrder(text);
  CheckCategory(text);
  return 0;
}
