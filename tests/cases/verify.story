# Whether a file, or its parts, hold the records of a layout.
file l.toml
  [layout]
  kind = "table"
  records = 10000
  data = "d.csv"
  @number A type = "range", format = "%3U", start = 1, end = 700
  @item B 1 length=9 type = "range", format = "'b'%3s", start = "aaa", end = "zzz"
def parts
  $ for i in 1 2 3 4; do korvex generate l.toml --part $i/4 --quiet --force; korvex export l.toml -o e --header --part $i/4 --quiet --force; done
@parts
# By manifests and sizes, by every byte, or at some places; parts, one part, and files that were joined.
> verify l.toml
  d.csv: all 4 parts are complete, 10000 records, 100000 bytes by manifests and sizes
> verify l.toml e d.csv.part-2-of-4 --content
  e: all 4 parts are complete, 10000 records, 98385 bytes, every byte compared
  d.csv.part-2-of-4: complete, 2500 records, 25000 bytes, every byte compared
$ cat d.csv.part-?-of-4 > d.csv; cat e.part-?-of-4 > joined
> verify l.toml --sample 9
  d.csv: all 4 parts are complete, 10000 records, 100000 bytes by manifests and sizes, 9 places compared
  d.csv: complete, 10000 records, 100000 bytes by size, first and last records, 9 places compared
> verify l.toml joined --format csv --header
  joined: complete, 10000 records, 98385 bytes by first and last records
> verify l.toml joined --format csv --header --content
  joined: complete, 10000 records, 98385 bytes, every byte compared
>1 verify l.toml joined --format csv
  ! joined: record 1, item A, byte 1: differs
# Damage: found from manifests and sizes, or only in the content; rows of parts in one line.
each DAMAGE OPTIONS SAYS
  rm *part-[34]-of-4 | | d.csv.part-3-of-4 to d.csv.part-4-of-4: missing
  rm d.csv.part-4* | --content | d.csv.part-4-of-4: missing
  rm d.csv.part-2-of-4.manifest | | d.csv.part-2-of-4: without a manifest
  cp d.csv.part-1-of-4.manifest d.csv.part-2-of-4.manifest | | d.csv.part-2-of-4: with the manifest of part 1 of 4
  truncate -s -1 d.csv.part-2-of-4.manifest | | d.csv.part-2-of-4: with a damaged manifest
  truncate -s 20 d.csv.part-2-of-4 | | d.csv.part-2-of-4: 20 bytes long, expected 25000
  truncate -s 24 d.csv.part-2-of-4 | --content | d.csv.part-2-of-4: ends in record 2503, item B, after 24 bytes
  echo >> d.csv.part-4-of-4 | --content | d.csv.part-4-of-4: continues after its last record, from byte 25001 on
  cp d.csv.part-1-of-4 x; mv x d.csv.part-2-of-4 | --content | d.csv.part-2-of-4: record 2501, item A, byte 1: differs
  cp d.csv.part-1-of-4 d.csv.part-2-of-4 | | d.csv.part-2-of-4: changed after its manifest was written
  mv d.csv.part-1-of-4 d.csv.part-2-of-4; cp d.csv.part-2-of-4 d.csv.part-1-of-4 | | d.csv.part-2-of-4: not the file of its manifest
  korvex export l.toml -o d.csv --part 2/4 --quiet --force | | d.csv.part-2-of-4: written as csv utf-8, expected data
  korvex generate l.toml --records 9999 --part 2/4 --quiet | | d.csv.part-2-of-4: of another number of records
  sed s/700/701/ l.toml > m.toml; korvex generate m.toml --part 2/4 --quiet | | d.csv.part-2-of-4: of another layout
  tr 7 8 < d.csv.part-3-of-4 > x; touch -d 2000-01-01 x; cat x > d.csv.part-3-of-4; touch -d 2000-01-01 d.csv.part-3-of-4 | --sample 4000 | d.csv.part-3-of-4: record 5<n>, item A, byte <n>: differs
do
  $ rm -f d.csv; <DAMAGE>
  >1 verify l.toml <OPTIONS> ...
    ! <SAYS>
  @parts
# Whole files.
each DAMAGE OPTIONS SAYS
  truncate -s 99990 d.csv | | d.csv: 99990 bytes long, expected 100000
  echo 99999999 >> d.csv | --content | d.csv: continues after its last record, from byte 100001 on
  printf x|dd of=d.csv bs=1 seek=60006 conv=notrunc 2>x | --content | d.csv: record 6001, item B, byte 60007: differs
  printf x|dd of=d.csv bs=1 seek=99996 conv=notrunc 2>x | | d.csv: record 10000, item B, byte 99997: differs
do
  $ rm -f d.csv.part*; cat e.part-?-of-4 > joined; korvex generate l.toml --quiet; <DAMAGE>
  >1 verify l.toml <OPTIONS>
    ! <SAYS>
>1 verify l.toml nothing
  ! nothing: missing, and so are parts of it
>2 verify l.toml --sample 0
  ! --sample: "0" is no number from 1 to 2147483647
  ! Run with --help for more information.
