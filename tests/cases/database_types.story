# The types of the page on databases, row by row: each is imported, generated and loaded back.
databases sqlite postgresql
postgresql: sql CREATE TYPE mood AS ENUM ('low', 'high'); CREATE DOMAIN short_code AS varchar(6)
sqlite: set HEADING=SQLite types
postgresql: set HEADING=PostgreSQL types
$ types <docs>/databases.md "$HEADING" sql | <session>
$ korvex import "<target>" t -o t.toml --records 600 > said 2>&1
@loaded t
$ types <docs>/databases.md "$HEADING" rows | <session> | types <docs>/databases.md "$HEADING" compare t.toml
  sqlite: 19 types are as documented
  postgresql: 25 types are as documented
