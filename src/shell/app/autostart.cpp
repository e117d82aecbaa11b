#include "shell/app/autostart.h"

#include "config/translate.h"
#include "platform/format.h"

namespace quilmark {

namespace {

constexpr std::u16string_view kTaskName = u"Quilmark_AutoStart";
constexpr uint32_t kAskMs = 10'000, kCreateMs = 15'000, kDeleteMs = 10'000;

// As it is without a blank, a tab or a quotation mark. Backslashes count double before a quotation mark
// and at the end.
std::u16string Quoted(std::u16string_view argument) {
  if (argument.find_first_of(u" \t\"") == std::u16string_view::npos) return std::u16string(argument);
  std::u16string quoted = u"\"";
  size_t backslashes = 0;
  for (const char16_t unit : argument) {
    if (unit == u'"') quoted.append(backslashes + 1, u'\\');
    backslashes = unit == u'\\' ? backslashes + 1 : 0;
    quoted.push_back(unit);
  }
  quoted.append(backslashes, u'\\');
  quoted.push_back(u'"');
  return quoted;
}

bool HasTask(AutostartPort& port) {
  const ToolRun run = port.RunScheduler({u"/Query", u"/TN", std::u16string(kTaskName)}, kAskMs);
  return run.hasRun && run.exitCode == 0;
}

void Enable(AutostartPort& port, WindowPort& window) {
  const ToolRun run = port.RunScheduler(
      {u"/Create", u"/F", u"/TN", std::u16string(kTaskName), u"/SC", u"ONLOGON", u"/DELAY", u"0000:15",
       u"/RL", u"HIGHEST", u"/TR", u"\"" + port.ProgramPath() + u"\" -hidden"},
      kCreateMs);
  if (run.hasRun && run.exitCode == 0) {
    (void)port.DeleteRunValue();  // the task starts the program alone from now on, or next to it
    if (HasTask(port)) return;
  }
  window.TellError(
      FormatText(TranslateOr(u"Msg_AutostartEnableFailedFmt",
                             u"Failed to create startup task.\nTask exit code: %lu\nTip: run app as "
                             u"administrator and enable again."),
                 run.exitCode));
}

void Disable(AutostartPort& port, WindowPort& window, bool hasTask) {
  ToolRun run;
  if (hasTask) {
    run = port.RunScheduler({u"/Delete", u"/TN", std::u16string(kTaskName), u"/F"}, kDeleteMs);
  }
  const uint32_t registryError = port.DeleteRunValue();
  if (!(hasTask && HasTask(port)) && !port.HasRunValue()) return;
  window.TellError(
      FormatText(TranslateOr(u"Msg_AutostartDisableFailedFmt",
                             u"Failed to disable startup.\nTask exit code: %lu\nRegistry error: %lu"),
                 run.exitCode, registryError));
}

}  // namespace

std::u16string CommandLineOf(std::u16string_view program, const std::vector<std::u16string>& arguments) {
  std::u16string line = u"\"" + std::u16string(program) + u"\"";
  for (const std::u16string& argument : arguments) line += u" " + Quoted(argument);
  return line;
}

bool IsAutostartEnabled(AutostartPort& port) { return HasTask(port) || port.HasRunValue(); }

void ToggleAutostart(AutostartPort& port, WindowPort& window) {
  const bool hasTask = HasTask(port);
  if (hasTask || port.HasRunValue()) return Disable(port, window, hasTask);
  Enable(port, window);
}

}  // namespace quilmark
