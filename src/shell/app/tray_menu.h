// The menu of the icon in the notification area. Interface thread.
#pragma once

#include <cstdint>
#include <vector>

#include "shell/app/app_state.h"
#include "shell/view/menu.h"

namespace quilmark {

// What the menu offers; `isAutostartEnabled` is shown by a check mark.
std::vector<MenuRow> TrayMenuRows(bool isAutostartEnabled);

// Carries a choice out, or another command of the tray that window_ids.h names; 0 stands for none. Gives
// memory back afterwards. Needs AppState::system and AppState::theme. May show message boxes before it
// returns.
Effects OnTrayChoice(AppState& app, const ViewContext& context, uint16_t choice);

}  // namespace quilmark
