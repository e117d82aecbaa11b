#include "shell/app/filter_file.h"

#include <string>

#include "config/translate.h"
#include "search/filter/filter_categories.h"
#include "shell/actions/action_texts.h"

namespace quilmark {

void ShowFilterFile(AppState& app) {
  const std::u16string path = PathOfFilterFile(app.uiIsChinese);
  ShellPort& shell = app.search.shell;
  if (!shell.SelectInFileManager(path)) shell.Execute(ShellVerb::kOpen, path);
}

void ResetFilterTags(AppState& app, const ViewContext& context) {
  if (!app.search.shell.Ask(ResetFiltersQuestion())) return;
  if (ResetFilterCategories(app.language, app.uiIsChinese)) {
    app.search.shell.Tell(ResetDoneNotice());
  } else {
    context.window.TellError(
        TranslateOr(u"Msg_ResetFilterFailed", u"The filter tags could not be written."));
  }
}

}  // namespace quilmark
