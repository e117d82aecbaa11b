// What the window asks of the engine's work in the background. The wiring of the program implements it;
// tests write down what was asked.
#pragma once

#include <memory>

#include "search/attributes/attr_jobs.h"
#include "search/filter/filters.h"
#include "search/sort/sort.h"

namespace quilmark {

// All calls on the interface thread.
struct EnginePort {
  virtual ~EnginePort() = default;

  // Has sizes and dates of the rows read that are in view, on a job that posts WM_ATTRS_UPDATED.
  virtual void RequestAttributes(std::shared_ptr<const ResultSet> rows, RowRange range) = 0;

  // Has the pictures among the rows loaded as thumbnails of `size` pixels, on a job that posts
  // WM_ATTRS_UPDATED.
  virtual void RequestThumbnails(std::shared_ptr<const ResultSet> rows, RowRange range, int size) = 0;

  // True while that job runs. Whoever requests thumbnails meanwhile gets the message when it has ended.
  virtual bool IsLoadingThumbnails() = 0;

  // True if the cache knows that the disk has newer attributes of one of the rows.
  virtual bool ShowsStale(const ResultSet& rows, RowRange range) = 0;

  // Filters the held set on a job that posts WM_FILTER_RESULTS.
  virtual void RefreshFilter(FilterSettings settings) = 0;

  // Counts the held set by category, now.
  virtual FilterCounts CountByCategory(const FilterSettings& settings) = 0;

  // Sorts the held set on a job that posts WM_SEARCH_RESULTS.
  virtual void Sort(int column, Direction direction) = 0;

  // Fills the attribute cache on a job. Engine().prewarming runs until it is done.
  virtual void PrewarmAttributes() = 0;

  // Saves the attribute cache on a job if something is new in it.
  virtual void AutosaveAttributes() = 0;

  // Saves the attribute cache before it returns.
  virtual void SaveAttributes() = 0;

  // No volume is ready: has the drives looked for again in a while.
  virtual void LookForVolumesLater() = 0;
};

}  // namespace quilmark
