# What korvex show makes of files that are whole, broken, or something else.
$ head -c 1292 /dev/zero > long.ctl
poke long.ctl 0 50 2 1 9 4 2
poke long.ctl 24 d.csv
poke long.ctl 280 d.fif
poke long.ctl 536 work
poke long.ctl 1020 7 名前
poke long.ctl 1088 words
poke long.ctl 1116 32 1 15 14 3 0 1
poke long.ctl 1156 8 "B<1B>[2J"
> show long.ctl
  control file, long form
    records       50
    layout kind   2 (table)
    NULL default  1
    host value    9
    level         4
    items         2
    data          d.csv
    settings      d.fif
    work          work

  item 7: 名前
    description  words
    attribute 32 (timestamp), signed, length 15, digits 14, decimals 3, nullable

  item 8: B\x1B[2J
    attribute 0, unsigned, length 0, digits 0, decimals 0, not nullable
$ head -c 1020 long.ctl > short.ctl; head -c 8 /dev/zero >> short.ctl
poke short.ctl 1020 7 -8
> show short.ctl
  control file, short form
  ...
    item numbers  7 -8

# Settings of the previous version have no repeats and no files.
file l.toml
  @layout
  @item A 1 digits=5 type = "range", format = "'第'%U", start = 1, end = 9, repeat = { level = 2, count = 6 }
> generate l.toml --settings-only ...
$ { printf 'TAMBO DATA FORMAT V2L1'; tail -c +23 d.fif | head -c 434; printf 'ignored!'; tail -c 1216 d.fif; } > old.fif
> show d.fif
  ...
      format     "'第'%U" (custom)
      increment  "1" = 1
      exceeded   1 (repeat)
      repeat     level 2, 6 times
      element 1: 999 (fixed), width 2, digits 2, decimals 0, text "第"
      element 2: 903 (unsigned number in text), width 1, digits 1, decimals 0, text "U"
        start "1", end "9", sign 1, span 0:8
$1 korvex show d.fif > new.txt; korvex show old.fif | diff new.txt -
  1c1
  \< Format Information file, current version
  ---
  > Format Information file, previous version
  12d11
  \<     repeat     level 2, 6 times

# Broken settings say what is wrong with them.
file l.toml
  @layout
  @number A type = "default"
  @number B type = "default"
file l2.toml
  @layout
  @number A type = "default"
edit l2.toml records => level = 2<0A>records
> generate l.toml --settings-only ...
> generate l2.toml --settings-only ...
> show d.fif ...
each OFFSET VALUE SAYS
  32 | 2000000000 | <*>ends inside its level table<*>
  32 | -1 | <*>ends inside its level table<*>
  48 | -5 | <*>offset is negative<*>
  48 | 2000000000 | <*>ends inside an item's settings<*>
  60 | 2000000000 | <*>ends inside<*>
  60 | -1 | <*>negative<*>
  112 | 2000000000 | <*>ends inside the elements of item 1<*>
  112 | -1 | <*>ends inside the elements of item 1<*>
do
  $ cp d.fif broken.fif
  poke broken.fif <OFFSET> <VALUE>
  >1 show broken.fif ...
    ! broken.fif: <SAYS>
# Two levels may show the same items, but not more than there are bytes.
$ cp d.fif broken.fif
poke broken.fif 80 108
> show broken.fif ...
poke broken.fif 92 2
>1 show broken.fif ...
  ...
  ! broken.fif: the levels overlap
each COUNT SAYS
  30 | ends inside its header
  3911 | ends inside the elements of item 1
do
  $ head -c <COUNT> d.fif > broken.fif
  >1 show broken.fif ...
    ! broken.fif: <*><SAYS><*>

# Other files, and files that something is wrong with.
> generate l.toml ...
$ : > empty; echo a,b,c > text; tail -c +2 d.fif > other
$ cat w/d.log text > log1; head -c 20 w/d.log > log2; cat long.ctl text > ctl1; head -c 1020 long.ctl > ctl2
$ cp ctl2 ctl3; cp long.ctl ctl4; sed 's/V3L1/V9L9/' d.fif > version
poke ctl3 20 -1
poke ctl4 20 2000000000
each FILE
  empty
  text
  other
  log1
  log2
  ctl1
  ctl2
  ctl3
  ctl4
  version
do
  >1 show <FILE>
    ! <FILE>: this is no control file, Format Information file or log file, or it is cut short
>1 show missing
  ! missing: there is no such file
>1 show /dev/null
  ! /dev/null: this is not a regular file
>1 show .
  ! .: the file cannot be opened: access denied
$1 flock -x w/d.log korvex show w/d.log
  ! w/d.log: another program holds the file
