#include "window/window_program.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "platform/text_file.h"
#include "platform/win32/wide.h"
#include "shell/win32/controls/window_text.h"
#include "window/png.h"

namespace quilmark {

namespace {

constexpr DWORD kPatienceMs = 60'000, kLookMs = 10;

std::wstring ProgramPath() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return (std::filesystem::path(path).parent_path() / "Quilmark-test.exe").wstring();
}

std::filesystem::path LogFolder() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path() / "window-tests";
}

PROCESS_INFORMATION Launch(const std::wstring& arguments) {
  std::wstring line = L"\"" + ProgramPath() + L"\" " + arguments;
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &startup, &process))
      << GetLastError();
  return process;
}

DWORD EndOf(const PROCESS_INFORMATION& process) {
  EXPECT_EQ(WaitForSingleObject(process.hProcess, kPatienceMs), WAIT_OBJECT_0) << "the program hangs";
  DWORD code = 0;
  GetExitCodeProcess(process.hProcess, &code);
  return code;
}

void CloseHandles(PROCESS_INFORMATION& process) {
  if (process.hProcess != nullptr) CloseHandle(process.hProcess);
  if (process.hThread != nullptr) CloseHandle(process.hThread);
  process = {};
}

INPUT KeyInput(WORD key, DWORD flags) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags;
  return input;
}

void SendKey(WORD key, DWORD flags) {
  INPUT input = KeyInput(key, flags);
  SendInput(1, &input, sizeof input);
}

// The place goes with the event: one that is set apart may be moved back by a late echo of an earlier
// one.
INPUT MouseInput(POINT place, DWORD flags, DWORD data = 0) {
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dx = (place.x * 65'536 + 32'768) / GetSystemMetrics(SM_CXSCREEN);
  input.mi.dy = (place.y * 65'536 + 32'768) / GetSystemMetrics(SM_CYSCREEN);
  input.mi.dwFlags = flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  input.mi.mouseData = data;
  return input;
}

void SendMouse(POINT place, DWORD flags, DWORD data = 0) {
  INPUT input = MouseInput(place, flags, data);
  SendInput(1, &input, sizeof input);
}

// Of a control in another process, which GetWindowText does not read.
std::u16string TextOfEdit(HWND control) {
  char16_t text[512] = {};
  DWORD_PTR length = 0;
  SendMessageTimeoutW(control, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text), SMTO_NORMAL, kPatienceMs,
                      &length);
  return {text, static_cast<size_t>(length)};
}

// "failed-" and the test; a parameter's number follows its name behind a slash.
std::string FailureName() {
  const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
  std::string name = std::string("failed-") + (test != nullptr ? test->name() : "no-test");
  std::replace(name.begin(), name.end(), '/', '-');
  return name;
}

void SaveFailure() {
  std::error_code ignored;
  std::filesystem::create_directories(LogFolder(), ignored);
  SaveScreenAsPng(nullptr, (LogFolder() / (FailureName() + ".png")).wstring());
}

// The keyboard's next key goes there.
bool HasKeyboard(HWND window) {
  GUITHREADINFO info = {};
  info.cbSize = sizeof info;
  return GetForegroundWindow() == window &&
         GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) != FALSE &&
         info.hwndFocus != nullptr && GetAncestor(info.hwndFocus, GA_ROOT) == window;
}

}  // namespace

HWND WaitForBox(const wchar_t* title) {
  HWND box = nullptr;
  WaitUntil("the box and its focus", [&] {
    box = FindWindowW(L"#32770", title);
    return box != nullptr && HasKeyboard(box);
  });
  return box;
}

bool WaitUntil(const std::string& what, const std::function<bool()>& holds) {
  const ULONGLONG end = GetTickCount64() + kPatienceMs;
  while (!holds()) {
    if (GetTickCount64() > end) {
      SaveFailure();  // as it stands now, not as the end of the test leaves it
      ADD_FAILURE() << "waited in vain: " << what;
      return false;
    }
    Sleep(kLookMs);
  }
  return true;
}

void WaitPastMidnight() {
  WaitUntil("the next day", [] {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return now.wHour != 23 || now.wMinute != 59 || now.wSecond < 10;
  });
}

WindowProgram::~WindowProgram() {
  if (testing::Test::HasFailure()) {
    for (const auto& folder : {settings_.HostPath(), temp_.HostPath()}) {
      std::error_code ignored;
      std::filesystem::copy(
          folder, LogFolder() / FailureName(),
          std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing,
          ignored);
    }
  }
  if (IsRunning()) {
    TerminateProcess(process_.hProcess, 99);
    WaitForSingleObject(process_.hProcess, kPatienceMs);
  }
  CloseHandles(process_);
}

