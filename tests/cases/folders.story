# A folder of layouts is looked at, and written out, as a whole.
def layout NAME RECORDS VALUES
  [layout]
  kind = "table"
  table = "my.<NAME>"
  records = <RECORDS>
  data = "d.csv"
  [[item]]
  name = "n"
  attribute = 4
  digits = 3
  values = { <VALUES> }
file f/a.toml
  @layout a 9 type = "default"
file f/b.toml
  @layout b 2 type = "list", file = "a.csv"
file f/a.csv
  7
  8
file f/.#a.toml
  an editor's
> preview f
  f/a.toml
    n
  001
  002
  003
  004
  005
  \
  f/b.toml
  n
  7
  8
> export f -o out/new --format sql
  9 records: out/new/a.sql
  2 records: out/new/b.sql
cat out/new/b.sql
  INSERT INTO "my"."b" ("n") VALUES
  (7),
  (8);
# What any of them is made from stays.
remember
>2 export f -o f
  ! f/a.csv: is the value list of item n, expected a file of its own
unchanged
each OPTIONS SAYS
  -o - | an output to standard output
  -o out --records 5 | --records
  -o out --format sql --table t | --table
do
  >2 export f <OPTIONS>
    ! f: is a folder, expected a layout for <SAYS>
# All that is wrong is said before anything is written.
edit f/a.toml digits = 3 => digits = 0
edit f/b.toml digits = 3 => digits = 0
>2 export f -o out
  ! f/a.toml:10:<*>
  ! f/b.toml:10:<*>
