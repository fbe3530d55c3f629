# How many values an item has, alone and repeated twice; the size is predicted from the items' lengths.
file tell
  # What count says, and what a guarded run asks about a repeat.
  sed 's/ REPEAT//' l.toml > plain.toml
  sed 's/ REPEAT/, repeat = { level = 1, count = 2 }/' l.toml > repeated.toml
  korvex generate --settings-only --quiet plain.toml > told 2>&1
  korvex count --records 1 plain.toml | sed -n 's/^Data items: *//p; s/^Predicted size: *\([^ ]*\) .*/\1/p'
  rm -f d.fif; asked=$(korvex generate --output-option 2 --records 0 repeated.toml 2>&1 | sed -n 's/.*number\.\([0-9]*\) data items.*/\1/p'); echo ${asked:-none}
each ATTRIBUTE SIZE VALUES COUNT BYTES TWICE
  4 | digits=5 | type = "initial" | 1 | 5 | none
  4 | digits=5 | type = "range", format = "%5U", start = 1, end = 10, increment = 4 REPEAT | 3 | 15 | 6
  4 | digits=5 | type = "range", format = "%5U", start = 1, end = 9, increment = 3 REPEAT | 3 | 15 | 6
  4 | digits=5 | type = "range", format = "%5U", start = 10, end = 1, increment = -4 REPEAT | 3 | 15 | 6
  4 | digits=12 | type = "range", format = "%12U", start = 1, end = 2000000001 REPEAT | 2000000001 | too | 4000000002
  4 | digits=5<0A>decimals=2 | type = "range", format = "%3.2U", start = "0.5", end = 1, increment = "0.25" REPEAT | 3 | 18 | 6
  1 | digits=20 | type = "range", format = "%2S", start = "AA", end = "BC" REPEAT | 29 | 580 | 58
  1 | digits=20 | type = "range", format = "%1S'-'%2U", start = "A,01", end = "D,10" REPEAT | 10 | 200 | 20
  1 | digits=20 | type = "range", format = "'ABC'" REPEAT | 1 | 20 | 2
  28 | digits=8 | type = "range", format = "%4YMD", start = "19700101", end = "19700201" REPEAT | 101 | 808 | 202
  31 | digits=6 | type = "range", format = "%T", start = "000000", end = "000100" REPEAT | 101 | 606 | 202
  32 | digits=15 | type = "range", format = "%TS", start = "20240101 000000", end = "20240102 000010", increment = 3 REPEAT | 4 | 60 | 8
  4 | digits=5 | type = "enumeration", file = "list.txt" REPEAT | 2 | 10 | 4
do
  $ printf '7\r\n\r\n8' > list.txt
  file l.toml
    @layout
    @item A <ATTRIBUTE> <SIZE> <VALUES>
  $ sh tell
    <COUNT>
    <BYTES>
    <TWICE>
# What a run never writes, put into the settings: an increment of zero, a lead that is not there, a long way in steps of two.
each OFFSET VALUE COUNT
  116 | 0 | 1
  84 | 2 | 1
  84 | 0 | 1
  444 | 3 1 | 9
do
  file l.toml
    @layout
    @number A type = "range", format = "%3U", start = 1, end = 9
  file k.toml
    @layout
    @kept A 4 digits=3
  $ rm -f d.fif; korvex generate --settings-only --quiet l.toml
  poke d.fif <OFFSET> <VALUE>
  $ korvex count k.toml | sed -n 's/^Data items: *//p'
    <COUNT>

# Plain items count by the longest, and repeats multiply; items without settings count nothing.
def up_to NAME LAST
  @item <NAME> 4 digits=5 type = "range", format = "%5U", start = 1, end = <LAST>
each A B C COUNT BYTES
  10 | 25 | 3 | 25 | 375 bytes (data items x item lengths)
  4, repeat = { level = 1, count = 3 } | 100 | 3 | 12 | 180 bytes (data items x item lengths)
  4, repeat = { level = 1, count = 3 } | 7 | 2, repeat = { level = 2, count = 5 } | 120 | 1800 bytes (data items x item lengths)
  2, repeat = { level = 1, count = 1 } | 7 | 3 | 2 | 30 bytes (data items x item lengths)
do
  $ rm -f d.fif
  file l.toml
    @layout
    @up_to A <A>
    @up_to B <B>
    @up_to C <C>
  $ korvex count l.toml --records 0 | head -n 2
    Data items:          <COUNT>
    Predicted size:      <BYTES>
# A size above the limit is too large, and stops the count where it is met, but no repeats that plain items outnumber.
set KORVEX_HOST_KEY=limited
$ mkdir -p "<config>/limited"; printf 'CheckFileSizeMax=1000\n' > "<config>/limited/Korvex.conf"
each A B C COUNT SIZE
  100 | 50 | 2 | 100 | too large (above CheckFileSizeMax)
  66 | 50 | 2 | 66 | 990 bytes (data items x item lengths)
  101 | 500 | 2 | 101 | too large (above CheckFileSizeMax)
  500 | 4, repeat = { level = 1, count = 3 } | 2, repeat = { level = 2, count = 5 } | 120 | too large (above CheckFileSizeMax)
do
  $ rm -f d.fif
  file l.toml
    @layout
    @up_to A <A>
    @up_to B <B>
    @up_to C <C>
  $ korvex count l.toml --records 0 | head -n 2
    Data items:          <COUNT>
    Predicted size:      <SIZE>
# Without repeats a guarded run asks nothing, however many values there are; without settings there is nothing to count.
file l.toml
  @layout
  @number A type = "default"
> generate l.toml --settings-only --quiet
> generate l.toml --output-option 2 --records 1
  1 records, 5 bytes, <t> s: d.csv
edit l.toml name = "A" => number = 9<0A>name = "A"
edit l.toml values = { type = "default" } =>
>1 count l.toml
  DGCheckRepeatCnt:    -1 (the settings cannot be evaluated)
