# What check says of a layout without generating it.
file l.toml
  @layout
  @item 番号 4 digits=2 type = "range", format = "%2U", start = 1, end = 12, exceeded = "initialize"
  @item B 1 length=9 type = "range", format = "%2s%1U", start = "aa,1", end = "bz,9"
>1 check l.toml --records 60 --unique B --unique 番号,B
  Item  Values  Course
  番号      12  is empty after 12 records
  B         52  starts again after 52 records
                %1U runs past its end value after 9 values
  Records to generate: 60
  Exact file size:     384 bytes
  Predicted size:      572 bytes (data items x item lengths)
  Free on the disk:    <n> bytes
  Unique B: no, record 53 is the first that repeats an earlier one
  Unique 番号, B: yes, all 60 records differ; a record more than 64 would not
files
  l.toml
> check l.toml --records 52 --unique B ...
> check l.toml --records 2 --unique " 番号 ,<09>B " ...
>2 check l.toml --unique 番号,C
  ! --unique: no item of the records is named C
>2 check l.toml --unique "番号, "
  ! --unique: no item of the records is named 
# A comma or line feed for each field, two digits for twelve records, and four characters.
edit l.toml "record" => "iso"
$ korvex check l.toml --records 2147483647 | grep Exact; echo $((2147483647 * 2 + 12 * 2 + 2147483647 * 3))
  Exact file size:     10737418259 bytes
  10737418259
edit l.toml 番号 => B
>2 check l.toml --unique B
  ! --unique: several items are named B
