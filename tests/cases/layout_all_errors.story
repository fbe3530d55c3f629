# All errors of a layout that can be read are shown in one run, in the order of their places, and none hides another.
file l.toml
  [layout]
  kind = "file"
  records = 10
  data = "d.csv"
  [[item]]
  name = "A"
  attribute = "decimal"
  digits = 3
  [item.values]
  type = "range"
  format = "%10U"
  start = 1
  [[item]]
  name = "B"
  attribute = 99
  digits = 3
  nullable = 1
>2 check l.toml
  ! l.toml:2:8: kind is "file", expected one of "record", "table", "iso"
  ! l.toml:11:10: item A: format is "%10U": 99052:There is an error in the number of digits of the format. One character is required to store the sign when the attribute has a sign. The maximum number of digits is one less than the attribute length.
  ! l.toml:15:13: attribute is 99, expected a code from 1 to 32 or one of "character", "decimal", "plain-character", "national", "number", "integer", "small-integer", "date", "time", "timestamp"
  ! l.toml:17:12: nullable is 1, expected true or false
file l.toml
  [layout]
  data = "d"
  kind = 1
  [[item]]
  name = "A"
  attribute = "integer"
  [[item]]
  number = 1
  name = "B"
  attribute = "date"
  colour = "red"
>2 generate l.toml
  ! l.toml:1:1: [layout] has no records, expected the number of records, here or as --records
  ! l.toml:3:8: kind is 1, expected one of "record", "table", "iso"
  ! l.toml:7:1: number 1 belongs to the item on line 4, expected another one
  ! l.toml:11:1: unknown key "colour" in [[item]], expected one of "attribute", "decimals", "description", "digits", "length", "name", "nullable", "number", "signed", "values"
>2 generate l.toml --records 1
  ! l.toml:3:8: kind is 1, expected one of "record", "table", "iso"
  ! l.toml:7:1: number 1 belongs to the item on line 4, expected another one
  ! l.toml:11:1: unknown key "colour" in [[item]], expected one of "attribute", "decimals", "description", "digits", "length", "name", "nullable", "number", "signed", "values"
files
  l.toml

# References and lists are looked at with the rest.
file there.txt
  1
file l.toml
  @layout
  @number A type = "enumeration", file = "there.txt"
  @number B type = "enumeration", file = "none.txt"
  @number C type = "reference", item = "X"
  @number D type = "reference", item = "D"
  [[item]]
  name = "E"
  attribute = 4
  digits = 2
  values = { type = "reference", item = "A" }
>2 check l.toml
  ! l.toml:16:41: item B: file names <folder>/none.txt, which does not exist, expected a value list
  ! l.toml:21:39: item C: item is "X": 99074:There is no Item to be used as a reference.
  ! l.toml:26:39: item D: item is "D": 99029:Selection Item and Reference Item specify the same target.
  ! l.toml:31:39: item E: item is "A": 99033:Cannot reference the data because the number of digits is too large.
# The item that is meant may be the one whose name is wrong, which hides neither error.
edit l.toml name = "A" => name = 1
>2 check l.toml
  ! l.toml:8:8: name is 1, expected a string
  ! l.toml:16:41: item B: file names <folder>/none.txt, which does not exist, expected a value list
  ! l.toml:26:39: item D: item is "D": 99029:Selection Item and Reference Item specify the same target.

# Each repeat has a level of its own.
file l.toml
  @layout
  @number A type = "default", repeat = { level = 1, count = 2 }
  @number B type = "default", repeat = { level = 1, count = 2 }
>2 check l.toml
  ! l.toml:16:49: level 1 is that of the item on line 7, expected another one

# A list that is not there is found before anything is written.
file l.toml
  @layout
  @number A type = "enumeration", file = "none.txt"
each COMMAND
  generate
  count
  check
  preview
  export -o o.csv
do
  >2 <COMMAND> l.toml
    ! l.toml:11:41: item A: file names <folder>/none.txt, which does not exist, expected a value list
files
  l.toml
  there.txt

# Settings that are kept have their own lists.
$ touch none.txt
> generate --settings-only l.toml
  1 item with settings: d.fif
$ rm none.txt
>1 generate --keep-settings l.toml
  ! <folder>/none.txt
  ! 99114:The target file does not exist.

# A file that cannot be read, or is no layout.
>2 generate none.toml
  ! none.toml: cannot be read: No such file or directory
>2 generate .
  ! .: cannot be read: Is a directory
