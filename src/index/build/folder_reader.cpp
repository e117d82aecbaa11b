#include "index/build/folder_reader.h"

#include <exception>
#include <system_error>

#include "platform/shutdown.h"

namespace quilmark {

FolderReader::FolderReader(FolderSource source, unsigned threads, int deepest)
    : source_(source), deepest_(deepest) {
  threads_.reserve(threads);
  spares_.reserve(kMostSpares);
  try {
    for (unsigned i = 1; i < threads; ++i) threads_.emplace_back(&FolderReader::RunAhead, this);
  } catch (const std::system_error&) {
    // The walk reads what nobody reads ahead of it.
  }
}

FolderReader::~FolderReader() {
  {
    const std::scoped_lock lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

static std::shared_ptr<PendingFolder> TakeOne(std::vector<std::shared_ptr<PendingFolder>>& spares) {
  if (spares.empty()) return std::make_shared<PendingFolder>();
  auto folder = std::move(spares.back());
  spares.pop_back();
  return folder;
}

void FolderReader::List(PendingFolder& folder, FolderList& spares) {
  if (folder.isByLink && folder.path.size() > kLongestLinkedPath) return;
  source_(folder.path, folder.listing);  // what was read before a failure stays
  if (folder.depth >= deepest_) return;
  for (const FolderEntry& entry : folder.listing.entries) {
    if (!entry.isDirectory) continue;
    auto& subfolder = folder.subfolders.emplace_back(TakeOne(spares));
    subfolder->path.reserve(folder.path.size() + 1 + entry.nameLength);
    subfolder->path.assign(folder.path).append(1, u'\\').append(folder.listing.NameOf(entry));
    subfolder->depth = folder.depth + 1;
    subfolder->isByLink = folder.isByLink || entry.isLink;
  }
}

bool FolderReader::TakeAndRead(PendingFolder& folder, FolderList& spares) {
  auto expected = PendingFolder::kOffered;
  if (!folder.state.compare_exchange_strong(expected, PendingFolder::kTaken)) return false;
  List(folder, spares);
  bool wake = false;
  {
    const std::scoped_lock lock(mutex_);
    TakeSpares(spares);
    // Backwards, so that the first subfolder is the next to be read.
    offered_.insert(offered_.end(), folder.subfolders.rbegin(), folder.subfolders.rend());
    entriesAhead_ += folder.listing.entries.size();
    folder.state = PendingFolder::kRead;
    wake = waiting_ > 0;
  }
  if (wake) changed_.notify_all();
  return true;
}

std::shared_ptr<PendingFolder> FolderReader::PopOffered() {
  while (!offered_.empty()) {
    auto folder = std::move(offered_.back());
    offered_.pop_back();
    if (folder->state == PendingFolder::kOffered) return folder;
    Recycle(std::move(folder));  // the walk came first
  }
  return nullptr;
}

std::shared_ptr<PendingFolder> FolderReader::PopAhead() {
  return entriesAhead_ < kMostEntriesAhead ? PopOffered() : nullptr;
}

// Only the last owner gives a folder back: whoever else holds it goes by its state. Every owner lets go
// under the lock, so that the last one sees what the others did.
void FolderReader::Recycle(std::shared_ptr<PendingFolder> folder) {
  if (folder.use_count() != 1 || spares_.size() >= kMostSpares) return;
  if (folder->listing.names.capacity() > kMostSpareUnits) return;
  folder->listing.Clear();
  folder->subfolders.clear();
  folder->state = PendingFolder::kOffered;
  spares_.push_back(std::move(folder));
}

void FolderReader::TakeSpares(FolderList& spares) {
  while (spares.size() < 16 && !spares_.empty()) {
    spares.push_back(std::move(spares_.back()));
    spares_.pop_back();
  }
}

void FolderReader::Read(PendingFolder& folder) {
  if (TakeAndRead(folder, ownSpares_)) return;
  std::unique_lock lock(mutex_);
  while (folder.state != PendingFolder::kRead) {
    const bool isGivenBack = folder.state == PendingFolder::kOffered;
    const auto other = isGivenBack ? nullptr : PopAhead();
    if (isGivenBack || other != nullptr) {
      lock.unlock();
      TakeAndRead(isGivenBack ? folder : *other, ownSpares_);
      lock.lock();
      continue;
    }
    ++waiting_;
    changed_.wait(lock);
    --waiting_;
  }
}

void FolderReader::Release(std::shared_ptr<PendingFolder> folder) {
  const std::scoped_lock lock(mutex_);
  const bool wasFull = entriesAhead_ >= kMostEntriesAhead;
  entriesAhead_ -= folder->listing.entries.size();
  Recycle(std::move(folder));
  if (wasFull) changed_.notify_all();
}

// What fails here, as where memory is short, is left to the walk, which knows what to do about it.
void FolderReader::ReadOrGiveBack(PendingFolder& folder, FolderList& spares) {
  try {
    TakeAndRead(folder, spares);
  } catch (const std::exception&) {
    folder.listing.Clear();
    folder.subfolders.clear();
    {
      const std::scoped_lock lock(mutex_);
      folder.state = PendingFolder::kOffered;
    }
    changed_.notify_all();
  }
}

void FolderReader::RunAhead() {
  FolderList spares;
  std::unique_lock lock(mutex_);
  while (!stopping_ && !ShutdownRequested) {
    auto folder = PopAhead();
    if (folder != nullptr) {
      lock.unlock();
      ReadOrGiveBack(*folder, spares);
      lock.lock();
      folder.reset();
      continue;
    }
    ++waiting_;
    changed_.wait(lock);
    --waiting_;
  }
}

}  // namespace quilmark
