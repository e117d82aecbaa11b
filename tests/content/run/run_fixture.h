// A content search of a test: files of memory on a drive that holds nothing else.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "content/run/content_run.h"
#include "support/scripted_files.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {

class RunFixture : public testing::Test {
 protected:
  RunFixture() { volume = AddVolume(Engine(), MakeTestVolume(u"C:")); }

  // A file with those bytes in the root of the drive, and its row.
  MatchItem AddTextFile(std::u16string_view name, std::string bytes) {
    const uint32_t index = AddFile(*volume, name);
    files->bytes[BuildPathLocked(*volume, index)] = std::move(bytes);
    return {volume, index};
  }

  // `count` files called 0.txt and so on, with those bytes.
  ResultSet AddTextFiles(size_t count, const std::string& bytes) {
    ResultSet rows;
    for (size_t i = 0; i < count; ++i) {
      const std::string name = std::to_string(i) + ".txt";
      rows.push_back(AddTextFile(std::u16string(name.begin(), name.end()), bytes));
    }
    return rows;
  }

  // The readers of a worker that is left behind hold the files.
  MatchPlan PlanFor(const QueryGroups& query) const {
    MatchPlan plan;
    plan.Groups = MakeContentGroups(query);
    plan.WideGroups = query;
    plan.makeContent = [held = files] { return std::make_unique<ScriptedReader>(*held); };
    return plan;
  }

  std::shared_ptr<ContentRun> MakeRun(ResultSet candidates) const {
    auto run = std::make_shared<ContentRun>();
    run->Generation = SupersedeSearch();
    run->Candidates = std::move(candidates);
    run->plan = PlanFor({{u"word"}});
    return run;
  }

  struct Posted {
    std::vector<size_t> partials;  // rows that were held when each was taken from the queue
    std::vector<std::u16string> texts;
    int finals = 0;
  };
  // What has been posted for the generation of the moment.
  Posted TakePosted() {
    Posted posted;
    while (const auto message = harness.queue.Take(0)) {
      if (message->message == WM_SEARCH_STATUS) {
        posted.texts.push_back(*TakeText(*message));
      } else if (message->second == static_cast<int64_t>(ResultKind::kPartial)) {
        posted.partials.push_back(HeldResults()->size());
      } else {
        ++posted.finals;
      }
    }
    return posted;
  }

  SearchHarness harness;
  VolumeIndex* volume = nullptr;
  std::shared_ptr<ScriptedFiles> files = std::make_shared<ScriptedFiles>();
};

}  // namespace quilmark
