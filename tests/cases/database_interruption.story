# A load or an import that is ended keeps nothing.
databases sqlite postgresql
sql CREATE TABLE t (A integer)
file l.toml
  @layout
  @item A 4 digits=9 type = "default"
edit l.toml records = 5 => records = 2000000000
>130 until <tmp>/*+0.3 INT load l.toml "<target>" t
  ! nothing was loaded
# While it waits for somebody else's lock.
sqlite: $ (echo 'BEGIN IMMEDIATE;'; sleep 3) | <session> > /dev/null 2>&1 & sleep 0.5
postgresql: $ (echo 'BEGIN; LOCK TABLE t;'; sleep 3) | <session> > /dev/null 2>&1 & sleep 0.5
>143 until <tmp>/*+0.5 TERM load l.toml "<target>" t
  ! nothing was loaded
$ sleep 3
query SELECT count(*) FROM t
  0
# A name is looked up by a call that no signal ends.
each COMMAND
  load l.toml "postgresql:host=db.example dbname=shop" t
  import "postgresql:host=db.example dbname=shop" t
do
  >130 LD_PRELOAD=<lib>/libsilent_name_service.so ASAN_OPTIONS=verify_asan_link_order=0 until asked:-1 INT <COMMAND>
    ! ...
  $ rm asked
