#include "index/folder_reader.h"

#include "index/search_engine.h"

namespace quilmark {

FolderReader::FolderReader(FolderSource source, unsigned threads, int deepest)
    : source_(source), deepest_(deepest) {
  for (unsigned i = 1; i < threads; ++i) threads_.emplace_back(&FolderReader::RunAhead, this);
}

FolderReader::~FolderReader() {
  {
    const std::scoped_lock lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

// Copies what the thread's own listing holds, so that each folder keeps no more memory than it needs.
void FolderReader::List(WalkFolderNode& node) {
  thread_local FolderListing scratch;
  if (!source_(node.path, scratch)) scratch.Clear();
  node.listing.names = scratch.names;
  node.listing.entries = scratch.entries;
  if (node.depth >= deepest_) return;
  for (const FolderEntry& entry : scratch.entries) {
    if (!entry.isDirectory) continue;
    auto& subfolder = node.subfolders.emplace_back(std::make_shared<WalkFolderNode>());
    subfolder->path.reserve(node.path.size() + 1 + entry.nameLength);
    subfolder->path.append(node.path).append(1, u'\\').append(scratch.NameOf(entry));
    subfolder->depth = node.depth + 1;
  }
}

bool FolderReader::TakeAndRead(WalkFolderNode& node) {
  auto expected = WalkFolderNode::kOffered;
  if (!node.state.compare_exchange_strong(expected, WalkFolderNode::kTaken)) return false;
  List(node);
  entriesAhead_ += static_cast<int64_t>(node.listing.entries.size());
  bool wake = false;
  {
    const std::scoped_lock lock(mutex_);
    // Backwards, so that the first subfolder is the next to be read.
    offered_.insert(offered_.end(), node.subfolders.rbegin(), node.subfolders.rend());
    node.state = WalkFolderNode::kRead;
    wake = waiting_ > 0;
  }
  if (wake) changed_.notify_all();
  return true;
}

std::shared_ptr<WalkFolderNode> FolderReader::PopOffered() {
  while (!offered_.empty()) {
    auto node = std::move(offered_.back());
    offered_.pop_back();
    if (node->state == WalkFolderNode::kOffered) return node;  // else the walk came first
  }
  return nullptr;
}

void FolderReader::Read(WalkFolderNode& node) {
  if (TakeAndRead(node)) return;
  std::unique_lock lock(mutex_);
  while (node.state != WalkFolderNode::kRead) {
    if (const auto other = PopOffered()) {
      lock.unlock();
      TakeAndRead(*other);
      lock.lock();
      continue;
    }
    ++waiting_;
    changed_.wait(lock);
    --waiting_;
  }
}

void FolderReader::Release(WalkFolderNode& node) {
  const auto entries = static_cast<int64_t>(node.listing.entries.size());
  node.listing = {};
  node.subfolders.clear();
  if (entriesAhead_.fetch_sub(entries) < kMostEntriesAhead) return;
  const std::scoped_lock lock(mutex_);  // a thread that is about to wait sees the new number
  changed_.notify_all();
}

void FolderReader::RunAhead() {
  std::unique_lock lock(mutex_);
  while (!stopping_ && !ShutdownRequested) {
    auto node = entriesAhead_ < kMostEntriesAhead ? PopOffered() : nullptr;
    if (node != nullptr) {
      lock.unlock();
      TakeAndRead(*node);
      node.reset();
      lock.lock();
      continue;
    }
    ++waiting_;
    changed_.wait(lock);
    --waiting_;
  }
}

}  // namespace quilmark
