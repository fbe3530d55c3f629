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
