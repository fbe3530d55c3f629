# Records for other programs.
file list.txt cp932
  say "a,b"
  O'Neil<09>ｿ\表
file l.toml
  [layout]
  kind = "table"
  records = 3
  data = "stock.csv"
  quote = "double"
  [[item]]
  name = "N\"1"
  attribute = "decimal"
  signed = true
  digits = 4
  decimals = 2
  values = { type = "range", format = "%2.2D", start = "-0.50", end = "1.00", increment = "0.50" }
  @item 名 1 length=20 type = "enumeration", file = "list.txt", exceeded = "initialize"
  @item D 28 digits=8 type = "range", format = "%2YMD", start = "240229", end = "241231"
> export l.toml -o - --header
  "N""1",名,D<0D>
  -0.50,"say ""a,b""",2024-02-29<0D>
  0.00,O'Neil<09>ｿ\表,2024-03-01<0D>
  0.50,,2024-03-02<0D>
> export l.toml -o - --format tsv
  -0.50<09>say "a,b"<09>2024-02-29
  0.00<09>O'Neil\tｿ\\表<09>2024-03-01
  0.50<09><09>2024-03-02
> export l.toml -o - --format jsonl
  {"N\"1":-0.50,"名":"say \"a,b\"","D":"2024-02-29"}
  {"N\"1":0.00,"名":"O'Neil\u0009ｿ\\表","D":"2024-03-01"}
  {"N\"1":0.50,"名":null,"D":"2024-03-02"}
> export l.toml -o - --format sql
  INSERT INTO "stock" ("N""1", "名", "D") VALUES
  (-0.50, 'say "a,b"', '2024-02-29'),
  (0.00, 'O''Neil<09>ｿ\表', '2024-03-01'),
  (0.50, NULL, '2024-03-02');
# Words of truth are such in JSON, where a list has no others.
file yes.txt
  true
  false
file maybe.txt
  true
  unknown
file flags.toml
  @layout
  @item Y 1 length=7 type = "enumeration", file = "yes.txt"
  @item M 1 length=7 type = "enumeration", file = "maybe.txt"
> export flags.toml -o - --format jsonl --records 2
  {"Y":true,"M":"true"}
  {"Y":false,"M":"unknown"}
$ for f in csv tsv; do korvex export l.toml -o - --format $f > $f; korvex export l.toml -o - --format $f --encoding cp932 | iconv -f CP932 -t UTF-8 | cmp - $f; done; echo ok
  ok
# A new statement begins after many records.
$ korvex export l.toml -o - --format sql --records 1001 --table 'a"b' | grep -c -e INSERT -e ';'
  6
$ korvex export l.toml -o - --format sql --records 1001 --table 'a"b' | grep -n -e INSERT
  1:INSERT INTO "a""b" ("N""1", "名", "D") VALUES
  502:INSERT INTO "a""b" ("N""1", "名", "D") VALUES
  1003:INSERT INTO "a""b" ("N""1", "名", "D") VALUES

# A table may be in a schema; what is no path of names is one name. The data file's name is no path.
each TABLE NAME
  s2.au | "s2"."au"
  a.b.c | "a"."b"."c"
  "s2.au" | "s2.au"
  "s 2"."a""u" | "s 2"."a""u"
  s."a.u" | "s"."a.u"
  s..au | "s..au"
  "s". | """s""."
  "open | """open"
  "a"b | """a""b"
do
  $ korvex export l.toml -o - --format sql --records 1 --table '<TABLE>' | sed -n 's/^INSERT INTO \(.*\) (.*/\1/p'
    <NAME>
edit l.toml stock.csv => my.stock.csv
$ korvex export l.toml -o - --format sql | grep INSERT
  INSERT INTO "my.stock" ("N""1", "名", "D") VALUES

# The output is replaced when it is complete, and never what the records are made from.
file o.csv
  old
> export l.toml -o o.csv
  3 records: o.csv
$ head -n 1 o.csv
  -0.50,"say ""a,b""",2024-02-29<0D>
file o.csv
  old
file list.txt
  good
  <FC><FC>
remember
>1 export l.toml -o o.csv
  ! record 2, item 名: �� has bytes without meaning in code page 932, expected characters
unchanged
>2 export l.toml -o l.toml
  ! l.toml: is the layout, expected a file of its own
>2 export l.toml -o list.txt
  ! list.txt: is the value list of item 名, expected a file of its own
>1 export l.toml -o missing/o.csv
  ! missing/o.csv: No such file or directory
unchanged
edit list.txt <FC><FC><0A> =>
>1 export l.toml -o /dev/full
  ! /dev/full: No space left on device

# Keys of one name would hide each other; fields in a line do not.
edit l.toml name = "D" => name = "名"
each FORMAT
  jsonl
  sql
do
  >2 export l.toml -o - --format <FORMAT>
    ! l.toml:18: item 名: the item on line 13 has the same name, expected different names for jsonl and sql
> export l.toml -o - --format tsv
  -0.50<09>good<09>2024-02-29
  0.00<09><09>2024-03-01
  0.50<09><09>2024-03-02

# A link stays one, also where it leads nowhere yet.
$ ln -s linked.tsv o.link
> export l.toml -o o.link --format tsv --quiet
$ readlink o.link; wc -l < linked.tsv
  linked.tsv
  3

# Numbers lose what numbers do not need; what is none is a text.
$ printf '%s\n' 007 +00012.50 -.25 -0 -00.00 5. 000 9999999999999999 > list.txt
$ printf '%s\n' + . 1-2 1.2.3 1e5 > texts.txt
file n.toml
  @layout
  @item N 4 digits=18<0A>decimals=2<0A>length=21<0A>signed=true type = "enumeration", file = "list.txt"
  @item T 19 digits=0<0A>length=9 type = "enumeration", file = "texts.txt"
> export n.toml -o - --format jsonl --records 8
  {"N":7,"T":"+"}
  {"N":12.50,"T":"."}
  {"N":-0.25,"T":"1-2"}
  {"N":0,"T":"1.2.3"}
  {"N":0.00,"T":"1e5"}
  {"N":5,"T":"+"}
  {"N":0,"T":"."}
  {"N":9999999999999999,"T":"1-2"}
