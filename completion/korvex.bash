# Completes the command line of korvex in bash.

# The commands.
_korvex_commands="generate count edit format update import load show sets check preview export new report verify plan"

# The built-in sets.
_korvex_sets="awkward colours companies countries currencies email jobs languages people phone places \
  products sentences streets words"

# The options of a command.
_korvex_options() {
  case $1 in
    generate) echo "--records --part --force --jobs --output-option --keep-settings --settings-only --quiet --window" ;;
    count) echo "--records --window" ;;
    edit) echo "--records" ;;
    update) echo "--item" ;;
    import) echo "-o --output --records --force --tables --except --keep --scale --plain" ;;
    load) echo "--records --truncate --yes --no-analyze --quiet" ;;
    sets) echo "--language -n --rows --tsv" ;;
    check) echo "--records --unique" ;;
    preview) echo "-n --records" ;;
    export) echo "-o --output --format --encoding --header --table --records --part --force --jobs --quiet" ;;
    report) echo "-o --output" ;;
    new) echo "-o --output --kind --data --records --item" ;;
    plan) echo "--for --parts --max-bytes -o --output --format --encoding --header --table --records" ;;
    verify) echo "--content --sample --jobs --parts --format --encoding --header --table --records --keep-settings" ;;
    "") echo "--version" ;;
  esac
  echo "-h --help"
}

# Whether the next word belongs to this option.
_korvex_takes_value() {
  case $1 in
    -n | -o | --rows | --language | --records | --output | --output-option | --format | --encoding | --table | \
      --unique | --part | --parts | --max-bytes | --for | --sample | --jobs | --kind | --data | --item) return 0 ;;
  esac
  return 1
}

_korvex_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "$1")
}

_korvex_layouts() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -d -- "$1"; compgen -f -X '!*.toml' -- "$1")
}

_korvex_words() {
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

# The items of the layout $1 whose names begin with $3, after $2, which is there already. Names
# are only compared: compgen would run commands in them.
_korvex_items() {
  local layout=${1//\\/} name
  layout=${layout/#\~\//"$HOME"/}
  [[ -f $layout ]] || return
  compopt -o filenames 2>/dev/null
  while IFS= read -r name; do
    [[ $name != "$3"* ]] || COMPREPLY+=("$2$name")
  done < <(sed -n 's/^[[:blank:]]*name[[:blank:]]*=[[:blank:]]*"\([^"\\]*\)".*/\1/p' <"$layout")
}

# The value of an option of the command $3, which has the layout $4.
_korvex_value() {
  case $3:$1 in
    *:-o | *:--output | *:--data) _korvex_files "$2" ;;
    *:--format) _korvex_words "csv tsv jsonl sql" "$2" ;;
    plan:--for) _korvex_words "slurm parallel kubernetes make" "$2" ;;
    *:--encoding) _korvex_words "utf-8 cp932" "$2" ;;
    *:--kind) _korvex_words "record table iso" "$2" ;;
    *:--output-option) _korvex_words "0 2" "$2" ;;
    *:--language) _korvex_words "de en es fr ja" "$2" ;;
    update:--item) _korvex_items "$4" "" "$2" ;;
    check:--unique)
      local named=${2%"${2##*,}"}
      _korvex_items "$4" "$named" "${2#"$named"}"
      ;;
  esac
}

# A database: its kind, and after sqlite: a file.
_korvex_database() {
  if [[ $1 == sqlite:* ]]; then
    _korvex_files "${1#sqlite:}"
    # What readline does not take for a word of its own has to be given back whole.
    [[ $COMP_WORDBREAKS == *:* ]] || COMPREPLY=("${COMPREPLY[@]/#/sqlite:}")
  elif [[ $1 != *:* ]]; then
    compopt -o nospace 2>/dev/null
    _korvex_words "sqlite: postgresql:" "$1"
  fi
}

_korvex_argument() {
  case $1:$2 in
    show:0) _korvex_files "$3" ;;
    verify:[1-9]*) _korvex_files "$3" ;;
    sets:0) _korvex_words "$_korvex_sets" "$3" ;;
    import:0 | load:1) _korvex_database "$3" ;;
    import:* | new:* | *:[1-9]*) ;;
    *) _korvex_layouts "$3" ;;
  esac
}

_korvex() {
  COMPREPLY=()
  # Readline parts words at : and =, which belong to sqlite:FILE and --option=value.
  local words=() part glue="" i
  for ((i = 1; i <= COMP_CWORD; ++i)); do
    part=${COMP_WORDS[i]}
    if [[ -n $glue || $part == [:=]* ]] && ((${#words[@]})); then
      words[-1]+=$part
    else
      words+=("$part")
    fi
    glue=""
    [[ $part != *[:=] ]] || glue=1
  done

  local current=${words[-1]} command="" option="" layout="" arguments=0 word
  unset 'words[-1]'
  for word in "${words[@]}"; do
    if [[ -n $option ]]; then
      option=""
    elif [[ $word == -* ]]; then
      ! _korvex_takes_value "$word" || option=$word
    elif [[ -z $command ]]; then
      command=$word
    else
      ((arguments++)) || layout=$word
    fi
  done

  if [[ -n $option ]]; then
    _korvex_value "$option" "$current" "$command" "$layout"
  elif [[ $current == --*=* ]]; then
    _korvex_value "${current%%=*}" "${current#*=}" "$command" "$layout"
  elif [[ $current == -* ]]; then
    _korvex_words "$(_korvex_options "$command")" "$current"
  elif [[ -z $command ]]; then
    _korvex_words "$_korvex_commands" "$current"
  else
    _korvex_argument "$command" "$arguments" "$current"
  fi
}

complete -F _korvex korvex
