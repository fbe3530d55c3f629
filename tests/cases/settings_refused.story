# Values that the module refuses: every item that fails is named in the order of the layout, and nothing is saved.
file l.toml
  @layout
  @item A 4 digits=3<0A>nullable=false type = "reference", item = "B"
  @number B type = "initial"
  @item C 4 digits=3<0A>nullable=false type = "initial"
  @number D type = "reference", item = "E"
  @number E type = "reference", item = "D"
  @item F 13 digits=3 type = "reference", item = "G"
  @number G type = "default"
  @number H type = "reference", item = "I"
  @kept I 4 digits=3
  @number J type = "reference", item = "J"
  @number K type = "reference", item = "X"
  @number L type = "range", format = "%4U", start = 1
  @number M type = "range", format = "%3U"
  @number N type = "range", format = "%3U", start = 9, end = 1
>1 generate l.toml
  ! l.toml:12:39: item A: item is "B": 99065:Cannot set a NULL value to Item that has an attribute of NOT NULL. Please reset the format or reference other Item.
  ! l.toml:23:10: item C: 99065:Cannot set a NULL value to Item that has an attribute of NOT NULL. Please reset the format or reference other Item.
  ! l.toml:28:39: item D: item is "E": 99036:The format is not set.
  ! Please set the format.
  ! l.toml:33:39: item E: item is "D": 99036:The format is not set.
  ! Please set the format.
  ! l.toml:38:39: item F: item is "G": 99031:Cannot reference the data because the attribute is different.
  ! l.toml:48:39: item H: item is "I": 99036:The format is not set.
  ! Please set the format.
  ! l.toml:57:39: item J: item is "J": 99029:Selection Item and Reference Item specify the same target.
  ! l.toml:62:39: item K: item is "X": 99074:There is no Item to be used as a reference.
  ! l.toml:67:37: item L: format is "%4U": 99052:There is an error in the number of digits of the format. One character is required to store the sign when the attribute has a sign. The maximum number of digits is one less than the attribute length.
  ! l.toml:72:10: item M: start is "": 99037:The start value is not set.
  ! Please set the start value.
  ! l.toml:77:10: item N: format is "%3U", start is "9", end is "1": 99018:The increment value exceeds the range that can be set.
  ! Please reset the increment value.
files
  l.toml
  w/
# What was saved stays.
file good.toml
  @layout
  @number A type = "initial"
> generate --settings-only good.toml ...
remember
$1 korvex generate l.toml 2> said
$ rm said
unchanged
