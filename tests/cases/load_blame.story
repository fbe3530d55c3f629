# A refused row is said with the items that the constraint looks at, and with no other.
databases sqlite postgresql
sql
  CREATE TABLE t (id integer PRIMARY KEY, a integer CONSTRAINT positive CHECK (a > 0), b integer,
    "C d" varchar(9), length integer,
    CONSTRAINT in_order CHECK (b >= a), -- not "C d", CONSTRAINT is_long CHECK (id)
    CONSTRAINT is_long CHECK (length("C d") > 2 AND "C d" <> 'b, id)'));
  postgresql: CREATE TABLE parted (id integer, b integer) PARTITION BY RANGE (b);
  postgresql: CREATE TABLE parted_1 PARTITION OF parted FOR VALUES FROM (1) TO (10);
  postgresql: CREATE TABLE split (id integer, b integer) PARTITION BY RANGE (abs(b), id);
def list NAME
  [[item]]
  name = "<NAME>"
  attribute = "character"
  length = 10
  values = { type = "enumeration", file = "<NAME>.txt" }
each A B C SAYS
  0 | 5 | abc | item a, value "0": <*>
  sqlite: 7 | 5 | abc | item a, value "7", item b, value "5": <*>
  postgresql: 7 | 5 | abc | item b, value "5", item a, value "7": <*>
  1 | 5 | x | item C d, value "x": <*>
do
  file l.toml
    [layout]
    kind = "table"
    records = 1
    data = "d.csv"
    @list id
    @list a
    @list b
    @list C d
    @list length
  file id.txt
    1
  file length.txt
    1
  file a.txt
    <A>
  file b.txt
    <B>
  file C d.txt
    <C>
  >1 load l.toml "<target>" t
    ! t: record 1, <SAYS>
    ! nothing was loaded
file p.toml
  [layout]
  kind = "table"
  records = 1
  data = "d.csv"
  @list id
  @list b
file b.txt
  77
postgresql: >1 load p.toml "<target>" parted
  ! parted: record 1, item b, value "77": no partition of relation "parted" found for row: <*>
  ! nothing was loaded
postgresql: >1 load p.toml "<target>" split
  ! split: record 1, item id, value "1", item b, value "77": no partition of relation<*>
  ! nothing was loaded
# A view that takes no rows is said when it is imported.
sql
  CREATE VIEW v AS SELECT id FROM t;
  postgresql: CREATE MATERIALIZED VIEW m AS SELECT id FROM t;
> import "<target>" v -o v.toml
  1 item: v.toml
  sqlite: ! v: load cannot fill it: cannot modify v because it is a view
  postgresql: ! v: load cannot fill it: it is a view without an INSTEAD OF INSERT trigger
postgresql: > import "<target>" m -o m.toml
  1 item: m.toml
  ! m: load cannot fill it: it is a materialized view
