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

// A folder of a walk, from its offer until the walk is done with it.
struct PendingFolder {
  enum State { kOffered, kTaken, kRead };
  std::u16string path;
  int depth = 0;          // of the folder below the root
  bool isByLink = false;  // it is a link, or lies below one
  std::atomic<State> state = kOffered;
  FolderListing listing;                                   // once kRead
  std::vector<std::shared_ptr<PendingFolder>> subfolders;  // of its directories, in order; once kRead
};

// Lists a folder as ListFolder does, which says what it returns. Called from several threads at once.
using FolderSource = bool (*)(std::u16string_view path, FolderListing& listing);

// What a call for "PATH\*" takes that knows no long paths: 260 units with the NUL.
inline constexpr size_t kLongestLinkedPath = 257;

// Belongs to the walking thread, which alone calls Read and Release; its own end joins the other
// threads.
class FolderReader {
 public:
  // `threads` list folders, the caller of Read included; at least 1. Folders below `deepest` are not
  // offered, and those that are reached by a link only while their path has at most kLongestLinkedPath
  // units: two links that lead back would double at every level.
  FolderReader(FolderSource source, unsigned threads, int deepest);
  ~FolderReader();
  FolderReader(const FolderReader&) = delete;
  FolderReader& operator=(const FolderReader&) = delete;

  // Returns when `folder` has been read, by this thread or another; reads further ones while it waits.
  void Read(PendingFolder& folder);

  // Says that the walk is done with `folder` and its contents, whose memory is used again.
  void Release(std::shared_ptr<PendingFolder> folder);

 private:
  using FolderList = std::vector<std::shared_ptr<PendingFolder>>;

  void RunAhead();
  bool TakeAndRead(PendingFolder& folder, FolderList& spares);
  void ReadOrGiveBack(PendingFolder& folder, FolderList& spares);
  void List(PendingFolder& folder, FolderList& spares);
  std::shared_ptr<PendingFolder> PopOffered();          // REQUIRES mutex_ held
  std::shared_ptr<PendingFolder> PopAhead();            // REQUIRES mutex_ held; null at the bound
  void Recycle(std::shared_ptr<PendingFolder> folder);  // REQUIRES mutex_ held
  void TakeSpares(FolderList& spares);                  // REQUIRES mutex_ held

  // Entries that may lie read and not yet walked; keeps a slow walk from holding the whole tree twice.
  static constexpr size_t kMostEntriesAhead = 500'000;
  static constexpr size_t kMostSpares = 1'024;
  static constexpr size_t kMostSpareUnits = 8'192;

  const FolderSource source_;
  const int deepest_;
  std::mutex mutex_;
  std::condition_variable changed_;
  FolderList offered_;  // mutex_; the next one at the back
  FolderList
      spares_;  // mutex_; used again with their memory: threads that free what others allocated wait
  FolderList ownSpares_;     // of the walking thread
  bool stopping_ = false;    // mutex_
  size_t entriesAhead_ = 0;  // mutex_
  int waiting_ = 0;          // mutex_; threads in changed_
  std::vector<std::thread> threads_;
};

}  // namespace quilmark
