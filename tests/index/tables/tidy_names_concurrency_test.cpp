// Names move while another thread edits records and a third one reads them: each has the name that a
// plain model says at any moment. Run under ThreadSanitizer as well.
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <random>
#include <shared_mutex>
#include <string>
#include <thread>
#include <vector>

#include "index/tables/tidy_names.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

struct EditedVolume {
  std::unique_ptr<VolumeIndex> made = MakeTestVolume(u"Q:");
  VolumeIndex& volume = *made;
  std::vector<std::u16string> names;  // indexLock; the model: of each record
  std::atomic<bool> isEdited = true;
};

std::u16string AnyName(std::mt19937& random) {
  return u"name " + std::u16string(1 + random() % 20, static_cast<char16_t>(u'a' + random() % 26));
}

// Each edit under a hold of its own, as a rename in the list is.
void Edit(EditedVolume& edited) {
  constexpr int kEdits = 60'000;
  std::mt19937 random(3);
  for (int i = 0; i < kEdits; ++i) {
    std::u16string name = AnyName(random);
    const auto index = static_cast<uint32_t>(1 + random() % (edited.names.size() - 1));
    const std::scoped_lock lock(edited.volume.indexLock);
    if (i % 50 == 0) {
      AddFile(edited.volume, name);
      edited.names.push_back(std::move(name));
    } else if (i % 10 == 0) {
      MarkDeleted(edited.volume, index);
    } else {
      RenameRecord(edited.volume, index, kRootFrnOfTests, name);
      edited.names[index] = std::move(name);
    }
  }
  edited.isEdited = false;
}

// The number of names that were not as the model has them.
size_t ReadNames(const EditedVolume& edited) {
  size_t wrong = 0;
  std::mt19937 random(4);
  while (edited.isEdited) {
    const std::shared_lock lock(edited.volume.indexLock);
    const auto index = static_cast<uint32_t>(random() % edited.names.size());
    const FileRecord& record = edited.volume.records[index];
    if (NameOf(record) != edited.names[index]) ++wrong;
  }
  return wrong;
}

TEST(TidyNamesConcurrency, NoNameIsLostOrWrongBesideOtherEdits) {
  constexpr uint32_t kFiles = 20'000;
  EditedVolume edited;
  VolumeIndex& volume = edited.volume;
  volume.names.chunkCapacity = volume.names.usedInChunk = 40'000;
  std::mt19937 random(2);
  edited.names.emplace_back(NameOf(volume.records[0]));
  for (uint32_t i = 0; i < kFiles; ++i) AddFile(volume, edited.names.emplace_back(AnyName(random)));

  size_t wrong = 0;
  std::thread editor([&] { Edit(edited); });
  std::thread reader([&] { wrong = ReadNames(edited); });
  while (edited.isEdited) TidyNames(volume);
  editor.join();
  reader.join();
  TidyNames(volume);
  while (volume.tidying.isUnderWay) TidyNames(volume);

  EXPECT_EQ(wrong, 0u);
  EXPECT_GT(volume.tidying.moves, 0u);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
  ASSERT_EQ(volume.records.size(), edited.names.size());
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    ASSERT_EQ(NameOf(volume.records[i]), edited.names[i]);
  }
}

}  // namespace
}  // namespace quilmark
