#include "shell/actions/action_texts.h"

#include <gtest/gtest.h>

#include "config/translate.h"

namespace quilmark {
namespace {

TEST(ActionTexts, NameASingleFileThatIsDeleted) {
  EXPECT_EQ(DeleteQuestion({u"C:\\dir\\a 100%s.txt"}),
            (BoxText{u"Confirm Delete",
                     u"Are you sure you want to delete this file?\n\nC:\\dir\\a 100%s.txt"}));
}

TEST(ActionTexts, CountSeveral) {
  EXPECT_EQ(
      DeleteQuestion({u"C:\\a", u"C:\\b"}),
      (BoxText{u"Confirm Delete", u"Are you sure you want to permanently delete 2 selected items?"}));
  EXPECT_EQ(OpenManyQuestion(16), (BoxText{u"Quilmark", u"Open all 16 selected items?"}));
  EXPECT_EQ(DeleteFailedText(3), u"Failed to delete 3 selected items.");
}

TEST(ActionTexts, SayWhatHasFailed) {
  EXPECT_EQ(ClipboardFailedText(), u"Failed to copy to clipboard.");
  EXPECT_EQ(RecycleFailedText(), u"Failed to move to Recycle Bin. Backup deletion methods also failed.");
}

TEST(ActionTexts, AreTranslatedByTheirKeys) {
  translation = [](std::u16string_view key, std::u16string_view) {
    return u"<" + std::u16string(key) + u">";
  };
  EXPECT_EQ(DeleteQuestion({u"a"}),
            (BoxText{u"<MsgTitle_ConfirmDelete>", u"<Msg_DeleteSingleConfirmPrefix>a"}));
  EXPECT_EQ(DeleteQuestion({u"a", u"b"}).text,
            u"<Msg_DeleteMultiConfirmPrefix>2<Msg_DeleteMultiConfirmSuffix>");
  EXPECT_EQ(OpenManyQuestion(16), (BoxText{u"<App_Name>", u"<Msg_OpenManyConfirm>"}));
  EXPECT_EQ(ClipboardFailedText(), u"<Msg_CopyClipboardFailed>");
  EXPECT_EQ(RecycleFailedText(), u"<Msg_RecycleDeleteFailed>");
  EXPECT_EQ(DeleteFailedText(1), u"<Msg_DeleteFailedCountFmt>");
  translation = nullptr;
}

}  // namespace
}  // namespace quilmark
