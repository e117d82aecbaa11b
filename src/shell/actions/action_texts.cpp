#include "shell/actions/action_texts.h"

#include "config/translate.h"
#include "platform/format.h"

namespace quilmark {

BoxText OpenManyQuestion(size_t count) {
  return {TranslateOr(u"App_Name", u"Quilmark"),
          FormatText(TranslateOr(u"Msg_OpenManyConfirm", u"Open all %zu selected items?"), count)};
}

BoxText DeleteQuestion(const std::vector<std::u16string>& paths) {
  std::u16string title = TranslateOr(u"MsgTitle_ConfirmDelete", u"Confirm Delete");
  if (paths.size() == 1) {
    return {std::move(title), TranslateOr(u"Msg_DeleteSingleConfirmPrefix",
                                          u"Are you sure you want to delete this file?\n\n") +
                                  paths.front()};
  }
  return {std::move(title),
          TranslateOr(u"Msg_DeleteMultiConfirmPrefix", u"Are you sure you want to permanently delete ") +
              FormatText(u"%zu", paths.size()) +
              TranslateOr(u"Msg_DeleteMultiConfirmSuffix", u" selected items?")};
}

BoxText ResetFiltersQuestion() {
  return {TranslateOr(u"App_Name", u"Quilmark"),
          TranslateOr(u"Msg_ResetFilterConfirm",
                      u"Reset filter tags to defaults?\n\n(Restart software to apply UI changes)")};
}

BoxText ResetDoneNotice() {
  return {TranslateOr(u"App_Name", u"Quilmark"), TranslateOr(u"Msg_ResetComplete", u"Reset complete.")};
}

std::u16string ClipboardFailedText() {
  return TranslateOr(u"Msg_CopyClipboardFailed", u"Failed to copy to clipboard.");
}

std::u16string RecycleFailedText() {
  return TranslateOr(u"Msg_RecycleDeleteFailed",
                     u"Failed to move to Recycle Bin. Backup deletion methods also failed.");
}

std::u16string DeleteFailedText(size_t count) {
  return FormatText(TranslateOr(u"Msg_DeleteFailedCountFmt", u"Failed to delete %zu selected items."),
                    count);
}

}  // namespace quilmark
