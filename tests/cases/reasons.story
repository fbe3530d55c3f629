# Why the system refused, below the module's message; and what no signal of a write ends.
file l.toml
  @layout
  @number A type = "default"
> generate l.toml --settings-only --quiet

# Somebody holds the settings, as a window does.
$1 flock -x d.fif korvex generate l.toml
  ! d.fif: 99002:Failed to open the control file.
  ! reason: another program holds the file
$1 flock -x d.fif korvex generate --keep-settings l.toml
  ! Failed to generate data.
  ! 99002:Failed to open the control file.
  ! reason: another program holds the file
$1 flock -x d.fif korvex edit l.toml
  ! d.fif: another program holds the file
  ! DGCreateFile<*>

# The size that a file may have, in units of 1024 bytes; and in the folder for temporary files.
remember
$1 (ulimit -f 4; korvex generate l.toml --keep-settings --records 9999) 2>&1 | cat; exit 1
  Failed to generate data.
  99026:Failed to write to the file.
  reason: File too large
each COMMAND
  check
  count
  preview
  export -o x.csv
do
  $1 (ulimit -f 0; korvex <COMMAND> l.toml) 2>&1 | cat; exit 1
    d.fif: 99002:Failed to open the control file.
    reason: File too large
    it is copied to <*>/korvex-<*>
>1 TMPDIR=none check l.toml
  ! no folder for temporary files can be made: <*>
unchanged

# A pipe whose reader leaves.
$ mkfifo pipe
edit l.toml "d.csv" => "pipe"
$1 head -c 9 pipe >x & korvex generate l.toml --records 99999
  ! Failed to generate data.
  ! 99026:Failed to write to the file.
  ! reason: Broken pipe
