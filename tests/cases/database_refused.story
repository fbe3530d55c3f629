# One wrong row among good ones: the load names it and keeps none of them.
databases sqlite postgresql
@shop
@imported customers 1000
@loaded customers
sql DELETE FROM customers WHERE id = 777; INSERT INTO marks VALUES (5, 'x', NULL)
$ seq 1999 > numbers.txt
each TABLE FROM TO SQLITE POSTGRESQL
  customers | "1001"<0A>end    = "2147483647" | "-600"<0A>end    = "1100" | record 602, item id, value "+0000000001": UNIQUE constraint failed: customers.id | record 602, item id, value "+0000000001": duplicate key value violates unique constraint "customers_pkey": Key (id)=(1) already exists.
  orders | "999.99"<0A>increment = " | "-999.99"<0A>increment = "- | record 2, item amount, value "+000.00": CHECK constraint failed: amount > 0 | record 2, item amount, value "+000.00": new row for relation "orders" violates check constraint "orders_amount_check"<*>
  orders | orders.customer_id.txt | numbers.txt | record 777, item customer_id, value "777": FOREIGN KEY constraint failed | record 777, item customer_id, value "777": insert or update on table "orders" violates foreign key constraint "orders_customer_id_fkey": Key (customer_id)=(777) is not present in table "customers".
  pairs | pairs.mark_id.txt | numbers.txt | record 1, item mark_id, value "1": FOREIGN KEY constraint failed | record 1, item mark_id, value "1": insert or update on table "pairs" violates foreign key constraint "pairs_mark_id_fkey": Key (mark_id)=(1) is not present in table "marks".
  customers | nullable  = false<0A>[item.values]<0A>type = "enumeration"<0A>file = "customers.active.txt" | [item.values]<0A>type = "initial" | record 1, item active, value NULL: NOT NULL constraint failed: customers.active | record 1, item active, value NULL: null value in column "active" of relation "customers" violates not-null constraint<*>
do
  $ korvex import "<target>" <TABLE> -o <TABLE>.toml --force > said 2>&1
  edit <TABLE>.toml <FROM> => <TO>
  >1 load <TABLE>.toml "<target>" <TABLE>
    sqlite: ! <TABLE>: <SQLITE>
    postgresql: ! <TABLE>: <POSTGRESQL>
    ! ...
    ! nothing was loaded
  query SELECT (SELECT count(*) FROM customers), (SELECT count(*) FROM orders), (SELECT count(*) FROM pairs)
    999|0|0

# Columns and lists that do not fit the table or the item.
@imported marks 1000
>2 load marks.toml "<target>" customers
  ! marks.toml:25: item a "b\: the table customers has no column of this name
  ! marks.toml:38: item rest: the table customers has no column of this name
file numbers.txt
  1
  2,3
edit marks.toml type   = "range"<0A>format = "%10D"<0A>start  = "6"<0A>end    = "2147483647" => type = "enumeration"<0A>file = "numbers.txt"
>1 load marks.toml "<target>" marks
  ! <folder>/numbers.txt
  ! 2 line of a enum file The numeric value data Column includes a non-numeric value.
query SELECT count(*) FROM marks
  1
file numbers.txt
  1
edit marks.toml name      = "rest" => name      = "ID"
>2 load marks.toml "<target>" marks
  ! marks.toml:36: item ID: another item goes to this column
