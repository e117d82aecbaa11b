#include "shell/app/command_line.h"

#include <algorithm>

#include "platform/text.h"

namespace quilmark {

namespace {

constexpr std::u16string_view kDash = u"-hidden", kSlash = u"/hidden";

}  // namespace

bool WantsHiddenStart(const std::vector<std::u16string>& arguments) {
  return std::any_of(arguments.begin() + (arguments.empty() ? 0 : 1), arguments.end(),
                     [](const std::u16string& argument) {
                       return EqualNoCase(argument, kDash) || EqualNoCase(argument, kSlash);
                     });
}

bool WantsHiddenStart(std::u16string_view commandLine) {
  const std::u16string folded = FoldText(commandLine);
  return folded.find(kDash) != std::u16string::npos || folded.find(kSlash) != std::u16string::npos;
}

}  // namespace quilmark
