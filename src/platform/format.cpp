#include "platform/format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr size_t kMostColumns = 1'000;  // of a width and of a precision
constexpr size_t kUsualDecimals = 6;    // of %f without a precision

// One form of a pattern, such as "%-08.3lld".
struct Form {
  bool leftAligned = false;
  bool zeroPadded = false;
  bool plusSign = false;
  bool blankSign = false;
  bool alternate = false;
  size_t width = 0;
  std::optional<size_t> precision;
  char16_t conversion = 0;
  size_t length = 0;  // units, without the percent sign
};

// What a form makes of its argument before it is padded.
struct Rendered {
  std::u16string prefix;  // a sign or "0x": zeros of a width stand behind it
  std::u16string body;
  bool takesZeros = false;
};

// Reads the digits at `position` and steps over them.
size_t ReadColumns(std::u16string_view text, size_t& position) {
  size_t columns = 0;
  for (; position < text.size() && text[position] >= u'0' && text[position] <= u'9'; ++position) {
    columns = std::min<size_t>(columns * 10 + (text[position] - u'0'), kMostColumns);
  }
  return columns;
}

size_t ReadFlags(std::u16string_view text, Form& form) {
  size_t position = 0;
  for (; position < text.size(); ++position) {
    switch (text[position]) {
      case u'-':
        form.leftAligned = true;
        break;
      case u'0':
        form.zeroPadded = true;
        break;
      case u'+':
        form.plusSign = true;
        break;
      case u' ':
        form.blankSign = true;
        break;
      case u'#':
        form.alternate = true;
        break;
      default:
        return position;
    }
  }
  return position;
}

size_t LengthOfSizePrefix(std::u16string_view text) {
  // A prefix that begins another one stands behind it.
  for (const std::u16string_view prefix : {u"I64", u"hh", u"h", u"ll", u"l", u"z", u"j", u"t", u"w"}) {
    if (text.starts_with(prefix)) return prefix.size();
  }
  return 0;
}

// The form whose percent sign stands before `text`; empty for one that is not known.
std::optional<Form> ParseForm(std::u16string_view text) {
  Form form;
  size_t position = ReadFlags(text, form);
  form.width = ReadColumns(text, position);
  if (position < text.size() && text[position] == u'.') {
    ++position;
    form.precision = ReadColumns(text, position);
  }
  position += LengthOfSizePrefix(text.substr(position));
  if (position == text.size()) return std::nullopt;
  form.conversion = text[position];
  if (std::u16string_view(u"diuxXcsf").find(form.conversion) == std::u16string_view::npos)
    return std::nullopt;
  form.length = position + 1;
  return form;
}

std::u16string Widen(std::string_view ascii) { return std::u16string(ascii.begin(), ascii.end()); }

std::u16string SignOf(const Form& form, bool negative) {
  if (negative) return u"-";
  if (form.plusSign) return u"+";
  return form.blankSign ? u" " : u"";
}

std::u16string IntegerDigits(uint64_t number, int base = 10) {
  char digits[64];
  const auto end = std::to_chars(digits, digits + sizeof digits, number, base).ptr;
  return Widen({digits, end});
}

bool IsNegative(const FormatArgument& number) {
  if (const auto* whole = std::get_if<int64_t>(&number)) return *whole < 0;
  const auto* real = std::get_if<double>(&number);
  return real != nullptr && std::signbit(*real);
}

// The bits of an integer argument.
uint64_t BitsOf(const FormatArgument& integer) {
  if (const auto* whole = std::get_if<int64_t>(&integer)) return static_cast<uint64_t>(*whole);
  return std::get<uint64_t>(integer);
}

uint64_t Magnitude(const FormatArgument& integer) {
  return IsNegative(integer) ? 0 - BitsOf(integer) : BitsOf(integer);
}

// Digits of the magnitude with `decimals` of them behind the point.
std::u16string FixedDigits(const FormatArgument& number, size_t decimals) {
  if (const auto* real = std::get_if<double>(&number)) {
    char digits[400 + kMostColumns];  // the greatest double has 309 digits before the point
    const auto end = std::to_chars(digits, digits + sizeof digits, std::fabs(*real),
                                   std::chars_format::fixed, static_cast<int>(decimals));
    return Widen({digits, end.ptr});
  }
  std::u16string digits = IntegerDigits(Magnitude(number));
  if (decimals > 0) digits.append(u".").append(decimals, u'0');
  return digits;
}

bool IsFinite(const FormatArgument& number) {
  const auto* real = std::get_if<double>(&number);
  return real == nullptr || std::isfinite(*real);
}

