#include "content/archive/zip_walk.h"

#include <miniz.h>

#include <algorithm>
#include <compare>
#include <cstring>
#include <map>

#include "content/archive/entry_match.h"
#include "content/archive/entry_pattern.h"

namespace quilmark {

namespace {

constexpr size_t kPackedRead = 64 * 1024;
constexpr uint64_t kMostReadings = 4;        // of all of an archive
constexpr size_t kMostAtOnce = 1024 * 1024;  // bytes between two checks

// The archive's bytes as the library asks for them.
struct ArchiveBytes {
  ByteSource& source;
  const WorkCheck& check;
  mz_zip_archive* zip;
  uint64_t taken = 0;  // bytes that were read until now

  // Nothing once the work does not go on, which ends an entry in the middle.
  size_t ReadAt(uint64_t at, std::span<std::byte> buffer) {
    const uint64_t start = mz_zip_get_archive_file_start_offset(zip);
    const uint64_t size = source.Size();
    if (start > size || at >= size - start || !check.GoesOn()) return 0;
    const uint64_t rest = size - start - at;
    return ReadPieces(start + at,
                      buffer.first(static_cast<size_t>(std::min<uint64_t>(rest, buffer.size()))));
  }

  size_t ReadPieces(uint64_t at, std::span<std::byte> buffer) {
    size_t done = 0;
    while (done < buffer.size() && (done == 0 || check.GoesOn())) {
      const auto piece = buffer.subspan(done, std::min(buffer.size() - done, kMostAtOnce));
      const size_t got = source.ReadAt(ByteOffset{at + done}, piece);
      done += got;
      if (got < piece.size()) break;
    }
    taken += done;
    return done;
  }
};

size_t ReadArchive(void* opaque, mz_uint64 at, void* buffer, size_t size) {
  return static_cast<ArchiveBytes*>(opaque)->ReadAt(at, {static_cast<std::byte*>(buffer), size});
}

// An archive that is open for reading.
class ZipReader {
 public:
  ZipReader(ByteSource& source, const WorkCheck& check) : bytes_{source, check, &zip_, 0} {
    zip_.m_pRead = ReadArchive;
    zip_.m_pIO_opaque = &bytes_;
    // Nothing is looked for by its name.
    isOpen_ =
        mz_zip_reader_init(&zip_, source.Size(), MZ_ZIP_FLAG_DO_NOT_SORT_CENTRAL_DIRECTORY) != MZ_FALSE;
  }
  ~ZipReader() {
    if (isOpen_) mz_zip_reader_end(&zip_);
  }
  ZipReader(const ZipReader&) = delete;
  ZipReader& operator=(const ZipReader&) = delete;

  bool IsOpen() const { return isOpen_; }
  uint64_t Size() const { return bytes_.source.Size(); }
  uint64_t BytesRead() const { return bytes_.taken; }
  uint32_t Count() { return mz_zip_reader_get_num_files(&zip_); }
  mz_zip_archive* Get() { return &zip_; }

 private:
  mz_zip_archive zip_{};
  ArchiveBytes bytes_;
  bool isOpen_ = false;
};

// Where an entry's bytes are in the archive, and how they are packed.
struct StoredBytes {
  uint64_t offset, packedSize, size;
  uint16_t method;
  auto operator<=>(const StoredBytes&) const = default;
};

// What became of stored bytes that were unpacked.
struct Unpacked {
  bool isSound = false;     // they unpack to their size
  bool isSearched = false;  // with the right checksum
  uint32_t crc = 0;         // of what they unpack to
};

class ArchiveWalk {
 public:
  ArchiveWalk(ZipReader& zip, const ArchiveQuery& query, const WorkCheck& check, ArchiveScratch& scratch)
      : zip_(zip), query_(query), check_(check), scratch_(scratch) {}

  FileMatch Run() {
    bool isFound = false;
    for (uint32_t index = 0; !isFound && !isHostile_ && index < zip_.Count() && check_.GoesOn();
         ++index) {
      isFound = Matches(index);
    }
    if (!check_.GoesOn()) return FileMatch::kStale;
    return isFound ? FileMatch::kHit : FileMatch::kMiss;
  }

