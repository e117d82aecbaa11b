#include "cli/run_console.h"

#ifdef _WIN32

#include "platform/utf.h"

int wmain(int count, wchar_t** arguments) {
  std::vector<std::string> texts;
  for (int i = 1; i < count; ++i) {
    texts.push_back(quilmark::ToUtf8(reinterpret_cast<const char16_t*>(arguments[i])));
  }
  return quilmark::RunConsole(std::move(texts));
}

#else

int main(int count, char** arguments) {
  return quilmark::RunConsole(std::vector<std::string>(arguments + 1, arguments + count));
}

#endif
