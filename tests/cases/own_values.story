# Values beyond what the module knows: sources of the program's own, and ways through any.
def own OPTIONS
  [layout]
  kind = "table"
  records = 12
  data = "d.csv"
  <OPTIONS>
def text NAME VALUES
  [[item]]
  name = "<NAME>"
  attribute = "character"
  length = 12
  values = { <VALUES> }
file colours.txt
  red
  green
  blue
file places.tsv
  city<09>country<09>weight
  Oslo<09>Norway<09>1
  Bergen<09>Norway<09>3
file l.toml
  @own
  @number N type = "range", format = "%3U", start = "1", end = "12", order = "shuffled"
  @text C type = "list", file = "colours.txt"
  @text W type = "list", values = ["a", "b"], weights = [1, 3], empty = "1/4"
  @text CITY type = "list", file = "places.tsv", column = "city", order = "random", group = "g"
  @text COUNTRY type = "list", file = "places.tsv", column = "country", group = "g"
  @text NAME type = "builtin", set = "people.given_ascii", language = "de", order = "zipf"
  @text KEY type = "template", text = "{{{C|upper}-{N}", when = { W = ["b"] }
  @text SAME type = "reference", item = "KEY"
  @text OTHER type = "default", empty_with = "KEY"
  @number R type = "reference", item = "N", order = "forward"
