# Values of the program's own are written many records at a time, in another encoding record by record: the bytes are the
# same.
file l.toml
  [layout]
  kind = "table"
  records = 700
  data = "d.csv"
  encoding = "utf-8"
  @item ID "decimal" digits=10 type = "range", format = "%10U", start = "1", end = "9999999999", order = "shuffled"
  @item AMOUNT "decimal" digits=5<0A>decimals=2<0A>signed=true type = "list", values = ["-0.50", "007", "+3", "-0", ".5", "12.", "0.0"], order = "random"
  @item TEXT "character" length=20 type = "list", values = ["a,b", "say \"x\"", "a\tb", "O'Neil", "\\", "plain"], order = "random", empty = 0.1
  @item LONG "character" length=90 type = "template", text = "{TEXT} and {ID} and much more that makes the text a long one"
  @item D "date" digits=8 type = "range", format = "%4YMD", start = "20200101", end = "20241231", order = "shuffled"
  @item T "time" digits=6 type = "range", format = "%T", start = "000000", end = "235959", order = "shuffled"
  @item TS "timestamp" digits=15 type = "range", format = "%TS", start = "20200101 000000", end = "20241231 235959", order = "shuffled", empty_with = "TEXT"
file one.toml
  [layout]
  kind = "table"
  records = 700
  data = "d.csv"
  encoding = "utf-8"
  @item TEXT "character" length=20 type = "list", values = ["plain", "a,b"], order = "random", empty = 0.5
each FORMAT
  csv
  tsv
  sql
do
  $ korvex export l.toml -o - --format <FORMAT> > rows; korvex export l.toml -o - --format <FORMAT> --encoding cp932 > records
  $ cmp rows records && test -s rows
  $ korvex export one.toml -o - --format <FORMAT> > rows; korvex export one.toml -o - --format <FORMAT> --encoding cp932 > records
  $ cmp rows records && test -s rows

# What does not fit is named by its record, in the middle of those that are made together.
file n.toml
  [layout]
  kind = "table"
  records = 1200
  data = "d.csv"
  @item N "decimal" digits=4 type = "range", format = "%4U", start = "1", end = "1200"
  @item M "decimal" digits=3 type = "offset", of = "N", from = 0, to = 0
  @item L "character" length=9 type = "list", values = ["a", "b"], order = "shuffled"
>1 export n.toml -o - ...
  ! record 1000, item M: the value is "1000", expected what the item's size and sign allow
