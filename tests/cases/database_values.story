# Any names, values and keys, and the recipes of the page on databases.
databases sqlite postgresql
@shop
@imported customers 1000
@loaded customers
file words.txt cp932
  x, y
  \\N<09>a
  表
@imported marks 1000
edit marks.toml table   = "marks" => 
>2 load marks.toml "<target>"
  ! marks.toml: [layout] has no table, expected one there or TABLE on the command line
edit marks.toml kind    = "table" => kind    = "record"<0A>quote   = "double"
edit marks.toml type   = "range"<0A>format = "%5S"<0A>start  = "AAAAA"<0A>end    = "ZZZZZ" => type = "enumeration"<0A>file = "words.txt"
edit marks.toml "%5S" => "\"1,'%5S"
> load marks.toml "<target>" marks --records 4 ...
query SELECT "a ""b\", rest FROM marks ORDER BY id
  x, y|"1,AAAAA
  \\N<09>a|"1,AAAAB
  表|"1,AAAAC
  x, y|"1,AAAAD
# Two keys that are only unique together are combined, as often as that goes.
> import "<target>" pairs -o pairs.toml --records 5000
  2 items: pairs.toml
  ! pairs: columns customer_id, mark_id: unique, with only 4000 different values: the layout has 4000 records
@loaded pairs
query SELECT count(*) FROM pairs
  4000
# The lists of a key of two columns go side by side, without the pair that one of them lacks.
sql INSERT INTO parts VALUES ('acme', 'a,1'), ('acme', 'b'), ('bolt', 'ö'), ('x', 'y')
> import "<target>" lines -o lines.toml
  3 items: lines.toml
  ! lines: columns maker, code: keys of parts left out, as a list cannot hold them: 1
  ! lines: columns maker, code: together the key of parts, their lists belong together line by line
@loaded lines
query SELECT maker, code, count(*) FROM lines GROUP BY maker, code ORDER BY 1, 2
  acme|a,1|334
  acme|b|333
  x|y|333
> import "<target>" tree -o tree.toml
  3 items: tree.toml
  ! tree: column twice: computed by the database, left out
@loaded tree
query SELECT count(*), sum(twice), count(shape) FROM tree WHERE parent_id = id
  1000|1001000|1000

# Moments from a list, and e-mail addresses from a format.
@imported orders 1000
$ seq -f '2024-02-%g 08:30:00' 10 29 > placed_at.txt
edit orders.toml attribute = "timestamp"<0A>digits    = 15<0A>length    = 15<0A>nullable  = false<0A>[item.values]<0A>type   = "range"<0A>format = "%TS"<0A>start  = "20240101 000000"<0A>end    = "20241231 235959"<0A> => attribute = "character"<0A>length    = 19<0A>[item.values]<0A>type   = "enumeration"<0A>file = "placed_at.txt"<0A>
@loaded orders
query SELECT count(*), count(DISTINCT placed_at), min(placed_at), max(placed_at) FROM orders
  1000|20|2024-02-10 08:30:00|2024-02-29 08:30:00
sql DELETE FROM orders; DELETE FROM pairs; DELETE FROM customers
@imported customers 1000
edit customers.toml "%5S"<0A>start  = "AAAAA"<0A>end    = "ZZZZZ" => "'user'%6U'@example.org'"<0A>start  = 1<0A>end    = 999999
@loaded customers
query SELECT min(email), max(email) FROM customers
  user000001@example.org|user001000@example.org

# Two keys walk through their lists in step, unless repeats nest them.
sql
  CREATE TABLE visits (id integer PRIMARY KEY, customer_id integer NOT NULL REFERENCES customers (id),
    mark_id integer NOT NULL REFERENCES marks (id));
  DELETE FROM customers WHERE id > 100; DELETE FROM marks;
@imported marks 100
@loaded marks
@imported visits 10000
@loaded visits
query SELECT count(*) FROM (SELECT DISTINCT customer_id, mark_id FROM visits) p
  100
sql DELETE FROM visits
edit visits.toml visits.customer_id.txt" => visits.customer_id.txt"<0A>repeat = { level = 1, count = 1 }
edit visits.toml visits.mark_id.txt" => visits.mark_id.txt"<0A>repeat = { level = 2, count = 1 }
@loaded visits
query SELECT count(*) FROM (SELECT DISTINCT customer_id, mark_id FROM visits) p
  10000
