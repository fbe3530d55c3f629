# What is in the way of a load: the row is named in the database's own words, and nothing is kept.
databases sqlite postgresql
# A layout whose items take their values from lists, in turn; as many records as the first has values.
file lists
  table=$1; shift; records=$(echo "${1#*=}" | tr ';' '\n' | wc -l)
  printf '[layout]\nkind = "table"\ndata = "t.csv"\nrecords = %s\n' "${RECORDS:-$records}" > t.toml
  for item; do
    name=${item%%=*}; echo "${item#*=}" | tr ';' '\n' > "$name.list"
    printf '[[item]]\nname = "%s"\nattribute = "character"\nlength = 40\n' "$name" >> t.toml
    printf 'values = { type = "enumeration", file = "%s.list" }\n' "$name" >> t.toml
  done
sqlite: sql
  CREATE TABLE dropping (id INTEGER PRIMARY KEY, b TEXT);
  CREATE TRIGGER watch BEFORE INSERT ON dropping WHEN new.id = 3 BEGIN SELECT RAISE(IGNORE); END;
  CREATE TABLE ignoring (id INTEGER PRIMARY KEY ON CONFLICT IGNORE);
  CREATE TABLE replacing (id INTEGER PRIMARY KEY, k TEXT UNIQUE ON CONFLICT REPLACE);
  INSERT INTO replacing VALUES (9, 'old');
  CREATE TABLE parent (k INTEGER PRIMARY KEY); INSERT INTO parent VALUES (1), (2);
  -- Numbers that do not go up by one each, and rows without any of the database's own.
  CREATE TABLE later (id INTEGER PRIMARY KEY, up INTEGER REFERENCES later,
    k INTEGER REFERENCES parent DEFERRABLE INITIALLY DEFERRED) WITHOUT ROWID;
  CREATE TABLE own (id INTEGER PRIMARY KEY, k INTEGER REFERENCES parent, up INTEGER REFERENCES own,
    void INTEGER REFERENCES parent);
  CREATE TABLE raising (id INTEGER PRIMARY KEY);
  CREATE TRIGGER no AFTER INSERT ON raising WHEN new.id = 2 BEGIN SELECT RAISE(ABORT, 'no such luck'); END;
  CREATE TABLE orphans (id INTEGER PRIMARY KEY, k INTEGER REFERENCES nowhere);
postgresql: sql
  CREATE FUNCTION drop_3() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN
    IF NEW.id = 3 THEN RETURN NULL; END IF; RETURN NEW; END $$;
  CREATE FUNCTION raise_2() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN
    IF NEW.id = 2 THEN RAISE 'no such luck'; END IF; RETURN NEW; END $$;
  CREATE TABLE dropping (id integer PRIMARY KEY, b text);
  CREATE TRIGGER watch BEFORE INSERT ON dropping FOR EACH ROW EXECUTE FUNCTION drop_3();
  CREATE TABLE raising (id integer PRIMARY KEY);
  CREATE TRIGGER watch AFTER INSERT ON raising FOR EACH ROW EXECUTE FUNCTION raise_2();
  CREATE TABLE parent (k integer PRIMARY KEY); INSERT INTO parent VALUES (1), (2);
  CREATE TABLE later (id integer PRIMARY KEY, up integer REFERENCES later,
    k integer REFERENCES parent DEFERRABLE INITIALLY DEFERRED);
  CREATE TABLE twice (k integer UNIQUE DEFERRABLE INITIALLY DEFERRED);
  CREATE TABLE split (id integer, "K 1" integer REFERENCES parent) PARTITION BY RANGE (id);
  CREATE TABLE split_1 PARTITION OF split FOR VALUES FROM (1) TO (9);
each TABLE ITEMS SAYS
  sqlite: dropping | "id=1;2;3;4;5" b=x | record 3, item id, value "3", item b, value "x": the database dropped the row without an error<*>
  sqlite: ignoring | "id=1;2;2" | record 3, item id, value "2": UNIQUE constraint failed: ignoring.id
  sqlite: replacing | "id=1;2" "k=new;old" | record 2, item k, value "old": UNIQUE constraint failed: replacing.k
  sqlite: later | "id=9;7;5;3" "up=9;9;5;3" "k=1;2;+77;78" | record 3, item k, value "+77": FOREIGN KEY constraint failed
  sqlite: own | "id=1;2" "up=+1;+2" "k=1;5" | record 2, item k, value "5": FOREIGN KEY constraint failed
  sqlite: raising | "id=1;2" | record 2, item id, value "2": no such luck
  sqlite: orphans | id=1 | column k: refers to nowhere, which does not exist<*>
  postgresql: dropping | "id=1;2;3;4;5" b=x | records 1 to 5: the database kept 4 of 5 rows and gave no error<*>
  postgresql: later | "id=9;7;5;3" "up=9;9;5;3" "k=1;2;+77;78" | record 3, item k, value "+77": insert or update on table "later" violates foreign key constraint "later_k_fkey": Key (k)=(77) is not present in table "parent".
  postgresql: twice | "k=1;2;3;4;5;6;+1;8" | record 7, item k, value "+1": duplicate key value violates unique constraint "twice_k_key": Key (k)=(1) already exists.
  postgresql: split | "id=1;2;3" "K 1=1;1;07" | record 3, item K 1, value "07": insert or update on table "split_1" violates foreign key<*>
