# The parts of a file, made apart.
file l.toml
  [layout]
  kind = "record"
  records = 10
  data = "o/d.csv"
  @number A type = "enumeration", file = "list.txt"
  @number B type = "range", format = "%3U", start = 1, end = 900
file list.txt cp932
  7
  88
  9
> generate l.toml --part 2/3
  part 2 of 3, 3 records, 22 bytes: o/d.csv.part-2-of-3
> generate l.toml --part 3/3 --quiet
> generate l.toml --part 01/03
  part 1 of 3, 3 records, 22 bytes: o/d.csv.part-1-of-3
cat o/d.csv.part-2-of-3
  7,004,
  88,005,
  9,006,
# No settings file and no log are beside them.
files
  l.toml
  list.txt
  o/d.csv.part-1-of-3
  o/d.csv.part-1-of-3.manifest
  o/d.csv.part-2-of-3
  o/d.csv.part-2-of-3.manifest
  o/d.csv.part-3-of-3
  o/d.csv.part-3-of-3.manifest
$ sed 's/^layout .*/layout/; s/^digest .*/digest/' o/d.csv.part-2-of-3.manifest
  korvex part 1
  part 2
  parts 3
  before 3
  records 3
  bytes 22
  checksum 7d780a8bfa2743f
  form data
  layout
  digest

# What is complete stays; what lacks something, is of another layout or is asked for by force is made.
def made HOW
  $ <HOW>; korvex generate l.toml --part 2/3
    part 2 of 3, 3 records, 22 bytes: o/d.csv.part-2-of-3
> generate l.toml --part 2/3
  part 2 of 3 is complete: o/d.csv.part-2-of-3
@made rm o/d.csv.part-2-of-3.manifest
@made truncate -s 18 o/d.csv.part-2-of-3
@made truncate -s -1 o/d.csv.part-2-of-3.manifest
@made cp o/d.csv.part-1-of-3.manifest o/d.csv.part-2-of-3.manifest
@made korvex generate l.toml --part 2/3 --quiet --records 11
@made ln -sf list.txt o/d.csv.part-2-of-3
> generate l.toml --part 2/3 --force
  part 2 of 3, 3 records, 22 bytes: o/d.csv.part-2-of-3
# The whole leaves its settings and its log; the parts stay what they are, also from those settings.
> generate l.toml --quiet
$ cat o/d.csv.part-?-of-3 | cmp - o/d.csv; echo same
  same
> generate l.toml --part 2/3 --keep-settings
  part 2 of 3 is complete: o/d.csv.part-2-of-3
$ seq 40 | xargs -P 8 -I N korvex generate l.toml --quiet --part N/40; cat o/d.csv.part-??-of-40 | cmp - o/d.csv; echo same
  same
# Two workers with one part do no harm.
$ seq 12 | xargs -P 6 -I N korvex generate l.toml --force --quiet --part 2/3 2>said; korvex generate l.toml --quiet --part 2/3; sed -n 3p o/d.csv.part-2-of-3; cat said
  9,006,

# A write that fails leaves nothing that could be taken for complete.
$ rm o/d.csv.part-2-of-3*; (ulimit -f 64; trap '' XFSZ; korvex generate l.toml --records 90000 --part 2/3) 2>&1; ls o | sed -n /2-of-3/p
  o/d.csv.part-2-of-3: File too large

# Export: every format, cut anywhere.
each FORMAT
  csv --header
  tsv --encoding cp932
  jsonl
  sql --table "a b"
do
  $ korvex export l.toml -o e --quiet --records 1400 --format <FORMAT>; for i in 1 2 3 4 5 6 7 8; do korvex export l.toml -o e --quiet --records 1400 --format <FORMAT> --part $i/8; done; cat e.part-?-of-8 | cmp - e; echo same; rm e*
    same

# Refused: numbers that are no part, and what makes no sense for one.
each PART
  0/3
  4/3
  3
  1/
  /1
  1/0
  +1/2
  -1/2
  1.0/2
  1/2/3
  1/99999999999999999999
