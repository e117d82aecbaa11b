#include "cli/completion.h"

namespace quilmark {

const char* BashCompletion() {
  return R"(_quilmark() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}
  COMPREPLY=()
  case $before in
    --scope) mapfile -t COMPREPLY < <(compgen -W "all desktop C: D: E:" -- "$word"); return ;;
    --completion) mapfile -t COMPREPLY < <(compgen -W "bash" -- "$word"); return ;;
    --sort) mapfile -t COMPREPLY < <(compgen -W "name size modified created path" -- "$word"); return ;;
    --modified) mapfile -t COMPREPLY < <(compgen -W "today yesterday 7d 2w 1mo 1y" -- "$word"); return ;;
    --category)
      mapfile -t COMPREPLY < <(compgen -W "folders documents images archives applications videos audio" -- "$word")
      return ;;
    --limit|--for|--ext|--size|--threads|--max-size) return ;;
  esac
  if [ "$COMP_CWORD" = 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W "find grep watch --help --version --completion" -- "$word")
  elif [[ $word == -* && ${COMP_WORDS[1]} == watch ]]; then
    mapfile -t COMPREPLY < <(compgen -W "--drive --limit --for --json --help" -- "$word")
  elif [[ $word == -* && ${COMP_WORDS[1]} == grep ]]; then
    mapfile -t COMPREPLY < <(compgen -W "--ext --threads --max-size --count --json -l --line --help" -- "$word")
  elif [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "--drive --scope --limit --initials --count --json --drive-paths --null --stats \
--interactive --ext --category --size --modified --sort --totals --help" -- "$word")
  else
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}
complete -F _quilmark quilmark
)";
}

}  // namespace quilmark
