# Values of the module are the same beside those of the program's own, one after the other and in any order.
file plain.toml
  [layout]
  kind = "table"
  records = 3000
  data = "d.csv"
  @number N type = "range", format = "%3U", start = "1", end = "999"
  @number ONCE type = "range", format = "%3U", start = "1", end = "998", exceeded = "initialize"
  @item DOWN 4 digits=3 type = "range", format = "%3U", start = "100", end = "1", increment = -7
  @item CODE 1 digits=9 type = "range", format = "'A-'%2S%2U'-'%1s", start = "AA,98,x", end = "CC,99,z"
  @item WIDE 11 digits=4 type = "range", format = "%2N'号'", start = "ああ", end = "んん"
  @item DAY 28 digits=8 type = "range", format = "%2YMA", start = "990130", end = "991231"
  @item AT 32 digits=15 type = "range", format = "%TS", start = "20240228 235950", end = "20240301 000010", increment = 9
  @item LIST 6 digits=4 type = "enumeration", file = "list.txt"
file list.txt cp932
  a
  ｶﾅ
  bb
  カナ
$ { cat plain.toml; printf '[[item]]\nname = "X"\nattribute = "character"\nlength = 1\nvalues = { type = "list", values = ["x", "y"], order = "random" }\n'; } > own.toml
$ for l in plain own; do korvex export $l.toml -o - | sed 's/\r//' > $l; done; sed 's/,.$//' own | cmp - plain; wc -l < own
  3000
each VALUES
  order = "shuffled"
  order = "random"
do
  file key.toml
    [layout]
    kind = "table"
    records = 9000
    data = "k.csv"
    encoding = "utf-8"
    @number N type = "key", layout = "own.toml", item = "N", group = "g", <VALUES>
    @item DOWN 4 digits=3 type = "key", layout = "own.toml", item = "DOWN", group = "g"
    @item CODE 1 digits=9 type = "key", layout = "own.toml", item = "CODE", group = "g"
    @item WIDE 11 digits=4 type = "key", layout = "own.toml", item = "WIDE", group = "g"
    @item AT 32 digits=15 type = "key", layout = "own.toml", item = "AT", group = "g"
    @item LIST 6 digits=4 type = "key", layout = "own.toml", item = "LIST", group = "g"
  $ cut -d, -f1,3-5,7,8 plain | sort -u > known; korvex export key.toml -o - | sed 's/\r//' | sort -u | comm -23 - known | wc -l
    0

# A default and a reference begin again after a round, whatever their way.
file rounds.toml
  [layout]
  kind = "table"
  records = 18
  data = "r.csv"
  @item A 4 digits=1 type = "default", order = "shuffled"
  @item B 4 digits=1 type = "reference", item = "A", order = "shuffled"
  @item C 4 digits=1 type = "range", format = "%1U", start = "1", end = "9", order = "shuffled", exceeded = "initialize"
$ korvex export rounds.toml -o r.csv --quiet; for i in 1 2 3; do cut -d, -f$i r.csv | tr -d '\r' | sort | uniq -c | tr -s ' \n' ' '; echo; done
   2 1 2 2 2 3 2 4 2 5 2 6 2 7 2 8 2 9 
   2 1 2 2 2 3 2 4 2 5 2 6 2 7 2 8 2 9 
   9 1 1 1 2 1 3 1 4 1 5 1 6 1 7 1 8 1 9 
