#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <utility>

#include "cli/completion.h"
#include "cli/exit_code.h"
#include "platform/clock.h"
#include "search/sort/sort.h"

namespace quilmark {

namespace {

constexpr const char* kExamples = R"(
Each PATH, a folder or an NTFS image or partition, becomes a drive letter, from C: on; without one Windows
takes its own drives.

  quilmark find report ~/Documents            names that hold "report"
  quilmark find 'budget and 2024 or invoice' /srv/a /srv/b
  quilmark find --count '.so' /usr            only the number of hits
  quilmark find --json --limit 10 readme /usr | jq .path
  quilmark find --drive D=/srv/data --scope D: photo
  quilmark find --drive N=disk.img report      in an NTFS image, or a partition that is not mounted
  quilmark find --interactive /usr            index once, then a query a line
  quilmark find --interactive --json /usr     the same for a program: an empty line ends each answer
  quilmark find --category documents --modified 7d --sort modified:desc '' ~
  quilmark find --ext mp4,mkv --size 1.5G.. --sort size --limit 20 '' /srv
  quilmark find --json --totals --sort size node_modules ~

--size takes 10M..2G, 10M.. or 10M (at least), ..2G (at most); both ends belong to it. Units B, K, M, G, T are
powers of 1,024. --modified takes an age (7d, 2w, 1mo, 1y), today, yesterday, a day (2025-01-31), or days from
and to (2025-01-01..2025-02-01; one of them may be left out), in local time. Under both, folders drop out.
--sort takes name, size, modified, created or path, with :asc or :desc behind it; without, sizes begin with
the largest and the rest ascends. Sorting comes before --limit. Folders sort by the sizes that were read of
files below them: all of them with --totals.

A query is a list of texts joined by "and" and "or"; "quotes" keep such a word as it is, \ takes the next
character as it is. The path of a folder lists what is in it.
Exit code: 0 something was found, 1 nothing, 2 an error, 130 interrupted.)";

constexpr const char* kWatchExamples = R"(
Prints what the change journal of an NTFS volume reports, a change a line: created, deleted, renamed, moved.
Each PATH is an NTFS image or partition; without one Windows follows its own NTFS drives.

  quilmark watch --drive N=disk.img
  quilmark watch --json --limit 100 > changes.jsonl

Exit code: 0 something changed, 1 nothing, 2 an error or the end of a journal, 130 interrupted.)";

constexpr const char* kGrepExamples = R"(
Prints the files that hold the words, a file a line, as soon as each is found. Words keep their case; "and" and "or" join
them, and the words of an "and" may stand anywhere in a file. They are found as UTF-8, as UTF-16 (little-endian), and in
the system's ANSI code page. PATH is a folder or a file; without one it is the current folder.

  quilmark grep 'timeout and retry' src
  quilmark grep --ext .txt,.md --line invoice ~/Documents
  quilmark grep --count --max-size 100 'one or other' /srv

Exit code: 0 something was found, 1 nothing, 2 an error, 130 interrupted.)";

// Keeps the library from taking "[a,b]" for a list of two and "{}" for an empty one, by a NUL at the
// end, which no argument can hold.
std::string Guard(std::string argument) {
  if (argument.starts_with('[') || argument.starts_with('{')) argument.push_back('\0');
  return argument;
}

void Unguard(std::string& text) { std::erase(text, '\0'); }

// Commands added later inherit what is set here.
void DescribeProgram(CLI::App& app, std::string& completion) {
  app.allow_windows_style_options(false);  // "/srv" is a folder everywhere
  app.set_version_flag("--version", std::string("quilmark ") + QUILMARK_VERSION);
  app.add_option("--completion", completion, "Print the completion script of a shell: bash")
      ->check(CLI::IsMember({"bash"}));
  app.footer("quilmark COMMAND --help tells more.");
}

// An option that takes whole numbers from `least` on.
CLI::Validator WholeNumber(uint64_t least) {
  return {[least](std::string& text) {
            uint64_t number = 0;
            const char* const end = text.data() + text.size();
            const auto read = std::from_chars(text.data(), end, number);
            const bool isGood = read.ec == std::errc() && read.ptr == end && number >= least;
            return isGood ? std::string()
                          : "takes a whole number from " + std::to_string(least) + " on, not " + text;
          },
          "NUMBER"};
}

// Adds the options whose texts have a meaning of their own.
struct FindTexts {
  std::string extensions, category, size, modified, sort;
};

