#include "cli/completion.h"

namespace quilmark {

const char* BashCompletion() {
  return R"(_quilmark() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}
  COMPREPLY=()
  case $before in
    --scope) mapfile -t COMPREPLY < <(compgen -W "all desktop C: D: E:" -- "$word"); return ;;
    --completion) mapfile -t COMPREPLY < <(compgen -W "bash" -- "$word"); return ;;
    --limit|--for) return ;;
  esac
  if [ "$COMP_CWORD" = 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W "find watch --help --version --completion" -- "$word")
  elif [[ $word == -* && ${COMP_WORDS[1]} == watch ]]; then
    mapfile -t COMPREPLY < <(compgen -W "--drive --limit --for --json --help" -- "$word")
  elif [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "--drive --scope --limit --initials --count --json --drive-paths --stats \
--interactive --help" -- "$word")
  else
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}
complete -F _quilmark quilmark
)";
}

}  // namespace quilmark
