// The search view over some files, without a window.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "canvas/table_measure.h"
#include "shell/list/list_colors.h"
#include "shell/list/scripted_icons.h"
#include "shell/search/filter_request.h"
#include "shell/search/result_messages.h"
#include "shell/search/search_paint.h"
#include "shell/search/search_places.h"
#include "shell/view/laws.h"
#include "shell/window_harness.h"
#include "support/volumes.h"

namespace quilmark {

// At a scale, with fonts as wide as the table's or wider.
class SearchPicture {
 public:
  explicit SearchPicture(uint32_t dpi = 96, int percent = 100) : fonts(dpi, percent) {
    app.systemDpi = dpi;
    app.search.sidebarWidth = ScaleFor(dpi, 200);
    app.search.tagCaptions = TagCaptions({40, 2, 34, 1, 0, 0, 0, 123'456});
    window.status = u"Indexed 1,234,567 files and folders in 2.4 s";
    for (const std::u16string_view name :
         {u"ana-banana.txt", u"China-资料-中文名.docx", u"a", u"final-한국어.txt",
          u"name-with-a-very-long-text-that-no-column-holds-at-all-and-no-cell-either.bin"}) {
      AddFile(*volume_, name);
    }
    AddFolder(*volume_, u"nature and the folders below it");
    icons.Prepare();
    app.search.icons = &icons;
    CurrentPalette = ThemeDefaults(false);
    TheSearch().CurrentQueryText = u"na";
    Engine().ready = true;
    Hold(40);
    Resize(1'100, 700);
  }
  ~SearchPicture() {
    CurrentPalette = ThemeDefaults(false);
    TheSearch().CurrentQueryText.clear();
  }

  void Hold(size_t rows) {
    auto held = std::make_shared<ResultSet>();
    for (size_t i = 0; i < rows; ++i) {
      held->push_back({volume_, static_cast<uint32_t>(1 + i % (volume_->records.size() - 1))});
    }
    HoldRows(std::move(held));
    FollowNewResults(KeepFiltered::kNo, rows);
  }
  // A file of that name is all that the list shows.
  void AddPicture(std::u16string_view name) {
    HoldRows(std::make_shared<ResultSet>(1, MatchItem{volume_, AddFile(*volume_, name)}));
    FollowNewResults(KeepFiltered::kNo, 1);
  }
  void Resize(int width, int height) {
    app.clientWidth = width;
    app.clientHeight = height;
    app.search.Layout(Context());
  }
  void SetView(ViewMode view) {
    CurrentWindowSettings.viewMode = static_cast<int>(view);
    Resize(app.clientWidth, app.clientHeight);
  }
  void SetSidebar(bool isShown) {
    CurrentWindowSettings.sidebarLayout = isShown;
    Resize(app.clientWidth, app.clientHeight);
  }

  ViewContext Context() const {
    return {.dpi = app.systemDpi,
            .client = {0, 0, app.clientWidth, app.clientHeight},
            .palette = CurrentPalette,
            .fonts = fonts,
            .window = window,
            .status = window.status,
            .hasFocus = true,
            .nowMs = nowMs};
  }
  RecordingCanvas Painted() const {
    RecordingCanvas canvas(Context().client);
    PaintSearch(canvas, Context(), app.search);
    EXPECT_TRUE(canvas.IsBalanced());
    return canvas;
  }
  std::vector<std::string> Faults() const {
    const RecordingCanvas canvas = Painted();
    std::vector<std::string> faults = TextsOutsideTheirBoxes(canvas, fonts);
    // Presets bring a colour of their own for the header: 3.3 at the least, by the test of its colours.
    const ListColors colors = ListColorsOf(CurrentPalette);
    const FixedPair fixed[] = {{colors.band, colors.bandText}};
    for (const auto& more : {TextsOverOthers(canvas, fonts), TextsOverIcons(canvas, fonts),
                             UnreadableTexts(canvas, fonts, fixed)}) {
      faults.insert(faults.end(), more.begin(), more.end());
    }
    return faults;
  }

 private:
  WindowHarness harness_;
  VolumeIndex* volume_ = AddVolume(Engine(), MakeTestVolume(u"Q:"));

 public:
  AppState& app = harness_.app;
  RecordingEngine& engine = harness_.engine;
  RecordingWindow& window = harness_.window;
  TableMeasure fonts;
  ScriptedIcons source;
  IconCache icons{source};
  uint64_t nowMs = 100'000;  // the list is at rest
};

}  // namespace quilmark
