// The window that chooses which files a content search opens, as a model: rows with a tick, and what its
// buttons and keys do. Interface thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quilmark {

// An extension that the window offers.
struct PickerRow {
  std::u16string extension;  // lower-case, with its "."
  bool isTicked = false;

  bool operator==(const PickerRow&) const = default;
};

// What the model asks of its window. All calls on the interface thread; Tell and Ask hand out messages
// before they return.
struct PickerScreen {
  virtual ~PickerScreen() = default;

  // Replaces the rows, none of which is selected afterwards.
  virtual void ShowRows(const std::vector<PickerRow>& rows) = 0;

  // Places of the selected rows, from the top.
  virtual std::vector<size_t> SelectedRows() = 0;

  // What stands in the field for extensions of the user's own.
  virtual std::u16string FieldText() = 0;

  // Empties the field and gives it the focus.
  virtual void EmptyField() = 0;

  // A box over the window with a text; true for Yes.
  virtual void Tell(const std::u16string& text) = 0;
  [[nodiscard]] virtual bool Ask(const std::u16string& question) = 0;

  // Opens a file with the program of the user's choice. A failure is not told.
  virtual void OpenFile(const std::u16string& path) = 0;

  // Destroys the window and gives the search box the focus.
  virtual void Close() = 0;
};

struct ExtPicker;

// Whoever can show the window.
struct PickerPort {
  virtual ~PickerPort() = default;

  // Shows it over the main window, or brings up the one that is open. `picker` outlives it.
  virtual void OpenPickerWindow(ExtPicker& picker) = 0;
};

// The buttons and keys of the window.
enum class PickerCommand : uint8_t { kAdd, kDelete, kAll, kInvert, kConfig, kAccept, kCancel };

// What is chosen while the window is open.
struct ExtPicker {
  std::vector<PickerRow> rows;
  bool isBeingEdited = false;  // the file of the list: it is read again whenever the user comes back
  // Takes the ticked extensions, at least one, when the user is done.
  std::function<void(const std::vector<std::u16string>&)> whenPicked;
};

// Fills the window with the extensions of the file, ticked as they were when it was last used.
void OpenPicker(ExtPicker& picker, PickerScreen& screen);

// Reads the file again; ticks stay, and an extension that is new is ticked.
void ReloadPicker(ExtPicker& picker, PickerScreen& screen);

// The window has come to the front: what was edited meanwhile is read.
void ActivatePicker(ExtPicker& picker, PickerScreen& screen);

// The user has ticked the row, or taken the tick away; a place without a row is passed over.
void TickRow(ExtPicker& picker, size_t row, bool isTicked);

// Does what the button or key stands for.
void RunPickerCommand(ExtPicker& picker, PickerScreen& screen, PickerCommand command);

}  // namespace quilmark
