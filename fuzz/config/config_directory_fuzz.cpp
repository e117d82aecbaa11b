// Any texts as the folders that the user and the system name: the first that is named holds the
// directory, and each folder to make is the one before it with one name more.
#include "config/config_directory.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

std::optional<std::u16string> TakeFolder(FuzzInput& input, bool isNamed) {
  std::u16string folder = FromHostBytes(input.TakeLine());
  std::replace(folder.begin(), folder.end(), kNameBackslash, u'\\');
  if (!isNamed) return std::nullopt;
  return folder;
}

bool IsBelow(std::u16string_view inner, std::u16string_view outer) {
  return inner.size() > outer.size() && inner.starts_with(outer);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  const auto named = input.Take<uint8_t>();
  ConfigPlaces places;
  places.chosen = TakeFolder(input, (named & 1) != 0);
  places.documents = TakeFolder(input, (named & 2) != 0);
  places.localData = TakeFolder(input, (named & 4) != 0);
  places.temp = TakeFolder(input, (named & 8) != 0);
  if (places.chosen && places.chosen->empty()) places.chosen.reset();

  const ConfigDirectoryChoice choice = ChooseConfigDirectory(places);
  Require(choice.path.size() == 1 || !choice.path.ends_with(u'\\'));
  Require(choice.foldersToMake.empty() || choice.foldersToMake.back() == choice.path);
  for (size_t i = 1; i < choice.foldersToMake.size(); ++i) {
    Require(IsBelow(choice.foldersToMake[i], choice.foldersToMake[i - 1]));
  }
  if (places.chosen) {
    Require(places.chosen->starts_with(choice.path) && choice.foldersToMake.size() == 1);
    Require(places.chosen->find_first_not_of(u'\\', choice.path.size()) == std::u16string::npos);
    return 0;
  }
  for (const auto& base : {places.documents, places.localData, places.temp}) {
    if (!base) continue;
    Require(choice.path.starts_with(*base) && choice.path.ends_with(u"\\Quilmark\\config"));
    return 0;
  }
  Require(choice.path == u"C:\\Quilmark\\config" && choice.foldersToMake.empty());
  return 0;
}
