// Folders of a walk, read ahead of it by further threads.
//
// The walk asks for folder after folder in depth-first order; every folder that has been read offers its
// subfolders to whoever is idle, so that most are already there when the walk comes to them.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/files.h"

namespace quilmark {

struct WalkFolderNode {
  enum State { kOffered, kTaken, kRead };
  std::u16string path;
  int depth = 0;  // of the folder below the root
  std::atomic<State> state = kOffered;
  FolderListing listing;                                    // once kRead
  std::vector<std::shared_ptr<WalkFolderNode>> subfolders;  // of its directories, in order; once kRead
};

// Lists a folder; see ListFolder.
using FolderSource = bool (*)(std::u16string_view path, FolderListing& listing);

class FolderReader {
 public:
  // `threads` list folders, the caller of Read included; at least 1. Folders below `deepest` are not
  // offered.
  FolderReader(FolderSource source, unsigned threads, int deepest);
  ~FolderReader();
  FolderReader(const FolderReader&) = delete;
  FolderReader& operator=(const FolderReader&) = delete;

  // Returns when `node` has been read, by this thread or another; reads further ones while it waits.
  void Read(WalkFolderNode& node);

  // The walk is done with the contents of `node`.
  void Release(WalkFolderNode& node);

 private:
  void RunAhead();
  bool TakeAndRead(WalkFolderNode& node);
  std::shared_ptr<WalkFolderNode> PopOffered();  // REQUIRES mutex_ held
  void List(WalkFolderNode& node);

  // Entries that may lie read and not yet walked; keeps a slow walk from holding the whole tree twice.
  static constexpr int64_t kMostEntriesAhead = 500'000;

  const FolderSource source_;
  const int deepest_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::shared_ptr<WalkFolderNode>> offered_;  // mutex_; the next one at the back
  bool stopping_ = false;                                 // mutex_
  int waiting_ = 0;                                       // mutex_; threads in changed_
  std::atomic<int64_t> entriesAhead_ = 0;
  std::vector<std::thread> threads_;
};

}  // namespace quilmark
