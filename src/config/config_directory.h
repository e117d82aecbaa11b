// The directory that holds all that the program keeps between runs, except one diagnostic log.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// What the user and the system name at this moment. A place that is named counts even if it does not
// exist.
struct ConfigPlaces {
  std::optional<std::u16string> chosen = {};  // environment variable QUILMARK_CONFIG_DIR; not empty
  std::optional<std::u16string> documents = {};
  std::optional<std::u16string> localData = {};
  std::optional<std::u16string> temp = {};
};

// Asks the environment and the system. A place that they do not name is empty.
ConfigPlaces AskConfigPlaces();

// Where the directory is to be.
struct ConfigDirectoryChoice {
  std::u16string path;                             // without a trailing backslash
  std::vector<std::u16string> foldersToMake = {};  // outer first
};

// The first place that is named, in the order of the fields; "C:\Quilmark\config" if none is.
ConfigDirectoryChoice ChooseConfigDirectory(const ConfigPlaces& places);

// The directory, made if it can be; a failure shows when a file in it is written. Without a trailing
// backslash. Looked for at every call, since a user may move the folders while the program runs. Any
// thread.
std::u16string GetConfigDirectory();

// The path of the file `name` in GetConfigDirectory(), which is looked for again.
std::u16string ConfigPath(std::u16string_view name);

}  // namespace quilmark