do
  >2 generate l.toml --part=<PART>
    ! --part: "<PART>" is no part, expected I/N, two whole numbers with I from 1 to N
    ! Run with --help for more information.
each OPTION
  --output-option 2
  --settings-only
  --window
do
  >2 generate l.toml --part 1/2 <OPTION>
    ! <OPTION> cannot be combined with --part
>2 export l.toml -o - --part 1/2
  ! --output is -, expected a file for --part
>2 generate l.toml --force
  ! --force requires --part
  ! Run with --help for more information.
$ cp list.txt o/d.csv.part-1-of-9
edit l.toml "list.txt" => "o/d.csv.part-1-of-9"
>2 generate l.toml --part 1/9
  ! o/d.csv.part-1-of-9: is the value list of item A, expected a file of its own
# A bad line of a list is named; parts share no report of them.
file o/d.csv.part-1-of-9
  1
  1234
>1 generate l.toml --part 1/2
  ! <folder>/o/d.csv.part-1-of-9
  ! 2 line of a enum file Data longer than Item has been defined.

# Sources and ways of the layout's own: every part shuffles as the whole does, and a list that changes makes other bytes.
file own.toml
  [layout]
  kind = "record"
  records = 500
  data = "own.csv"
  [[item]]
  name = "A"
  attribute = "character"
  length = 40
  values = { type = "list", file = "own.txt", order = "shuffled" }
$ seq 90 > own.txt; korvex export own.toml -o e --quiet; for i in 1 2 3 4; do korvex export own.toml -o e --quiet --part $i/4; done; cat e.part-?-of-4 | cmp - e; echo same
  same
$ sed -i s/90/91/ own.txt; korvex export own.toml -o e --part 1/4 | sed 's/,.*//'
  part 1 of 4
# So does a weight, in another column of the table that the list is read from.
$ (printf 'name\tweight\n'; seq 90 | sed 's/$/\t1/') > t.tsv; sed 's/own.txt", order = "shuffled/t.tsv", column = "name", order = "random/' own.toml > t.toml
$ korvex export t.toml -o t --quiet --part 1/4; sed -i '$s/1$/2/' t.tsv; korvex export t.toml -o t --part 1/4 | sed 's/,.*//'
  part 1 of 4
>2 generate own.toml --part 1/4
  ! own.toml:9:19: item A: type "list" is unknown to this command, <*>
# Keys are made of the other layout's records: whatever makes those others changes the bytes here.
file child.toml
  [layout]
  kind = "record"
  records = 500
  data = "child.csv"
  [[item]]
  name = "A"
  attribute = "character"
  length = 40
  values = { type = "key", layout = "own.toml", item = "A" }
$ korvex export child.toml -o c --part 1/4 --quiet; korvex export child.toml -o c --part 1/4
  part 1 of 4 is complete: c.part-1-of-4
$ sed -i s/91/92/ own.txt; korvex export child.toml -o c --part 1/4 | sed 's/,.*//'
  part 1 of 4
$ sed -i 's/shuffled/random/' own.toml; korvex export child.toml -o c --part 1/4 | sed 's/,.*//'
  part 1 of 4

# The last of many parts is as near as the first, also around an innermost item of one value.
file far.toml
  [layout]
  kind = "record"
  records = 2000000000
  data = "far.csv"
  @item A 4 digits=9 type = "range", format = "%9U", start = 1, end = 999999999, repeat = { level = 1, count = 1000 }
  @number B type = "enumeration", file = "one.txt", repeat = { level = 2, count = 1000 }
file one.txt
  7
> generate far.toml --part 1000000/1000000
  part 1000000 of 1000000, 2000 records, 26000 bytes: far.csv.part-1000000-of-1000000
$ sed -n '1p;$p' far.csv.part-1000000-of-1000000
  999997003,7,
  999999002,7,
> plan far.toml --for make --parts 64 ...
