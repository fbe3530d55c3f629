# The shop of the examples: three tables that look real, and hold together wherever one looks.
databases sqlite
sql
  CREATE TABLE customers (id integer PRIMARY KEY, first_name text NOT NULL, sex text CHECK (sex IN ('f', 'm')),
    last_name text NOT NULL, email text NOT NULL UNIQUE, house integer, street text, city text, region text,
    postcode text, country text, since date NOT NULL, orders integer NOT NULL, spent numeric NOT NULL);
  CREATE TABLE orders (id integer PRIMARY KEY, customer_id integer NOT NULL REFERENCES customers, customer_since date,
    ordered date NOT NULL, status text NOT NULL, paid date, shipped date, delivered date, payment text,
    lines integer NOT NULL, total numeric NOT NULL, remark text);
  CREATE TABLE lines (order_id integer NOT NULL REFERENCES orders, line integer NOT NULL, product text NOT NULL,
    category text NOT NULL, price numeric NOT NULL, PRIMARY KEY (order_id, line), UNIQUE (order_id, product));
$ cp -r <examples>/shop .
> load shop "<target>"
  200 records, <t> s: customers
  1000 records, <t> s: orders
  3000 records, <t> s: lines
  3 tables, 4200 records, <t> s: shop
query SELECT (SELECT count(*) FROM customers), (SELECT count(*) FROM orders), (SELECT count(*) FROM lines)
  200|1000|3000
# Every table has what its export has.
each TABLE RECORDS
  customers | 200
  orders | 1000
  lines | 3000
do
  $ korvex export shop/<TABLE>.toml -o - | wc -l
    <RECORDS>
# Nothing may come out of these.
each WRONG SQL
  orphans | SELECT * FROM orders WHERE customer_id NOT IN (SELECT id FROM customers)
  orphans | SELECT * FROM lines WHERE order_id NOT IN (SELECT id FROM orders)
  before the first day | SELECT * FROM orders o JOIN customers c ON c.id = o.customer_id WHERE o.ordered < c.since
  another first day | SELECT * FROM orders o JOIN customers c ON c.id = o.customer_id WHERE o.customer_since <> c.since
  time runs backwards | SELECT * FROM orders WHERE paid < ordered OR shipped <= paid OR delivered <= shipped
  dates of another status | SELECT * FROM orders WHERE (paid IS NOT NULL) <> (status IN ('paid', 'shipped', 'delivered')) OR (shipped IS NOT NULL) <> (status IN ('shipped', 'delivered')) OR (delivered IS NOT NULL) <> (status = 'delivered')
  paid with nothing | SELECT * FROM orders WHERE (payment IS NULL) <> (paid IS NULL)
  totals | SELECT o.id FROM orders o LEFT JOIN lines l ON l.order_id = o.id GROUP BY o.id HAVING round(o.total, 2) <> round(sum(l.price), 2) OR o.lines <> count(l.line)
  sums of totals | SELECT c.id FROM customers c LEFT JOIN orders o ON o.customer_id = c.id GROUP BY c.id HAVING round(c.spent, 2) <> round(coalesce(sum(o.total), 0), 2) OR c.orders <> count(o.id)
  a price of its own | SELECT product FROM lines GROUP BY product HAVING count(DISTINCT price) > 1 OR count(DISTINCT category) > 1
  a city elsewhere | SELECT postcode FROM customers GROUP BY postcode HAVING count(DISTINCT city || region || country) > 1
  gaps between lines | SELECT order_id FROM lines GROUP BY order_id HAVING max(line) <> count(*)
do
  query <SQL>
# As in life: many customers order once, some a lot, and most orders arrive.
query SELECT min(orders) = 1, max(orders) > 30, (SELECT count(*) FROM orders WHERE status = 'delivered') FROM customers
  1|1|780
