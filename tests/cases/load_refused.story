# One wrong row among good ones: the load names it and keeps none of them.
databases sqlite postgresql
sql
  CREATE TABLE customers (id integer PRIMARY KEY, email varchar(40) NOT NULL UNIQUE);
  CREATE TABLE orders (id integer PRIMARY KEY, amount numeric(9,2) NOT NULL CHECK (amount > 0));
  INSERT INTO customers VALUES (7, 'x');
> import "<target>" customers -o customers.toml --records 10
  2 items: customers.toml
> import "<target>" orders -o orders.toml --records 10
  2 items: orders.toml
each TABLE FROM TO SAYS
  sqlite: customers | "8" | "1" | record 7, item id, value "+0000000007": UNIQUE constraint failed: customers.id
  sqlite: orders | 0.01" | -0.01" | record 1, item amount, value "-<*>": CHECK constraint failed: amount > 0
  postgresql: customers | "8" | "1" | record 7, item id, value "+0000000007": duplicate key value violates<*>
  postgresql: orders | 0.01" | -0.01" | record 1, item amount, value "-<*>": new row for relation "orders"<*>
do
  edit <TABLE>.toml <FROM> => <TO>
  >1 load <TABLE>.toml "<target>" <TABLE>
    ! <TABLE>: <SAYS>
    ! nothing was loaded
query SELECT count(*) FROM orders
  0
query SELECT * FROM customers
  7|x
