# What import makes of tables that have rows, odd names and keys, where it writes, and what it says.
databases sqlite postgresql
# Unique texts go on after those that are there; other texts do not count, whatever the database thinks of their order.
each TYPE HELD NEXT
  varchar(40) | (1, NULL) | AAAAA|AAAAB
  varchar(40) | (1, 'ABCZY'), (2, 'zzzzz'), (3, 'ZZZZ'), (4, 'ZZZZZ1'), (5, 'ZZ ZZ'), (6, 'ÄZZZZ'), (7, 'x<0A>ZZZZZ') | ABCZZ|ABDAA
  char(3) | (1, 'AZZ'), (2, 'BA') | BAA|BAB
  # No letters are left: numbers take over, and go on in their turn.
  text | (1, 'ZZZZY') | 0000000001|0000000002
  text | (1, 'ZZZZZ'), (2, '0000000099'), (3, '99999999999') | 0000000100|0000000101
  numeric(5) | (1, 7), (2, 41) | 42|43
  uuid | (1, '00000000-0000-4000-8000-000000000109'), (2, 'f0000000-0000-4000-8000-000000000200') | 00000000-0000-4000-8000-000000000110|00000000-0000-4000-8000-000000000111
  sqlite: json | (1, '"AAAAZ"'), (2, '"ZZZZZZ"'), (3, '7') | "AAABA"|"AAABB"
  postgresql: jsonb | (1, '"AAAAZ"'), (2, '"ZZZZZZ"'), (3, '7') | "AAABA"|"AAABB"
do
  sql
    DROP TABLE IF EXISTS u; CREATE TABLE u (id integer PRIMARY KEY, v <TYPE> UNIQUE);
    INSERT INTO u VALUES <HELD>; DROP TABLE IF EXISTS old; CREATE TABLE old AS SELECT max(id) AS id FROM u;
  @imported u 2
  @loaded u
  query SELECT a.v, b.v FROM u a JOIN u b ON b.id = a.id + 1 WHERE a.id = (SELECT id FROM old) + 1
    <NEXT>

# What remains where a column is nearly full, and what cannot be read; the rows that are made go in.
sql
  CREATE TABLE used_up (v varchar(1) UNIQUE); INSERT INTO used_up VALUES ('Y');
  CREATE TABLE big (id bigint PRIMARY KEY, v varchar(5)); INSERT INTO big VALUES (9223372036854775807, 'x');
  CREATE TABLE room (id integer PRIMARY KEY, k bigint UNIQUE); INSERT INTO room VALUES (1, 999999999999999999);
  CREATE TABLE pair (a bigint NOT NULL, b integer NOT NULL, PRIMARY KEY (a, b));
  INSERT INTO pair VALUES (9223372036854775807, 5);
  CREATE TABLE taken (b boolean NOT NULL UNIQUE); INSERT INTO taken VALUES (true), (false);
  postgresql: CREATE TABLE edge (id bigint PRIMARY KEY); INSERT INTO edge VALUES (2147483640);
  sqlite: CREATE TABLE edge (id INTEGER PRIMARY KEY); INSERT INTO edge VALUES (2147483640);
sqlite: sql
  CREATE TABLE wide (id INTEGER PRIMARY KEY); INSERT INTO wide VALUES (3000000000);
  CREATE TABLE lost (id INTEGER PRIMARY KEY, a INTEGER REFERENCES nowhere, b INTEGER NOT NULL REFERENCES nowhere (id));
  CREATE TABLE parent (id INTEGER PRIMARY KEY); INSERT INTO parent VALUES (1);
  CREATE TABLE astray (id INTEGER PRIMARY KEY, a INTEGER REFERENCES parent (gone));
postgresql: sql
  CREATE TABLE filled (id integer PRIMARY KEY); INSERT INTO filled VALUES (2147483647);
  CREATE TABLE parent (id integer PRIMARY KEY) PARTITION BY RANGE (id);
  CREATE TABLE parent_1 PARTITION OF parent FOR VALUES FROM (1) TO (10);
  CREATE TABLE parent_2 PARTITION OF parent FOR VALUES FROM (10) TO (20);
  INSERT INTO parent VALUES (4), (14);
  CREATE TABLE whole (id integer NOT NULL, k integer NOT NULL REFERENCES parent) PARTITION BY RANGE (id);
  CREATE TABLE part PARTITION OF whole FOR VALUES FROM (1) TO (100);
  CREATE TYPE "time" AS ENUM ('dawn', 'dusk'); CREATE DOMAIN "int4" AS varchar(3);
  CREATE TABLE named (a public."time" NOT NULL, b public."int4" NOT NULL);
  DO $$ BEGIN CREATE ROLE poor LOGIN; EXCEPTION WHEN duplicate_object THEN END $$;
  CREATE TABLE secret (id integer PRIMARY KEY, a integer REFERENCES parent, b integer NOT NULL);
  GRANT SELECT, INSERT ON secret TO poor;
