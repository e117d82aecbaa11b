#include "cli/drive_plan.h"

#include <algorithm>
#include <bit>

#include "cli/shared_drive.h"
#include "platform/byte_source.h"
#include "platform/console.h"
#include "platform/drives.h"
#include "platform/files.h"
#include "platform/ntfs/image_info.h"

namespace quilmark {

namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

DrivePlan Refuse(std::string error) { return {.error = std::move(error)}; }

char UpperLetter(char letter) {
  return static_cast<char>(letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter);
}

// Splits "X=PATH", whose letter may have either case. False for any other text.
bool SplitDrive(const std::string& text, PlannedDrive& drive) {
  if (text.size() < 3 || text[1] != '=') return false;
  const char upper = UpperLetter(text[0]);
  if (kLetters.find(upper) == kLetters.npos) return false;
  drive = {static_cast<char16_t>(upper), text.substr(2)};
  return true;
}

bool IsTaken(const std::vector<PlannedDrive>& drives, char16_t letter) {
  return std::any_of(drives.begin(), drives.end(),
                     [&](const PlannedDrive& drive) { return drive.letter == letter; });
}

// The letters from C: on that are free.
std::u16string FreeLetters(const std::vector<PlannedDrive>& drives) {
  std::u16string letters;
  for (char16_t letter = u'C'; letter <= u'Z'; ++letter) {
    if (!IsTaken(drives, letter)) letters += letter;
  }
  return letters;
}

// Gives the folders letters, in their order; where the host has one root for all of them, those that are
// left share the last one. Returns what is wrong, or an empty text.
std::string PlanFolders(const std::vector<std::string>& paths, std::vector<PlannedDrive>& drives) {
  const std::u16string letters = FreeLetters(drives);
  const bool isShared = paths.size() > letters.size() && !letters.empty() && !HasSystemDrives();
  const size_t alone = isShared ? letters.size() - 1 : letters.size();
  for (size_t i = 0; i < paths.size(); ++i) {
    if (paths[i].empty()) return "a folder to search has an empty name";
    if (i < alone) {
      drives.push_back({letters[i], paths[i]});
    } else if (!isShared) {
      return "no drive letter is left for '" + paths[i] + "'";
    } else {
      if (i == alone) drives.push_back({letters[i], "/"});
      drives.back().shared.push_back(paths[i]);
    }
  }
  return {};
}

bool IsScope(const std::string& text, const std::vector<PlannedDrive>& drives) {
  if (text == "all" || text == "desktop") return true;
  return text.size() == 2 && text[1] == ':' &&
         IsTaken(drives, static_cast<char16_t>(UpperLetter(text[0])));
}

std::vector<PlannedDrive> SystemDrives() {
  std::vector<PlannedDrive> drives;
  for (uint32_t mask = LogicalDriveMask(); mask != 0; mask &= mask - 1) {
    drives.push_back({static_cast<char16_t>(u'A' + std::countr_zero(mask)), {}});
  }
  return drives;
}

std::string FileError(const std::string& typed, const std::u16string& path) {
  if (OpenByteSource(path) == nullptr) return "'" + typed + "' cannot be read";
  if (!VolumeInfoOfImage(path)) return "'" + typed + "' is neither a folder nor an NTFS volume";
  return {};
}

// What keeps the folder or volume from being searched; empty if nothing does.
std::string RootError(const std::string& typed, const std::u16string& root) {
  if (!IsExistingPath(root)) return "'" + typed + "' does not exist";
  if (!IsExistingFolder(root)) return FileError(typed, root);
  FolderListing listing;
  if (!ListFolder(root, listing)) return "'" + typed + "' cannot be read";
  return listing.entries.empty() ? "'" + typed + "' has no entries" : std::string();
}

// What keeps one of the folders that share a letter from being searched; empty if nothing does.
std::string SharedError(const std::vector<std::string>& folders) {
  std::vector<std::u16string> roots;
  for (const std::string& typed : folders) {
    roots.push_back(PathFromHost(typed));
    if (std::string error = RootError(typed, roots.back()); !error.empty()) return error;
    if (!IsExistingFolder(roots.back())) return "no drive letter is left for '" + typed + "'";
  }
  SetSharedFolders(std::move(roots));
  return {};
}

}  // namespace

DrivePlan PlanDrives(const FindOptions& options) {
  DrivePlan plan;
  for (const std::string& text : options.drives) {
    PlannedDrive drive;
    if (!SplitDrive(text, drive)) return Refuse("--drive takes X=PATH, not '" + text + "'");
    if (IsTaken(plan.drives, drive.letter))
      return Refuse("drive " + text.substr(0, 1) + ": is given twice");
    plan.drives.push_back(std::move(drive));
  }
  if (std::string error = PlanFolders(options.paths, plan.drives); !error.empty()) return Refuse(error);
  if (plan.drives.empty() && HasSystemDrives()) plan.drives = SystemDrives();
  if (plan.drives.empty()) return Refuse("no folder to search; name one, or see quilmark find --help");
  if (!IsScope(options.scope, plan.drives)) {
    return Refuse("--scope takes all, desktop, or one of the drives such as C:, not '" + options.scope +
                  "'");
  }
  return plan;
}

std::string MapPlannedDrives(const std::vector<PlannedDrive>& drives) {
  std::vector<std::u16string> roots;
  for (const PlannedDrive& drive : drives) {
    roots.push_back(drive.typed.empty() ? std::u16string() : PathFromHost(drive.typed));
    if (drive.typed.empty()) continue;
    if (!drive.shared.empty()) {
      if (std::string error = SharedError(drive.shared); !error.empty()) return error;
      continue;
    }
    if (std::string error = RootError(drive.typed, roots.back()); !error.empty()) return error;
  }
  // Only now: a mapped letter hides a drive of the system that another folder may lie on.
  for (size_t i = 0; i < drives.size(); ++i) {
    if (!roots[i].empty()) MapDrive(drives[i].letter, roots[i]);
  }
  return {};
}

}  // namespace quilmark
