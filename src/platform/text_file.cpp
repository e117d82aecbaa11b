#include "platform/text_file.h"

#include <cstdint>
#include <limits>

#include "platform/files.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

std::u16string FromUtf16Bytes(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size() / 2 + 1);
  size_t i = 0;
  for (; i + 1 < bytes.size(); i += 2) {
    const unsigned low = static_cast<unsigned char>(bytes[i]);
    const unsigned high = static_cast<unsigned char>(bytes[i + 1]);
    text.push_back(static_cast<char16_t>(high << 8 | low));
  }
  if (i < bytes.size()) text.push_back(kReplacement);
  return text;
}

std::u16string DecodeBytes(std::string_view bytes) {
  if (bytes.starts_with(kUtf16Mark)) return FromUtf16Bytes(bytes.substr(kUtf16Mark.size()));
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  return FromUtf8(bytes);
}

// Takes the CR out of each CR LF.
void JoinLineEnds(std::u16string& text) {
  size_t kept = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isLineEnd = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
    if (!isLineEnd) text[kept++] = text[i];
  }
  text.resize(kept);
}

// What the runtime's number readers step over.
bool IsBlank(char16_t unit) { return unit == u' ' || (unit >= u'\t' && unit <= u'\r'); }

}  // namespace

std::u16string DecodeText(std::string_view bytes) {
  std::u16string text = DecodeBytes(bytes);
  JoinLineEnds(text);
  return text;
}

std::string EncodeTextLines(std::u16string_view text) {
  const std::string plain = ToUtf8(text);
  std::string bytes;
  bytes.reserve(plain.size() + plain.size() / 16);
  for (const char byte : plain) {
    if (byte == '\n') bytes.push_back('\r');
    bytes.push_back(byte);
  }
  return bytes;
}

std::optional<std::u16string> ReadTextFile(std::u16string_view path) {
  const std::optional<std::string> bytes = ReadFileBytes(path);
  if (!bytes) return std::nullopt;
  return DecodeText(*bytes);
}

std::string TextFileBytes(std::u16string_view text) {
  return std::string(kUtf8Mark) + EncodeTextLines(text);
}

bool WriteTextFile(std::u16string_view path, std::u16string_view text) {
  return WriteFileBytes(path, TextFileBytes(text));
}

bool AppendTextFile(std::u16string_view path, std::u16string_view text) {
  return AppendFileBytes(path, EncodeTextLines(text), kUtf8Mark);
}

std::optional<std::u16string_view> NextLine(TextLines& lines) {
  if (lines.position >= lines.text.size()) return std::nullopt;
  std::u16string_view line = lines.text.substr(lines.position, lines.limit);
  const size_t end = line.find(u'\n');
  if (end != std::u16string_view::npos) line = line.substr(0, end + 1);
  lines.position += line.size();
  return line;
}

std::u16string_view TrimText(std::u16string_view text) {
  const size_t last = text.find_last_not_of(u" \t\r\n");
  if (last == std::u16string_view::npos) return {};
  text = text.substr(0, last + 1);
  return text.substr(text.find_first_not_of(u" \t"));
}

std::optional<KeyValue> SplitKeyValue(std::u16string_view line) {
  const size_t equals = line.find(u'=');
  if (equals == std::u16string_view::npos) return std::nullopt;
  return KeyValue{TrimText(line.substr(0, equals)), TrimText(line.substr(equals + 1))};
}

int ParseInt(std::u16string_view text) {
  using Limits = std::numeric_limits<int32_t>;
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  const bool isNegative = text.starts_with(u'-');
  if (isNegative || text.starts_with(u'+')) text.remove_prefix(1);

  int64_t number = 0;
  for (const char16_t unit : text) {
    if (unit < u'0' || unit > u'9' || number > Limits::max()) break;
    number = number * 10 + (unit - u'0');
  }
  if (isNegative) number = -number;
  if (number > Limits::max()) return Limits::max();
  return number < Limits::min() ? Limits::min() : static_cast<int>(number);
}

}  // namespace quilmark
