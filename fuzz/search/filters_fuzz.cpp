// Any filter over any names, sizes and dates: a pass over many rows keeps those that the test of a
// single one keeps, in their order, and so does the job that the filter bar starts.
#include "platform/background.h"
#include "platform/text_file.h"
#include "platform/utf.h"
#include "search/attributes/attr_cache.h"
#include "search/filter/filters.h"
#include "search/results/columns.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

constexpr size_t kMostRows = 64;
constexpr FileTime kNow = 133'000'000'000'000'000;  // some day of 2022

// A row is a line: flags, size, two dates, the name.
void AddRow(VolumeIndex& volume, FuzzInput& input, ResultSet& rows) {
  const auto flags = input.Take<uint8_t>();
  const int64_t size = input.Take<int32_t>();
  const FileTime modified = kNow - FileTime{input.Take<uint16_t>()} * 600 * kFileTimePerSecond;
  const FileTime created = (flags & 4) != 0 ? 0 : modified - kFileTimePerSecond;
  const uint64_t frn = 100 + volume.records.size();
  const NewRecord record{.frn = frn, .parentFrn = 5, .isDirectory = (flags & 1) != 0};
  const uint32_t index = AppendRecord(volume, record, FromUtf8(input.TakeLine()));
  SetIndexOf(volume.frnToIndex, volume.records, frn, index);
  if ((flags & 2) != 0) MarkDeleted(volume, index);
  StoreAttr(volume, frn, {.size = size, .modified = modified, .created = created, .valid = true});
  rows.push_back({&volume, (flags & 8) != 0 ? index + 1'000 : index});
}

FilterSettings TakeSettings(FuzzInput& input) {
  FilterSettings settings;
  settings.category = input.Take<int8_t>();
  settings.sizePreset = input.Take<int8_t>();
  settings.timePreset = input.Take<int8_t>();
  settings.sizeUnit = input.Take<int8_t>();
  settings.dateFrom = input.Take<int32_t>();
  settings.dateTo = input.Take<int32_t>();
  settings.sizeText = FromUtf8(input.TakeLine());
  return settings;
}

ResultSet FilterPlainly(const FilterContext& context, const ResultSet& rows) {
  ResultSet kept;
  for (const MatchItem& row : rows) {
    if (PassesFilter(context, row)) kept.push_back(row);
  }
  return kept;
}

void CheckJob(const FilterSettings& settings, const std::shared_ptr<const ResultSet>& rows) {
  TheSearch().CurrentResults.Change([&rows](SearchResults& held) { held.rows = rows; });
  TheSearch().ActiveCategory = settings.category;
  const ResultSet expected = FilterPlainly(MakeFilterContext(settings, NowFileTime()), *rows);
  for (int i = 0; i < 2; ++i) {
    RefreshFilteredResultsAsync(settings);
    Require(WaitForBackgroundJobs(60'000));
    const auto shown = ShownResults();
    Require(DisplayCount() == shown->size());
    Require(*shown == (settings.IsOff() || rows->empty() ? *rows : expected));
  }
  FollowNewResults(KeepFiltered::kNo, 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  const FilterSettings settings = TakeSettings(input);
  FilterTable table = ReadCategories(FromUtf8(input.TakeLine()) + u"\n" + FromUtf8(input.TakeLine()));
  table.insert(table.begin(), {.label = u"All", .extensions = {}});
  InstallCategories(table);
  const int column =
      input.Take<uint8_t>() % 2 == 0 ? -1 : kColumnCreated;  // then that is the date meant
  TheSearch().CurrentResults.Change([column](SearchResults& held) { held.SortColumn = column; });

  VolumeIndex volume;
  volume.drive = u"Q:";
  auto rows = std::make_shared<ResultSet>();
  while (!input.rest.empty() && rows->size() < kMostRows) AddRow(volume, input, *rows);

  const FilterContext context = MakeFilterContext(settings, kNow);
  const Ticket stale = TheSearch().FilteredResults.Supersede();
  const auto kept = FilterRows(context, *rows, TheSearch().FilteredResults.Supersede());
  Require(kept && *kept == FilterPlainly(context, *rows));
  Require(!FilterRows(context, *rows, stale));
  CheckJob(settings, rows);
  TheSearch().CurrentResults.Change([](SearchResults& held) { held = {}; });
  return 0;
}