# A number to look at is not the number of records: shares are those of all.
> preview l.toml -n 3
    N  C      W  CITY    COUNTRY  NAME     KEY         SAME        OTHER    R
  004  red       Bergen  Norway   Peter                                   001
  007  green  b  Oslo    Norway   Felix    {GREEN-007  {GREEN-007  AAAAB  002
  001  blue   a  Oslo    Norway   Andreas                                 003
> export l.toml -o d.csv
  12 records: d.csv
$ sed 3q d.csv | cut -d, -f1,3,5,7
  4,,Norway,
  7,b,Norway,{GREEN-007
  1,a,Norway,
$ cut -d, -f1 d.csv | sort | tr '\n' ' '
  1 10 11 12 2 3 4 5 6 7 8 9 <end>
$ cut -d, -f3 d.csv | sort | uniq -c
        3 
        2 a
        7 b
$ cut -d, -f2,4,5 d.csv | sort | uniq -c
        2 blue,Bergen,Norway
        2 blue,Oslo,Norway
        3 green,Bergen,Norway
        1 green,Oslo,Norway
        4 red,Bergen,Norway
$ awk -F, '{ k = $3 == "b" ? "{" toupper($2) "-" $1 : "" } $7 != k || $8 != k || ($9 == "") != (k == "")' d.csv
  7,green,b,Oslo,Norway,Felix,{GREEN-007,{GREEN-007,AAAAB,2<0D>
  12,green,b,Bergen,Norway,Liam,{GREEN-012,{GREEN-012,AAAAE,5<0D>
  6,red,b,Bergen,Norway,Peter,{RED-006,{RED-006,AAAAG,7<0D>
  5,green,b,Bergen,Norway,Guenter,{GREEN-005,{GREEN-005,AAAAH,8<0D>
  8,blue,b,Bergen,Norway,Monika,{BLUE-008,{BLUE-008,AAAAI,9<0D>
  11,red,b,Bergen,Norway,Juergen,{RED-011,{RED-011,AAAAJ,10<0D>
  10,green,b,Bergen,Norway,Paul,{GREEN-010,{GREEN-010,AAAAK,11<0D>
$ korvex export l.toml -o - | cmp - d.csv; rm d.csv

# What only helps other items is left out, and changes nothing else.
file h.toml
  [layout]
  kind = "table"
  records = 3
  data = "h.csv"
  @item FIRST 1 length=9 type = "list", values = ["Ann", "Bo"], group = "n"
  @item KIND 1 length=9 type = "list", values = ["a", "b"], order = "shuffled"
  @item NAME 1 length=9 type = "template", text = "{KIND}-{FIRST}"
> export h.toml -o - --header
  FIRST,KIND,NAME<0D>
  <*>
  Bo,b,b-Bo<0D>
  Ann,a,a-Ann<0D>
edit h.toml order = "shuffled" => order = "shuffled", hidden = true
> export h.toml -o - --header
  FIRST,NAME<0D>
  <*>
  Bo,b-Bo<0D>
  Ann,a-Ann<0D>

# What is wrong with them is named with its place, and nothing is written.
file bad.txt
  a<FF>b
file long.txt
  short
  far too long a text
file empty.txt
$ truncate -s 300M huge.txt
each VALUES SAYS
  "list" | 10: [item.values] has neither values nor file, expected <*>
  "list", values = [] | 36: values is an array, expected an array of strings and integers, at least one
  "list", values = ["a", 1.5] | 42: values has a floating-point number, expected a string or an integer
  "list", values = ["a"], file = "long.txt" | 50: file is given together with values, expected one of the two
  "list", values = ["a"], column = "c" | 52: column is given together with values, expected file
  "list", values = ["a", "far too long a text"] | 42: item A: the value <*>
  "list", values = ["é"] | 37: <*>"é" at place 1, expected characters of code page 932, or encoding = "utf-8" in [layout]
  "list", file = "none.txt" | 34: <*>none.txt, which cannot be read: No such file or directory
  "list", file = "/dev/zero" | 34: <*>/dev/zero, which is not a regular file
  "list", file = "huge.txt" | 34: <*>huge.txt, which has 314572800 bytes, expected at most 268435456
  "list", file = "bad.txt" | 34: <*>bad.txt: line 1 is not UTF-8, expected a text in UTF-8
  "list", file = "long.txt" | 34: <*>long.txt: line 2 has 19 bytes <*>
  "list", file = "empty.txt" | 34: <*>empty.txt, which is empty, expected a value a line
  "list", file = "places.tsv", column = "x" | 57: item A: column is "x", expected one of "city", "country"
  "builtin" | 10: [item.values] has no set, expected <*>
  "builtin", set = "peple" | 36: item A: set is "peple", expected one of <*>
  "builtin", set = "people.given", language = "xx" | 63: item A: language is "xx", expected one of <*>
  "builtin", set = "people.given", language = "fr" | 36: item A: set "people.given": line <n> has the character <*>, or encoding = "utf-8" in [layout]
  "template" | 10: [item.values] has no text, expected <*>
  "template", text = "{B" | 39: text: expected "}" <*>
  "builtin", set = "people" | 36: item A: set is "people", expected one of "people.<*>
  "list", values = ["a"], order = "random", exceeded = "initialize" | 72: exceeded is given together with order "random", expected order "forward" or "shuffled"
  "template", text = "B}" | 40: text: expected "{" and an item before "}", or "}}" for a brace
  "template", text = "{B|up}" | 42: text: is no filter: "up", <*>
  "template", text = "\u3042\\あ{X}" | 49: item A: text names "X", expected an item of the records
  "template", text = """\"あ{B|}""" | 47: text: is no filter: "", <*>
  "template", text = '''\あ{B{''' | 43: text: expected "}" <*>
  "template", text = "{A}" | 40: item A: text refers back to the item: A (e.toml:20:40) -> A, expected no cycle
  "template", text = "{B}", when = { D = ["x"] } | 54: item A: when refers back to the item: D (e.toml:15:40) -> A (e.toml:20:54) -> D, expected no cycle
  "template", text = "{B}", order = "shuffled" | 53: order is given together with type "template", expected a type with a known period
  "list", values = ["a"], order = "sorted" | 51: order is "sorted", expected one of "forward", "shuffled", "random", "zipf"
  "list", values = ["a"], order = "zipf", joint = "j" | 67: joint is given together with order "zipf", expected order "shuffled"
  "list", values = ["a"], weights = [1, 2] | 53: item A: weights has 2 numbers, expected 1, one for each value
  "list", values = ["a"], weights = [-1] | 54: weights is -1: it is below 0, expected a number from 0 on
  "list", values = ["a"], weights = [0] | 53: item A: weights: none of the weights is above 0
  "list", values = ["a"], order = "zipf", skew = 0 | 66: skew is 0, expected a number above 0, up to 10
  "list", values = ["a"], empty = 1.5 | 51: empty is 1.5: it is above 1, expected a share from 0 to 1
  "list", values = ["a"], empty = nan | 51: empty is nan: <*>, expected a share from 0 to 1
  "list", values = ["a"], when = { B = ["x", "z"] } | 62: item A: when has "z", which B never is, expected one of its values
  "list", values = ["a"], empty_with = "X" | 56: item A: empty_with names "X", expected an item of the records
  "list", values = ["a"], within = "B" | 52: item A: within is "B", expected an item with type = "key" and each
  "list", values = ["a"], group = "b" | 51: item A: group "b" has items of other rows, expected items of one list, set or layout
  "list", values = ["a", "b"], group = "b", order = "random" | 69: item A: group "b" has the way of item B already, expected one way
  "list", values = ["a"], salt = ["b"] | 50: salt is an array, expected a string
  "initial", salt = "b" | 37: salt is given together with type "initial", expected another type
  "initial", empty = 0.5 | 38: empty is given together with type "initial", expected another type
  "default", order = "random", repeat = { level = 1, count = 2 } | 57: repeat is given together with order, expected one of the two
do
  file e.toml
    @own
    @text B type = "list", values = ["x", "y"], group = "b", order = "shuffled"
    @text D type = "template", text = "{A}"
    @text A type = <VALUES>
  >2 export e.toml -o -
    ! e.toml:20:<SAYS>
each OPTIONS SAYS
  encoding = "latin-1" | 5:12: encoding is "latin-1", expected one of "cp932", "utf-8"
  seed = "x" | 5:8: seed is "x", expected a whole number, or a text with one up to 18446744073709551615
  seed = "18446744073709551616" | 5:8: seed is "18446744073709551616", expected a whole number, <*>
  salt = 1 | 5:8: salt is 1, expected a string
  ways = 2 | 5:8: ways is 2, expected an integer from 1 to 1
  sets = 0 | 5:8: sets is 0, expected an integer from 1 to 1
do
  file e.toml
    @own <OPTIONS>
    @text A type = "list", values = ["a"]
  >2 export e.toml -o -
    ! e.toml:<SAYS>
file e.toml
  @own
  @text A type = "list", values = ["a"]
  @text B type = "default", order = "shuffled"
  nullable = false
  [[item]]
  name = "C"
  attribute = "character"
  length = 3
  nullable = false
  values = { type = "list", values = ["a"], empty = 0.1 }
>2 export e.toml -o -
  ! e.toml:<n>:<n>: item C: empty is given together with nullable = false, expected one of the two

# The commands of the module name what it does not know, and leave everything as it is.
each COMMAND
  generate
  count
  edit
  format
  update
do
  remember
  >2 <COMMAND> e.toml
    ! e.toml:10:19: item A: type "list" is unknown to this command, and so are keys of <n> other items, <*> "korvex export" writes these
  unchanged

# A layout in UTF-8 holds any character, and counts characters. The module's code page does not.
file l.toml
  @own encoding = "utf-8"
  @text Prénom type = "list", values = ["François", "Łódź", "山田太郎山田太郎山田太郎"]
  @text E type = "template", text = "{Prénom|ascii|lower}é"
> export l.toml -o - --records 3 --header
  Prénom,E<0D>
  François,francoisé<0D>
  Łódź,lodzé<0D>
  山田太郎山田太郎山田太郎,é<0D>
>1 export l.toml -o - --encoding cp932
  ! record 1, item Prénom: François has characters that code page 932 lacks, expected --encoding utf-8
edit l.toml 山田 => 山田山
>2 export l.toml -o -
  ! l.toml:10:<n>: item Prénom: the value has 13 characters, expected at most 12
file l.toml
  @own encoding = "utf-8"
  @text L type = "list", values = ["long enough"]
  @text E type = "template", text = "{L} {L}"
>2 export l.toml -o -
  ! l.toml:15:10: item E: record 1: the value has 23 characters, expected at most 12
file l.toml
  @own encoding = "utf-8"
  @text Prénom type = "default"
> export l.toml -o - --records 1
  AAAAA<*>
>2 generate l.toml
  ! l.toml:7:8: name has the character "é" at place 3, which code page 932 lacks; "korvex export" writes it

# Distances from other items, in days, seconds and numbers of as many decimals.
file l.toml
  @own
  @item DAY 28 digits=8 type = "range", format = "%2YMD", start = "240227", end = "240301", exceeded = "initialize"
  @item DUE 28 digits=8 type = "offset", of = "DAY", from = 1, to = 1
  @item AT 31 digits=6 type = "list", values = ["235958", "235959"]
  @item LATER 31 digits=6 type = "offset", of = "AT", from = 1, to = 1
  [[item]]
  name = "PRICE"
  attribute = "decimal"
  length = 40
  decimals = 2
  values = { type = "list", values = ["9.95"] }
  [[item]]
  name = "SALE"
  attribute = "decimal"
  digits = 5
  decimals = 2
  values = { type = "offset", of = "PRICE", from = -1.5, to = -1.5 }
  @text TEXT type = "initial"
> export l.toml -o - --records 5
  2024-02-27,2024-02-28,23:59:58,23:59:59,9.95,8.45,<0D>
  2024-02-28,2024-02-29,23:59:59,00:00:00,9.95,8.45,<0D>
  2024-02-29,2024-03-01,23:59:58,23:59:59,9.95,8.45,<0D>
  2024-03-01,2024-03-02,23:59:59,00:00:00,9.95,8.45,<0D>
  ,,23:59:58,23:59:59,9.95,8.45,<0D>
each OLD NEW SAYS
  decimals = 2 | decimals = 20 | item SALE: of names an item of 20 decimals, expected at most 18
  to = 1 | to = 0 | to is below from, expected the larger number
  from = -1.5 | from = -1.555 | item SALE: from is "-1.555", expected a number with at most 2 decimals
  of = "DAY" | of = "TEXT" | item DUE: of names "TEXT", expected an item with values of the same kind
  of = "DAY" | of = "AT" | item DUE: of names "AT", expected an item with values of the same kind
  "235959" | "240000" | the value is "240000", expected a date or time that exists, <*>
  of = "DAY" | of = "DUE" | item DUE: of refers back to the item: DUE (l.toml:<n>:<n>) -> DUE, expected no cycle
do
  $ cp l.toml old.toml
  edit l.toml <OLD> => <NEW>
  >2 export l.toml -o -
    ! l.toml:<n>:<n>: <*><SAYS>
  $ mv old.toml l.toml

# A person is a row of each table of the set: sex goes with the given name, and plain names with both.
each LANGUAGE
  en
  de
  fr
  es
  ja
do
  file p.toml
    [layout]
    kind = "record"
    encoding = "utf-8"
    records = 500
    data = "p.csv"
    @text SEX type = "builtin", set = "people.sex", language = "<LANGUAGE>", group = "person"
    @text GIVEN type = "builtin", set = "people.given", language = "<LANGUAGE>", group = "person", order = "random"
    @text FAMILY type = "builtin", set = "people.family", language = "<LANGUAGE>", group = "person"
    @text G type = "builtin", set = "people.given_ascii", language = "<LANGUAGE>", group = "person"
    @text F type = "builtin", set = "people.family_ascii", language = "<LANGUAGE>", group = "person"
    [[item]]
    name = "EMAIL"
    attribute = "character"
    length = 60
    values = { type = "template", text = "{G|lower}.{F|lower}@example.org" }
  $ korvex export p.toml -o - --format tsv | tr -d '\r' > p; for t in given family; do korvex sets people.$t --language <LANGUAGE> --tsv > $t; done
  $ awk -F'\t' 'FILENAME == "given" { g[$1, $2, $3] } FILENAME == "family" { f[$1, $2] } FILENAME == "p" && (!(($2, $4, $1) in g) || !(($3, $5) in f) || $6 != tolower($4 "." $5 "@example.org"))' given family p
  $ cut -f2,3 p | sort -u | wc -l | awk '$1 < 200'
  $ rm p given family p.toml
# Each of its tables may have a way of its own: so no two people have the same names.
file p.toml
  @own
  @text GIVEN type = "builtin", set = "people.given_ascii", language = "en", group = "person", joint = "names"
  @text FAMILY type = "builtin", set = "people.family_ascii", language = "en", joint = "names", group = "person"
  @text SEX type = "builtin", set = "people.sex", language = "en", group = "person"
$ korvex export p.toml -o - --records 100000 | cut -d, -f1,2 | sort -u | wc -l
  100000
edit p.toml "en", joint => "en", salt
>2 export p.toml -o -
  ! p.toml:10:101: item GIVEN: joint is through one table of the set, expected joint for item FAMILY of another table, too

# A text that doubles again and again ends the run before the memory does.
file t.toml
  @own
$ for i in $(seq 30); do printf '[[item]]\nname = "T%s"\nattribute = 1\nlength = 9\nvalues = { type = "template", text = "{T%s}{T%s}", hidden = %s }\n' $i $((i + 1)) $((i + 1)) $([ $i = 1 ] && echo false || echo true); done >> t.toml
$ printf '[[item]]\nname = "T31"\nattribute = 1\nlength = 9\nvalues = { type = "list", values = ["a"], hidden = true }\n' >> t.toml
>2 export t.toml -o -
  ! t.toml:35:10: item T6: record 1: the value has more than 16777216 bytes
# Items may need each other in long rows, but not without end, whichever of them comes first.
each OPTION
  -n
  -r -n
do
  file n.toml
    @own
    @text T2000 type = "list", values = ["a"]
  $ seq 1999 | sort <OPTION> | awk '{ printf "[[item]]\nname = \"T%d\"\nattribute = 1\nlength = 9\nvalues = { type = \"template\", text = \"{T%d}\" }\n", $1, $1 + 1 }' >> n.toml
  >2 export n.toml -o -
    ! n.toml:<n>:<n>: item T<n>: more than 1000 items depend on each other in a chain
