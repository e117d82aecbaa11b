#include "support/run_program.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "support/scratch_folder.h"

#ifdef _WIN32
#include <windows.h>

#include "platform/utf.h"
#else
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace quilmark {

namespace {

namespace fs = std::filesystem;

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Streams go through files: no pipe can fill up, whatever order the program writes in.
struct Streams {
  ScratchFolder folder;
  fs::path input = folder.HostPath() / "input";
  fs::path output = folder.HostPath() / "output";
  fs::path errors = folder.HostPath() / "errors";
};

#ifdef _WIN32

std::wstring CommandLineOf(const std::string& program, const std::vector<std::string>& arguments) {
  std::u16string line = u"\"" + FromUtf8(program) + u"\"";
  for (const std::string& argument : arguments) {
    line += u" \"";
    size_t backslashes = 0;  // only those before a quote count double
    for (const char16_t unit : FromUtf8(argument)) {
      if (unit == u'"') line.append(backslashes + 1, u'\\');
      backslashes = unit == u'\\' ? backslashes + 1 : 0;
      line.push_back(unit);
    }
    line.append(backslashes, u'\\');
    line += u"\"";
  }
  return {line.begin(), line.end()};
}

HANDLE OpenStream(const fs::path& path, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition,
                     0, nullptr);
}

int Run(const std::string& program, const std::vector<std::string>& arguments, const Streams& streams) {
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = OpenStream(streams.input, GENERIC_READ, OPEN_EXISTING);
  start.hStdOutput = OpenStream(streams.output, GENERIC_WRITE, CREATE_ALWAYS);
  start.hStdError = OpenStream(streams.errors, GENERIC_WRITE, CREATE_ALWAYS);
  std::wstring line = CommandLineOf(program, arguments);
  PROCESS_INFORMATION process = {};
  DWORD code = static_cast<DWORD>(-1);
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                     &process)) {
    WaitForSingleObject(process.hProcess, 120'000);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  for (const HANDLE stream : {start.hStdInput, start.hStdOutput, start.hStdError}) CloseHandle(stream);
  return static_cast<int>(code);
}

#else

void Redirect(const fs::path& path, int flags, int target) {
  const int stream = open(path.c_str(), flags, 0600);
  if (stream < 0 || dup2(stream, target) < 0) _exit(127);
  close(stream);
}

int Run(const std::string& program, const std::vector<std::string>& arguments, const Streams& streams) {
  std::vector<char*> list{const_cast<char*>(program.c_str())};
  for (const std::string& argument : arguments) list.push_back(const_cast<char*>(argument.c_str()));
  list.push_back(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    Redirect(streams.input, O_RDONLY, 0);
    Redirect(streams.output, O_WRONLY | O_CREAT | O_TRUNC, 1);
    Redirect(streams.errors, O_WRONLY | O_CREAT | O_TRUNC, 2);
    execv(program.c_str(), list.data());
    _exit(127);
  }
  int status = 0;
  if (waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

#endif

}  // namespace

ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                      const std::string& input) {
  const Streams streams;
  std::ofstream(streams.input, std::ios::binary) << input;
  ProgramRun run;
  run.exitCode = Run(program, arguments, streams);
  run.output = Contents(streams.output);
  run.errors = Contents(streams.errors);
  return run;
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace quilmark
