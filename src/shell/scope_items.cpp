#include "shell/scope_items.h"

#include "config/translate.h"

namespace quilmark {

std::vector<std::u16string> ScopeItems(const SearchEngine& engine) {
  std::vector<std::u16string> items = {TranslateOr(u"Scope_All", u"All"),
                                       TranslateOr(u"Scope_Desktop", u"Desktop")};
  for (const VolumeIndex* volume : CopyVolumes(engine)) items.push_back(volume->drive);
  return items;
}

}  // namespace quilmark
