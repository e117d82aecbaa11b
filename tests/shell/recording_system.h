// A system that writes down what is asked of it and answers as a test has it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/utf.h"
#include "shell/app/system_port.h"

namespace quilmark {

struct RecordingSystem final : SystemPort {
  bool RegisterHotkey(HotkeyKind which, Hotkey hotkey) override {
    Note("register " + NameOf(which) + " " + ToUtf8(HotkeyText(hotkey)));
    return !takesHotkey || takesHotkey(hotkey);
  }
  void UnregisterHotkey(HotkeyKind which) override { Note("unregister " + NameOf(which)); }
  std::u16string HotkeyText(Hotkey hotkey) override {
    const std::string text = std::to_string(hotkey.modifiers) + "+" + std::to_string(hotkey.key);
    return {text.begin(), text.end()};
  }
  void UpdateTrayTip() override { Note("tip"); }
  std::u16string Title() override { return title; }
  void FlashTitle() override { Note("flash"); }
  void FocusMainWindow() override { Note("focus window"); }
  void ShowBalloon(const std::u16string& heading, const std::u16string& text) override {
    Note("balloon " + ToUtf8(heading) + ": " + ToUtf8(text));
  }
  void TellInformation(const std::u16string& heading, const std::u16string& text) override {
    Note("box " + ToUtf8(heading) + ": " + ToUtf8(text));
  }
  void SetPageText(HotkeyKind which, const std::u16string& text) override {
    Note("page " + NameOf(which) + ": " + ToUtf8(text));
  }
  void FocusPageBox(HotkeyKind which) override { Note("focus page " + NameOf(which)); }

  ToolRun RunScheduler(const std::vector<std::u16string>& arguments, uint32_t mostMs) override {
    std::string line = std::to_string(mostMs);
    for (const std::u16string& argument : arguments) line += " " + ToUtf8(argument);
    Note(line);
    return runs ? runs(arguments.front()) : ToolRun{.hasRun = true, .exitCode = 1};
  }
  bool HasRunValue() override { return hasRunValue; }
  uint32_t DeleteRunValue() override {
    Note("delete value");
    if (registryError == 0) hasRunValue = false;
    return registryError;
  }
  std::u16string ProgramPath() override { return u"C:\\Program Files\\Quilmark\\Quilmark.exe"; }
  void OpenAddress(const std::u16string& address) override { Note("open " + ToUtf8(address)); }

  void Note(std::string call) { calls.push_back(std::move(call)); }
  static std::string NameOf(HotkeyKind which) {
    return which == HotkeyKind::kShow ? "show" : "foreground";
  }

  std::vector<std::string> calls;
  std::function<bool(Hotkey)> takesHotkey;           // empty: all
  std::function<ToolRun(std::u16string_view)> runs;  // by the first argument; empty: exit code 1
  std::u16string title = u"Quilmark - 12 results found";
  bool hasRunValue = false;
  uint32_t registryError = 0;
};

}  // namespace quilmark
