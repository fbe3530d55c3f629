# SQLite takes any size in a type, and any name for a table.
databases sqlite
sql
  CREATE TABLE t (a "DECIMAL(2147483647,2147483647)", b "DECIMAL(99999999999)", c "VARCHAR(2147483647)",
    d "DECIMAL(1000000000,1)", e "NUMERIC(9,2147483647)", f "VARCHAR(1000000000)");
  CREATE TABLE pragma_table_xinfo (cid, name, type, "notnull", dflt_value, pk, hidden);
> import "<target>" t -o t.toml --records 2
  6 items: t.toml
$ grep -e ^length -e ^decimals t.toml
  length    = 20
  decimals  = 2
  length    = 20
  decimals  = 2
  length    = 40
  length    = 1000000002
  decimals  = 1
  length    = 10
  length    = 1000000000
> load t.toml "<target>" t ...
query SELECT count(*) FROM t
  2
# Names of any bytes: the layout stays one, on one line each, and shows them as they are printed.
sql
  CREATE TABLE "x/<FF>y" (b "odd<0A><C2><9B>31m<FF>" CHECK (b IS NULL), "c<C2><85>" boolean);
> import "<target>" x/<FF>y -o odd.toml --records 3
  1 item: odd.toml
  ! x/\xFFy: column c\x85: its name has a character that code page 932 lacks, left out
  ! x/\xFFy: column b: a condition keeps it without a value, stays NULL
$ grep -e odd -e data odd.toml
  data    = "x__y.csv"
  # odd\x0A\x9B31m\xFF
> check odd.toml ...
# SQLite takes what lies beside its file under certain names for its own, and removes it.
sql CREATE TABLE numbers (n integer)
$ ln -s test.db link.db
each LIST
  test.db-journal
  test.db-wal
do
  file <LIST>
    1
  file l.toml
    @layout
    @number n type = "enumeration", file = "<LIST>"
  remember
  >2 load l.toml sqlite:link.db numbers
    ! <*><LIST>: is the value list of item n and belongs to the database, expected a file of its own
  unchanged