void DescribeFind(CLI::App& find, FindOptions& options, FindTexts& texts) {
  find.add_option("QUERY", options.query, "What to look for; left out with --interactive");
  find.add_option("PATH", options.paths, "The folders to search");
  find.add_option("--drive", options.drives, "Give drive letter X to a folder")
      ->allow_extra_args(false)
      ->option_text("X=PATH");
  find.add_option("--scope", options.scope, "Where to look: all, desktop, or a drive such as C:");
  find.add_option("--limit", options.limit, "Print no more than this many hits")->check(WholeNumber(0));
  find.add_option("--ext", texts.extensions,
                  "Keep files with one of these extensions: pdf,docx; dir keeps folders")
      ->option_text("LIST");
  find.add_option("--category", texts.category, "Keep what belongs to a category, such as documents")
      ->option_text("NAME");
  find.add_option("--size", texts.size, "Keep files of these sizes: 10M..2G")->option_text("SIZES");
  find.add_option("--modified", texts.modified,
                  "Keep files last changed then: 7d, 2025-01-01..2025-02-01")
      ->option_text("DATES");
  find.add_option("--sort", texts.sort, "Sort by name, size, modified, created or path")
      ->option_text("COLUMN[:asc|:desc]");
  find.add_flag("--totals", options.totals,
                "Take all that lies below a folder for its size; reads every file's");
  find.add_flag("--initials", options.initials,
                "Match Chinese names by the initials of their readings too");
  find.add_flag("--count", options.count, "Print the number of hits and nothing else");
  find.add_flag("--json", options.json,
                "Print a JSON object a line: path, dir; where sizes or dates are asked for size, "
                "modified, created");
  find.add_flag("-0,--null", options.null,
                "End each hit with a NUL instead of a new line, for xargs -0");
  find.add_flag("--drive-paths", options.drivePaths, "Print C:\\... instead of the host's own paths");
  find.add_flag("--stats", options.stats,
                "Print figures of the index and of the search on standard error");
  find.add_flag("--interactive", options.interactive, "Read a query a line from standard input");
  find.footer(kExamples);
}

void DescribeWatch(CLI::App& watch, WatchOptions& options) {
  watch.add_option("PATH", options.paths, "The NTFS images or partitions to follow");
  watch.add_option("--drive", options.drives, "Give drive letter X to an NTFS image or partition")
      ->allow_extra_args(false)
      ->option_text("X=PATH");
  watch.add_option("--limit", options.limit, "End after this many changes")->check(WholeNumber(1));
  watch.add_option("--for", options.seconds, "End after this many seconds")
      ->option_text("SECONDS")
      ->check(WholeNumber(0));
  watch.add_flag("--json", options.json, "Print a JSON object a line: event, path, from, dir, time");
  watch.footer(kWatchExamples);
}

void DescribeGrep(CLI::App& grep, GrepOptions& options, std::string& extensions) {
  grep.add_option("WORDS", options.query, "What to look for in files")->required();
  grep.add_option("PATH", options.paths, "The folders and files to search");
  grep.add_option("--ext", extensions, "Look into files with one of these extensions alone: .txt,.md")
      ->option_text("LIST");
  grep.add_option("--threads", options.threads, "Threads; 0, as without: one a processor")
      ->check(WholeNumber(0));
  grep.add_option("--max-size", options.maxSizeMB, "Leave out files of more than this many MiB; 0: none")
      ->option_text("MB")
      ->check(WholeNumber(0));
  CLI::Option* const count =
      grep.add_flag("--count", options.count, "Print the number of files and nothing else");
  CLI::Option* const json =
      grep.add_flag("--json", options.json, "Print a JSON object a line: path, dir");
  CLI::Option* const list = grep.add_flag("-l", options.list, "Print the files' names alone, as without");
  CLI::Option* const line =
      grep.add_flag("--line", options.line, "Print the first line of each hit with its number");
  count->excludes(json)->excludes(list)->excludes(line);
  json->excludes(list);
  list->excludes(line);
  grep.footer(kGrepExamples);
}

CommandLine Refuse(std::string why) {
  Unguard(why);
  return {.text = "quilmark: " + why + "\n", .exitCode = kExitError};
}

