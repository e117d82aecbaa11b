// Which drive letters a run of the console program has, and how they come into the index.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "cli/options.h"
#include "index/tables/volume_index.h"

namespace quilmark {

// A drive letter, and what stands behind it.
struct PlannedDrive {
  char16_t letter = 0;
  std::string typed;  // the folder or NTFS volume as the user named it; empty for a drive of the system
  std::vector<std::string> shared = {};  // several folders instead, for which one letter was left
};

// The drives of a run, or why there are none.
struct [[nodiscard]] DrivePlan {
  std::vector<PlannedDrive> drives;
  std::string error;  // empty if all is well
};

// Gives each folder and volume of the options its letter: those that the user has chosen, and for the
// others the free ones from C: on. The error names what is wrong with a letter, a path or the scope.
DrivePlan PlanDrives(const FindOptions& options);

// Tells the platform which folder or NTFS volume each letter stands for. Returns what is wrong with one
// of them, or an empty text.
[[nodiscard]] std::string MapPlannedDrives(const std::vector<PlannedDrive>& drives);

// What came of the indexing.
struct [[nodiscard]] IndexOutcome {
  std::string error;  // empty if every folder is in the index
  double milliseconds = 0;
};

// Builds all drives at once into the engine: an NTFS volume from its journal interface, else a walk.
// `onChange` becomes VolumeIndex::onChange of each volume; it may be empty. `showProgress` keeps a line
// on standard error while that goes on. Returns when all are built.
IndexOutcome IndexDrives(const std::vector<PlannedDrive>& drives, bool showProgress,
                         const std::function<void(const VolumeChange&)>& onChange = {});

}  // namespace quilmark
