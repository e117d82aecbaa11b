#include "index/engine/search_engine.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>

namespace quilmark {
namespace {

std::unique_ptr<VolumeIndex> VolumeOf(std::u16string drive) {
  auto volume = std::make_unique<VolumeIndex>();
  volume->drive = std::move(drive);
  return volume;
}

TEST(SearchEngine, IsReadyWithItsFirstVolume) {
  SearchEngine engine;
  EXPECT_FALSE(engine.ready);
  EXPECT_TRUE(CopyVolumes(engine).empty());
  VolumeIndex* const added = AddVolume(engine, VolumeOf(u"C:"));
  EXPECT_TRUE(engine.ready);
  EXPECT_THAT(CopyVolumes(engine), testing::ElementsAre(added));
}

TEST(SearchEngine, KeepsItsVolumesInTheOrderOfTheirDrives) {
  SearchEngine engine;
  VolumeIndex* const d = AddVolume(engine, VolumeOf(u"D:"));
  VolumeIndex* const c = AddVolume(engine, VolumeOf(u"C:"));
  EXPECT_THAT(CopyVolumes(engine), testing::ElementsAre(c, d));
}

TEST(SearchEngine, GivesAVolumeItsListeners) {
  SearchEngine engine;
  PostQueue window;
  engine.window = window.Target();
  engine.attributesBecameStale = [] {};
  const auto volume = NewVolume(engine);
  EXPECT_EQ(volume->listeners.window, window.Target());
  EXPECT_EQ(volume->listeners.attributesBecameStale, engine.attributesBecameStale);
  EXPECT_TRUE(CopyVolumes(engine).empty()) << "it has yet to be built";
}

TEST(SearchEngine, OfTheProgramIsOne) { EXPECT_EQ(&Engine(), &Engine()); }

}  // namespace
}  // namespace quilmark
