# Items that repeat give every combination.
file prices.txt
  7
  8
file l.toml
  @layout
  @number A type = "enumeration", file = "prices.txt", repeat = { level = 1, count = 1 }
  @number B type = "range", format = "%1U", start = 1, end = 2, repeat = { level = 2, count = 1 }
  @number C type = "reference", item = "B"
> count l.toml
  Data items:          4
  Predicted size:      36 bytes (data items x item lengths)
  ...
> generate l.toml --quiet
cat d.csv
  7,1,1,
  7,2,2,
  8,1,1,
  8,2,2,
  7,1,1,

# More combinations than records are asked about when the output is guarded; declined.
> generate l.toml --records 3 --output-option 2
  nothing generated: d.csv
  ! 99110:<*>
  ! Do you want to generate data items up to the specified number?
$ stat -c %s d.csv
  35
# Accepted, the data file ends with the records that were asked for. Without output option 2 there is no question.
> KORVEX_ANSWER=yes generate l.toml --records 3 --output-option 2
  3 records, 21 bytes, <t> s: d.csv
  ! 99110:The number of data items that will be generated through repeat is larger than the specified number.4 data items will be generated.
  ! Do you want to generate data items up to the specified number?
> generate l.toml --records 3
  3 records, 21 bytes, <t> s: d.csv
> generate l.toml --records 4 --output-option 2
  4 records, 28 bytes, <t> s: d.csv
# Repeats are looked at before lists are, and lists before the question.
file prices.txt
  x
edit l.toml level = 1 => level = 3
>1 generate l.toml --records 3 --output-option 2
  ! Failed to generate data.
  ! 99108:The starting Item of the repeat is not specified.
  ! 1 must be specified as the level of the starting Item of the repeat.
edit l.toml level = 3 => level = 1
>1 generate l.toml --records 3 --output-option 2
  ! <folder>/prices.txt
  ! 99135:An error occurred while the Enumeration file data was checked.
  ! Correct the erroneous data, then retry.
  ! Error file <folder>/prices.txt.err was created. 
  ! View the file?
$ KORVEX_ANSWER=yes KORVEX_EDITOR=none korvex generate l.toml 2>&1 | tail -n 2
  Call : none "<folder>/prices.txt.err"
  Error : 2 (No such file or directory)
cat prices.txt.err
  1 line of a enum file The numeric value data Item includes a non-numeric value.
# Two repeats of one level, which no layout says, end the run before it writes, and name their items; so does a control
# file that cannot be read.
file prices.txt
  7
> generate l.toml --settings-only ...
poke d.fif 1728 1
$ rm d.csv w/d.log
>1 generate l.toml --keep-settings
  ! l.toml:<n>:<n>: item A: 99104:Repeat is already specified for the same level. Specify another level.
  ! l.toml:<n>:<n>: item B: 99104:Repeat is already specified for the same level. Specify another level.
files
  d.fif
  l.toml
  prices.txt
  prices.txt.err
  w/
$ c_host DGCheckRepeatCnt none.ctl; c_host DGCheckRepeatCnt l.toml
  -1
  -1
# A level may also be taken by an item that keeps the settings it has.
file kept.toml
  @layout
  @kept A 4 digits=3
  @number B type = "default", repeat = { level = 1, count = 1 }
remember
each COMMAND
  generate
  check
  count
  preview
do
  >1 <COMMAND> kept.toml
    ! kept.toml:7:<n>: item A: 99104:<*>
    ! kept.toml:15:<n>: item B: 99104:<*>
unchanged
