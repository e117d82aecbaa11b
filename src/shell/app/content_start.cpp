#include "shell/app/content_start.h"

#include <string>
#include <utility>
#include <vector>

#include "config/window_settings.h"
#include "content/run/archive_matcher.h"
#include "content/run/content_search.h"
#include "content/settings/content_config.h"
#include "content/settings/picker_exts.h"
#include "platform/published.h"
#include "search/query/query.h"
#include "shell/search/filter_request.h"

namespace quilmark {

namespace {

// What belongs to the interface thread and is needed on the job of a content search.
struct ContentChoices {
  FilterSettings filter;
  int contentSearchThreads = 0, contentMaxFileSizeMB = 100;
  std::vector<std::u16string> exts;
};

Published<ContentChoices>& TheChoices() {
  static auto* const choices = new Published<ContentChoices>("content choices");
  return *choices;
}

// Other searches ask for none of it, and would wait for the disk.
void KeepChoices(std::u16string_view text) {
  if (!IsContentPrefix(text)) return;
  ContentChoices now{.filter = CurrentFilterSettings(),
                     .contentSearchThreads = CurrentWindowSettings.contentSearchThreads,
                     .contentMaxFileSizeMB = CurrentWindowSettings.contentMaxFileSizeMB,
                     .exts = {}};
  if (text.find(u'|') == text.npos) now.exts = SelectedPickerExts();  // one with a list has its own
  TheChoices().Change([&now](ContentChoices& choices) { choices = std::move(now); });
}

ContentSettings SettingsForSearch() {
  LoadContentConfig();
  ContentConfig config = CurrentContentConfig();
  ContentChoices choices = TheChoices().Get();
  ContentSettings settings{.filter = std::move(choices.filter),
                           .contentSearchThreads = choices.contentSearchThreads};
  settings.plan.ZipExts = std::move(config.zipExts);
  settings.plan.InnerPatterns = std::move(config.innerPatterns);
  settings.plan.contentMaxFileSizeMB = choices.contentMaxFileSizeMB;
  settings.plan.makeArchiveMatcher = MakeZipMatcher;
  return settings;
}

}  // namespace

void WireContentSearch(SearchHooks& hooks) {
  hooks.whenSearchBegins = KeepChoices;
  hooks.contentExts = [] { return TheChoices().Get().exts; };
  InstallContentSearch(SettingsForSearch);
}

}  // namespace quilmark
