#include "shell/settings/ext_picker.h"

#include <algorithm>

#include "config/config_directory.h"
#include "config/translate.h"
#include "content/settings/list_files.h"
#include "content/settings/picker_exts.h"
#include "platform/text.h"

namespace quilmark {

namespace {

using Extensions = std::vector<std::u16string>;

std::vector<PickerRow>::iterator FindRow(std::vector<PickerRow>& rows, std::u16string_view extension) {
  return std::find_if(rows.begin(), rows.end(),
                      [&](const PickerRow& row) { return EqualNoCase(row.extension, extension); });
}

bool Holds(const Extensions& all, std::u16string_view extension) {
  return std::any_of(all.begin(), all.end(),
                     [&](const std::u16string& one) { return EqualNoCase(one, extension); });
}

Extensions ExtensionsOf(const std::vector<PickerRow>& rows) {
  Extensions all;
  for (const PickerRow& row : rows) all.push_back(row.extension);
  return all;
}

Extensions TickedOf(const std::vector<PickerRow>& rows) {
  Extensions ticked;
  for (const PickerRow& row : rows) {
    if (row.isTicked) ticked.push_back(row.extension);
  }
  return ticked;
}

void Fill(ExtPicker& picker, PickerScreen& screen) {
  const Extensions ticked = SelectedPickerExts();
  picker.rows.clear();
  for (const std::u16string& extension : LoadPickerExts()) {
    picker.rows.push_back({extension, Holds(ticked, extension)});
  }
  screen.ShowRows(picker.rows);
}

void Add(ExtPicker& picker, PickerScreen& screen) {
  const Extensions added = ParseExtList(screen.FieldText());
  if (added.empty()) {
    return screen.Tell(TranslateOr(u"ContentExt_InputHint", u"Enter extensions, e.g. .pdf or pdf,docx"));
  }
  for (const std::u16string& extension : added) {
    const auto row = FindRow(picker.rows, extension);
    if (row != picker.rows.end()) {
      row->isTicked = true;
    } else {
      picker.rows.push_back({extension, true});
    }
  }
  SavePickerExts(ExtensionsOf(picker.rows));
  screen.ShowRows(picker.rows);
  screen.EmptyField();
}

// The ticked rows or, if none is ticked, the selected ones.
Extensions ToBeDeleted(const ExtPicker& picker, PickerScreen& screen) {
  Extensions doomed = TickedOf(picker.rows);
  if (!doomed.empty()) return doomed;
  for (const size_t row : screen.SelectedRows()) {
    if (row < picker.rows.size()) doomed.push_back(picker.rows[row].extension);
  }
  return doomed;
}

void Delete(ExtPicker& picker, PickerScreen& screen) {
  const Extensions doomed = ToBeDeleted(picker, screen);
  if (doomed.empty()) {
    return screen.Tell(
        TranslateOr(u"ContentExt_DeleteHint", u"Check or select extensions to delete first."));
  }
  if (!screen.Ask(TranslateOr(
          u"ContentExt_DeleteConfirm",
          u"Delete the selected extensions from the list?\n(This also updates the config file.)"))) {
    return;
  }
  std::erase_if(picker.rows, [&](const PickerRow& row) { return Holds(doomed, row.extension); });
  SavePickerExts(ExtensionsOf(picker.rows));
  if (picker.rows.empty()) return Fill(picker, screen);  // the defaults are back
  screen.ShowRows(picker.rows);
}

void TickAll(ExtPicker& picker, PickerScreen& screen) {
  for (PickerRow& row : picker.rows) row.isTicked = true;
  screen.ShowRows(picker.rows);
}

void Invert(ExtPicker& picker, PickerScreen& screen) {
  for (PickerRow& row : picker.rows) row.isTicked = !row.isTicked;
  screen.ShowRows(picker.rows);
}

void Edit(ExtPicker& picker, PickerScreen& screen) {
  picker.isBeingEdited = true;
  screen.OpenFile(ConfigPath(PickerExtsFile().name));
}

void Accept(ExtPicker& picker, PickerScreen& screen) {
  const Extensions ticked = TickedOf(picker.rows);
  if (ticked.empty()) {
    return screen.Tell(TranslateOr(u"ContentExt_NeedOne", u"Please check at least one extension."));
  }
  SavePickerExts(ExtensionsOf(picker.rows));
  // The window ends with the call: what is left to be done needs none of its parts.
  const auto whenPicked = picker.whenPicked;
  screen.Close();
  if (whenPicked) whenPicked(ticked);
}

}  // namespace

void OpenPicker(ExtPicker& picker, PickerScreen& screen) {
  picker.isBeingEdited = false;
  Fill(picker, screen);
}

void ReloadPicker(ExtPicker& picker, PickerScreen& screen) {
  std::vector<PickerRow> rows;
  for (const std::u16string& extension : LoadPickerExts()) {
    const auto former = FindRow(picker.rows, extension);
    rows.push_back({extension, former == picker.rows.end() || former->isTicked});
  }
  if (rows == picker.rows) return;  // what is selected stays
  picker.rows = std::move(rows);
  screen.ShowRows(picker.rows);
}

void ActivatePicker(ExtPicker& picker, PickerScreen& screen) {
  if (picker.isBeingEdited) ReloadPicker(picker, screen);
}

void TickRow(ExtPicker& picker, size_t row, bool isTicked) {
  if (row < picker.rows.size()) picker.rows[row].isTicked = isTicked;
}

void RunPickerCommand(ExtPicker& picker, PickerScreen& screen, PickerCommand command) {
  switch (command) {
    case PickerCommand::kAdd:
      return Add(picker, screen);
    case PickerCommand::kDelete:
      return Delete(picker, screen);
    case PickerCommand::kAll:
      return TickAll(picker, screen);
    case PickerCommand::kInvert:
      return Invert(picker, screen);
    case PickerCommand::kConfig:
      return Edit(picker, screen);
    case PickerCommand::kAccept:
      return Accept(picker, screen);
    case PickerCommand::kCancel:
      return screen.Close();
  }
}

}  // namespace quilmark
