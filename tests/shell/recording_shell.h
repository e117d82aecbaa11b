// A shell of the system that writes down what is asked of it.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/utf.h"
#include "shell/actions/shell_port.h"

namespace quilmark {

// Answers as a test has it; touches no file by itself.
struct RecordingShell : ShellPort {
  void Execute(ShellVerb verb, const std::u16string& path) override {
    static constexpr const char* kVerbs[] = {"open ", "runas ", "properties "};
    Write(kVerbs[static_cast<size_t>(verb)] + ToUtf8(path));
  }
  bool SelectInFileManager(const std::u16string& path) override {
    Write("select " + ToUtf8(path));
    return selects;
  }
  bool CopyText(const std::u16string& text) override {
    Write("text " + ToUtf8(text));
    return takesClipboard;
  }
  bool CopyFiles(const std::vector<std::u16string>& paths, DropEffect effect) override {
    Write((effect == DropEffect::kMove ? "cut " : "copy ") + Joined(paths));
    return takesClipboard;
  }
  bool DeleteByOperation(const std::u16string& path, Undo undo) override {
    Write("operation " + Told(undo) + ToUtf8(path));
    return operationDeletes && operationDeletes(path);
  }
  bool DeleteByOldCall(const std::u16string& path, Undo undo) override {
    Write("old call " + Told(undo) + ToUtf8(path));
    return oldCallDeletes && oldCallDeletes(path);
  }
  bool DeleteDirectly(const std::u16string& path) override {
    Write("directly " + ToUtf8(path));
    return directlyDeletes && directlyDeletes(path);
  }
  bool Ask(const BoxText& question) override {
    Write("ask");
    questions.push_back(question);
    if (whileAsked) whileAsked();
    return saysYes;
  }
  void Tell(const BoxText& notice) override {
    Write("tell");
    notices.push_back(notice);
  }
  bool Drag(const std::vector<std::u16string>& paths) override {
    Write("drag " + Joined(paths));
    if (whileDragged) whileDragged();
    return drags;
  }
  void ShowSystemMenu(const std::vector<std::u16string>& paths) override {
    Write("menu " + Joined(paths));
  }

  static std::string Joined(const std::vector<std::u16string>& paths) {
    std::string all;
    for (const std::u16string& path : paths) all += (all.empty() ? "" : "|") + ToUtf8(path);
    return all;
  }

  std::vector<std::string> calls;  // in their order
  std::vector<BoxText> questions, notices;
  std::function<bool(const std::u16string&)> operationDeletes, oldCallDeletes, directlyDeletes;
  std::function<void(const std::string&)> afterCall;  // what comes in before a call returns
  std::function<void()> whileAsked, whileDragged;     // and while the user thinks, or drags
  bool selects = true, takesClipboard = true, saysYes = true, drags = true;

 private:
  static std::string Told(Undo undo) { return undo == Undo::kYes ? "with undo " : ""; }
  void Write(std::string call) {
    calls.push_back(std::move(call));
    if (afterCall) afterCall(calls.back());
  }
};

}  // namespace quilmark
