# The library's DGCreateData with a control file of a host's own: what fails before the first record touches nothing.
file l.toml
  @layout
  @number A type = "range", format = "%3U", start = 1, end = 999
> generate l.toml --settings-only ...
$ cp d.fif good.fif; rm -rf w
# Three records of item 1 twice and of an item without settings, at level 1.
def control
  $ head -c 1032 /dev/zero > run.ctl; cp good.fif d.fif
  poke run.ctl 0 3 1 0 0 1 3
  poke run.ctl 24 <folder>/d.csv
  poke run.ctl 280 <folder>/d.fif
  poke run.ctl 536 <folder>
  poke run.ctl 1020 1 9 1
@control
$ c_host DGCreateData run.ctl
  0
cat d.csv
  001,002,
  003,004,
  005,006,
$ korvex show d.log | tail -n 2
    items         2
    item numbers  1 1
each CODE REMAINS SPOIL
  -2 | d.csv d.log | rm run.ctl
  -3 | d.csv d.log | truncate -s 1019 run.ctl
  -3 | d.csv d.log | truncate -s 1023 run.ctl
  -5 | d.csv d.log | printf %500s T > d.fif
  -3 | d.csv d.log | truncate -s 1000 d.fif
  -28 | d.csv | rm d.fif
do
  @control
  $ echo old > d.csv; echo old > d.log; <SPOIL>; c_host DGCreateData run.ctl 2> said; ls d.csv d.log 2> said | xargs; cat d.csv
    <CODE>
    <REMAINS>
    old
each CODE REMAINS OFFSET VALUE
  -4 | d.csv d.log | 0 | -1
  -6 | d.csv d.log | 1020 | 8 9 7
  -6 | d.csv d.log | 20 | 0
  -57 | d.csv d.log | 4 | 2
  -28 | d.csv | 16 | 2
  -2 | d.csv d.log | 24 | /no/such/folder/out.csv
do
  @control
  poke run.ctl <OFFSET> <VALUE>
  $ echo old > d.csv; echo old > d.log; c_host DGCreateData run.ctl 2> said; ls d.csv d.log 2> said | xargs; cat d.csv
    <CODE>
    <REMAINS>
    old
# Settings of no known kind, or that no item can have, end the run and its file.
each KIND CODE
  1001 | -7
  900 | -40
do
  @control
  poke d.fif 740 <KIND>
  $ echo old > d.csv; echo old > d.log; c_host DGCreateData run.ctl 2> said; ls d.csv d.log 2> said; cat d.log
    <CODE>
    d.log
    old

# Data is written through a link, and into devices and pipes, which stay; no records make an empty file and log.
$ rm d.*; echo old > target; ln -s target d.csv
> generate l.toml --quiet --records 3
$ ls -l d.csv | grep -o 'd.csv -> target'; cat target; rm d.csv
  d.csv -> target
  001,
  002,
  003,
> generate l.toml --quiet --records 0
$ stat -c %s d.csv; korvex show w/d.log
  0
  log file
    records       0
    level         1
    items         0
    item numbers  
$ rm d.csv; mkfifo d.csv; cat d.csv > read & korvex generate l.toml --quiet; wait; cat read; ls -l d.csv | cut -c 1
  001,
  002,
  003,
  004,
  005,
  p
edit l.toml "d.csv" => "/dev/null"
> generate l.toml --quiet
$ ls -l /dev/null | cut -c 1; ls w
  c
  d.log
  null.log
