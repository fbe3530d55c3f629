# The program ended in the middle of its work: it ends soon, and what the run had begun is removed.
file l.toml
  @layout
  @item A 4 digits=9 type = "default"
edit l.toml records = 5 => records = 2000000000
each SIGNAL STATUS
  INT | 130
  TERM | 143
  HUP | 129
do
  ><STATUS> until d.csv <SIGNAL> generate l.toml
    ! 99079:Data generation was aborted.
    ! The data file was not created.
>130 until d.csv INT generate l.toml --output-option 2
  ! 99079:Data generation was aborted.
  ! The data file was not created.
# A large file is no reason to wait, and the next run finds nothing in its way.
>130 until d.csv:70000000 INT generate l.toml ...
  ! ...
> generate l.toml --records 1 --quiet
$ rm d.csv w/d.log
$ ln -s target d.csv
>130 until target INT generate l.toml ...
  ! ...
$ ls target 2> told || rm told d.csv
file o.csv
  old
>130 until DG*.TMP:0 INT export l.toml -o o.csv ...
  ! ...
cat o.csv
  old
# A signal that the caller ignores, as nohup does, stays ignored.
$ trap '' HUP; korvex generate l.toml 2> told & while [ ! -s d.csv ]; do sleep 0.01; done; kill -HUP $!; sleep 0.1; kill -TERM $!; wait $!; echo $?; rm told
  143
# The program does not wait for the other end of a pipe.
$ mkfifo pipe
>130 until +0.3 INT check pipe
edit l.toml "d.csv" => "pipe"
>143 until +0.3 TERM generate l.toml
  ! 99079:Data generation was aborted.
  ! The data file was not created.
edit l.toml "pipe" => "d.csv"
$ { korvex export l.toml -o -; echo $? > told; } | head -c 1; echo; cat told; rm told pipe*
  1
  141
>130 tty until +0.5 INT new -o n.toml ...
  ! ...
files
  d.fif
  l.toml
  o.csv
  w/

# So does the way to a record far away, step by step where the first value is none of the item's cycle.
edit l.toml type = "default" => type = "range", format = "%9U", start = 1, end = 999999999
> generate l.toml --settings-only --quiet
poke d.fif 768 5
>130 until +0.3 INT generate l.toml --keep-settings --part 64/64
edit l.toml type = "range", format = "%9U", start = 1, end = 999999999 => type = "default"

# Reading a long list ends without a question.
$ yes 1 | head -n 60000000 > list.txt
edit l.toml type = "default" => type = "enumeration", file = "list.txt"
file d.csv
  old
each COMMAND
  generate
  count
  check
  preview
  export -o o.csv
do
  >130 until +0.1 INT <COMMAND> l.toml ...
    ! ...
cat d.csv
  old
