# Names, values, paths and words of the command line: nothing from outside acts on a terminal, in what is said and in what fails.
def hostile
  [layout]
  kind = "table"
  records = 3
  data = "d.csv"
  [[item]]
  name = "\u001B"
  attribute = "character"
  length = 9
file good.toml
  @hostile
  values = { type = "range", format = "'\u001B'%1S", start = "A" }
file format.toml
  @hostile
  values = { type = "range", format = "%\u001B" }
file none.toml
  @hostile
file key.toml
  "\u001B" = 1
  @hostile
file twice.toml
  ["\u001B"]
  ["\u001B"]
file list.toml
  @hostile
  values = { type = "enumeration", file = "\u001B" }
file bytes.toml
  kind <1B>
file tell
  evil=$(printf 'a\033]0;x\007\n\302\233\377'); mkdir "$evil"; cp *.toml "$evil"
  told() {
    said=$(korvex "$@" 2>&1)
    [ "$said" ] || echo "silent: $*"
    printf '%s\n' "$said" | LC_ALL=C grep -a -P '[\x00-\x09\x0b-\x1f\x7f\xff]|\xc2\x9b|^\xc2' && echo "acts: $*" | cat -v
  }
  for command in generate "generate --settings-only" count check preview "show" "generate --no"; do
    for layout in good format none key twice list bytes absent; do told $command "$evil/$layout.toml"; done
  done
  told check --unique "$evil" "$evil/good.toml"
  told update --item "$evil" "$evil/good.toml"
  for output in x.jsonl good.toml no/x; do told export "$evil/good.toml" -o "$evil/$output" --format jsonl; done
  told show "$evil/d.fif"
  told new -o "$evil/good.toml"
  told new --item "$evil"
  told check "--$evil"
  told check "$evil/good.toml" "$evil"
  told "$evil"
  told import "sqlite:$evil/no.db" "$evil"
  told import "$evil" "$evil"
  told load "$evil/good.toml" "sqlite:$evil/no.db" "$evil"
  echo told
$ sh tell
  told
