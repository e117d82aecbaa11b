#include "shell/list/cell_text.h"

#include "platform/format.h"

namespace quilmark {

std::u16string SizeText(uint64_t bytes) {
  constexpr uint64_t kKilo = 1'024, kMega = 0x10'0000, kGiga = 0x4000'0000;
  if (bytes < kKilo) return FormatText(u"%lld B", bytes);
  if (bytes < kMega) return FormatText(u"%lld KB", bytes >> 10);
  if (bytes < kGiga) return FormatText(u"%.2f MB", static_cast<double>(bytes) / kMega);
  return FormatText(u"%.2f GB", static_cast<double>(bytes) / kGiga);
}

std::u16string TimeText(FileTime time) {
  if (time == 0) return std::u16string(kAbsent);
  const LocalTime local = LocalTimeOf(time);
  return FormatText(u"%04d-%02d-%02d %02d:%02d", local.year, local.month, local.day, local.hour,
                    local.minute);
}

std::u16string RowNumberText(uint64_t row) { return FormatText(u"%02lld", row + 1); }

}  // namespace quilmark
