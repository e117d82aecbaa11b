#include "index/device/volume_follower.h"

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <thread>

#include "platform/debug_output.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

struct NoticeOfTest : DeviceNotice {
  NoticeOfTest(uintptr_t number, bool& isAlive) : isAlive_(isAlive) {
    id = number;
    isAlive_ = true;
  }
  ~NoticeOfTest() override { isAlive_ = false; }

 private:
  bool& isAlive_;
};

std::string told;  // to the debugger

struct Follower : testing::Test {
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  VolumeFollower follower;

  Follower() {
    told.clear();
    SetDebugOutputListener([](std::string_view text) { told += text; });
  }
  ~Follower() override { SetDebugOutputListener(nullptr); }

  void Open() { follower.TakeDevice(scripts.Open(u"N:"), u"N:"); }
  // A thread that does what a monitor does, and nothing else.
  void Start() {
    follower.Start([this](std::atomic<bool>& wanted) {
      isBegun.set_value();
      while (wanted) follower.Rest(3'600'000, wanted);
    });
  }
  std::promise<void> isBegun;
};

TEST_F(Follower, HasNothingAtFirst) {
  EXPECT_EQ(follower.Device(), nullptr);
  EXPECT_FALSE(follower.IsOpen());
  EXPECT_FALSE(follower.HasNotice());
  EXPECT_FALSE(follower.monitorRunning);
  follower.Stop();
  follower.Close();
  EXPECT_EQ(follower.LetGo(), nullptr);
}

TEST_F(Follower, ClosesItsDevice) {
  Open();
  EXPECT_TRUE(follower.IsOpen());
  const auto device = follower.Device();
  follower.Close();
  EXPECT_EQ(script.OpenDevices(), 0);
  EXPECT_FALSE(follower.IsOpen());
  EXPECT_EQ(device->Control(kFsctlQueryUsnJournal, {}, {}).error, kErrorInvalidHandle);
}

TEST_F(Follower, LetsADeviceGoWithoutClosingIt) {
  Open();
  const auto device = follower.LetGo();
  ASSERT_NE(device, nullptr);
  EXPECT_FALSE(follower.IsOpen());
  EXPECT_EQ(script.OpenDevices(), 1);
}

TEST_F(Follower, TellsOfACloseThatFails) {
  Open();
  script.FailClose(kErrorInvalidHandle);
  follower.Close();
  EXPECT_EQ(told, "[Quilmark] CloseHandle failed, Error: 6 (0x00000006), Drive: N:\n");
}

TEST_F(Follower, EndsItsThreadAndClosesItsDeviceAtItsOwnEnd) {
  bool hasEnded = false;
  {
    VolumeFollower other;
    other.TakeDevice(scripts.Open(u"N:"), u"N:");
    other.Start([&](std::atomic<bool>& wanted) {
      while (wanted) other.Rest(3'600'000, wanted);
      hasEnded = true;
    });
  }
  EXPECT_TRUE(hasEnded);
  EXPECT_EQ(script.OpenDevices(), 0);
}

TEST_F(Follower, StopsItsThreadInAPauseAndKeepsTheDevice) {
  Open();
  Start();
  isBegun.get_future().wait();
  EXPECT_TRUE(follower.monitorRunning);
  follower.Stop();
  EXPECT_FALSE(follower.monitorRunning);
  EXPECT_EQ(script.OpenDevices(), 1);
}

TEST_F(Follower, StopsAThreadThatHasYetToBegin) {
  Start();
  follower.Stop();
  EXPECT_FALSE(follower.IsOpen());
  isBegun.get_future().wait();
}

TEST_F(Follower, LeavesARunningThreadAlone) {
  Start();
  bool isWanted = true;
  follower.Start([&](std::atomic<bool>& wanted) { isWanted = wanted; });
  EXPECT_FALSE(isWanted) << "it is told to end before it begins";
  EXPECT_TRUE(follower.monitorRunning);
  follower.Stop();
}

TEST_F(Follower, StartsAnewOnceItHasStopped) {
  Start();
  follower.Stop();
  isBegun = {};
  Start();
  isBegun.get_future().wait();
  EXPECT_TRUE(follower.monitorRunning);
}

TEST_F(Follower, ClosesWhatWasTakenOutUnlessItWasOpenedSince) {
  Open();
  follower.takenOut = true;
  follower.goneTold = true;
  Open();
  EXPECT_FALSE(follower.takenOut);
  EXPECT_FALSE(follower.goneTold);
  follower.CloseTakenOut();
  EXPECT_EQ(script.OpenDevices(), 1);
  follower.takenOut = true;
  follower.CloseTakenOut();
  EXPECT_EQ(script.OpenDevices(), 0);
}

TEST_F(Follower, ADeviceThatIsOpenedDuringACloseStays) {
  Open();
  follower.Start([this](std::atomic<bool>& wanted) {
    while (wanted) follower.Rest(3'600'000, wanted);
    Open();  // as a build does
  });
  follower.Close();
  EXPECT_NE(follower.Device(), nullptr);
  EXPECT_EQ(script.OpenDevices(), 1);
}

TEST_F(Follower, KeepsTheNoticeUntilThereIsAnother) {
  bool first = false, second = false;
  follower.TakeDevice(scripts.Open(u"N:"), u"N:", std::make_shared<NoticeOfTest>(7, first));
  EXPECT_TRUE(follower.HasNotice(7));
  EXPECT_FALSE(follower.HasNotice(8));
  follower.Close();
  Open();
  EXPECT_TRUE(follower.HasNotice(7)) << "of a device that is closed";
  follower.TakeDevice(scripts.Open(u"N:"), u"N:", std::make_shared<NoticeOfTest>(8, second));
  EXPECT_FALSE(first);
  EXPECT_TRUE(follower.HasNotice(8));
  follower.ReplaceNotice(nullptr);
  EXPECT_FALSE(second);
  EXPECT_FALSE(follower.HasNotice());
  EXPECT_FALSE(follower.HasNotice(8));
}

}  // namespace
}  // namespace quilmark
