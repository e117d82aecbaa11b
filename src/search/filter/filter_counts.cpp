#include <algorithm>
#include <array>
#include <numeric>

#include "platform/cores.h"
#include "search/attributes/attr_cache.h"
#include "search/filter/extension_table.h"
#include "search/filter/filters.h"
#include "search/results/glance.h"
#include "search/results/row_runs.h"

namespace quilmark {

namespace {

// Counts passing rows by extension, not by category: what an extension is worth is added up at the end.
class CountPass {
 public:
  CountPass(const FilterContext& context, const ExtensionTable& extensions)
      : context_(context), extensions_(extensions), filesById_(extensions.categoriesById.size() + 1) {}

  void Add(RowRun run) {
    VolumeIndex* const volume = run[0].volume;
    // Whoever writes for longer than a glance is not waited for again at each of thousands of runs.
    if (volume == nullptr || IsPassedOver(volume)) return;
    if (!ReadRun(*volume, run) || !TestPresets(*volume, run.size())) {
      passedOver_.push_back(volume);
      leavesOutAVolume_ = leavesOutAVolume_ || IsSearchable(*volume);
      return;
    }
    for (size_t i = 0; i < run.size(); ++i) {
      folders_ += kinds_[i] == kFolder ? 1 : 0;
      if (kinds_[i] >= 0) ++filesById_[static_cast<size_t>(kinds_[i])];
    }
  }

  void AddTo(FilterCounts& counts) const {
    const FilterTable& table = *context_.categories;
    counts.isIncomplete = counts.isIncomplete || isIncomplete_;
    counts.leavesOutAVolume = counts.leavesOutAVolume || leavesOutAVolume_;
    for (size_t id = 0; id < extensions_.categoriesById.size(); ++id) {
      for (const uint32_t category : extensions_.categoriesById[id]) {
        counts.byCategory[category] += filesById_[id];
      }
    }
    for (size_t category = 0; category < table.size(); ++category) {
      if (IsFolderCategory(table[category])) counts.byCategory[category] += folders_;
    }
  }

  // Of any category or none.
  uint64_t RowCount() const { return std::accumulate(filesById_.begin(), filesById_.end(), folders_); }

 private:
  // Of a row: a folder, one that does not count, or else the number of its extension.
  static constexpr int kFolder = -1, kGone = -2;

  bool IsPassedOver(const VolumeIndex* volume) const {
    return std::find(passedOver_.begin(), passedOver_.end(), volume) != passedOver_.end();
  }

  // False if the volume's lock could not be had in a moment.
  bool ReadRun(VolumeIndex& volume, RowRun run) {
    const auto lock = LockForGlance(volume);
    if (!lock) return false;
    PrefetchRecords(volume, run);
    for (size_t i = 0; i < run.size(); ++i) {
      const bool isThere = run[i].index < volume.records.size();
      const FileRecord record = isThere ? volume.records[run[i].index] : FileRecord();
      const bool counts = !record.deleted && record.nameLength != 0;
      kinds_[i] = !counts ? kGone : record.isDirectory ? kFolder : 0;
      frns_[i] = record.frn;
      foldedNames_[i] = counts ? FoldedNameOf(record) : std::u16string_view();
      __builtin_prefetch(foldedNames_[i].data() + foldedNames_[i].size());
    }
    for (size_t i = 0; i < run.size(); ++i) {
      if (kinds_[i] == 0) kinds_[i] = static_cast<int>(ExtensionIdOf(extensions_, foldedNames_[i]));
    }
    return true;
  }

  // Drops the rows that do not pass, by what is known without the disk. False as above.
  bool TestPresets(const VolumeIndex& volume, size_t count) {
    if (!context_.settings.HasSizeOrTime()) return true;
    const bool needsDate = ActsOnTime(context_);
    for (size_t i = 0; i < count; ++i) {
      if (kinds_[i] == kFolder) kinds_[i] = kGone;
      if (kinds_[i] == kGone) frns_[i] = 0;
    }
    if (!needsDate && !ActsOnSize(context_)) return true;
    if (!GlanceAtAttrs(volume, std::span(frns_).first(count), entries_)) return false;
    for (size_t i = 0; i < count; ++i) {
      if (kinds_[i] == kGone) continue;
      const FileTime date = DateOf(context_, entries_[i]);
      const bool isMissing = !entries_[i].valid || (needsDate && date == 0);
      isIncomplete_ = isIncomplete_ || isMissing;
      if (isMissing || !PassesPresets(context_, entries_[i].size, date)) kinds_[i] = kGone;
    }
    return true;
  }

  const FilterContext& context_;
  const ExtensionTable& extensions_;
  std::vector<uint64_t> filesById_;  // the last one: of no category
  uint64_t folders_ = 0;
  bool isIncomplete_ = false, leavesOutAVolume_ = false;
  std::vector<const VolumeIndex*> passedOver_;
  // Of the rows of one run.
  std::array<int, kRowsARun> kinds_ = {};
  std::array<uint64_t, kRowsARun> frns_ = {};
  std::array<std::u16string_view, kRowsARun> foldedNames_ = {};
  std::array<AttrEntry, kRowsARun> entries_ = {};
};

}  // namespace

FilterCounts UpdateFilterCounts(const FilterSettings& settings) {
  constexpr size_t kRowsAPiece = 128 * kRowsARun;
  const FilterContext context = MakeFilterContext(settings, NowFileTime());
  const ExtensionTable extensions = MakeExtensionTable(*context.categories);
  const auto held = HeldResults();
  // The window waits for this: all cores do it together.
  std::vector<CountPass> passes(CoreCount(), CountPass(context, extensions));
  OnCores(held->size(), kRowsAPiece, [&](size_t worker, size_t first, size_t end) {
    ForEachRun(std::span(*held).subspan(first, end - first), [&](RowRun run) {
      passes[worker].Add(run);
      return true;
    });
  });
  FilterCounts counts{.byCategory = std::vector<uint64_t>(context.categories->size())};
  if (counts.byCategory.empty()) return counts;
  for (const CountPass& pass : passes) pass.AddTo(counts);
  counts.byCategory[0] = 0;  // whatever extensions its line names: it is all
  for (const CountPass& pass : passes) counts.byCategory[0] += pass.RowCount();
  return counts;
}

}  // namespace quilmark
