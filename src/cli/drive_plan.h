// Which drive letters a run of the console program has, and how they come into the index.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "cli/options.h"
#include "index/tables/volume_index.h"

namespace quilmark {

struct PlannedDrive {
  char16_t letter = 0;
  std::string typed;  // the folder or NTFS volume as the user named it; empty for a drive of the system
  std::vector<std::string> shared = {};  // several folders instead, for which one letter was left
};

// The drives that the options ask for, letters given by hand first taken away from the row C:, D:, ...
// The error is empty if all is well, the scope included.
struct DrivePlan {
  std::vector<PlannedDrive> drives;
  std::string error;
};
DrivePlan PlanDrives(const FindOptions& options);

// Maps the planned folders and NTFS volumes; what is wrong with one of them, else empty.
std::string MapPlannedDrives(const std::vector<PlannedDrive>& drives);

struct IndexOutcome {
  std::string error;  // empty if every folder is in the index
  double milliseconds = 0;
};

// Builds all drives at once into the engine: an NTFS volume from its journal interface, else a walk.
// `onChange` becomes VolumeIndex::onChange of each; may be empty. `showProgress` keeps a line on
// standard error while that goes on.
IndexOutcome IndexDrives(const std::vector<PlannedDrive>& drives, bool showProgress,
                         const std::function<void(const VolumeChange&)>& onChange = {});

}  // namespace quilmark