do
  $ sh lists <TABLE> <ITEMS>
  >1 load t.toml "<target>" <TABLE>
    ! <TABLE>: <SAYS>
    ! nothing was loaded
postgresql: $ sh lists raising "id=1;2"
postgresql: >1 load t.toml "<target>" raising
  ! raising: ERROR:  no such luck
  ! CONTEXT:<*>
  ! nothing was loaded
sqlite: query SELECT k, (SELECT count(*) FROM dropping) + (SELECT count(*) FROM ignoring) + (SELECT count(*) FROM later) + (SELECT count(*) FROM own) + (SELECT count(*) FROM raising) + (SELECT count(*) FROM orphans) FROM replacing
  old|0
postgresql: query SELECT (SELECT count(*) FROM dropping) + (SELECT count(*) FROM later) + (SELECT count(*) FROM raising) + (SELECT count(*) FROM twice) + (SELECT count(*) FROM split)
  0

# Keys as the server writes them are compared with the values that were sent.
each TYPE KEY SENT WRITTEN
  postgresql: char(4) | ab | zz | zz<20><20>
  postgresql: varchar(4) | 7 | 07 | 07
  postgresql: boolean | true | false | f
  postgresql: timestamptz | 2024-01-01 00:00:00 | 2024-01-01 00:00:01 | 2024-01-01 00:00:01+00
  postgresql: float8 | 1 | 0.00001 | 1e-05
  sqlite: integer | 7 | 8 |
do
  sql DROP TABLE IF EXISTS child; DROP TABLE IF EXISTS keys; CREATE TABLE keys (k <TYPE> PRIMARY KEY); INSERT INTO keys VALUES ('<KEY>'); CREATE TABLE child (k <TYPE> REFERENCES keys)
  $ sh lists child "k=<KEY>;<SENT>"
  >1 load t.toml "<target>" child
    sqlite: ! child: record 2, item k, value "<SENT>": FOREIGN KEY constraint failed
    postgresql: ! child: record 2, item k, value "<SENT>": insert or update on table "child" violates foreign key constraint "child_k_fkey": Key (k)=(<WRITTEN>) is not present in table "keys".
    ! nothing was loaded
# A text that is not compared with the value: only the item is certain.
postgresql: sql CREATE TABLE span_keys (k interval PRIMARY KEY); CREATE TABLE spans (k interval REFERENCES span_keys)
postgresql: $ sh lists spans "k=1 hour"
postgresql: >1 load t.toml "<target>" spans
  ! spans: item k: insert or update on table "spans" violates foreign key constraint "spans_k_fkey": Key (k)=(01:00:00) is not present in table "span_keys".
  ! nothing was loaded

# What triggers do with rows of their own is none of a load's business.
sqlite: sql
  CREATE TABLE days (day TEXT UNIQUE);
  CREATE TABLE t (id INTEGER PRIMARY KEY, k TEXT UNIQUE);
  CREATE TRIGGER log AFTER INSERT ON t BEGIN INSERT OR IGNORE INTO days VALUES ('x'); END;
  CREATE VIEW v AS SELECT * FROM t;
  CREATE TRIGGER put INSTEAD OF INSERT ON v BEGIN INSERT INTO t VALUES (new.id, new.k); END;
postgresql: sql
  CREATE TABLE days (day text UNIQUE); CREATE TABLE t (id integer PRIMARY KEY, k text);
  CREATE FUNCTION log() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN
    INSERT INTO days VALUES ('x') ON CONFLICT DO NOTHING; RETURN NEW; END $$;
  CREATE FUNCTION put() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN
    INSERT INTO t VALUES (NEW.id, NEW.k); RETURN NEW; END $$;
  CREATE TRIGGER log AFTER INSERT ON t FOR EACH ROW EXECUTE FUNCTION log();
  CREATE VIEW v AS SELECT * FROM t;
  CREATE TRIGGER put INSTEAD OF INSERT ON v FOR EACH ROW EXECUTE FUNCTION put();
$ sh lists t "id=1;2;3" "k=a;b;c"
@loaded t
$ sh lists v "id=4;5" "k=d;e"
> load t.toml "<target>" v ...
query SELECT (SELECT count(*) FROM t), (SELECT count(*) FROM days)
  5|1

# A server that is told to go ends the connection while the load still sends.
postgresql: sql
  CREATE SEQUENCE s; CREATE TABLE going (k text);
  CREATE FUNCTION go() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN
    IF nextval('s') = 1000 THEN PERFORM pg_terminate_backend(pg_backend_pid()); END IF; RETURN NEW; END $$;
  CREATE TRIGGER go BEFORE INSERT ON going FOR EACH ROW EXECUTE FUNCTION go();
each RECORDS
  postgresql: 2000
  postgresql: 3000000
  sqlite: 0
do
  postgresql: sql ALTER SEQUENCE s RESTART
  $ RECORDS=<RECORDS> sh lists going "k=some value;another value"
  postgresql: >1 load t.toml "<target>" going
    ! going: FATAL:  terminating connection due to administrator command
    ! ...
    ! nothing was loaded
postgresql: query SELECT count(*) FROM going
  0
