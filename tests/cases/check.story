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
  Unique B: no, 52 different values, 60 records asked; record 53 is the first that repeats an earlier one
  Unique 番号, B: yes, all 60 records differ; more than 64 would not
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

# For sources and ways it says the same, also why something cannot be computed.
file customers.toml
  [layout]
  kind = "table"
  records = 4
  data = "c.csv"
  @number ID type = "range", format = "%3U", start = "101", end = "999", order = "shuffled"
  @item NAME 1 length=12 type = "list", values = ["Ann", "Bo", "Cy", "Di", "Ed", "Flo"], order = "random"
  @item MAIL 1 length=40 type = "template", text = "{NAME|lower}{ID}@example.org"
file orders.toml
  [layout]
  kind = "table"
  records = 10
  data = "o.csv"
  @number ID type = "range", format = "%3U", start = "1", end = "999"
  @number CUSTOMER type = "key", layout = "customers.toml", item = "ID", each = [1, 5], group = "c"
  @number NO type = "line", of = "CUSTOMER"
  @item NAME 1 length=12 type = "key", layout = "customers.toml", item = "NAME", group = "c"
  @number PRODUCT type = "list", values = [1, 2, 3, 4], within = "CUSTOMER"
  @number ROLE type = "list", values = [1, 2, 3], order = "shuffled"
  @number A type = "list", values = [1, 2, 3, 4], joint = "AB", empty = 0.2
  @number B type = "list", values = [1, 2, 3], joint = "AB", exceeded = "initialize"
  @number SEEN type = "list", values = [1, 2], weights = [1, 9]
  @number DUE type = "offset", of = "ID", from = 1, to = 2
> check customers.toml --unique NAME,ID --unique MAIL
  Item   Values  Course
  ID        899  shuffled, starts again in another order after 899 records
  NAME  up to 4  drawn
  MAIL        4  made of other items
  Records to export:   4
  Unique NAME, ID: yes, all 4 records differ
  Unique MAIL: yes, all 4 records differ
>1 check orders.toml --unique CUSTOMER --unique CUSTOMER,NO --unique CUSTOMER,PRODUCT --unique PRODUCT,NO --unique ROLE --unique SEEN --unique A,B --unique DUE --unique NAME,ROLE --unique ID,DUE
  Item        Values  Course
  ID             999  starts again after 999 records
  CUSTOMER         4  in groups of up to 4 records
  NO               4  counts from 1 in each group
  NAME       up to 4  in groups of up to 4 records
  PRODUCT    up to 4  shuffled within each group
  ROLE             3  shuffled, starts again in another order after 3 records
  A          up to 4  shuffled, every combination once, starts again after 12 records; empty in 2 of 10 records
  B                3  shuffled, every combination once, is empty after 12 records
  SEEN             2  drawn in exact shares
  DUE       up to 10  drawn, at a distance from another item
  Records to export:   10
  Unique CUSTOMER: no, 4 different values, 10 records asked
  Unique CUSTOMER, NO: yes, all 10 records differ
  Unique CUSTOMER, PRODUCT: yes, all 10 records differ
  Unique PRODUCT, NO: cannot be computed in advance: PRODUCT differs only within its group, NO starts again in each group
  Unique ROLE: no, 3 different values, 10 records asked; record 4 is the first that repeats an earlier one
  Unique SEEN: no, 2 different values, 10 records asked
  Unique A, B: cannot be computed in advance: A is empty in some records, B differs only together with all items of its joint order
  Unique DUE: cannot be computed in advance: DUE is drawn between two ends
  Unique NAME, ROLE: cannot be computed in advance: NAME points to values that may be equal, ROLE is repeated after 3 records; the first 3 differ
  Unique ID, DUE: yes, all 10 records differ
# What is empty through other items is counted; columns of a key tell of its row together.
file lines.toml
  [layout]
  kind = "table"
  records = 12
  data = "l.csv"
  @number ID type = "key", layout = "orders.toml", item = "CUSTOMER", each = [0, 3], group = "order"
  @number NO type = "key", layout = "orders.toml", item = "NO", group = "order"
  @number LINE type = "line", of = "ID"
  @number A type = "list", values = ["1", "2", "3"], empty = "1/3"
  @number B type = "offset", of = "A", from = 1, to = 5
  @item C 1 length=5 type = "template", text = "{A}x", empty = "1/4"
> check lines.toml --unique ID,NO,LINE
  Item    Values  Course
  ID     up to 4  in groups of up to 3 records
  NO     up to 4  in groups of up to 3 records
  LINE         3  counts from 1 in each group
  A      up to 3  starts again after 3 records; empty in 4 of 12 records
  B     up to 12  drawn, at a distance from another item; empty in 4 of 12 records
  C      up to 3  starts again after 3 records; empty in at least 4 of 12 records
  Records to export:   12
  Unique ID, NO, LINE: yes, all 12 records differ
# Numbers are the same whatever zeros they begin with.
file numbers.toml
  [layout]
  kind = "table"
  records = 2
  data = "n.csv"
  @number N type = "list", values = ["1", "01"]
>1 check numbers.toml --unique N
  Item  Values  Course
  N          1  starts again after 2 records
  Records to export:   2
  Unique N: no, 1 value, 2 records asked; record 2 is the first that repeats an earlier one
>1 check orders.toml --records 13 --unique B
  Item        Values  Course
  ID             999  starts again after 999 records
  CUSTOMER         4  in groups of up to 5 records
  NO               5  counts from 1 in each group
  NAME       up to 4  in groups of up to 5 records
  PRODUCT    up to 4  shuffled within each group, starts again in groups of more than 4 records
  ROLE             3  shuffled, starts again in another order after 3 records
  A          up to 4  shuffled, every combination once, starts again after 12 records; empty in 3 of 13 records
  B                3  shuffled, every combination once, is empty after 12 records; empty in 1 of 13 records
  SEEN             2  drawn in exact shares
  DUE       up to 13  drawn, at a distance from another item
  Records to export:   13
  Unique B: no, at most 4 different values, 13 records asked
>2 check orders.toml --records 21
  ! orders.toml:14:73: item CUSTOMER: each: 4 parents with at most 5 records each take 20 records, but there are 21
