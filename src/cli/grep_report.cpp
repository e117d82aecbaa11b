#include "cli/grep_report.h"

#include <algorithm>
#include <cinttypes>
#include <nlohmann/json.hpp>
#include <utility>

namespace quilmark {

namespace {

uint64_t CountOf(const TreeFigures& figures, FileMatch match) {
  return figures.outcomes[static_cast<size_t>(match)];
}

constexpr std::pair<FileMatch, const char*> kReasons[] = {
    {FileMatch::kCannotOpen, "cannot be opened"},
    {FileMatch::kCannotRead, "cannot be read"},
    {FileMatch::kTooLarge, "larger than --max-size"},
    {FileMatch::kPlaceholder, "not stored on this computer"},
    {FileMatch::kNetwork, "on the network"},
    {FileMatch::kNoArchive, "cannot be read as archives"},
};

std::string CountText(uint64_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

bool IsControl(char byte) {
  return (static_cast<unsigned char>(byte) < 0x20 && byte != '\t') || byte == 0x7F;
}

}  // namespace

std::string FormatGrepHit(std::u16string_view path, const std::optional<FileLine>& line,
                          HitFormat format) {
  std::string shown = FormatHit(path, false, format);
  if (!line) return shown + "\n";
  if (format.json) {
    auto object = nlohmann::ordered_json::parse(shown);
    object["line"] = line->number;
    object["text"] = line->text;
    return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
  }
  std::string text = line->text;
  if (format.isShown) std::replace_if(text.begin(), text.end(), IsControl, '?');
  return shown + ":" + std::to_string(line->number) + ":" + text + "\n";
}

std::string GrepProgress(const TreeFigures& figures) {
  return CountText(figures.files, "file", "files") + ", " +
         CountText(CountOf(figures, FileMatch::kHit), "hit", "hits");
}

std::string GrepSummary(const TreeFigures& figures) {
  uint64_t all = 0;
  std::string reasons;
  for (const auto& [match, reason] : kReasons) {
    const uint64_t count = CountOf(figures, match);
    if (count == 0) continue;
    all += count;
    reasons += (reasons.empty() ? "" : ", ") + std::to_string(count) + " " + reason;
  }
  std::string summary;
  if (all != 0) {
    summary = "quilmark: " + CountText(all, "file", "files") + " not searched: " + reasons + "\n";
  }
  const uint64_t folders = figures.unlistedFolders;
  if (folders != 0) {
    summary += "quilmark: " + CountText(folders, "folder", "folders") + " cannot be listed\n";
  }
  return summary;
}

}  // namespace quilmark