void WindowProgram::Start(const std::wstring& arguments) {
  CloseHandles(process_);
  window_ = nullptr;
  process_ = Launch(arguments);
}

void WindowProgram::StartAndWait(const std::wstring& arguments) {
  Start(arguments);
  WaitUntil("a searchable drive", [this] { return Ask(Probe::kEngineReady) == 1; });
  WaitUntil("an open search box", [this] { return IsWindowEnabled(SearchBox()) != FALSE; });
  if (!arguments.empty()) return;
  // The last search of a start is the one that the end of the indexing asks for.
  WaitUntil("the first, empty results", [this] {
    return Ask(Probe::kSyncs) >= 1 && Ask(Probe::kShownGeneration) == Ask(Probe::kSearchGeneration) &&
           Title() == u"Quilmark - Filter: All Files | Hits: 0";
  });
  TakeKeyboard();
}

void WindowProgram::TakeKeyboard() {
  WaitUntil("the focus", [this] {
    // Again where the end of a former program has taken it.
    if (GetForegroundWindow() != Window()) SetForegroundWindow(Window());
    return Ask(Probe::kSearchBoxFocused) == 1;
  });
}

DWORD WindowProgram::RunSecondCopy(const std::wstring& arguments) {
  PROCESS_INFORMATION copy = Launch(arguments);
  const DWORD code = EndOf(copy);
  CloseHandles(copy);
  return code;
}

void WindowProgram::Exit() {
  Ask(Probe::kRequestExit);
  PostMessageW(Window(), WM_CLOSE, 0, 0);
}

DWORD WindowProgram::WaitForEnd() { return EndOf(process_); }

bool WindowProgram::IsRunning() const {
  return process_.hProcess != nullptr && WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT;
}

HWND WindowProgram::Window() {
  if (window_ != nullptr) return window_;
  WaitUntil("the main window", [this] {
    const HWND found = FindWindowW(L"QUILMARK_MAIN", nullptr);
    DWORD owner = 0;
    if (found != nullptr) GetWindowThreadProcessId(found, &owner);
    if (owner == process_.dwProcessId) window_ = found;
    return window_ != nullptr || !IsRunning();
  });
  return window_;
}

