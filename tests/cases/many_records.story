# As many records as a layout may have: what is known of all is told at once, and any of them is made at once.
def head KIND DATA
  [layout]
  kind = "<KIND>"
  records = 1000000000000000000
  data = "<DATA>"
file l.toml
  @head record d.csv
  unique = ["B"]
  @item A 1 digits=40 type = "range", format = "'the records of '%5S'-'%9U", start = "AAAAA,1", end = "ZZZZZ,999999999"
  @item B 4 digits=18 type = "range", format = "%18U", start = 1, end = 999999999999999999
  @item C 1 digits=3 type = "range", format = "%1S", start = "A", end = "C", exceeded = "initialize"
$ korvex check l.toml | sed 's/^\(Free on the disk: *\)[0-9]*/\1some/'
  Item              Values  Course
  A              999999999  starts again after 999999999 records
  B     999999999999999999  starts again after 999999999999999999 records
  C                      3  is empty after 3 records
  Records to generate: 1000000000000000000
  Exact file size:     52000000000000000003 bytes
  Predicted size:      too large (above CheckFileSizeMax)
  Free on the disk:    some bytes, not enough
  Unique B: no, 999999999999999999 different values, 1000000000000000000 records asked; record 1000000000000000000 is the first that repeats an earlier one
# What generate writes into one file is what a control file can say.
> generate l.toml --settings-only --records 2147483647 --quiet
each OPTIONS SAYS
  generate l.toml | l.toml:3:11: records is 1000000000000000000, expected at most 2147483647 for one file; <*>--part<*>korvex export<*>
  generate l.toml --settings-only --records 2147483648 | l.toml: --records is 2147483648, expected at most 2147483647 for one file; <*>
  count l.toml | l.toml:3:11: records is 1000000000000000000, expected at most 2147483647 <*>
  check l.toml --records 1000000000000000001 | --records: "1000000000000000001" is no number from 0 to 1000000000000000000<0A>...
  generate l.toml --part 1/1000000000000000001 | --part: "1/1000000000000000001" is no part, <*><0A>...
do
  >2 <OPTIONS>
    ! <SAYS>
# The last records, as part of a file and of an export.
> generate l.toml --part 333333333333333333/333333333333333333
  part 333333333333333333 of 333333333333333333, 4 records, 208 bytes: d.csv.part-333333333333333333-of-333333333333333333
> export l.toml -o d --part 1000000000000000000/1000000000000000000 --format sql --table t
  part 1000000000000000000 of 1000000000000000000, 1 records, 47 bytes: d.part-1000000000000000000-of-1000000000000000000
$ cat d.csv.part-*3 d.part-*0
  the records of EHTYI-999999997,999999999999999997,,
  the records of EHTYJ-999999998,999999999999999998,,
  the records of EHTYK-999999999,999999999999999999,,
  the records of AAAAA-000000001,000000000000000001,,
  ,
  ('the records of AAAAA-000000001', 1, NULL);
> verify l.toml d.csv.part-333333333333333333-of-333333333333333333 --content
  d.csv.part-333333333333333333-of-333333333333333333: complete, 4 records, 208 bytes, every byte compared
>1 verify l.toml d --sample 3
  d: 1 of 1000000000000000000 parts are complete
  ! d.part-0000000000000000001-of-1000000000000000000 to d.part-0999999999999999999-of-1000000000000000000: missing
$ korvex plan l.toml --parts 100000 --for make | sed -n 1,2p | sed 's/in about .* without/in some time without/'
  # Makes <folder>/d.csv in 100000 parts: 1000000000000000000 records, 52.0 EB.
  # A part has up to 10000000000000 records and 520.0 TB; one core makes it in some time without what writing takes.
>2 plan l.toml --max-bytes 1G --for make
  ! more than 100000 parts, expected fewer or larger ones

# After repeats, and with what follows the record's number.
$ printf 'a\r\nbbb\r\n' > list.txt
file r.toml
  @head table r.csv
  @item ID 4 digits=9 type = "range", format = "%9U", start = 1, end = 999999999, repeat = { level = 1, count = 1000000 }
  @item B 1 digits=9 type = "enumeration", file = "list.txt", repeat = { level = 2, count = 100 }
$ korvex check r.toml | tail -n 3
  Repeats end:         after 199999999800000000 records
  Records to generate: 1000000000000000000
  Exact file size:     14000000000000000000 bytes
file c.toml
  @head table c.csv
  unique = ["RANDOM"]
  @item FORWARD 4 digits=9 type = "key", layout = "r.toml", item = "ID", order = "forward"
  @item EACH 4 digits=9 type = "key", layout = "r.toml", item = "ID", each = [0, 3]
  @item NO 4 digits=3 type = "line", of = "EACH"
  @item SHUFFLED 4 digits=18 type = "range", format = "%18U", start = 1, end = 999999999999999999, order = "shuffled"
  @item RANDOM 4 digits=9 type = "key", layout = "r.toml", item = "ID", order = "random"
  @item ZIPF 4 digits=9 type = "key", layout = "r.toml", item = "ID", order = "zipf"
  @item TREE 4 digits=9 type = "key", layout = "c.toml", item = "FORWARD", each = [0, 1000000000000000000]
  @item KIND 1 length=4 type = "list", values = ["one", "two"], weights = [1, 2], order = "random"
  @item SOME 1 length=4 type = "list", values = ["one"], empty = 0.3
$1 korvex check c.toml
  Item                  Values  Course
  FORWARD            999999999  starts again after 1000000000000000000 records
  EACH         up to 999999999  in groups of up to 3 records
  NO                   up to 3  counts from 1 in each group
  SHUFFLED  999999999999999999  shuffled, starts again in another order after 999999999999999999 records
  RANDOM       up to 999999999  drawn
  ZIPF         up to 999999999  drawn, the first values most often
  TREE                 up to 1  in groups of up to 999999999999999999 records; empty in 1 of 1000000000000000000 records
  KIND                       2  drawn in exact shares
  SOME                 up to 1  starts again after 1 record; empty in 300000000000000000 of 1000000000000000000 records
  Records to export:   1000000000000000000
  Unique RANDOM: no, at most 999999999 different values, 1000000000000000000 records asked
> export c.toml -o c --part 200000000000000000/200000000000000000
  part 200000000000000000 of 200000000000000000, 5 records, 312 bytes: c.part-200000000000000000-of-200000000000000000
$ cat c.part-*0
  999999996,999999551,2,132678078951885225,291684495,1,1,two,one<0D>
  999999997,999999425,1,739621486332907024,214463289,1,1,one,one<0D>
  999999998,999999425,2,347384258680497647,254076779,2,1,two,<0D>
  999999999,999999951,1,780066632027100013,629155968,1,1,one,one<0D>
  1,999999457,1,840477848480805161,979499891,8813,1,two,one<0D>
