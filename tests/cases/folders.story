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

# Checked together: records are unique in the sets that say so, and keys refer to records.
def table RECORDS UNIQUE
  [layout]
  kind = "table"
  table = "t"
  unique = <UNIQUE>
  records = <RECORDS>
  data = "d.csv"
def number NAME VALUES
  [[item]]
  name = "<NAME>"
  attribute = 4
  digits = 3
  values = { <VALUES> }
file h/a.toml
  @layout a 20 type = "default"
each UNIQUE RECORDS A B STATUS SAYS
  ["a", ["a", "b"]] | 20 | type = "range", format = "%3U", start = "1", end = "20", order = "shuffled" | type = "key", layout = "a.toml", item = "n" | 0 | g: all unique sets hold, and all keys refer to records
  ["a"] | 21 | type = "range", format = "%3U", start = "1", end = "20" | type = "key", layout = "a.toml", item = "n" | 1 | t: unique a: no, 20 different values, 21 records asked; record 21 is the first that repeats an earlier one<0A>g: not everything is certain
  ["b"] | 20 | type = "default" | type = "key", layout = "a.toml", item = "n", order = "random" | 1 | t: unique b: cannot be computed in advance: <*><0A>g: not everything is certain
  ["b"] | 20 | type = "default" | type = "key", layout = "a.toml", item = "m" | 1 | t: unique b: <*><0A>t: key b: refers to m of my.a, where not all differ: no, <*><0A>g: not everything is certain
  ["a"] | 20 | type = "default" | type = "key", layout = "../h/a.toml", item = "n" | 1 | t: key b: refers to <folder>/h/a.toml, which is no layout of this folder<0A>g: not everything is certain
# Records without a value are not the same to a database.
  ["a"] | 20 | type = "range", format = "%3U", start = "1", end = "20", order = "shuffled", empty = 0.5 | type = "default" | 0 | g: all unique sets hold, and all keys refer to records
  ["a"] | 50 | type = "range", format = "%3U", start = "1", end = "20", order = "shuffled", empty = 0.1 | type = "default" | 1 | t: unique a: no, <*><0A>g: not everything is certain
do
  file g/a.toml
    @layout a 20 type = "default"
    @number m type = "list", values = ["1", "2"]
  file g/b.toml
    @table <RECORDS> <UNIQUE>
    @number a <A>
    @number b <B>
  ><STATUS> check g
    Table  Records  Unique sets  Keys
    ...
    <SAYS>
