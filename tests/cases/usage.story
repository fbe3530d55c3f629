# The command line: what it answers, and what it refuses.
> --version
  korvex 0.2.0
each OPTIONS LINE
  generate | --output-option
  count | --records
  show | FILE
  export | --format FORMAT             csv, tsv, jsonl or sql
do
  $ korvex <OPTIONS> --help | grep -o -m 1 -e '<LINE>'
    <LINE>
each OPTIONS SAYS
  | <*>required<*>
  generate | <*>LAYOUT<*>
  generate l.toml --records -1 | <*>--records<*>
  generate l.toml --records 1000000000000000001 | <*>--records<*>
  generate l.toml --colour | <*>--colour<*>
  count | <*>LAYOUT<*>
  count l.toml --quiet | <*>--quiet<*>
  generate l.toml --records five | <*>"five" is no number from 0 to 1000000000000000000
  preview l.toml -n 5x | <*>"5x" is no number from 0 to<*>
  import d t --records 0 | <*>"0" is no number from 1 to<*>
  export l.toml -o - --format json | <*>"json" is unknown, expected one of csv, tsv, jsonl, sql
do
  >2 <OPTIONS>
    ! <SAYS>
    ! Run with --help for more information.

>2 generat l.toml
  ! no command "generat", expected one of generate, <*>
>2 lod l.toml
  ! no command "lod", expected one of load, <*>

# What a list in UTF-8 most likely means, said once however many items read it.
file list.txt
  名前
file l.toml
  @layout
  @number A type = "enumeration", file = "list.txt"
  @number B type = "enumeration", file = "list.txt"
> generate --settings-only l.toml
  2 items with settings: d.fif
  ! l.toml:7: item A: <folder>/list.txt looks like UTF-8; lists are read as code page 932 (iconv -f UTF-8 -t CP932 <folder>/list.txt)
file list.txt cp932
  名前
> generate --settings-only l.toml
  2 items with settings: d.fif
# Its first 64 KiB tell, wherever the last character there is cut.
each COUNT
  65532
  65533
  65534
  65535
do
  $ { printf é; head -c <COUNT> /dev/zero | tr '\0' a; printf 名; } > list.txt
  > generate --settings-only l.toml
    2 items with settings: d.fif
    ! l.toml:7: item A: <folder>/list.txt looks like UTF-8; lists are read as code page 932 (iconv -f UTF-8 -t CP932 <folder>/list.txt)
$ { head -c 65536 /dev/zero | tr '\0' a; printf 名; } > list.txt
> generate --settings-only l.toml
  2 items with settings: d.fif

# An item without values and settings, and one whose digits are impossible.
file l.toml
  @layout
  @kept A 4 digits=3
  @number B type = "default"
  @item C 4 digits=3<0A>decimals=4 type = "default"
edit l.toml d.fif => e.fif
edit l.toml "record" => "table"
> generate l.toml
  5 records, 45 bytes, <t> s: d.csv
  ! l.toml:16: item C: 99075:There are some Column specified that are not valid.
  ! l.toml:7: item A: has no values and no settings, the records leave it out
> count l.toml ...
  ! l.toml:16: item C: 99075:There are some Column specified that are not valid.
