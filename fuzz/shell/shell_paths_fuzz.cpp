// Any paths: a quoted one is one argument of a command line; the parent and the siblings are of the
// path; what is deletable lies below a root and stands for itself.
#include "shell/actions/shell_paths.h"

#include "platform/text.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

namespace quilmark {

// The usual splitting of a command line. A second argument is a fault.
static std::u16string OnlyArgumentOf(std::u16string_view line) {
  std::u16string argument;
  bool isQuoted = false;
  for (size_t i = 0; i < line.size();) {
    size_t backslashes = 0;
    while (i + backslashes < line.size() && line[i + backslashes] == u'\\') ++backslashes;
    i += backslashes;
    const bool meetsQuote = i < line.size() && line[i] == u'"';
    argument.append(meetsQuote ? backslashes / 2 : backslashes, u'\\');
    if (i == line.size()) break;
    if (meetsQuote && backslashes % 2 == 0) {
      isQuoted = !isQuoted;
    } else {
      Require(isQuoted || (line[i] != u' ' && line[i] != u'\t'));
      argument.push_back(line[i]);
    }
    ++i;
  }
  Require(!isQuoted);
  return argument;
}

static void CheckDeletable(const std::u16string& path) {
  if (!IsDeletablePath(path)) return;
  Require(path.size() > 3 && path.substr(1, 2) == u":\\" && path.find(u'\0') == path.npos);
  Require(path.find(u':', 2) == path.npos && path.find(u'/') == path.npos);
  Require(path.back() != u'\\' && path.find(u"\\\\") == path.npos);
  const std::u16string closed = path + u"\\";
  Require(closed.find(u"\\.\\") == closed.npos && closed.find(u"\\..\\") == closed.npos);
  if (!IsPlainPath(path)) return;
  Require(path.find_first_of(u"*?\"<>|") == path.npos);
  Require(closed.find(u".\\") == closed.npos && closed.find(u" \\") == closed.npos);
}

static void CheckParent(const std::u16string& path) {
  const auto parent = ParentOfPath(path);
  if (!parent) return;
  Require(parent->size() < path.size() && path.starts_with(*parent));
  if (!parent->ends_with(u'\\')) Require(IsBelow(path, *parent));
  std::u16string name = path.substr(parent->size());
  if (name.starts_with(u'\\')) name.erase(0, 1);
  Require(!name.empty() && name.find(u'\\') == name.npos);
}

}  // namespace quilmark

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  FuzzInput input = InputOf(data, size);
  std::vector<std::u16string> paths;
  while (!input.rest.empty() && paths.size() < 16) paths.push_back(FromUtf8(input.TakeLine()));
  for (const std::u16string& path : paths) {
    Require(OnlyArgumentOf(QuotePathForShell(path)) == path);
    CheckDeletable(path);
    CheckParent(path);
    const std::u16string comparable = ComparablePath(path);
    Require(ComparablePath(comparable) == comparable && comparable.size() == path.size());
  }
  const auto siblings = SiblingsOfFirst(paths);
  Require(siblings.empty() == paths.empty());
  for (size_t i = 1; i < siblings.size(); ++i) {
    Require(EqualNoCase(ParentOfPath(siblings[i]).value(), ParentOfPath(paths[0]).value()));
  }
  return 0;
}
