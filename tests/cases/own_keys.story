# Keys into the records of other layouts, to any depth.
file customers.toml
  [layout]
  kind = "table"
  records = 4
  data = "c.csv"
  @number ID type = "range", format = "%3U", start = "101", end = "999", order = "shuffled"
  [[item]]
  name = "NAME"
  attribute = "character"
  length = 12
  values = { type = "builtin", set = "people.given_ascii", language = "en", order = "random" }
file orders.toml
  [layout]
  kind = "table"
  records = 10
  data = "o.csv"
  @number ID type = "default"
  @number CUSTOMER type = "key", layout = "customers.toml", item = "ID", each = [1, 5], group = "c"
  @number NO type = "line", of = "CUSTOMER"
  [[item]]
  name = "NAME"
  attribute = "character"
  length = 12
  values = { type = "key", layout = "customers.toml", item = "NAME", group = "c" }
  @number PRODUCT type = "list", values = [1, 2, 3, 4, 5], within = "CUSTOMER"
file lines.toml
  [layout]
  kind = "table"
  records = 30
  data = "l.csv"
  @number ORDER type = "key", layout = "orders.toml", item = "ID", each = 3, group = "o"
  @number CUSTOMER type = "key", layout = "orders.toml", item = "CUSTOMER", group = "o"
  @number LINE type = "line", of = "CUSTOMER"
  @number ANY type = "key", layout = "customers.toml", item = "ID", order = "random"
$ for t in customers orders lines; do korvex export $t.toml -o $t.csv --quiet; tr -d '\r' < $t.csv > $t; done; wc -l customers orders lines | awk '{ print $1 }' | tr '\n' ' '
  4 10 30 44 <end>
# Every order has a customer of the other table, whose name is beside it; each has 1 to 5, numbered.
$ sort customers > known; cut -d, -f2,4 orders | sort -u | cmp - known; echo same
  same
$ cut -d, -f2 orders | sort | uniq -c | awk '$1 < 1 || $1 > 5'
$ awk -F, '{ if (++n[$2] != $3) print; if (seen[$2, $5]++) print "twice" }' orders
# Lines point to orders and, through these, to their customers.
$ awk -F, 'NR == FNR { c[$1] = $2; next } c[$1] != $2 || ++n[$1] != $3' orders lines
$ cut -d, -f1 lines | sort | uniq -c | awk '$1 != 3'
$ awk -F, 'NR == FNR { c[$1]; next } !($4 in c)' customers lines
files
  customers
  customers.csv
  customers.toml
  known
  lines
  lines.csv
  lines.toml
  orders
  orders.csv
  orders.toml

each OLD NEW SAYS
  = [1, 5] | = [5, 1] | each is from 5 to 1, expected the smaller number first
  = [1, 5] | = [1, 2] | item CUSTOMER: each: <*>
  = [1, 5] | = -1 | each is -1, expected numbers of records from 0 to 1000000000000000000
  = [1, 5] | = "x" | each is "x", expected a number of records, <*>
  = [1, 5] | = { least = 1 } | each has no most, expected the largest number of records
  = [1, 5] | = 3, order = "random" | order is given together with each, expected one of the two
  each = [1, 5] | order = "random" | item NO: of is "CUSTOMER", expected an item with type = "key" and each
  customers.toml", item = "ID" | none.toml", item = "ID" | item CUSTOMER: layout names <*>none.toml, which can't be used as it is
  customers.toml", item = "ID" | customers.toml", item = "IT" | item CUSTOMER: item is "IT", expected an item of the records of <*>customers.toml
  item = "ID", each | item = "NAME", each | item CUSTOMER: record 1: the value is "<*>", expected what the item's size and sign allow
  item = "NAME", group | item = "NAME", each = 1, group | item NAME: group "c" has the way of item CUSTOMER already, expected one way
do
  $ cp orders.toml old.toml
  edit orders.toml <OLD> => <NEW>
  $ korvex export orders.toml -o - 2>e; echo $?; grep orders.toml: e | head -n 1; rm e
    2
    orders.toml:<n>:<n>: <SAYS>
  $ mv old.toml orders.toml

# A table may be empty together with those that refer to it, not before them.
each EACH
  [0, 2]
  [1, 5]
do
  $ cp orders.toml old.toml; cp customers.toml old.customers; sed -i 's/^records *=.*/records = 0/' customers.toml
  $ sed -i 's/each = .1, 5./each = <EACH>/' orders.toml; sed 's/"default"/"key", layout = "customers.toml", item = "ID", order = "random"/' orders.toml > any.toml
  $ for t in orders any; do korvex check $t.toml --records 0 >/dev/null && korvex export $t.toml --records 0 -o - | wc -c; done
    0
    0
  $ korvex check orders.toml --records 1 2>&1 | grep -o "which has no records" | sort -u
    which has no records
  $ mv old.toml orders.toml; mv old.customers customers.toml; rm any.toml

# Layouts may refer to each other, and items to earlier records of their own layout. Only an item that
# depends on itself is an error.
file a.toml
  [layout]
  kind = "table"
  records = 6
  data = "a.csv"
  @number ID type = "range", format = "%3U", start = "101", end = "999"
  @number B type = "key", layout = "b.toml", item = "A", order = "shuffled"
  @number UP type = "key", layout = "a.toml", item = "ID", each = 2
  @number NO type = "line", of = "UP"
  @number ANY type = "key", layout = "./a.toml", item = "ID"
file b.toml
  [layout]
  kind = "table"
  records = 3
  data = "b.csv"
  @number A type = "key", layout = "a.toml", item = "ID", each = [0, 1]
$ for t in a b; do korvex export $t.toml -o - | tr -d '\r' > $t; done; cut -d, -f1,3,4 a
  101,,
  102,101,1
  103,101,2
  104,102,1
  105,102,2
  106,103,1
$ awk -F, '$5 != "" && $5 + 0 >= $1 || ($5 == "") != (NR == 1)' a
$ cat b b | sort > twice; cut -d, -f2 a | sort | cmp - twice; echo same
  same
each OLD NEW SAYS
  each = 2 | each = 0 | a.toml:<n>:<n>: item UP: each: no record may have children
  "./a.toml", | "./a.toml", order = "shuffled", | a.toml:29:<n>: item ANY: refers to earlier records <*>, expected each or order "random" for these
  item = "ID", each = 2 | item = "UP", each = 2 | a.toml:<n>:<n>: item UP: item refers back to the item: UP (a.toml:<n>:<n>) -> UP, expected no cycle
  item = "A" | item = "C" | a.toml:14:52: item B: item refers back to the item: C (b.toml:14:52) -> B (a.toml:14:52) -> C, expected no cycle
do
  $ cp a.toml old.toml
  $ cp b.toml older.toml
  edit a.toml <OLD> => <NEW>
  $ printf '%s\n' '[[item]]' 'name = "C"' 'attribute = "decimal"' 'digits = 5' 'values = { type = "key", layout = "a.toml", item = "B" }' >> b.toml
  >2 export a.toml -o -
    ! <SAYS>
  $ mv old.toml a.toml
  $ mv older.toml b.toml
file a.toml
  [layout]
  kind = "table"
  records = 6
  data = "a.csv"
  [[item]]
  name = "ID"
  attribute = "integer"
  signed = true
  nullable = false
  values = { type = "key", layout = "a.toml", item = "OLD" }
  @number OLD type = "default"
>2 export a.toml -o -
  ! a.toml:10:<n>: item ID: has no earlier record for the first one to refer to, but nullable = false, expected nullable = true
