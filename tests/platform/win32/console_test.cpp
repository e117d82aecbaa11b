#include "platform/console.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cerrno>

#include "support/scratch_folder.h"

namespace quilmark {
namespace {

TEST(Win32Console, AReaderThatWentAwayIsKnownByEitherError) {
  HANDLE reader = nullptr, writer = nullptr;
  ASSERT_TRUE(CreatePipe(&reader, &writer, nullptr, 0));
  std::FILE* const stream =
      _fdopen(_open_osfhandle(reinterpret_cast<intptr_t>(writer), _O_WRONLY), "wb");
  ASSERT_NE(stream, nullptr);
  EXPECT_TRUE(IsReaderGone(stream, EPIPE));
  EXPECT_TRUE(IsReaderGone(stream, EINVAL));
  EXPECT_FALSE(IsReaderGone(stream, ENOSPC));
  CloseHandle(reader);
  std::fclose(stream);
}

TEST(Win32Console, AWrongArgumentForAFileIsAFailure) {
  const ScratchFolder folder;
  std::FILE* const stream = std::fopen((folder.HostPath() / "out").string().c_str(), "wb");
  ASSERT_NE(stream, nullptr);
  EXPECT_FALSE(IsReaderGone(stream, EINVAL));
  std::fclose(stream);
}

}  // namespace
}  // namespace quilmark
