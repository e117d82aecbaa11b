#include "platform/posix/host_path.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(HostPath, AColonAtTheHostsRootIsANameAndNoDrive) {
  for (const std::string_view bytes : {"/:", "/:/name", "/:/name/x.txt"}) {
    SCOPED_TRACE(bytes);
    EXPECT_EQ(HostBytesOf(PathOfHostBytes(bytes)), bytes);
  }
  EXPECT_EQ(HostBytesOf(u"::\\name"), "");  // a drive that nobody can map
}

}  // namespace
}  // namespace quilmark
