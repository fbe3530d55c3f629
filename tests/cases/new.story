# A layout to start from: every attribute with a name, at both ends of what may be asked for, gives records at once.
each KIND
  record
  table
  iso
do
  > new -o <KIND>.toml --kind <KIND> --data d.csv --records 5 --item A:character:1 --item B:character:32767 --item C:plain-character:3 --item D:national:70 --item E:decimal:18 --item F:decimal:18+:18 --item G:decimal:7+:2 --item H:number:1 --item I:number:10:10 --item J:integer --item K:small-integer --item L:date --item M:time --item N:timestamp --item '名前"\\:date' ...
  $ korvex export <KIND>.toml -o - --format jsonl 2> /dev/null | sed -n '5{ s/う*う/う/g; s/1970-01-//g; p }'
    {"A":"E","B":"AAAAE","C":"AAE","D":"う","E":5,"F":0.000000000000000005,"G":0.05,"H":5,"I":0.0000000005,"J":5,"K":5,"L":"05","M":"00:00:04","N":"01 09:00:04","名前\"\\\\":"05"}
$ korvex new --item A:date | tail -n +4
  kind        = "record"        # "record", "table" or "iso": line ends and dates
  records     = 1000
  data        = "data.csv"
  quote       = "none"          # "double": texts and dates between quotation marks

  [[item]]
  name        = "A"
  attribute   = "date"
  [item.values]
  type        = "range"         # or "initial" (empty), "reference", "enumeration"
  format      = "%4YMD"
  start       = "19700101"
  end         = "20380119"
  increment   = "1"             # above 0, at most 9; with a minus to count down
  exceeded    = "repeat"        # behind the end: from the start, or "initialize": empty

# Nothing is written where something is wrong, and a layout that is there is kept.
each OPTIONS SAYS
  --kind file --item A:date | <*>
  --item A | <*>
  --item A:decimal | <*>
  --item A:decimal:19 | <*>
  --item A:date:8 | <*>
  --item A:decimal:3:4 | <*>
  --item :date | <*>
  --data l.toml --item A:date | <*>
  --kind record | <*>
do
  >2 new -o l.toml <OPTIONS>
    ! <SAYS>expected<*>
file mine.toml
  mine
>2 new -o mine.toml --item A:date
  ! mine.toml: is there already, expected a new file
cat mine.toml
  mine
