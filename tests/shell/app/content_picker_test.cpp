#include "shell/app/content_picker.h"

#include <gtest/gtest.h>

#include "config/window_settings.h"
#include "shell/app/app_commands.h"
#include "shell/search/search_keys.h"
#include "shell/test_pump.h"
#include "shell/view/commands.h"

namespace quilmark {
namespace {

struct RecordingPickerPort : PickerPort {
  void OpenPickerWindow(ExtPicker& picker) override {
    ++opened;
    last = &picker;
  }
  int opened = 0;
  ExtPicker* last = nullptr;
};

class ContentPicker : public testing::Test {
 protected:
  ContentPicker() {
    app.search.isBoxEnabled = true;
    pump.Create();
    app.pickerWindow = &port;
  }
  ~ContentPicker() override { CurrentWindowSettings = {}; }
  void TypeInBox(const std::u16string& text) {
    pump.texts[kQueryBox] = text;
    pump.Control({.kind = ControlEvent::kText, .id = kQueryBox, .text = text});
  }
  void PressInBox(ControlEvent::Kind key) {
    pump.Control({.kind = key, .id = kQueryBox, .text = pump.texts[kQueryBox]});
  }

  WindowHarness harness;
  AppState& app = harness.app;
  TestPump pump{harness};
  RecordingPickerPort port;
};

TEST_F(ContentPicker, OpensByItselfAtThePrefixAndAtTheBar) {
  TypeInBox(u"s");
  EXPECT_EQ(port.opened, 0);
  TypeInBox(u"s:");
  EXPECT_EQ(port.opened, 1);
  TypeInBox(u"s:word");
  EXPECT_EQ(port.opened, 1);
  TypeInBox(u"s:word|");
  EXPECT_EQ(port.opened, 2);
}

TEST_F(ContentPicker, OpensByEnterAndF4WhereThereAreNoWords) {
  TypeInBox(u"s:");
  PressInBox(ControlEvent::kEnter);
  PressInBox(ControlEvent::kF4);
  EXPECT_EQ(port.opened, 3);
  TypeInBox(u"s:word");
  PressInBox(ControlEvent::kF4);
  EXPECT_EQ(port.opened, 3);
}

TEST_F(ContentPicker, WritesTheQueryAndThePlaceOfTheCaret) {
  TypeInBox(u"s: two words|.old");
  OpenContentExtPicker(app, pump);
  ASSERT_NE(port.last, nullptr);
  const int opened = port.opened;
  port.last->whenPicked({u".txt", u".md"});
  EXPECT_EQ(pump.texts[kQueryBox], u"s:two words|.txt,.md");
  EXPECT_EQ(pump.carets[kQueryBox], 11u);
  EXPECT_EQ(TheSearch().CurrentQueryText, u"s:two words|.txt,.md");
  EXPECT_EQ(CurrentWindowSettings.contentSearchExts, (std::vector<std::u16string>{u".txt", u".md"}));
  EXPECT_EQ(pump.focus, KeysGoTo::kSearchBox);
  EXPECT_EQ(pump.status,
            u"Content-search extensions set. Type keywords then Enter. You can still edit |exts "
            u"manually.");
  EXPECT_EQ(port.opened, opened) << "its own change opens nothing";
}

}  // namespace
}  // namespace quilmark
