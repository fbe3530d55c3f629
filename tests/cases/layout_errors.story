# What is wrong in a layout is named with its line and column, and nothing is written.
def layout8
  [layout]
  kind = "record"
  records = 10
  data = "d.csv"
  [[item]]
  name = "A"
  attribute = 4
  digits = 5

# A change of the layout above.
each OLD NEW SAYS
  "record" | record | 2:8: <*>in the line kind = record, expected<*>
  [layout] | [layout | 1:8: <*>expected ']'<*>
  data | records = 1<0A>data | 4:11: <*>expected each key once
  data | this one<0A>data | 4:6: <*>in the line this one<*>
  [[item]] | [item] | 5:1: <*>a table<*>
  records | record = 1<0A>records | 3:1: unknown key "record"<*>
  "record" | "tabel" | 2:8: kind is "tabel", expected one of<*>
  records = 10<0A> | | 1:1: <*>has no records<*>
  10 | "10" | 3:11: records is "10", expected an integer<*>
  10 | 1000000000000000001 | 3:11: <*>to 1000000000000000000
  data | quote = "single"<0A>data | 4:9: <*>"none", "double"
  data = "d.csv"<0A> | | 1:1: <*>has no data<*>
  d.csv | <x*256> | 4:8: <*>path of 256 bytes<*>
  d.csv | d.fif | 4:8: <*>is also the settings file<*>
  d.csv | d.log | 4:8: <*>the log file <*> is also the data file<*>
  d.csv | l.toml | 4:8: <*>is also <*>the layout<*>
  name = "A"<0A> | | 5:1: <*>has no name<*>
  "A" | "<x*64>" | 6:8: <*>64 bytes in code page 932, expected at most 63
  "A" | "あ\u20ACb" | 6:8: <*>"€" at place 2<*>
  "A" | "a\u0000b" | 6:8: <*>"\x00" at place 2<*>
  = 4 | = "text" | 7:13: <*>"plain-character"<*>
  = 4 | = 33 | 7:13: <*>33, expected a code from 1 to 32<*>
  digits = 5<0A> | | 5:1: <*>neither digits nor length<*>
  [[item]] | [rest]<0A>[[item]] | 5:2: unknown key "rest"<*>
  = 5 | = 5<0A>description = "ああああああああああああああ" | 9:15: <*>28 bytes<*>
  = 5 | = 5<0A>length = -1 | 9:10: <*>from 0 to<*>
  = 5 | = 5<0A>decimals = -1 | 9:12: <*>from 0 to<*>
  = 5 | = 5<0A>signed = 1 | 9:10: <*>signed is 1, expected true or false
  = 5 | = 5<0A>values = 5 | 9:10: <*>values is 5, expected a table
  = 5 | = 5<0A>lenght = 5 | 9:1: <*>unknown key "lenght" in [[item]]<*>
  = 5 | = 5<0A>values = {} | 9:10: <*>has no type<*>
  = 5 | = 5<0A>values = { type = "rnage" } | 9:19: <*>expected one of "initial"<*>
do
  file l.toml
    @layout8
  edit l.toml <OLD> => <NEW>
  >2 check l.toml
    ! l.toml:<SAYS>
files
  l.toml

# Values of an item.
file f
each VALUES SAYS
  "reference" | 10: [item.values] has no item, expected the name of another item
  "reference", item = 5 | 39: item is 5, expected a string
  "enumeration" | 10: <*>has no file, expected the path of a text file<*>
  "enumeration", file = "" | 41: file is empty, expected a path
  "enumeration", file = {} | 41: file is a table, expected a string
  "enumeration", file = "/<x*267>" | 41: <*>path of 268 bytes, expected at most 267
  "enumeration", file = "f", format = "%U" | 55: <*>expected type "range"
  "enumeration", file = "f", item = "B" | 53: <*>expected type "reference" or "key" or "sum" or "count" or "least" or "most"
  "default", file = "f" | 37: file is given together with type "default", expected type "enumeration" or "list"
  "initial", start = 1 | 38: start is given together with type "initial", expected type "range"
  "initial", repeat = { level = 1, count = 2 } | 39: repeat is given together with type "initial", expected another type
  "default", repeat = 3 | 39: repeat is 3, expected a table
  "default", repeat = { count = 3 } | 39: repeat has no level<*>
  "default", repeat = { level = 3 } | 39: repeat has no count<*>
  "default", repeat = { level = -1, count = 3 } | 49: level is -1, expected an integer<*>
  "default", repeat = { level = 1, count = "3" } | 60: count is "3", expected<*>
  "default", repeat = { level = 1, count = 3, times = 2 } | 63: unknown key "times" in repeat<*>
  "range" | 10: <*>has no format<*>
  "range", format = "%U", ende = 5 | 43: unknown key "ende" in [item.values]<*>
  "range", format = "%U", start = 1970-01-01 | 51: <*>a date or time without quotes<*>
  "range", format = "%U", end = 1.5 | 49: <*>a floating-point number<*>
  "range", format = "%U", increment = "1€" | 55: <*>at place 2<*>
  "range", format = "%U", exceeded = "stop" | 54: <*>"initialize", "repeat"
  "range", format = "%U", file = "f" | 50: <*>expected type "enumeration" or "list"
do
  file l.toml
    @layout8
    values = { type = <VALUES> }
  >2 check l.toml
    ! l.toml:9:<SAYS>

# A file that is too large, or has no end, is read up to the limit.
$ head -c 16777216 /dev/zero | tr '\0' '#' > most.toml; (cat most.toml; echo) > more.toml
>2 check most.toml
  ! most.toml:1:1: the layout has no layout, expected a table [layout]
  ! ...
each FILE
  more.toml
  /dev/zero
do
  >2 check <FILE>
    ! <FILE>: cannot be read: File too large
