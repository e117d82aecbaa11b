// The made-up view in the program of the window tests, beside the search.
#pragma once

#include <cstdint>
#include <optional>

#include "shell/win32/window/main_window.h"
#include "window/program/probe.h"

namespace quilmark {

// Before the window is made, so that its controls are made too.
void OfferMadeUpView(AppState& app);

// Of the probes that are about it; empty for any other.
std::optional<LRESULT> AskMadeUpView(AppState& app, MainWindow& window, Probe probe, uint32_t argument);

}  // namespace quilmark