 private:
  bool Matches(uint32_t index) {
    mz_zip_archive_file_stat entry;
    if (!mz_zip_reader_file_stat(zip_.Get(), index, &entry)) return false;
    if (entry.m_is_directory || entry.m_is_encrypted || !entry.m_is_supported) return false;
    if (!IsWanted(entry.m_filename)) return false;
    if (entry.m_uncomp_size == 0 || entry.m_uncomp_size > kLargestEntry) return false;
    // Of no bytes at all the library makes a text of the size that is claimed, and writes none of it.
    if (entry.m_comp_size == 0) return false;
    const std::string_view text = Unpack(index, entry);
    return !text.empty() && MatchEntry(text, query_.terms, check_, scratch_);
  }

  // By a name as the library tells it: cut after 511 bytes, and at a NUL.
  bool IsWanted(std::string_view name) {
    name_.assign(name);
    for (char& byte : name_) {
      if (byte == '\\') byte = '/';
      if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte + 32);
    }
    const auto& patterns = query_.innerPatterns;
    return std::any_of(patterns.begin(), patterns.end(), [this](const std::string& pattern) {
      return !pattern.empty() && MatchEntryPattern(name_, pattern);
    });
  }

  // Empty for an entry that is damaged, or whose bytes were searched already.
  std::string_view Unpack(uint32_t index, const mz_zip_archive_file_stat& entry) {
    const StoredBytes stored{entry.m_local_header_ofs, entry.m_comp_size, entry.m_uncomp_size,
                             entry.m_method};
    const auto known = unpacked_.find(stored);
    if (known != unpacked_.end()) {
      const Unpacked& former = known->second;
      if (!former.isSound || former.isSearched || former.crc != entry.m_crc32) return {};
    }
    // Entries that do not lie over each other are read once, and some damaged ones do no harm.
    isHostile_ = zip_.BytesRead() > kMostReadings * zip_.Size() + kPackedRead;
    if (isHostile_) return {};
    const auto size = static_cast<size_t>(entry.m_uncomp_size);
    char* const room = scratch_.entry.Room(size);
    char* const packed = scratch_.packed.Room(kPackedRead);
    if (room == nullptr || packed == nullptr) return {};
    mz_zip_clear_last_error(zip_.Get());  // not every failure sets it
    if (mz_zip_reader_extract_to_mem_no_alloc(zip_.Get(), index, room, size, 0, packed, kPackedRead)) {
      unpacked_[stored] = {.isSound = true, .isSearched = true, .crc = entry.m_crc32};
      return {room, size};
    }
    unpacked_[stored] = DamageOf({room, size});
    return {};
  }

  // Of an entry that was just refused.
  Unpacked DamageOf(std::string_view bytes) {
    if (mz_zip_get_last_error(zip_.Get()) != MZ_ZIP_CRC_CHECK_FAILED) return {};
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    return {.isSound = true, .crc = static_cast<uint32_t>(mz_crc32(MZ_CRC32_INIT, data, bytes.size()))};
  }

  ZipReader& zip_;
  const ArchiveQuery& query_;
  const WorkCheck& check_;
  ArchiveScratch& scratch_;
  std::string name_;
  std::map<StoredBytes, Unpacked> unpacked_;
  bool isHostile_ = false;  // more was read than an archive has: the walk ends
};

}  // namespace

FileMatch MatchArchive(ByteSource& source, const ArchiveQuery& query, const WorkCheck& check,
                       ArchiveScratch& scratch) {
  if (!check.GoesOn()) return FileMatch::kStale;
  if (query.terms.groups.empty() || query.innerPatterns.empty()) return FileMatch::kMiss;
  ZipReader zip(source, check);
  if (!zip.IsOpen()) return check.GoesOn() ? FileMatch::kNoArchive : FileMatch::kStale;
  return ArchiveWalk(zip, query, check, scratch).Run();
}

}  // namespace quilmark
