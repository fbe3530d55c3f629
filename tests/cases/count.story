# What count says, its failures, and that it leaves the folder as it is.
set KORVEX_HOST_KEY=limited
file l.toml
  [layout]
  kind = "table"
  records = 3
  null_default = true
  data = "d.csv"
  @item A 4 digits=5 type = "range", format = "%3U", start = 1, end = 9
  @kept B 28 digits=8
> count l.toml
  Data items:          9
  Predicted size:      117 bytes (data items x item lengths)
  DGCheckRepeatCnt:    0 (the settings can be evaluated)
  Records to generate: 3
  Exact file size:     15 bytes
file l.toml
  @layout
  @number A type = "default"
> generate l.toml --settings-only ...
# What the message says of the line is no business of the path, and the report of the user stays.
file 50%d %s.txt
  12

  1x
  +4
file 50%d %s.txt.err
  an older report
$ mkdir -p "<config>/limited"
each FIRST SECOND LIMIT SAYS
  @number A type = "enumeration", file = "50%d %s.txt" | | 0 | <folder>/50%d %s.txt<0A>3 line of a enum file<*><0A>...
  @number A type = "default", repeat = { level = 2, count = 1 } | @number B type = "default", repeat = { level = 3, count = 1 } | 0 | Failed to generate data.<0A>99108:<*><0A>...
  @number A type = "default", repeat = { level = 1, count = 1 } | @number B type = "default", repeat = { level = 2, count = 1 } | 1 | <*><0A><*>repeats is 1.<0A>...
  @kept A 4 digits=4 | | 0 | <*>: its settings are for another attribute or number of digits<0A><*>: 99070:There is a difference between Item information and<*>
do
  $ printf 'CheckFileSizeMax=1\nRepeatLevelNumMax=<LIMIT>\n' > "<config>/limited/Korvex.conf"
  file l.toml
    @layout
    <FIRST>
    <SECOND>
  remember
  >1 count l.toml ...
    ! <SAYS>
  unchanged