int64_t WindowProgram::Ask(Probe probe, uint32_t argument) {
  COPYDATASTRUCT data = {static_cast<ULONG_PTR>(probe), sizeof argument, &argument};
  // Not given up where the window counts as hung: five seconds of work between two messages are enough
  // for that, on a busy machine.
  DWORD_PTR answer = 0;
  const LRESULT isAnswered = SendMessageTimeoutW(
      Window(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_NORMAL, kPatienceMs, &answer);
  EXPECT_TRUE(isAnswered != 0 || probe == Probe::kCrash) << "the window does not answer";
  return static_cast<int64_t>(answer);
}

std::u16string WindowProgram::Title() { return TextOfWindow(Window(), 512); }

void WindowProgram::ExpectTitle(std::u16string_view title) {
  WaitUntil("the title", [&] { return Title() == title; });
}

std::u16string WindowProgram::Status() { return TextOfEdit(GetDlgItem(Window(), 103)); }

std::u16string WindowProgram::TextOf(HWND control) { return TextOfEdit(control); }

void WindowProgram::Type(std::u16string_view text) {
  // At once: no pause of a busy machine stands between two keys.
  std::vector<INPUT> inputs;
  const auto add = [&inputs](WORD key, DWORD flags) { inputs.push_back(KeyInput(key, flags)); };
  for (const char16_t unit : text) {
    const SHORT key = VkKeyScanW(static_cast<wchar_t>(unit));
    const bool needsShift = (key & 0x100) != 0;
    if (needsShift) add(VK_SHIFT, 0);
    add(static_cast<WORD>(key & 0xFF), 0);
    add(static_cast<WORD>(key & 0xFF), KEYEVENTF_KEYUP);
    if (needsShift) add(VK_SHIFT, KEYEVENTF_KEYUP);
  }
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void WindowProgram::Press(WORD virtualKey) {
  SendKey(virtualKey, 0);
  SendKey(virtualKey, KEYEVENTF_KEYUP);
}

void WindowProgram::PressCtrl(WORD virtualKey) {
  SendKey(VK_CONTROL, 0);
  Press(virtualKey);
  SendKey(VK_CONTROL, KEYEVENTF_KEYUP);
}

void WindowProgram::KeyDown(WORD virtualKey) { SendKey(virtualKey, 0); }

void WindowProgram::KeyUp(WORD virtualKey) { SendKey(virtualKey, KEYEVENTF_KEYUP); }

void WindowProgram::Click(HWND window, int x, int y) { Drag(window, {x, y}, {x, y}); }

void WindowProgram::ClickWith(WORD key, HWND window, int x, int y) {
  POINT place = {x, y};
  ClientToScreen(window, &place);
  // At once: the late echo of an earlier move lets go of a key that is held.
  INPUT inputs[] = {KeyInput(key, 0), MouseInput(place, MOUSEEVENTF_LEFTDOWN),
                    MouseInput(place, MOUSEEVENTF_LEFTUP), KeyInput(key, KEYEVENTF_KEYUP)};
  SendInput(static_cast<UINT>(std::size(inputs)), inputs, sizeof(INPUT));
}

void WindowProgram::ClickRight(int x, int y) {
  POINT place = {x, y};
  ClientToScreen(Window(), &place);
  SendMouse(place, 0);
  SendMouse(place, MOUSEEVENTF_RIGHTDOWN);
  SendMouse(place, MOUSEEVENTF_RIGHTUP);
}

void WindowProgram::Drag(HWND window, POINT from, POINT to) {
  constexpr int kSteps = 4;
  ClientToScreen(window, &from);
  ClientToScreen(window, &to);
  SendMouse(from, 0);
  SendMouse(from, MOUSEEVENTF_LEFTDOWN);
  for (int step = 1; step <= kSteps && (from.x != to.x || from.y != to.y); ++step) {
    SendMouse({from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps}, 0);
    Ask(Probe::kPaints);  // answered behind the move
  }
  SendMouse(to, MOUSEEVENTF_LEFTUP);
}

void WindowProgram::MoveMouse(int x, int y) {
  POINT place = {x, y};
  ClientToScreen(Window(), &place);
  SendMouse({place.x - 5, place.y}, 0);  // from elsewhere: at its place already, it would not be noticed
  SendMouse(place, 0);
}

void WindowProgram::Turn(POINT at, int notches) {
  ClientToScreen(Window(), &at);
  SendMouse(at, MOUSEEVENTF_WHEEL, static_cast<DWORD>(notches * WHEEL_DELTA));
}

void WindowProgram::SearchFor(std::u16string_view text) {
  Type(text);
  WaitUntil("the typed text", [&] { return TextOfEdit(SearchBox()).ends_with(text); });
  // A slow typist has started a search for a part by now, and another one waits for the timer. Behind
  // this key, which has had its effect when the call returns, none comes any more.
  SendMessageW(SearchBox(), WM_KEYDOWN, VK_RETURN, 0);
  WaitForResults();
}

void WindowProgram::WaitForResults() {
  WaitUntil("its results",
            [this] { return Ask(Probe::kShownGeneration) == Ask(Probe::kSearchGeneration); });
}

static bool ShowsCalendar(HWND date) {
  return IsWindowVisible(reinterpret_cast<HWND>(SendMessageW(date, DTM_GETMONTHCAL, 0, 0))) != FALSE;
}

static void ClickCalendarButton(WindowProgram& program, HWND date) {
  RECT client = {};
  GetClientRect(date, &client);
  program.Click(date, client.right - 8, client.bottom / 2);
}

void WindowProgram::OpenCalendar() {
  const HWND date = GetDlgItem(Window(), 111);
  ClickCalendarButton(*this, date);
  WaitUntil("the calendar", [date] { return ShowsCalendar(date); });
}

void WindowProgram::CloseCalendar() {
  const HWND date = GetDlgItem(Window(), 111);
  ClickCalendarButton(*this, date);
  WaitUntil("no calendar", [date] { return !ShowsCalendar(date); });
}

void WindowProgram::Screenshot(const std::string& name) {
  std::error_code ignored;
  std::filesystem::create_directories(LogFolder(), ignored);
  const std::filesystem::path path = LogFolder() / (name + ".png");
  // A list that drops down is open before it is painted.
  if (window_ != nullptr) Ask(Probe::kPaintAll);
  EXPECT_TRUE(SaveScreenAsPng(window_, path.wstring())) << path;
}

std::u16string WindowProgram::GdiLog() const {
  return ReadTextFile(temp_.PathOf(u"Quilmark_gdi.log")).value_or(u"");
}

std::u16string WindowProgram::MetricsLog() const {
  return ReadTextFile(settings_.PathOf(u"perf_metrics.log")).value_or(u"");
}

}  // namespace quilmark
