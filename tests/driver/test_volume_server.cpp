#include "driver/test_volume_server.h"

#include <winsvc.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "driver/test_volume.h"

namespace quilmark {

namespace {

constexpr wchar_t kService[] = L"QuilmarkTestVolume";
constexpr size_t kRequestBytes = 64 * 1024, kAnswerBytes = 128 * 1024;

struct ServiceTraits {
  using Value = SC_HANDLE;
  static Value Empty() { return nullptr; }
  static void Close(Value service) { CloseServiceHandle(service); }
};
using UniqueService = Unique<ServiceTraits>;

[[noreturn]] void Fail(const char* what) {
  throw std::runtime_error(std::string(what) + " fails with error " + std::to_string(GetLastError()));
}

// The driver stands beside the program and runs from the folder of drivers.
std::wstring CopyDriver() {
  wchar_t program[MAX_PATH], system[MAX_PATH];
  if (GetModuleFileNameW(nullptr, program, MAX_PATH) == 0 ||
      GetSystemDirectoryW(system, MAX_PATH) == 0) {
    Fail("asking for the folders");
  }
  std::wstring from = program;
  from.resize(from.rfind(L'\\') + 1);
  from += L"quilmark_test_volume.sys";
  const std::wstring to = std::wstring(system) + L"\\drivers\\quilmark_test_volume.sys";
  if (!CopyFileW(from.c_str(), to.c_str(), FALSE)) Fail("copying the driver");
  return to;
}

void StartDriver() {
  const UniqueService manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
  if (!manager) Fail("OpenSCManagerW");
  // One that an earlier run left behind would go on running its own code.
  UniqueService service(OpenServiceW(manager.Get(), kService, SERVICE_ALL_ACCESS));
  if (service) {
    SERVICE_STATUS status;
    ControlService(service.Get(), SERVICE_CONTROL_STOP, &status);
  }
  const std::wstring path = CopyDriver();
  if (!service) {
    service.Reset(CreateServiceW(manager.Get(), kService, kService, SERVICE_ALL_ACCESS,
                                 SERVICE_KERNEL_DRIVER, SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL,
                                 path.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr));
  }
  if (!service) Fail("CreateServiceW");
  if (!StartServiceW(service.Get(), 0, nullptr) && GetLastError() != ERROR_SERVICE_ALREADY_RUNNING) {
    Fail("StartServiceW");
  }
}

void StopDriver() {
  const UniqueService manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
  const UniqueService service(OpenServiceW(manager.Get(), kService, SERVICE_ALL_ACCESS));
  SERVICE_STATUS status;
  if (service) ControlService(service.Get(), SERVICE_CONTROL_STOP, &status);
}

UniqueFile OpenServer() {
  UniqueFile server(CreateFileW(L"\\\\.\\QuilmarkTestVolume", GENERIC_READ | GENERIC_WRITE,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!server) Fail("opening the server's device");
  return server;
}

// The status that the system turns into `error` again.
unsigned StatusOf(uint32_t error) {
  switch (error) {
    case 0:
      return 0;
    case kErrorInvalidHandle:
      return 0xC000'0008;
    case kErrorWriteProtect:
      return 0xC000'00A2;
    case kErrorAccessDenied:
      return 0xC000'0022;
    case kErrorHandleEof:
      return 0xC000'0011;
    case kErrorInvalidParameter:
      return 0xC000'000D;
    case kErrorMoreData:
      return 0x8000'0005;
    case kErrorOperationAborted:
      return 0xC000'0120;
    case kErrorDeviceNotConnected:
      return 0xC000'009D;
    case 1178:  // the journal is being deleted
      return 0xC000'02B7;
    case kErrorJournalNotActive:
      return 0xC000'02B8;
    case kErrorJournalEntryDeleted:
      return 0xC000'02CF;
    default:
      return 0xC000'0010;  // invalid device request: error 1
  }
}

}  // namespace

TestVolumeServer::TestVolumeServer(VolumeDevice& answers) : answers_(answers) {
  StartDriver();
  server_ = OpenServer();
  thread_ = std::thread(&TestVolumeServer::Serve, this);
}

TestVolumeServer::~TestVolumeServer() {
  const UniqueFile other = OpenServer();
  DWORD bytes = 0;
  DeviceIoControl(other.Get(), TEST_VOLUME_END, nullptr, 0, nullptr, 0, &bytes, nullptr);
  thread_.join();
  server_.Reset();
  StopDriver();
}

void TestVolumeServer::Serve() {
  std::vector<std::byte> request(kRequestBytes), answer(sizeof(TestVolumeAnswer) + kAnswerBytes);
  DWORD bytes = 0;
  while (DeviceIoControl(server_.Get(), TEST_VOLUME_GET, nullptr, 0, request.data(),
                         static_cast<DWORD>(request.size()), &bytes, nullptr)) {
    TestVolumeRequest asked;
    std::memcpy(&asked, request.data(), sizeof asked);
    const auto input = std::span<const std::byte>(request).subspan(sizeof asked, asked.inputBytes);
    const auto output = std::span(answer).subspan(sizeof(TestVolumeAnswer),
                                                  std::min<size_t>(asked.outputBytes, kAnswerBytes));
    VolumeDevice::Reply reply{.error = kErrorDeviceNotConnected};
    if (!isLost_) {
      reply = asked.code == TEST_VOLUME_READ ? answers_.ReadAt(ByteOffset(asked.offset), output)
                                             : answers_.Control(asked.code, input, output);
    }
    const TestVolumeAnswer header{.id = asked.id,
                                  .status = StatusOf(reply.error),
                                  .outputBytes = static_cast<unsigned>(reply.bytes)};
    std::memcpy(answer.data(), &header, sizeof header);
    DeviceIoControl(server_.Get(), TEST_VOLUME_ANSWER, answer.data(),
                    static_cast<DWORD>(sizeof header + reply.bytes), nullptr, 0, &bytes, nullptr);
  }
}

}  // namespace quilmark
