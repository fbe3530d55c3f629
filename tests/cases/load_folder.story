# A folder of layouts fills a database: in the order of its keys, in one transaction.
databases sqlite postgresql
# A layout for a table: a number of records of items NAME=START..END, which start again after the end.
file layout
  mkdir -p shop; file=shop/$1.toml
  printf '[layout]\nkind = "table"\ntable = "%s"\nrecords = %s\ndata = "%s.csv"\n' $1 $2 $1 > $file; shift 2
  for item; do
    start=${item#*=}; end=${start#*..}; start=${start%..*}; by=1; [ $start -lt $end ] || by=-1
    printf '[[item]]\nname = "%s"\nattribute = "integer"\nsigned = true\n[item.values]\n' ${item%%=*} >> $file
    printf 'type = "range"\nformat = "%%9D"\nstart = %s\nend = %s\nincrement = "%s"\n' $start $end $by >> $file
  done
sql
  CREATE TABLE people (id integer PRIMARY KEY, boss integer NOT NULL REFERENCES people DEFERRABLE);
  CREATE TABLE visit (boss integer);
  sqlite: CREATE TABLE ship (id integer PRIMARY KEY, port_id integer NOT NULL REFERENCES port, CHECK (id < 900));
  sqlite: CREATE TABLE port (id integer PRIMARY KEY, crew_id integer NOT NULL REFERENCES crew);
  postgresql: CREATE TABLE ship (id integer PRIMARY KEY, port_id integer NOT NULL, extra text NOT NULL DEFAULT 'x', CHECK (id < 900));
  postgresql: CREATE TABLE port (id integer PRIMARY KEY, crew_id integer NOT NULL);
  CREATE TABLE crew (id integer PRIMARY KEY, ship_id integer NOT NULL REFERENCES ship);
  postgresql: ALTER TABLE ship ADD FOREIGN KEY (port_id) REFERENCES port;
  postgresql: ALTER TABLE port ADD FOREIGN KEY (crew_id) REFERENCES crew;
  CREATE TABLE egg (id integer PRIMARY KEY, hen_id integer NOT NULL);
  CREATE TABLE hen (id integer PRIMARY KEY, egg_id integer NOT NULL REFERENCES egg DEFERRABLE);
  postgresql: ALTER TABLE egg ADD FOREIGN KEY (hen_id) REFERENCES hen;
  sqlite: CREATE TABLE bill (id integer PRIMARY KEY AUTOINCREMENT, no integer, down integer, twice AS (no * 2), ship_id integer REFERENCES ship, boss integer REFERENCES people, d integer DEFAULT 5);
  postgresql: CREATE SEQUENCE down INCREMENT -1 MINVALUE -99 MAXVALUE 99 START 99;
  postgresql: CREATE TABLE bill (id integer GENERATED ALWAYS AS IDENTITY PRIMARY KEY, no serial, down integer DEFAULT nextval('down'), twice integer GENERATED ALWAYS AS (no * 2) STORED, ship_id integer REFERENCES ship, boss integer REFERENCES people, d integer DEFAULT 5);
file make
  sh layout people 100 id=1..999 boss=100..1; sh layout ship 50 id=1..999 port_id=50..1
  sh layout port 50 id=1..999 crew_id=1..50; sh layout crew 50 id=1..999 ship_id=1..50
  sh layout egg 20 id=1..999 hen_id=20..1; sh layout hen 20 id=1..999 egg_id=1..20
  sh layout bill 30 id=1..999 no=1..999 down=80..1 ship_id=1..50 boss=100..1
$ sh make
def empty
  query SELECT (SELECT count(*) FROM people) + (SELECT count(*) FROM crew) + (SELECT count(*) FROM egg) + (SELECT count(*) FROM bill)
    0

# Whatever is wrong with one table, nothing is left of any.
each LAYOUT SQLITE POSTGRESQL
  bill 30 ship_id=1..50 boss=95..999 | bill: record 7, item boss, value "+000000101": FOREIGN KEY constraint failed | bill: record 7, item boss, value "+000000101": insert or update on table "bill" violates foreign key constraint "bill_boss_fkey": Key (boss)=(101) is not present in table "people".
  port 50 id=1..999 crew_id=3..60 | port: record 49, item crew_id, value "+000000051": FOREIGN KEY constraint failed | port: record 49, item crew_id, value "+000000051": insert or update on table "port" violates foreign key constraint "port_crew_id_fkey": Key (crew_id)=(51) is not present in table "crew".
  ship 50 id=899..999 port_id=50..1 | ship: record 2, item id, value "+000000900": CHECK constraint failed: id < 900 | ship: record 2, item id, value "+000000900": new row for relation "ship" violates check constraint "ship_id_check": Failing row contains (900, 49<*>
  hen 20 id=1..999 egg_id=5..60 | hen: record 17, item egg_id, value "+000000021": FOREIGN KEY constraint failed | hen: record 17, item egg_id, value "+000000021": insert or update on table "hen" violates foreign key constraint "hen_egg_id_fkey": Key (egg_id)=(21) is not present in table "egg".
do
  $ sh make; sh layout <LAYOUT>
  >1 load shop "<target>"
    sqlite: ! <SQLITE>
    postgresql: ! <POSTGRESQL>
    ! nothing was loaded
  @empty
$ sh make; sh layout visit 2000000000 boss=1..50
>130 until <tmp>/*+0.5 INT load shop "<target>"
  ! nothing was loaded
@empty

$ rm shop/visit.toml
> load shop "<target>"
  100 records, <t> s: people
  50 records, <t> s: crew
  50 records, <t> s: port
  50 records, <t> s: ship
  30 records, <t> s: bill
  20 records, <t> s: <*>
  20 records, <t> s: <*>
  7 tables, 320 records, <t> s: shop
query SELECT count(*), min(o.boss), max(o.boss), (SELECT count(*) FROM ship s JOIN port p ON p.id = s.port_id JOIN crew c ON c.id = p.crew_id AND c.ship_id = s.id) FROM bill b JOIN people o ON o.id = b.boss JOIN ship s ON s.id = b.ship_id WHERE b.twice = 2 * b.no AND b.d = 5
  30|1|30|0
# What comes next goes on after the loaded values, and the database knows how many there are.
query INSERT INTO bill (boss) VALUES (1) RETURNING id, no, down
  sqlite: 31||
  postgresql: 31|31|50
sqlite: query SELECT stat FROM sqlite_stat1 WHERE tbl = 'ship'
  50
postgresql: query SELECT reltuples FROM pg_class WHERE relname = 'ship'
  50
# Filled tables get more rows, unless they are emptied first.
>1 load shop "<target>"
  ! people: record 1, item id, value "+000000001": <*>
  ! nothing was loaded
>2 load shop "<target>" --truncate
  ! --truncate removes all rows, and there is no terminal to ask on, expected --yes
>130 tty load shop "<target>" --truncate
  < n
  ! All rows of people, crew, port, ship, bill and 2 more tables will be removed. Continue? [y/N] nothing was loaded
query SELECT count(*) FROM bill
  31
sqlite: sql DELETE FROM sqlite_stat1
> load shop "<target>" --truncate --yes --no-analyze --quiet
query SELECT count(*), (SELECT count(*) FROM people) FROM bill
  30|100
sqlite: query SELECT count(*) FROM sqlite_stat1
  0
sql CREATE TABLE other (id integer PRIMARY KEY, no integer REFERENCES people ON DELETE CASCADE); INSERT INTO other VALUES (1, 7)
>1 load shop "<target>" --truncate --yes
  sqlite: ! people: cannot be emptied: rows of other, which is not loaded, refer to it
  postgresql: ! ERROR:  cannot truncate a table referenced in a foreign key constraint
  postgresql: ! DETAIL:  Table "other" references "people".
  postgresql: ! HINT:  Truncate table "other" at the same time, or use TRUNCATE ... CASCADE.
  ! nothing was loaded
query SELECT count(*) FROM other
  1

# What a folder can't be asked for.
$ sh layout other 5 id=1..9; mv shop/other.toml shop/twice.toml; sh layout other 5 id=5..9; mkdir none; touch none/notes.txt
>2 load shop "<target>"
  ! shop/twice.toml: table is other, which is that of shop/other.toml, expected one layout for each table
edit shop/twice.toml table = "other" => ways = 1
>1 load shop "<target>"
  ! shop/twice.toml: [layout] has no table, so that it is not loaded
  ! people: record 1,<*>
  ! nothing was loaded
>2 load shop/twice.toml "<target>"
  ! shop/twice.toml: [layout] has no table, expected one there or TABLE on the command line
>2 load shop "<target>" other
  ! shop: is a folder, expected a layout for a TABLE on the command line
>2 load shop "<target>" --records 5
  ! shop: is a folder, expected a layout for --records
>2 load none "<target>"
  ! none: is a folder without layouts, expected files whose names end in .toml
