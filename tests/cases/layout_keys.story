# What every key of a layout becomes in the settings, the log and the data.
file l.toml
  [layout]
  kind = "table"
  records = 30
  level = 3
  null_default = true
  data = "out/d.csv"
  settings = "<folder>/s/x.fif"
  work = "w"
  quote = "double"
  [[item]]
  number = 7
  name = "名前"
  description = "説明"
  attribute = "decimal"
  signed = true
  length = 12
  digits = 9
  decimals = 2
  nullable = false
  [item.values]
  type = "range"
  format = "%5.2D"
  start = -5
  end = "5.5"
  increment = "0.5"
  exceeded = "initialize"
  custom = false
  [[item]]
  name = "B"
  attribute = 28
  values = { type = "initial" }
> generate l.toml
  30 records, 288 bytes, <t> s: out/d.csv
> show s/x.fif
  Format Information file, current version
    layout kind  2 (table)
    quotation    1 (double)
    levels       1

  level 3: records 30, items 2, size 2536, offset 76
    item 7: type 2 (range), elements 1, lead element 1
      attribute 4 (decimal), signed, length 12, digits 9, decimals 2
      format     "%5.2D"
      increment  "0.5" = 50
      exceeded   0 (initialize)
      element 1: 900 (signed number), width 9, digits 5, decimals 2, text "5.2D"
        start "-00005.00", end "+00005.50", sign 22, span 0:1050
    item 2: type 1 (initial), elements 1, lead element 1
      attribute 28 (date), unsigned, length 8, digits 8, decimals 0
      format     ""
      increment  "1" = 1
      exceeded   0 (initialize)
      element 1: 0 (initial value), width 8, digits 8, decimals 0, text ""
> show w/d.log
  log file
    records       30
    level         3
    items         2
    item numbers  7 2
$ sed -n '1p;22,23p' out/d.csv
  -00005.00,,
  +00005.50,,
  ,,
files
  l.toml
  out/d.csv
  s/x.fif
  w/d.log
# The number of records in the command wins, and the layout may leave its own out.
edit l.toml records = 30 =>
> generate l.toml --records 2
  2 records, 24 bytes, <t> s: out/d.csv
$ wc -l < out/d.csv
  2

# Defaults, every type of values, and numbers by place.
file lists/町.txt
  1
file l.toml
  @layout
  @number A type = "range", format = "%3U", start = 7
  @number B type = "enumeration", file = "lists/町.txt", repeat = { level = 2, count = 30 }
  [[item]]
  name = "C"
  attribute = 28
  values = { type = "default", repeat = { level = 1, count = 4 } }
  @number D type = "reference", item = "A"
  @number E type = "enumeration", file = "<folder>/lists/町.txt", exceeded = "initialize"
> generate l.toml
  5 records, 106 bytes, <t> s: d.csv
$ korvex show d.fif | grep -E '^  (item|level)|repeat  |file  |start'
    levels       1
    item 1: type 2 (range), elements 1, lead element 1
        start "007", end "999", sign 0, span 0:992
    item 2: type 4 (enumeration), elements 1, lead element 1
      repeat     level 2, 30 times
      file       <folder>/lists/町.txt
    item 3: type 2 (range), elements 1, lead element 1
      repeat     level 1, 4 times
        start "19700101", end "20380119", sign 0, span 0:680018
    item 4: type 2 (range), elements 1, lead element 1
        start "007", end "999", sign 0, span 0:992
    item 5: type 4 (enumeration), elements 1, lead element 1
      file       <folder>/lists/町.txt
# A count of 0 is no error of the layout: the module's own check refuses it, by number.
edit l.toml count = 30 => count = 0
edit l.toml level = 1 => level = 0
>1 generate l.toml
  ! l.toml:16:10: item B: 99103:0 cannot be specified as the number of repeats. Specify another number.
  ! l.toml:20:10: item C: 99102:0 cannot be specified as a repeat level.
  ! Specify another level.

# An end that is left out is the largest value; digits that are impossible are warned of, and the item is used.
each KIND DECIMALS SAYS
  record | 3 |
  record | 12 | 99075
  table | 5 |
  table | 6 | 99075
  iso | 12 |
do
  file l.toml
    [layout]
    kind = "<KIND>"
    data = "<KIND><DECIMALS>.csv"
    records = 1
    [[item]]
    name = "A"
    attribute = 4
    digits = 5
    length = 20
    decimals = <DECIMALS>
    values = { type = "initial" }
  $ korvex check l.toml 2>&1 > report | sed -n 's/.* \(99[0-9]*\):.*/\1/p'
    <SAYS>
