// The bytes of one file, for whoever reads through a great many of them.
//
// A file is read from its first byte to its last, or looked at as a whole where the system gives its
// pages away. Files whose content stands elsewhere and would have to be fetched are never opened.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace quilmark {

enum class ContentOpening : uint8_t {
  kOpened,
  kCannotOpen,   // no such file, no rights, or held by another program
  kPlaceholder,  // its content would have to be fetched first
  kLink,         // a link, where these are refused
  kNoFile,       // a pipe, a device or a folder: nothing of it is read
};

// Whether a name that is a link leads to what it names, or is no file to be read.
enum class LinksOfFiles : uint8_t { kFollowed, kRefused };

// One file at a time, one thread at a time. Made once and used for file after file.
class FileContent {
 public:
  virtual ~FileContent() = default;  // closes the file

  // Opens a path of files.h for reading in order, sharing it with everybody; closes the former file.
  [[nodiscard]] virtual ContentOpening Open(std::u16string_view path) = 0;

  // Of the open file, in bytes. Empty where the system does not say, or where this is no plain file.
  [[nodiscard]] virtual std::optional<uint64_t> Size() = 0;

  // Whether View is the way to a file that fits. If not, a file is read, and a read that gives fewer
  // bytes than were asked for was the last one.
  virtual bool HasViews() const = 0;

  // All bytes of the open file where they stand, until the next Open or Close; to be looked at within
  // Look alone. Empty on failure, and for a file without bytes.
  [[nodiscard]] virtual std::optional<std::span<const char>> View() = 0;

  // Runs look(subject), which reads the view. False if a page could not be had: look was left in the
  // middle, without the end of any scope in it, so it owns nothing and takes no lock.
  [[nodiscard]] virtual bool Look(void (*look)(void* subject), void* subject) = 0;

  // Fills `buffer` with the bytes behind those that were read last; fewer only at the end. Empty on
  // failure; what was read before it is lost.
  [[nodiscard]] virtual std::optional<size_t> Read(std::span<char> buffer) = 0;

  // Gives the view and the file back. No effect without one.
  virtual void Close() = 0;
};

// That of the system. Windows refuses links whatever is asked: they may lead to
// another machine.
[[nodiscard]] std::unique_ptr<FileContent> MakeFileContent(LinksOfFiles links = LinksOfFiles::kFollowed);

// Reads the first `most` bytes of a file and drops them, so that the system has them at hand. No effect
// where that fails, and on placeholders.
void WarmFileContent(std::u16string_view path, uint64_t most);

}  // namespace quilmark
