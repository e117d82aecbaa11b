// Any arguments, a line each: they ask for one command, or for a text that ends with its line; a command
// has what it cannot do without, and says the same when it is asked for again.
#include "cli/options.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

constexpr size_t kMostArguments = 16;

bool HasNul(const std::vector<std::string>& texts) {
  return std::any_of(texts.begin(), texts.end(),
                     [](const std::string& text) { return text.find('\0') != text.npos; });
}

void CheckFind(const FindOptions& find) {
  Require(!HasNul(find.paths) && !HasNul(find.drives) && !HasNul({find.query}));
  Require(!find.interactive || find.query.empty());
  const HitFilters& filters = find.filters;
  Require(!filters.size || *filters.size != SizeRange());
  Require(!filters.modified || filters.modified->from <= filters.modified->to);
  for (const std::u16string& extension : filters.extensions) Require(extension.starts_with(u'.'));
  Require(NeedsAttributes(find) || (!filters.size && !filters.modified && !find.totals));
}

void CheckLine(const CommandLine& line) {
  const int answers =
      (line.find ? 1 : 0) + (line.watch ? 1 : 0) + (line.grep ? 1 : 0) + (line.text.empty() ? 0 : 1);
  Require(answers == 1);
  if (line.find) CheckFind(*line.find);
  if (line.watch) Require(!HasNul(line.watch->paths) && line.watch->limit != uint64_t{0});
  if (line.grep) {
    Require(!HasNul(line.grep->paths) && !HasNul({line.grep->query}));
    for (const std::u16string& extension : line.grep->extensions) Require(extension.starts_with(u'.'));
    Require(!line.grep->count || !(line.grep->json || line.grep->list || line.grep->line));
  }
  if (line.text.empty()) return Require(line.exitCode == 0);
  Require(line.text.ends_with('\n'));
  Require(line.exitCode == 0 || (line.exitCode == 2 && line.text.starts_with("quilmark: ")));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  std::vector<std::string> arguments;
  while (!input.rest.empty() && arguments.size() < kMostArguments) {
    std::string argument = input.TakeLine();
    std::erase(argument, '\0');  // no system hands one over
    arguments.push_back(std::move(argument));
  }
  const CommandLine line = ParseCommandLine(arguments);
  CheckLine(line);
  const CommandLine again = ParseCommandLine(arguments);
  Require(line.text == again.text && line.find.has_value() == again.find.has_value());
  Require(!line.find ||
          (line.find->query == again.find->query && line.find->paths == again.find->paths));
  return 0;
}
