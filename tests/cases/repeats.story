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