each TABLE SAYS
  taken | column b: no value is known except those that it already has, but must not be NULL
  sqlite: lost | column b: refers to nowhere, which cannot be read: no such table: nowhere, but must not be NULL<0A>lost: column a: refers to nowhere, which cannot be read: no such table: nowhere, stays NULL
do
  >1 import "<target>" <TABLE> -o none.toml --records 10
    ! <TABLE>: <SAYS>
  $1 test -e none.toml
each TABLE LOAD COUNT SAYS HAS
  used_up | load | 11 | | file = "used_up.v.txt"
  big | load | 11 | | file = "big.id.txt"
  room | load | 11 | | file = "room.k.txt"
  pair | load | 11 | | file = "pair.a.txt"
  postgresql: filled | load | 11 | | file = "filled.id.txt"
  edge | load | 11 | | start  = "2147483641"<0A>end    = "999999999999999999"
  sqlite: wide | load | 11 | | start  = "3000000001"<0A>end    = "999999999999999999"
  sqlite: astray | : | 0 | column a: refers to parent, which cannot be read: no such column: k.gone, stays NULL | type = "initial"
  postgresql: part | load | 10 | | file = "part.k.txt"
  postgresql: whole | load | 20 | | file = "whole.k.txt"
  postgresql: named | load | 10 | | file = "named.a.txt"
do
  $ korvex import "<target>" <TABLE> -o <TABLE>.toml --records 10 2> said > told; sed 's/^<TABLE>: //' said
    <SAYS>
  edit <TABLE>.toml <HAS> => <HAS>
  $ load() { korvex load "$@" > told; }; <LOAD> <TABLE>.toml "<target>" <TABLE>
  query SELECT count(*) FROM <TABLE>
    <COUNT>
postgresql: $ korvex import "<target> user=poor" secret -o secret.toml --records 10 2>&1
  secret: column a: refers to parent, which cannot be read: permission denied for table parent, stays NULL
  3 items: secret.toml

# It writes only its own files: folders are made, and a list is beside the layout.
@shop
@imported customers 1000
@loaded customers
> import "<target>" orders -o new/folder/f.toml
  5 items: new/folder/f.toml
> generate new/folder/f.toml --quiet
$ korvex import "<target>" orders -o - | cmp - new/folder/f.toml; ls orders* new/folder; rm orders.customer_id.txt
  orders.customer_id.txt

  new/folder:
  f.toml
  orders.csv
  orders.customer_id.txt
  orders.fif
  orders.log
# A layout that cannot be written leaves no list, nor do two of its files take one
# place. A link with the name of a list is replaced, and its target stays.
$ mkdir taken
>1 import "<target>" orders -o taken --force
  ! taken: Is a directory
sql CREATE TABLE twins ("x/y" boolean NOT NULL, x_y boolean NOT NULL)
@imported twins 10
$ ls twins*
  twins.toml
  twins.x_y.2.txt
  twins.x_y.txt
$ echo old > linked.toml; ln -sf linked.toml customers.active.txt
>2 import "<target>" customers -o customers.active.txt --force
  ! ./customers.active.txt: is another file of the import, expected a file of its own
>1 import "<target>" customers -o replaced.toml
  ! ./customers.active.txt exists; --force replaces it
> import "<target>" customers -o replaced.toml --force
  4 items: replaced.toml
cat linked.toml
  old
sqlite: $ ln -s test.db link.db; ln test.db other.db
sqlite: each OUTPUT
  link.db
  other.db
  test.db-wal
sqlite: do
  >2 import "<target>" orders -o <OUTPUT> --force
    ! <*>: is the database that is read, expected a file of its own
sqlite: >2 import sqlite: customers
  ! the database is "sqlite:", which names no file, expected "sqlite:FILE"

# What is wrong with a table, a column or the command.
>1 import "<target>" customers -o new/folder/f.toml
  ! new/folder/f.toml exists; --force replaces it
sql CREATE TABLE names ("prié" integer, a integer NOT NULL); CREATE TABLE bare ("prié" integer)
sqlite: sql CREATE TABLE longer (<n*64> integer, a integer NOT NULL)
> import "<target>" names -o names.toml
  1 item: names.toml
  ! names: column prié: its name has a character that code page 932 lacks, left out
sqlite: > import "<target>" longer -o longer.toml
  1 item: longer.toml
  ! longer: column nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn: its name has 64 bytes in code page 932, expected at most 63, left out
>1 import "<target>" bare -o bare.toml
  ! bare: column prié: its name has a character that code page 932 lacks, left out
  ! bare: no column can become an item
>1 import "<target>" nothing
  ! <*>no such table: nothing (the database has <*>, ...)
>2 load names.toml nothing names
  ! the database is of no known kind, expected sqlite:FILE, postgresql:CONNINFO or postgresql://ADDRESS