Rendered RenderFixed(const Form& form, const FormatArgument& number, size_t decimals) {
  Rendered rendered = {SignOf(form, IsNegative(number)), FixedDigits(number, decimals),
                       IsFinite(number)};
  if (form.alternate && decimals == 0 && IsFinite(number)) rendered.body += u'.';
  return rendered;
}

Rendered RenderInteger(const Form& form, const FormatArgument& integer) {
  const bool isSigned = form.conversion == u'd' || form.conversion == u'i';
  const bool isHex = form.conversion == u'x' || form.conversion == u'X';
  const uint64_t number = isSigned ? Magnitude(integer) : BitsOf(integer);

  Rendered rendered = {u"", IntegerDigits(number, isHex ? 16 : 10), !form.precision};
  if (isSigned) rendered.prefix = SignOf(form, IsNegative(integer));
  if (isHex && form.alternate && number != 0) rendered.prefix = u"0x";
  if (form.precision == size_t{0} && number == 0) rendered.body.clear();
  const size_t least = form.precision.value_or(0);
  if (rendered.body.size() < least) rendered.body.insert(0, least - rendered.body.size(), u'0');
  if (form.conversion != u'X') return rendered;
  for (std::u16string* part : {&rendered.prefix, &rendered.body}) {
    for (char16_t& unit : *part) {
      if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - 32);
    }
  }
  return rendered;
}

std::u16string CharacterOf(uint64_t number) {
  if (number > 0x10'FFFF || (number >= 0xD800 && number <= 0xDFFF)) return {kReplacement};
  if (number < 0x1'0000) return {static_cast<char16_t>(number)};
  return {static_cast<char16_t>(0xD7C0 + (number >> 10)),
          static_cast<char16_t>(0xDC00 + (number & 0x3FF))};
}

// The shortest digits that give the number back.
std::u16string PlainDigits(const FormatArgument& number) {
  if (const auto* real = std::get_if<double>(&number)) {
    char digits[64];
    return Widen({digits, std::to_chars(digits, digits + sizeof digits, *real).ptr});
  }
  return (IsNegative(number) ? u"-" : u"") + IntegerDigits(Magnitude(number));
}

// The first `limit` units, without half a pair at the end.
std::u16string_view CutText(std::u16string_view text, size_t limit) {
  if (text.size() <= limit) return text;
  const bool cutsPair = limit > 0 && IsHighSurrogate(text[limit - 1]);
  return text.substr(0, cutsPair ? limit - 1 : limit);
}

Rendered Render(const Form& form, const FormatArgument& argument) {
  const auto* text = std::get_if<std::u16string_view>(&argument);
  const bool isReal = std::holds_alternative<double>(argument);
  if (form.conversion == u's') {
    const std::u16string whole = text != nullptr ? std::u16string(*text) : PlainDigits(argument);
    return {u"", std::u16string(CutText(whole, form.precision.value_or(whole.size())))};
  }
  if (text != nullptr) return {u"", std::u16string(*text)};
  if (form.conversion == u'f')
    return RenderFixed(form, argument, form.precision.value_or(kUsualDecimals));
  if (form.conversion == u'c')
    return {u"", isReal ? PlainDigits(argument) : CharacterOf(BitsOf(argument))};
  return isReal ? RenderFixed(form, argument, 0) : RenderInteger(form, argument);
}

void AppendPadded(const Form& form, const Rendered& rendered, std::u16string& out) {
  const size_t size = rendered.prefix.size() + rendered.body.size();
  const size_t missing = form.width > size ? form.width - size : 0;
  const bool withZeros = form.zeroPadded && !form.leftAligned && rendered.takesZeros;
  if (!form.leftAligned && !withZeros) out.append(missing, u' ');
  out += rendered.prefix;
  if (withZeros) out.append(missing, u'0');
  out += rendered.body;
  if (form.leftAligned) out.append(missing, u' ');
}

}  // namespace

std::u16string FormatArguments(std::u16string_view pattern, std::span<const FormatArgument> arguments) {
  std::u16string out;
  while (!pattern.empty()) {
    const size_t percent = std::min(pattern.find(u'%'), pattern.size());
    out += pattern.substr(0, percent);
    pattern.remove_prefix(percent);
    if (pattern.empty()) break;

    pattern.remove_prefix(1);
    const std::optional<Form> form = arguments.empty() ? std::nullopt : ParseForm(pattern);
    if (form) {
      AppendPadded(*form, Render(*form, arguments.front()), out);
      arguments = arguments.subspan(1);
      pattern.remove_prefix(form->length);
      continue;
    }
    out += u'%';
    if (pattern.starts_with(u'%')) pattern.remove_prefix(1);
  }
  return out;
}

}  // namespace quilmark
