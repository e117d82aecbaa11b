// A window of which nothing is asked.
#pragma once

#include "shell/view/window_port.h"

namespace quilmark {

struct SilentWindow : WindowPort {
  void StartTimer(uint32_t, uint32_t) override {}
  void StopTimer(uint32_t) override {}
  void SetTitle(const std::u16string&) override {}
  void SetStatus(const std::u16string&) override {}
  void SetText(int, const std::u16string&) override {}
  void PlaceCaret(int, size_t) override {}
  std::u16string TextOf(int) override { return {}; }
  void SetItems(int, const std::vector<std::u16string>&, int) override {}
  void EnableControl(int) override {}
  void RedrawTags() override {}
  std::optional<WindowPlacement> Placement() override { return std::nullopt; }
  bool IsVisible() override { return true; }
  bool SystemShutsDown() override { return false; }
  void TrimSelf() override {}
  void TrimSelfInJob() override {}
  void TrimOthersInJob() override {}
  void CarryOut(const Effects&) override {}
  void TellError(const std::u16string&) override {}
  void Hide() override {}
  void ShowAndRaise() override {}
  void Destroy() override {}
  void PostClose() override {}
  TrayIconState AddOrUpdateTrayIcon() override { return TrayIconState::kAbsent; }
};

}  // namespace quilmark
