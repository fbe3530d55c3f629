# Values made of those of other layouts whose records belong to each record of this one.
def decimal NAME VALUES
  [[item]]
  name = "<NAME>"
  attribute = "decimal"
  digits = 9
  decimals = 2
  signed = true
  values = { <VALUES> }
file customers.toml
  [layout]
  kind = "iso"
  records = 300
  data = "c.csv"
  @item ID 4 digits=5 type = "range", format = "%5U", start = "101", end = "99999", order = "shuffled"
  @item ORDERS 4 digits=5 type = "count", layout = "orders.toml", key = "CUSTOMER"
  @decimal REVENUE type = "sum", layout = "orders.toml", key = "CUSTOMER", item = "TOTAL"
  @decimal BEST type = "most", layout = "orders.toml", key = "CUSTOMER", item = "TOTAL"
  @item FIRST 28 digits=8 type = "least", layout = "orders.toml", key = "CUSTOMER", item = "DAY"
  @item NOTED 4 digits=5 type = "count", layout = "orders.toml", key = "CUSTOMER", item = "NOTE"
file orders.toml
  [layout]
  kind = "iso"
  records = 900
  data = "o.csv"
  @item ID 4 digits=5 type = "range", format = "%5U", start = "10001", end = "99999"
  @item CUSTOMER 4 digits=5 type = "key", layout = "customers.toml", item = "ID", each = [0, 7], group = "c", empty = "1/10"
  @decimal TOTAL type = "sum", layout = "lines.toml", key = "ORDER", item = "AMOUNT"
  @item DAY 28 digits=8 type = "list", values = ["2024-02-29", "2025-01-01", "2023-12-31"], order = "random"
  @item NOTE 1 digits=5 type = "list", values = ["a", "b"], empty = "1/3"
file lines.toml
  [layout]
  kind = "iso"
  records = 4000
  data = "l.csv"
  @item ORDER 4 digits=5 type = "key", layout = "orders.toml", item = "ID", each = { least = 0, most = 40, shape = "zipf" }, group = "o"
  @item DAY 28 digits=8 type = "key", layout = "orders.toml", item = "DAY", group = "o"
  @item SENT 28 digits=8 type = "offset", of = "DAY", from = 1, to = 9
  @decimal AMOUNT type = "list", values = ["9.95", "-0.50", "120", "3333.33", "0.1"], order = "random", empty = "1/20"
  @decimal ALL type = "key", layout = "orders.toml", item = "TOTAL", group = "o"
$ for t in customers orders lines; do korvex export $t.toml -o - | tr -d '\r' > $t; done; wc -l customers orders lines | awk '{ print $1 }' | tr '\n' ' '
  300 900 4000 5200 <end>
# In hundredths, so that awk's own numbers are exact.
file check.awk
  function cents(text) { return text == "" ? 0 : sprintf("%.0f", text * 100) }
  FILENAME == "lines" { total[$1] += cents($4); if ($3 <= $2) print "early"; all[$1] = cents($5) }
  FILENAME == "orders" {
    if (cents($3) != total[$1] + 0 || ($1 in all) && all[$1] != total[$1] || $3 !~ /\.[0-9][0-9]$/) print
    if ($2 == "") { ++nobodys; next }
    ++orders[$2]; revenue[$2] += total[$1]; noted[$2] += $5 != ""
    if (!($2 in best) || total[$1] > best[$2]) best[$2] = total[$1] + 0
    if (!($2 in first) || $4 < first[$2]) first[$2] = $4
  }
  FILENAME == "customers" {
    has = $1 in orders
    if ($2 != orders[$1] + 0 || cents($3) != revenue[$1] + 0 || $5 != first[$1] || $6 != noted[$1] + 0) print
    if (has ? cents($4) != best[$1] : $4 != "" || $3 != "0.00") print
    without += !has
  }
  END { print nobodys, (without > 5) }
$ awk -F, -f check.awk lines orders customers
  90 1
# One record at a time is the same; and so is one in a row of parts.
$ for i in 1 2 3; do korvex export orders.toml -o p --part $i/3 --quiet; done; cat p.part-*3 | tr -d '\r' | cmp - orders; rm p.*

each OLD NEW SAYS
  lines.toml | none.toml | <n>: item TOTAL: layout names none.toml, which can't be used as it is
  key = "ORDER" | key = "SENT" | <n>: item TOTAL: key is "SENT", expected an item with type = "key" and each in lines.toml
  key = "ORDER" | key = "X" | <n>: item TOTAL: key is "X", expected an item with type = "key" and each in lines.toml
  lines.toml", key = "ORDER" | orders.toml", key = "CUSTOMER" | <n>: item TOTAL: key is "CUSTOMER", which refers to customers.toml, expected one that refers to this layout
  item = "AMOUNT" | item = "X" | <n>: item TOTAL: item is "X", expected an item of the records of lines.toml
  item = "AMOUNT" | item = "DAY" | <n>: item TOTAL: item is "DAY", expected a number of the records of lines.toml
  item = "AMOUNT" | item = "ALL" | <n>: item TOTAL: item refers back to the item: ALL (lines.toml:<n>:<n>) -> TOTAL (orders.toml:<n>:<n>) -> ALL, expected no cycle
  , item = "AMOUNT" | , each = 3 | <n>: [item.values] has no item, expected the name of an item of that layout
  item = "AMOUNT" | item = "AMOUNT", order = "random" | <n>: order is given together with type "sum", expected a type with a known period
do
  $ cp orders.toml old.toml
  edit orders.toml <OLD> => <NEW>
  $ korvex export orders.toml -o - 2>e; echo $?; grep orders.toml: e | head -n 1; rm e
    2
    orders.toml:<n>:<SAYS>
  $ mv old.toml orders.toml
# A sum that its item has no room for ends the run: it is not cut.
edit lines.toml 3333.33 => 9999999.99
edit orders.toml digits = 9 => digits = 7
>1 export orders.toml -o - ...
  ! record <n>, item TOTAL: the value is "<*>", expected what the item's size and sign allow
each COMMAND
  generate
  update
do
  >2 <COMMAND> orders.toml
    ! orders.toml:<n>:<n>: item CUSTOMER: type "key" is unknown to this command, <*>
