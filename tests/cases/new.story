# A layout to start from: every attribute with a name, at both ends of what may be asked for, gives records at once.
each KIND
  record
  table
  iso
do
  > new -o <KIND>.toml --kind <KIND> --data d.csv --records 5 --item A:character:1 --item B:character:32767 --item C:plain-character:3 --item D:national:70 --item E:decimal:18 --item F:decimal:18+:18 --item G:decimal:7+:2 --item H:number:1 --item I:number:10:10 --item J:integer --item K:small-integer --item L:date --item M:time --item N:timestamp --item '名前"\\:date' ...
  $ korvex export <KIND>.toml -o - --format jsonl 2> /dev/null | sed -n '5{ s/う*う/う/g; s/1970-01-//g; p }'
    {"A":"E","B":"AAAAE","C":"AAE","D":"う","E":5,"F":0.000000000000000005,"G":0.05,"H":5,"I":0.0000000005,"J":5,"K":5,"L":"05","M":"00:00:04","N":"01 09:00:04","名前\"\\\\":"05"}
$ korvex new --item A:date | tail -n +5
  kind        = "record"        # "record", "table" or "iso": line ends and dates
  records     = 1000
  data        = "data.csv"
  quote       = "none"          # "double": texts and dates between quotation marks

  [[item]]
  name        = "A"
  attribute   = "date"          # "national" is full-width, "plain-character" never quoted
  [item.values]
  type        = "range"         # or "initial" (empty), "reference", "enumeration"
  format      = "%4YMD"
  start       = "19700101"
  end         = "20380119"
  increment   = "1"             # above 0, at most 9; with a minus to count down
  exceeded    = "repeat"        # after the end: from the start, or "initialize": empty

# Nothing is written where something is wrong, and a layout that is there is kept.
each OPTIONS SAYS
  --kind file --item A:date | <*>
  --item A | <*>
  --item A:decimal | <*>
  --item A:decimal:19 | <*>
  --item A:date:8 | <*>
  --item A:decimal:3:4 | <*>
  --item :date | <*>
  --item A:date --item A:time | --item A:time: <*>
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

# It asks on a terminal for what is left open; somebody who goes away in the middle leaves nothing.
> tty new -o asked.toml --kind table
  <
  < many
  < 12
  <
  <
  < ID
  < int
  < integer
  < ID
  < NAME
  <
  < 4
  < SUM
  < decimal
  < 5+
  < 9
  < 2
  <
  3 items: asked.toml
  next: korvex preview asked.toml
  ! Data file [data.csv]: Records [1000]: expected a number from 0 to 1000000000000000000
  ! Records [1000]: Values that look real (yes, no) [no]: Name of item 1: expected a name of up to 63 bytes in code page 932
  ! Name of item 1:   Attribute [character]: expected one of "character", "decimal", "plain-character", "national", "number", "integer", "small-integer", "date", "time", "timestamp"
  !   Attribute [character]: Name of item 2, empty to end: expected a name that no other item has
  ! Name of item 2, empty to end:   Attribute [character]:   Length [10]: Name of item 3, empty to end:   Attribute [character]:   Digits [8]:   Decimals among them [0]: expected decimals from 0 to 5
  !   Decimals among them [0]: Name of item 4, empty to end: <end>
> preview asked.toml -n 1
           ID  NAME      SUM
  +0000000001  AAAA  +000.01
>2 tty new -o gone.toml
  < table
  <
  < 5
  <
  < ID
  ! Kind of file (record, table, iso) [record]: Data file [data.csv]: Records [1000]: Values that look real (yes, no) [no]: Name of item 1:   Attribute [character]: 
  ! the answers ended, no layout was written
$ ls gone.toml 2> /dev/null || grep records asked.toml
  # What a data file holds. `korvex preview` shows its first records, `korvex generate` writes it.
  records     = 12

# Who wants values that look real is asked where they come from; what is chosen shows at once.
> tty new -o lively.toml --kind iso --data d.csv --records 8
  < perhaps
  < yes
  < ID
  < decimal
  < set
  < range
  <
  <
  < 3
  <
  < FIRST
  <
  < set
  < people.names
  < people.given
  < xx
  < fr
  <
  < 0
  < 3
  <
  < STATE
  <
  < list
  < open,,closed
  < open, "on hold"
  < sorted
  < shuffled
  < 1.5
  < 1/4
  <
  < MAIL
  <
  < template
  < {FIRST|upper}{NAME}
  < {FIRST|ascii|lower}{ID}@example.org
  <
  < 40
  <
  4 items: lively.toml
  next: korvex preview lively.toml
  ! Values that look real (yes, no) [no]: expected one of "yes", "no"
  ! Values that look real (yes, no) [no]: Name of item 1:   Attribute [character]:   Values (range, list) [range]: expected one of "range", "list"
  !   Values (range, list) [range]:     Order (forward, shuffled, random, zipf) [shuffled]:     Share of empty values [0]:   Digits [8]:   Decimals among them [0]: Name of item 2, empty to end:   Attribute [character]:   Values (range, list, set, template) [range]:     Set, as "korvex sets" lists them [people.given]: expected one of "people.family", "people.family_ascii", "people.given", "people.given_ascii", "people.sex"
  !     Set, as "korvex sets" lists them [people.given]:     Language [en]: expected one of "de", "en", "es", "fr", "ja"
  !     Language [en]:     Order (forward, shuffled, random, zipf) [random]:     Share of empty values [0]:   Length [10]: expected a length from 10 to 32767
  !   Length [10]: Name of item 3, empty to end:   Attribute [character]:   Values (range, list, set, template) [range]:     Values, with commas: expected values with a comma between each two
  !     Values, with commas:     Order (forward, shuffled, random, zipf) [random]: expected one of "forward", "shuffled", "random", "zipf"
  !     Order (forward, shuffled, random, zipf) [random]:     Share of empty values [0]: expected a share from 0 to 1
  !     Share of empty values [0]:   Length [10]: Name of item 4, empty to end:   Attribute [character]:   Values (range, list, set, template) [range]:     Text, with items as {NAME}: expected items that are there already in place of NAME
  !     Text, with items as {NAME}:     Share of empty values [0]:   Length [10]: Name of item 5, empty to end: <end>
> preview lively.toml -n 4
   ID  FIRST     STATE      MAIL
  844  Stéphane  open       stephane844@example.org
  738  René      "on hold"  rene738@example.org
  811  Chloé     open       chloe811@example.org
  097  Pascal    "on hold"  pascal097@example.org
$ sed -n '/MAIL/,$p; /encoding/,/sets/p' lively.toml
  encoding    = "utf-8"
  ways        = 1               # the version of shuffling and drawing, so that records stay
  sets        = 1               # the same of names and places
  name        = "MAIL"
  attribute   = "character"
  length      = 40
  [item.values]
  type        = "template"
  text        = "{FIRST|ascii|lower}{ID}@example.org"
