#include "content/run/tree_search.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

#include "platform/background.h"
#include "platform/files.h"
#include "platform/text.h"

namespace quilmark {

namespace {

// Chosen: of a large folder so many files are one piece of work.
constexpr size_t kFilesAPiece = 64;

// A folder to be listed, or some files of one that was.
struct TreePiece {
  std::u16string path;                           // of the folder
  bool isRoot = false;                           // it may be a file
  std::shared_ptr<const FolderListing> listing;  // null: not listed yet
  size_t first = 0, end = 0;                     // entries
};

std::u16string PathIn(std::u16string_view folder, std::u16string_view name) {
  std::u16string path(folder);
  if (!path.ends_with(u'\\')) path += u'\\';
  return path.append(name);
}

}  // namespace

struct TreeSearch {
  TreeQuery query;
  TreeFigures figures;

  std::mutex mutex;
  std::condition_variable changed;
  std::vector<TreePiece> pieces;       // mutex; the next one at the back: few folders lie waiting
  size_t busy = 0;                     // mutex; workers that may still offer pieces
  size_t running = 0;                  // mutex; workers that have not ended
  std::atomic<bool> isEnough = false;  // onHit said so

  bool GoesOn() const { return query.ticket.IsCurrent() && !isEnough; }
};

namespace {

void Offer(TreeSearch& search, std::vector<TreePiece> pieces) {
  if (pieces.empty()) return;
  const std::scoped_lock lock(search.mutex);
  std::move(pieces.begin(), pieces.end(), std::back_inserter(search.pieces));
  search.changed.notify_all();
}

// The next piece, which the caller is busy with then; empty once there is none and none can come.
std::optional<TreePiece> TakePiece(TreeSearch& search) {
  std::unique_lock lock(search.mutex);
  search.changed.wait(
      lock, [&search] { return !search.pieces.empty() || search.busy == 0 || !search.GoesOn(); });
  if (search.pieces.empty() || !search.GoesOn()) return std::nullopt;
  TreePiece piece = std::move(search.pieces.back());
  search.pieces.pop_back();
  ++search.busy;
  return piece;
}

void GiveTurnBack(TreeSearch& search) {
  const std::scoped_lock lock(search.mutex);
  if (--search.busy == 0 || !search.GoesOn()) search.changed.notify_all();
}

// One worker on its way.
class TreeWorker {
 public:
  explicit TreeWorker(TreeSearch& search)
      : search_(search), matcher_(search.query.plan), check_(search.query.ticket) {}

  void Run() {
    while (auto piece = TakePiece(search_)) {
      // Whatever leaves: the others must not wait for this one.
      struct Turn {
        TreeSearch& search;
        ~Turn() { GiveTurnBack(search); }
      } const turn{search_};
      if (piece->listing == nullptr) {
        Enter(*piece);
      } else {
        MatchFiles(*piece);
      }
    }
  }

 private:
  void Enter(const TreePiece& folder) {
    auto listing = std::make_shared<FolderListing>();
    const bool isListed = ListFolder(folder.path, *listing);
    if (!isListed && folder.isRoot && !IsExistingFolder(folder.path)) return MatchNamedFile(folder.path);
    if (!isListed) ++search_.figures.unlistedFolders;
    Offer(search_, PiecesOf(folder.path, std::move(listing)));
  }

  // Files behind folders, so that they are taken first.
  static std::vector<TreePiece> PiecesOf(std::u16string_view path,
                                         std::shared_ptr<const FolderListing> listing) {
    std::vector<TreePiece> pieces;
    for (const FolderEntry& entry : listing->entries) {
      // A link leads to what is met at its own place, or lies outside.
      if (entry.isDirectory && !entry.isLink) {
        pieces.push_back({.path = PathIn(path, listing->NameOf(entry)), .listing = nullptr});
      }
    }
    for (size_t first = 0; first < listing->entries.size(); first += kFilesAPiece) {
      const size_t end = std::min(first + kFilesAPiece, listing->entries.size());
      pieces.push_back({.path = std::u16string(path), .listing = listing, .first = first, .end = end});
    }
    return pieces;
  }

  void MatchFiles(const TreePiece& piece) {
    for (size_t i = piece.first; i < piece.end && search_.GoesOn(); ++i) {
      const FolderEntry& entry = piece.listing->entries[i];
      if (entry.isDirectory) continue;
      const std::u16string_view name = piece.listing->NameOf(entry);
      if (IsWanted(name)) MatchFile(PathIn(piece.path, name), matcher_);
    }
  }

  bool IsWanted(std::u16string_view name) const {
    const auto& exts = search_.query.exts;
    if (exts.empty()) return true;
    const size_t dot = name.rfind(u'.');
    return dot != name.npos &&
           std::find(exts.begin(), exts.end(), FoldText(name.substr(dot))) != exts.end();
  }

  // A link that the user has named leads to its file.
  void MatchNamedFile(const std::u16string& path) {
    MatchPlan plan = search_.query.plan;
    plan.makeContent = [] { return MakeFileContent(LinksOfFiles::kFollowed); };
    FileMatcher matcher(plan);
    MatchFile(path, matcher);
  }

  void MatchFile(const std::u16string& path, FileMatcher& matcher) {
    const FileMatch outcome = matcher.Match(path, check_);
    ++search_.figures.outcomes[static_cast<size_t>(outcome)];
    ++search_.figures.files;
    if (outcome == FileMatch::kHit && !search_.query.onHit(path)) search_.isEnough = true;
  }

  TreeSearch& search_;
  FileMatcher matcher_;
  const WorkCheck check_;
};

// However the worker ends.
struct CountOut {
  TreeSearch& search;
  ~CountOut() {
    const std::scoped_lock lock(search.mutex);
    --search.running;
    search.changed.notify_all();
  }
};

}  // namespace

std::shared_ptr<TreeSearch> StartTreeSearch(TreeQuery query) {
  const auto search = std::make_shared<TreeSearch>();
  search->query = std::move(query);
  for (const std::u16string& root : search->query.roots) {
    search->pieces.push_back({.path = root, .isRoot = true, .listing = nullptr});
  }
  std::reverse(search->pieces.begin(), search->pieces.end());  // the first one is taken first
  search->running = search->query.threads;
  for (size_t i = 0; i < search->query.threads; ++i) {
    const std::function<void()> job = [search] {
      const CountOut out{*search};
      TreeWorker(*search).Run();
    };
    if (!RunBackground("tree_search_worker", job)) job();
  }
  return search;
}

bool WaitForTreeSearch(TreeSearch& search, uint32_t timeoutMs) {
  std::unique_lock lock(search.mutex);
  return search.changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                                 [&search] { return search.running == 0; });
}

const TreeFigures& FiguresOf(const TreeSearch& search) { return search.figures; }

}  // namespace quilmark
