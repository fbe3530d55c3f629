# Whatever the number of threads, the file is the same.
file l.toml
  [layout]
  kind = "record"
  records = 400000
  data = "d.csv"
  @number A type = "range", format = "%3U", start = 1, end = 700, repeat = { level = 1, count = 3 }
  @number B type = "enumeration", file = "list.txt", repeat = { level = 2, count = 2 }
  @item C 4 digits=9 type = "range", format = "%9U", start = 1, end = 299999, exceeded = "initialize"
file list.txt
  7
  88
  999
$ korvex generate l.toml --jobs 1 --quiet; mv d.csv whole; korvex export l.toml -o e --jobs 1 --format sql --quiet
each J
  2
  3
  8
  64
do
  > generate l.toml --jobs <J>
    <*>
  $ cmp d.csv whole; korvex export l.toml -o f --jobs <J> --format sql --quiet; cmp e f; rm f; korvex generate l.toml --part 1/1 --jobs <J> --quiet; cmp d.csv.part-1-of-1 whole; rm d.csv.*
> verify l.toml d.csv --content --jobs 3
  d.csv: complete, 400000 records, 6299990 bytes, every byte compared
$ printf x | dd of=d.csv bs=1 seek=5500000 conv=notrunc status=none
>1 verify l.toml d.csv --content --jobs 3
  ! d.csv: record <n>, item <*>, byte 5500001: differs

# Sources of the layout's own.
file own.toml
  [layout]
  kind = "table"
  encoding = "utf-8"
  records = 60000
  data = "own.csv"
  [[item]]
  name = "NAME"
  attribute = "character"
  length = 90
  values = { type = "template", text = "{FIRST} {LAST} {A}, {FIRST} {LAST}, {FIRST} {LAST}, {FIRST} {LAST}" }
  [[item]]
  name = "FIRST"
  attribute = "character"
  length = 20
  values = { type = "builtin", set = "people.given", language = "en", order = "random" }
  [[item]]
  name = "LAST"
  attribute = "character"
  length = 20
  values = { type = "list", values = ["Bell", "Ödön"], order = "shuffled" }
  @item A 4 digits=9 type = "range", format = "%9U", start = 1, end = 999999999, order = "shuffled"
$ korvex export own.toml -o own --jobs 1 --quiet; korvex export own.toml -o other --jobs 3 --quiet; cmp own other

# A device that takes nothing, and who has read enough.
>1 export l.toml -o /dev/full --jobs 3
  ! /dev/full: <*>
$ korvex export l.toml -o - --jobs 3 | head -n 1
  1,7,1<0D>
each J
  0
  65
  2x
do
  >2 export l.toml -o e --jobs <J>
    ! --jobs: "<J>" is no number from 1 to 64
    ! Run with --help for more information.
