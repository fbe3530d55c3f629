# What a run reads it never writes or removes, whatever the files are called and linked.
def layout_with DATA LIST
  [layout]
  kind = "record"
  records = 2
  work = "w"
  data = "<DATA>"
  settings = "s.fif"
  @number A type = "enumeration", file = "<LIST>"

file list
  1
file x.log
  1
file s.fif.w
  1
file v
  1
file v.err
  @layout_with d.csv v
$ mkdir w w2; ln list hard; ln -s list soft; ln -s s.fif dangling; cp x.log w; ln v.err w2/v.log
each LAYOUT DATA LIST PLACE SAYS
  l.toml | list     | list    | 5:8  | the data file list is also the value list of item A
  l.toml | hard     | list    | 5:8  | the data file hard is also the value list of item A
  l.toml | soft     | list    | 5:8  | the data file soft is also the value list of item A
  l.toml | w/../l.toml | list | 5:8  | the data file w/../l.toml is also the layout
  l.toml | dangling | list    | 5:8  | the data file dangling is also the settings file
  l.toml | x.csv    | w/x.log | 5:8  | the log file w/x.log is also the value list of item A
  l.toml | d.csv    | s.fif.w | 6:12 | the settings file's temporary file s.fif.w is also the value list of item A
  v.err  | d.csv    | v       | <n>:<n> | the error file <*>/v.err is also the layout
do
  file <LAYOUT>
    @layout_with <DATA> <LIST>
  remember
  >2 generate <LAYOUT>
    ! <LAYOUT>:<PLACE>: <SAYS>, expected a file of its own
  >2 edit <LAYOUT>
    ! <LAYOUT>:<PLACE>: <SAYS>, expected a file of its own
  unchanged

# A list that only the settings name.
$ rm v.err s.fif.w
file l.toml
  @layout_with d.csv list
> generate l.toml --settings-only
  1 item with settings: s.fif
edit l.toml type = "enumeration", file = "list" => type = "default"
edit l.toml d.csv => soft
remember
>2 generate l.toml --keep-settings
  ! l.toml:5:8: the data file soft is also a value list that the settings file names, expected a file of its own
>2 edit l.toml
  ! l.toml:5:8: the data file soft is also a value list that the settings file names, expected a file of its own
edit l.toml soft => d.csv
remember
each OUTPUT ROLE
  hard | the value list of item A
  l.toml | the layout
  s.fif | the settings file
do
  edit l.toml type = "default" => type = "enumeration", file = "list"
  remember
  >2 export l.toml -o <OUTPUT>
    ! <OUTPUT>: is <ROLE>, expected a file of its own
  unchanged
  edit l.toml type = "enumeration", file = "list" => type = "default"

# A link under a derived name is replaced, and what it leads to stays.
file precious
  mine
$ rm -r w; mkdir w; ln -s ../precious w/d.log; ln -s precious list.err
edit l.toml type = "default" => type = "enumeration", file = "list"
> generate l.toml
  2 records, 6 bytes, <t> s: d.csv
cat precious
  mine
$ test -L w/d.log -o -e list.err || echo whole
  whole
