# Digits and length follow from each other, and from the attribute.
def sized ATTRIBUTE SIGNED DECIMALS GIVEN
  file l.toml
    [layout]
    kind = "record"
    data = "d.csv"
    records = 1
    [[item]]
    name = "A"
    attribute = <ATTRIBUTE>
    signed = <SIGNED>
    decimals = <DECIMALS>
    <GIVEN>
    values = { type = "initial" }
each ATTRIBUTE SIGNED DECIMALS GIVEN LENGTH DIGITS
  1 | true | 0 | digits = 5 | 5 | 5
  6 | false | 0 | length = 8 | 8 | 8
  6 | false | 0 | length = 8<0A>digits = 0 | 8 | 0
  11 | false | 0 | digits = 3 | 6 | 3
  12 | false | 0 | length = 7 | 7 | 3
  4 | false | 0 | digits = 9 | 9 | 9
  4 | true | 2 | digits = 9 | 11 | 9
  19 | true | 2 | length = 9 | 9 | 7
  4 | true | 2 | length = 30<0A>digits = 5 | 30 | 5
  4 | true | 2 | length = 4 | 4 | 2
  4 | true | 2 | length = 3 | 3 | 1
  23 | true | 0 | | 11 | 10
  24 | false | 0 | | 5 | 5
  28 | true | 0 | | 8 | 8
  28 | false | 0 | digits = 6 | 6 | 6
  31 | false | 0 | | 6 | 6
  32 | false | 0 | length = 19 | 19 | 15
do
  @sized <ATTRIBUTE> <SIGNED> <DECIMALS> <GIVEN>
  $ rm -f d.fif; korvex generate --settings-only l.toml > log && korvex show d.fif | grep attribute
    \    attribute <ATTRIBUTE><*> length <LENGTH>, digits <DIGITS>, decimals <*>
each ATTRIBUTE GIVEN SAYS
  4 | | 5:1: <*>
  4 | length = 1 | 10:10: <*>
  11 | digits = 2000000000 | 10:10: <*>
do
  @sized <ATTRIBUTE> true 2 <GIVEN>
  >2 check l.toml
    ! l.toml:<SAYS>
