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

  // Of the rows in view.
  virtual void RequestAttributes(std::shared_ptr<const ResultSet> rows, RowRange range) = 0;
  virtual bool ShowsStale(const ResultSet& rows, RowRange range) = 0;

  virtual void RefreshFilter(FilterSettings settings) = 0;
  virtual FilterCounts CountByCategory(const FilterSettings& settings) = 0;
  virtual void Sort(int column, Direction direction) = 0;

  virtual void PrewarmAttributes() = 0;  // Engine().prewarming runs until it is done
  virtual void AutosaveAttributes() = 0;
  virtual void SaveAttributes() = 0;  // before it returns

  // No volume is ready: somebody looks for one, in a while.
  virtual void LookForVolumesLater() = 0;
};

}  // namespace quilmark
