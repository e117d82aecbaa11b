#include "search/results/folder_query.h"

#include <algorithm>
#include <shared_mutex>

#include "platform/text.h"
#include "search/scan/name_scan.h"

namespace quilmark {

namespace {

// Whether a folder is the one asked for, by its full path. Files of one folder mostly come in a row, so
// the last answer is kept; it holds as long as the lock does.
struct ParentTest {
  const VolumeIndex& volume;
  std::u16string_view folder;
  uint64_t lastParent = 0;
  bool lastAnswer = false;
  bool hasAnswer = false;
  std::u16string path;

  bool IsChild(uint32_t index) {
    // A damaged name may look like a path; what holds for it holds for none of its neighbours.
    const bool isPlain =
        NameOf(volume.records[index]).find_first_of(u"\\/") == std::u16string_view::npos;
    const uint64_t parent = volume.records[index].parentFrn;
    if (isPlain && hasAnswer && parent == lastParent) return lastAnswer;
    BuildPathInto(volume, index, path);
    const std::u16string_view above = std::u16string_view(path).substr(0, path.find_last_of(u"\\/"));
    const bool answer = EqualNoCase(NormalizePathQuery(above), folder);
    if (!isPlain) return answer;
    lastAnswer = answer;
    lastParent = parent;
    hasAnswer = true;
    return answer;
  }
};

}  // namespace

void ListFolderFromIndex(VolumeIndex& volume, std::u16string_view folder, ResultSet& results) {
  std::shared_lock lock(volume.indexLock);
  const uint32_t count = volume.records.size();
  lock.unlock();
  for (uint32_t first = 0; first < count; first += kGranule) {
    lock.lock();
    ParentTest test{.volume = volume, .folder = folder};
    const uint32_t last = std::min({count, volume.records.size(), first + kGranule});
    for (uint32_t index = first; index < last; ++index) {
      if (!volume.records[index].deleted && test.IsChild(index)) results.push_back({&volume, index});
    }
    lock.unlock();
  }
}

}  // namespace quilmark
