# What load and export would store as another text, they refuse, and say where it stands; commands
# that only look at the records warn.
databases sqlite
sql
  CREATE TABLE t (A varchar(20), B varchar(20));
def layout_with FORMAT
  [layout]
  kind = "table"
  records = 2
  data = "d.csv"
  settings = "d.fif"
  [[item]]
  name = "A"
  attribute = "character"
  length = 20
  values = { type = "enumeration", file = "list.txt" }
  [[item]]
  name = "B"
  attribute = "character"
  length = 20
  values = { type = "range", format = "<FORMAT>", start = "a", end = "c" }
file l.toml
  @layout_with %1s
each TEXT PLACE CHARACTER EXPECTED
  plain<0A>Anne-Françoise | 2:10 | ç | which has no such character
  é | 1:1 | é | which has no such character
  名前<0A>ﬂ and 名 | 2:1 | ﬂ | which has no such character
  <EF><BB><BF>plain | 1:1 | <*> | which has no such character
  名前 | 1:1 | 名 | as by iconv -f UTF-8 -t CP932 <folder>/list.txt
  x<0A><a*70000><0A>Αθήνα | 3:3 | ή | which has no such character
  a😀 | 1:2 | 😀 | which has no such character
  дом<0A>5 £ | 2:3 | £ | which has no such character
do
  file list.txt
    <TEXT>
  each COMMAND
    load l.toml "<target>" t
    export l.toml -o out.jsonl --format jsonl
    export l.toml -o out.csv --format csv --encoding cp932
  do
    >2 <COMMAND>
      ! <folder>/list.txt:<PLACE>: the character "<CHARACTER>" is written in UTF-8, expected code page 932, <EXPECTED>
query SELECT count(*) FROM t
  0
# Katakana of half width, in code page 932, that happen to be UTF-8.
file list.txt cp932
  ﾈｺ
> load l.toml "<target>" t ...
query SELECT A, count(*) FROM t GROUP BY A
  ﾈｺ|2
> preview l.toml ...
# A list that only the settings know of.
file list.txt
  Zoë
> generate --settings-only l.toml
  2 items with settings: d.fif
  ! l.toml:6: item A: <*> looks like UTF-8; <*>
file kept.toml
  [layout]
  kind = "table"
  records = 2
  data = "d.csv"
  settings = "d.fif"
  [[item]]
  name = "A"
  attribute = "character"
  length = 20
>2 load kept.toml "<target>" t
  ! <folder>/list.txt:1:3: the character "ë" is written in UTF-8, expected code page 932, which has no such character
# Characters of a layout for which the code page has another one.
file list.txt
  x
each CHARACTER
  〜
  ¥
  —
do
  file l.toml
    @layout_with '<CHARACTER>'%1s
  > export l.toml -o out.csv --format csv --encoding cp932 ...
  each COMMAND
    load l.toml "<target>" t
    export l.toml -o out.csv --format csv
  do
    >2 <COMMAND>
      ! l.toml:15:37: format has the character "<CHARACTER>" at place 2, for which another one of code page 932 would be stored, expected that one
# Keys that a list would turn into others.
sql
  CREATE TABLE parents (k varchar(9) PRIMARY KEY);
  INSERT INTO parents VALUES ('¥'), ('é'), ('～'), ('x');
  CREATE TABLE goods (k varchar(9) NOT NULL REFERENCES parents, "b〜" integer);
> import "<target>" goods -o goods.toml
  1 item: goods.toml
  ! goods: column k: keys of parents left out, as a list cannot hold them: 2
  ! goods: column b〜: its name has a character that code page 932 lacks, left out
cat goods.k.txt cp932
  x
  ～
