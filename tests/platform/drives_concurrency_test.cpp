// Paths that are resolved while letters move. Run under ThreadSanitizer as well.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "platform/drives.h"
#include "support/mapped_drive.h"

namespace quilmark {
namespace {

TEST(DrivesConcurrency, APathResolvesToOneRootOrTheOtherWhileALetterMoves) {
  const MappedDrive drive(u'Q', u"\\first");
  std::vector<std::thread> readers;
  for (int thread = 0; thread < 3; ++thread) {
    readers.emplace_back([] {
      for (int i = 0; i < 2'000; ++i) {
        const std::u16string path = ResolveMappedPath(u"Q:\\a");
        ASSERT_TRUE(path == u"\\first\\a" || path == u"\\second root\\a");
      }
    });
  }
  for (int i = 0; i < 2'000; ++i) MapDrive(u'Q', i % 2 == 0 ? u"\\second root" : u"\\first");
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(MappedRoot(u'Q'), u"\\first");
}

}  // namespace
}  // namespace quilmark
