// The mouse in the list: rows, columns, scrollbars, the tip of a row.
#pragma once

#include "shell/win32/main_window.h"

namespace quilmark {

void OnListPress(AppState& app, MainWindow& window, Point point, WPARAM keys);
void OnListRelease(AppState& app, MainWindow& window);
void OnListMove(AppState& app, MainWindow& window, Point point);
void OnListRest(AppState& app, MainWindow& window, Point point);  // the tip of its cell
void OnListLeave(AppState& app, MainWindow& window);

// What is under a mouse that stands still, after rows have moved below it.
void RefreshHover(AppState& app, MainWindow& window);

// A wheel's turn over the sidebar, by whole categories and never the list. False elsewhere.
bool ScrollSidebar(AppState& app, MainWindow& window, Point point, int delta);

// True if the list has a cursor of its own there.
bool SetListCursor(const AppState& app, const MainWindow& window, Point point);

// The hidden controls that keep range, page and position of the list for whoever asks the system.
void SyncScrollState(const AppState& app, const MainWindow& window);

// Fits the path column to the rows in view.
void FitColumns(AppState& app, const MainWindow& window);

}  // namespace quilmark