// Parses the text of an option that was given into `target`; false with the reason in `error`.
template <typename Target, typename Parser>
bool TakeText(const CLI::App& find, const char* option, std::string text, Target& target,
              std::string& error, Parser parser) {
  if (find.count(option) == 0) return true;
  Unguard(text);
  auto parsed = parser(text);
  if (!parsed.error.empty()) {
    error = std::string(option) + ": " + parsed.error;
    return false;
  }
  target = std::move(parsed.value);
  return true;
}

// What is wrong with one of the texts, or an empty text.
std::string TakeTexts(const CLI::App& find, const FindTexts& texts, FindOptions& options) {
  HitFilters& filters = options.filters;
  std::string error;
  const auto since = [now = NowFileTime()](const std::string& text) {
    return ParseDateRange(text, now);
  };
  if (TakeText(find, "--ext", texts.extensions, filters.extensions, error, ParseExtensions) &&
      TakeText(find, "--size", texts.size, filters.size, error, ParseSizeRange) &&
      TakeText(find, "--modified", texts.modified, filters.modified, error, since)) {
    TakeText(find, "--sort", texts.sort, options.sort, error, ParseSortOrder);
  }
  if (find.count("--category") > 0) {
    filters.category = texts.category;
    Unguard(*filters.category);
  }
  return error;
}

// The first text is the query, unless queries come from standard input: then it is a folder too.
CommandLine TakeFind(FindOptions options, bool hasQuery) {
  Unguard(options.query);
  std::for_each(options.paths.begin(), options.paths.end(), Unguard);
  std::for_each(options.drives.begin(), options.drives.end(), Unguard);
  if (!options.interactive) {
    if (!hasQuery) return Refuse("no query; see quilmark find --help");
    return {.find = std::move(options)};
  }
  if (hasQuery) options.paths.insert(options.paths.begin(), std::exchange(options.query, {}));
  return {.find = std::move(options)};
}

CommandLine TakeGrep(const CLI::App& grep, GrepOptions options, const std::string& extensions) {
  Unguard(options.query);
  std::for_each(options.paths.begin(), options.paths.end(), Unguard);
  std::string error;
  if (!TakeText(grep, "--ext", extensions, options.extensions, error, ParseExtensions)) {
    return Refuse(std::move(error));
  }
  return {.grep = std::move(options)};
}

CommandLine TakeWatch(WatchOptions options) {
  std::for_each(options.paths.begin(), options.paths.end(), Unguard);
  std::for_each(options.drives.begin(), options.drives.end(), Unguard);
  return {.watch = std::move(options)};
}

}  // namespace

bool NeedsAttributes(const FindOptions& options) {
  const bool sortsByThem =
      options.sort && options.sort->column != kColumnName && options.sort->column != kColumnOfPath;
  return options.filters.size || options.filters.modified || options.totals || sortsByThem;
}

CommandLine ParseCommandLine(std::vector<std::string> arguments) {
  FindOptions options;
  FindTexts texts;
  std::string completion;
  CLI::App app("Finds files and folders by a part of their names.", "quilmark");
  DescribeProgram(app, completion);
  WatchOptions watchOptions;
  CLI::App& watch = *app.add_subcommand("watch", "Print changes of NTFS volumes as they happen");
  DescribeWatch(watch, watchOptions);
  GrepOptions grepOptions;
  std::string grepExtensions;
  CLI::App& grep = *app.add_subcommand("grep", "Print the files that hold words");
  DescribeGrep(grep, grepOptions, grepExtensions);
  CLI::App& find = *app.add_subcommand("find", "Index folders and answer a query");
  DescribeFind(find, options, texts);
  try {
    std::transform(arguments.begin(), arguments.end(), arguments.begin(), Guard);
    std::reverse(arguments.begin(), arguments.end());  // what this form of parse expects
    app.parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    return {.text = app.help()};
  } catch (const CLI::CallForVersion&) {
    return {.text = app.version() + "\n"};
  } catch (const CLI::ParseError& error) {
    return Refuse(error.what());
  }
  if (!completion.empty()) return {.text = BashCompletion()};
  if (watch.parsed()) return TakeWatch(std::move(watchOptions));
  if (grep.parsed()) return TakeGrep(grep, std::move(grepOptions), grepExtensions);
  if (!find.parsed()) return Refuse("no command; see quilmark --help");
  if (std::string error = TakeTexts(find, texts, options); !error.empty())
    return Refuse(std::move(error));
  return TakeFind(std::move(options), find.count("QUERY") > 0);
}

}  // namespace quilmark
