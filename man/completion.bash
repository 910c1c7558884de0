# Completion of imscodec for bash. Commands, options and kinds are those that the tool itself tells.

# The names in a section of a usage: one a line, the first column of each line.
_imscodec_section() {
  sed -n "/^$1:\$/,/^\$/s/^  \([^ ]*\).*/\1/p" | tr ',' '\n'
}

_imscodec_kinds() {
  "$1" kinds 2>/dev/null | sed '1d; s/ .*//'
}

_imscodec() {
  local program=$1 word=$2 before=$3 command= at words=
  for ((at = 1; at < COMP_CWORD; ++at)); do
    if [[ ${COMP_WORDS[at]} != -* ]]; then
      command=${COMP_WORDS[at]}
      break
    fi
  done
  # "--color=always" comes in three words.
  if [[ $word == = ]]; then
    word=
  elif [[ $before == = ]]; then
    before=${COMP_WORDS[COMP_CWORD - 2]}
  fi

  case $before in
    --kind) words=$(_imscodec_kinds "$program") ;;
    --color) words='auto always never' ;;
    --output | -o) words=FILE ;;
    *)
      if [[ $word == -* ]]; then
        words=$("$program" ${command:+"$command"} --help 2>/dev/null | _imscodec_section Options)
      elif [[ -z $command ]]; then
        words=$("$program" --help 2>/dev/null | _imscodec_section Subcommands)
      elif [[ $command == new ]]; then
        words=$(_imscodec_kinds "$program")
      elif [[ $command != kinds ]]; then
        words=FILE
      fi
      ;;
  esac

  if [[ $words == FILE ]]; then
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  else
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
  fi
}

complete -F _imscodec imscodec
