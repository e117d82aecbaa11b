// Any folders and drives of a command line, a line each: every one gets a letter of its own, those given
// by hand theirs, and there is a reason where that cannot be.
#include "cli/drive_plan.h"

#include <fstream>

#include "platform/drives.h"
#include "support/fuzz_input.h"
#include "support/ntfs_builder.h"
#include "support/scratch.h"

using namespace quilmark;

namespace {

constexpr size_t kMostTexts = 40;

// The letter that "X=PATH" asks for; 0 for any other text.
char16_t LetterOf(const std::string& drive) {
  if (drive.size() < 3 || drive[1] != '=') return 0;
  const char letter = drive[0];
  if (letter >= 'a' && letter <= 'z') return static_cast<char16_t>(letter - 32);
  return letter >= 'A' && letter <= 'Z' ? static_cast<char16_t>(letter) : u'\0';
}

void CheckPlan(const FindOptions& options, const std::vector<PlannedDrive>& drives) {
  uint32_t letters = 0;
  size_t folders = 0;
  for (size_t i = 0; i < drives.size(); ++i) {
    Require(drives[i].letter >= u'A' && drives[i].letter <= u'Z' && !drives[i].typed.empty());
    Require(drives[i].shared.empty() || i + 1 == drives.size());
    const uint32_t bit = 1u << (drives[i].letter - u'A');
    Require((letters & bit) == 0);
    letters |= bit;
    if (i < options.drives.size()) {
      Require(drives[i].letter == LetterOf(options.drives[i]));
      Require(drives[i].typed == options.drives[i].substr(2));
    } else {
      Require(drives[i].letter >= u'C');
      if (drives[i].shared.empty()) Require(drives[i].typed == options.paths.at(folders++));
      for (const std::string& folder : drives[i].shared) Require(folder == options.paths.at(folders++));
    }
  }
  Require(folders == options.paths.size());
}

// A folder that has entries, one that has none, a volume, and a file that is none.
class Places {
 public:
  Places() {
    std::filesystem::create_directories(scratch_.Path() / "full" / "inner");
    std::filesystem::create_directory(scratch_.Path() / "empty");
    std::ofstream(scratch_.Path() / "file") << "text";
    std::ofstream volume(scratch_.Path() / "volume", std::ios::binary);
    for (const auto& [place, bytes] : NtfsVolumeBuilder().Build().stretches) {
      volume.seekp(static_cast<std::streamoff>(place));
      volume.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
  }
  // One of them, or one that is not there, as `typed` begins.
  std::string PathOf(const std::string& typed) const {
    constexpr const char* kNames[] = {"full", "empty", "file", "full/inner/..", "nowhere", "volume"};
    return scratch_.Path() / kNames[static_cast<unsigned char>(typed.front()) % 6];
  }

 private:
  ScratchFolder scratch_;
};

// What is typed names some place of ours: a target opens no path of the machine.
void CheckMapped(std::vector<PlannedDrive> drives) {
  static const Places places;
  // Folders that share a letter are the host's own.
  if (!drives.empty() && !drives.back().shared.empty()) return;
  for (PlannedDrive& drive : drives) drive.typed = places.PathOf(drive.typed);
  const bool isMapped = MapPlannedDrives(drives).empty();
  for (const PlannedDrive& drive : drives) {
    Require(HasDriveRoot(drive.letter) == isMapped);
    Require(ReadVolumeInfo(drive.letter).has_value() == isMapped);
    Require((AnsweringDriveMask() & LogicalDriveMask()) == LogicalDriveMask());
    if (isMapped) Require(std::filesystem::exists(drive.typed) && !drive.typed.ends_with("empty"));
  }
  for (const PlannedDrive& drive : drives) UnmapDrive(drive.letter);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  FindOptions options;
  options.scope = input.TakeLine();
  while (!input.rest.empty() && options.drives.size() + options.paths.size() < kMostTexts) {
    std::string text = input.TakeLine();
    if (text.starts_with('-')) {
      options.drives.push_back(text.substr(1));
    } else {
      options.paths.push_back(std::move(text));
    }
  }
  const DrivePlan plan = PlanDrives(options);
  if (plan.error.empty()) {
    CheckPlan(options, plan.drives);
    CheckMapped(plan.drives);
  }
  const bool isPlain = options.scope == "all" && options.drives.empty() && !options.paths.empty() &&
                       options.paths.size() <= 24;
  const bool hasEmpty = std::find(options.paths.begin(), options.paths.end(), "") != options.paths.end();
  Require(!isPlain || plan.error.empty() != hasEmpty);
  return 0;
}
