#include "shell/search/scope_items.h"

#include "config/translate.h"
#include "search/results/search_session.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

// The entry of the volume with the chosen letter; kScopeAll where none of that letter can be searched.
int PlaceOfChosen(const std::vector<VolumeIndex*>& volumes) {
  const char16_t letter = TheSearch().scope.scopeDrive;
  for (size_t i = 0; i < volumes.size(); ++i) {
    const VolumeIndex& volume = *volumes[i];
    if (volume.valid && volume.drive.starts_with(letter)) {
      return kScopeFirstVolume + static_cast<int>(i);
    }
  }
  return kScopeAll;
}

}  // namespace

std::vector<std::u16string> RenewScopeItems(SearchView& view, const SearchEngine& engine) {
  const std::vector<VolumeIndex*> volumes = CopyVolumes(engine);
  std::vector<std::u16string> items = {TranslateOr(u"Scope_All", u"All"),
                                       TranslateOr(u"Scope_Desktop", u"Desktop")};
  view.scopeDrives.clear();
  for (const VolumeIndex* const volume : volumes) {
    items.push_back(volume->drive);
    view.scopeDrives.push_back(volume->drive.empty() ? u'\0' : volume->drive[0]);
  }
  int& chosen = TheSearch().scope.scopeIndex;
  if (chosen >= kScopeFirstVolume) chosen = PlaceOfChosen(volumes);
  return items;
}

void RebuildScopeBox(SearchView& view, const ViewContext& context) {
  const auto items = RenewScopeItems(view, Engine());
  context.window.SetItems(kScopeBox, items, TheSearch().scope.scopeIndex);
}

void ChooseScope(const SearchView& view, int index) {
  const auto entry = static_cast<size_t>(index - kScopeFirstVolume);
  const bool isDrive = index >= kScopeFirstVolume && entry < view.scopeDrives.size();
  TheSearch().scope = {.scopeIndex = index, .scopeDrive = isDrive ? view.scopeDrives[entry] : u'\0'};
}

}  // namespace quilmark
