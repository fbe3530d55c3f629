# A run as its users see it: its streams, its status, what is left.
file l.toml
  @layout
  @number A type = "default"
> generate l.toml
  5 records, 25 bytes, <t> s: d.csv
cat d.csv
  001,
  002,
  003,
  004,
  005,
> generate l.toml --records 2 --quiet
files
  d.csv
  d.fif
  l.toml
  w/d.log
>2 generate
  ! <*>LAYOUT<*>
  ! ...

# A misspelt variable is no default.
each VARIABLE EXPECTED
  KORVEX_UI is "Desktop" | console or desktop
  KORVEX_ANSWER is "y" | yes or no
  KORVEX_HOST_KEY is "../../x" | the plain name of a folder
do
  $2 v='<VARIABLE>'; n=${v%% *}; x=${v#*\"}; env $n="${x%\"}" korvex count l.toml
    ! <VARIABLE>, expected <EXPECTED>

# A failure is reported once and has its status.
edit l.toml "d.csv" => "/dev/full"
$ rm -r w d.*
>1 generate l.toml
  ! Failed to generate data.
  ! 99027:Insufficient disk capacity.
  ! reason: No space left on device
files w

# Lost output is a failure of its own.
edit l.toml /dev/full => d.csv
each COMMAND
  generate
  count
  check
  preview
do
  $1 korvex <COMMAND> l.toml > /dev/full
    ! standard output: cannot be written
