#include "config/config_directory.h"

#include "platform/files.h"
#include "platform/known_folders.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr std::u16string_view kLastResort = u"C:\\Quilmark\\config";

std::u16string Join(std::u16string folder, std::u16string_view name) {
  if (!folder.ends_with(u'\\')) folder += u'\\';
  folder += name;
  return folder;
}

ConfigDirectoryChoice ChoiceUnder(const std::u16string& base) {
  const std::u16string outer = Join(base, u"Quilmark");
  const std::u16string inner = Join(outer, u"config");
  return {.path = inner, .foldersToMake = {outer, inner}};
}

ConfigDirectoryChoice ChoiceOfUser(std::u16string path) {
  while (path.size() > 1 && path.ends_with(u'\\')) path.pop_back();
  return {.path = path, .foldersToMake = {path}};
}

}  // namespace

ConfigPlaces AskConfigPlaces() {
  ConfigPlaces places = {
      .documents = DocumentsFolder(), .localData = LocalDataFolder(), .temp = TempFolder()};
  const std::optional<std::u16string> typed = EnvironmentText("QUILMARK_CONFIG_DIR");
  if (typed && !typed->empty()) places.chosen = PathFromHost(ToHostBytes(*typed));
  return places;
}

ConfigDirectoryChoice ChooseConfigDirectory(const ConfigPlaces& places) {
  if (places.chosen) return ChoiceOfUser(*places.chosen);
  for (const auto& base : {places.documents, places.localData, places.temp}) {
    if (base) return ChoiceUnder(*base);
  }
  return {.path = std::u16string(kLastResort)};
}

std::u16string GetConfigDirectory() {
  ConfigDirectoryChoice choice = ChooseConfigDirectory(AskConfigPlaces());
  if (IsExistingFolder(choice.path)) return choice.path;
  ForgetKnownFolders();  // the user may have moved it away
  choice = ChooseConfigDirectory(AskConfigPlaces());
  for (const std::u16string& folder : choice.foldersToMake) MakeFolder(folder);
  return choice.path;
}

std::u16string ConfigPath(std::u16string_view name) {
  return GetConfigDirectory().append(u"\\").append(name);
}

}  // namespace quilmark
