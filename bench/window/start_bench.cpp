// How long a start takes, as a user sees it: to the first painted window and to the first searchable
// drive.
//
// usage: start_bench.exe      the limit beside it: a program that shows a bare window and nothing else.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "window/window_program.h"

namespace quilmark {
namespace {

constexpr int kRuns = 7, kFolders = 100, kFilesPerFolder = 100;
constexpr double kRequiredPauseMs = 1'000;

double NowMs() {
  LARGE_INTEGER count, frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return 1'000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

LRESULT CALLBACK BareProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_PAINT) return DefWindowProcW(window, message, wParam, lParam);
  PAINTSTRUCT paint;
  BeginPaint(window, &paint);
  FillRect(paint.hdc, &paint.rcPaint, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  EndPaint(window, &paint);
  SetPropW(window, L"painted", reinterpret_cast<HANDLE>(1));
  return 0;
}

// The second life of this program: one window, painted once.
int ShowBareWindow() {
  WNDCLASSW windowClass = {};
  windowClass.lpfnWndProc = BareProcedure;
  windowClass.lpszClassName = L"QUILMARK_BARE";
  RegisterClassW(&windowClass);
  CreateWindowExW(0, L"QUILMARK_BARE", L"bare", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 1'100, 700,
                  nullptr, nullptr, nullptr, nullptr);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}

double TimeBareWindow() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring line = L"\"" + std::wstring(path) + L"\" bare";
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  const double start = NowMs();
  CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process);
  HWND window = nullptr;
  while (window == nullptr || GetPropW(window, L"painted") == nullptr) {
    window = FindWindowW(L"QUILMARK_BARE", nullptr);
    Sleep(1);
  }
  const double taken = NowMs() - start;
  TerminateProcess(process.hProcess, 0);
  WaitForSingleObject(process.hProcess, INFINITE);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  return taken;
}

struct StartTimes {
  double painted = 0, searchable = 0;
};

StartTimes TimeStart(WindowProgram& program) {
  StartTimes times;
  const double start = NowMs();
  program.Start();
  while (times.painted == 0 || times.searchable == 0) {
    const HWND window = FindWindowW(L"QUILMARK_MAIN", nullptr);
    if (window != nullptr && times.painted == 0 && program.Ask(Probe::kPaints) > 0) {
      times.painted = NowMs() - start - kRequiredPauseMs;
    }
    if (window != nullptr && times.searchable == 0 && program.Ask(Probe::kEngineReady) == 1) {
      times.searchable = NowMs() - start - kRequiredPauseMs;
    }
    Sleep(1);
  }
  program.Exit();
  program.WaitForEnd();
  return times;
}

void Report() {
  WindowProgram program;
  for (int folder = 0; folder < kFolders; ++folder) {
    for (int file = 0; file < kFilesPerFolder; ++file) {
      program.Drive().MakeFile("f" + std::to_string(folder) + "/file" + std::to_string(file) + ".txt");
    }
  }
  std::vector<double> bare, painted, searchable;
  for (int run = 0; run < kRuns; ++run) {
    bare.push_back(TimeBareWindow());
    const StartTimes times = TimeStart(program);
    painted.push_back(times.painted);
    searchable.push_back(times.searchable);
  }
  std::printf("start to a bare window, painted     %7.1f ms\n", Median(bare));
  std::printf("start to our window, painted        %7.1f ms   %.2fx   (less the required second)\n",
              Median(painted), Median(painted) / Median(bare));
  std::printf("start to a searchable drive, %d files %5.1f ms\n", kFolders * kFilesPerFolder,
              Median(searchable));
}

}  // namespace
}  // namespace quilmark

int main(int count, char**) {
  if (count > 1) return quilmark::ShowBareWindow();
  quilmark::Report();
  return 0;
}
