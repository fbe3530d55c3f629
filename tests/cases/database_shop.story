# A shop, from its tables to rows in them.
databases sqlite postgresql
@shop
>1 import "<target>" orders -o orders.toml
  ! orders: column customer_id: refers to customers, which has no rows yet (load customers first), but must not be NULL
@imported customers 1000
@loaded customers
query SELECT count(*), count(DISTINCT email), min(since), max(since) FROM customers
  1000|1000|2024-01-01|2024-12-31
query SELECT count(*) FROM customers WHERE active
  500
@imported orders 100000
edit orders.toml "0.01" => "5.00"
edit orders.toml increment = "0.01" => increment = "0.05"
$ korvex check orders.toml --unique customer_id,amount | grep -E '^(customer|amount|Records|Unique)'
  customer_id        1000  starts again after 1000 records
  amount            19900  starts again after 19900 records
  Records to generate: 100000
  Unique id: yes, all 100000 records differ; <*>
  Unique customer_id, amount: yes, all 100000 records differ; more than 199000 would not
$ korvex generate --quiet orders.toml && korvex check orders.toml | grep -c " $(stat -c %s orders.csv) bytes"
  1
> preview orders.toml -n 3
           id  customer_id   amount  placed_at            note
  +0000000001            1  +005.00  2024/01/01 00:00:00  AAAAA
  +0000000002            2  +005.05  2024/01/01 00:00:01  AAAAB
  +0000000003            3  +005.10  2024/01/01 00:00:02  AAAAC
query SELECT count(*) FROM orders
  0
> load orders.toml "<target>" orders
  100000 records, <*>
# 5.00 to 999.95 by 0.05 are 19,900 amounts: five rounds of 9,999,252.50, and the first 500 of the sixth, 8,737.50.
query SELECT count(*), round(sum(amount), 2), min(amount), max(placed_at) FROM orders
  sqlite: 100000|50005000.0|5|2024-01-02 03:46:39
  postgresql: 100000|50005000.00|5.00|2024-01-02 03:46:39
query SELECT count(*) FROM orders o JOIN customers c ON c.id = o.customer_id WHERE o.customer_id = 1 + (o.id - 1) % 1000
  100000
query SELECT count(*) FROM (SELECT DISTINCT customer_id, amount FROM orders) pairs
  100000
query SELECT id, customer_id, placed_at, note FROM orders WHERE id = 3
  3|3|2024-01-01 00:00:02|AAAAC

# What is there already is not in the way of a second import.
@imported orders 1000
# The layout says which table it is for.
> load orders.toml "<target>" --quiet
@imported customers 1000
@loaded customers
query SELECT count(*), max(id) FROM orders
  101000|101000
query SELECT count(*), max(id), max(email) FROM customers
  2000|2000|AACYX
