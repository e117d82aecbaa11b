#include "search/results/search_scope.h"

#include <algorithm>

#include "platform/known_folders.h"

namespace quilmark {

SearchScope ResolveScope(const ScopeChoice& choice) {
  SearchScope scope;
  if (choice.scopeIndex == kScopeDesktop) {
    scope.desktopOnly = true;
    scope.desktop = DesktopFolder();
  } else if (choice.scopeIndex >= kScopeFirstVolume) {
    scope.position = static_cast<size_t>(choice.scopeIndex - kScopeFirstVolume);
    scope.drive = choice.scopeDrive;
  }
  return scope;
}

std::vector<VolumeIndex*> VolumesInScope(const std::vector<VolumeIndex*>& all,
                                         const SearchScope& scope) {
  if (!scope.position) return all;
  if (scope.drive != 0) {
    const auto found = std::find_if(all.begin(), all.end(), [&](const VolumeIndex* volume) {
      return !volume->drive.empty() && volume->drive[0] == scope.drive;
    });
    return found != all.end() ? std::vector{*found} : std::vector<VolumeIndex*>();
  }
  if (*scope.position >= all.size()) return {};
  return {all[*scope.position]};
}

}  // namespace quilmark
