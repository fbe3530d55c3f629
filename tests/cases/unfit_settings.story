# Settings that no longer fit the items are never deleted: generate touches nothing, a window gets new ones.
file l.toml
  @layout
  @number A type = "default"
  @number B type = "default"
> generate l.toml
  5 records, 45 bytes, <t> s: d.csv
edit l.toml digits = 3 => digits = 4
edit l.toml values = { type = "default" } => 
remember
each COMMAND
  generate l.toml
  generate l.toml --keep-settings
  generate l.toml --keep-settings --output-option 2
do
  >1 <COMMAND>
    ! l.toml:7: item A: its settings are for another attribute or number of digits
    ! d.fif: 99070:There is a difference between Item information and the format information.
  unchanged
each COMMAND NAME
  edit | d.fif.1
  format | d.fif.2
  update | d.fif.3
do
  >1 <COMMAND> l.toml
    ! l.toml:7: item A: its settings are for another attribute or number of digits
    ! d.fif: 99070:There is a difference between Item information and the format information.
    ! d.fif: is now <NAME>
    ! ...
  $ cp <NAME> d.fif
$ cmp d.fif.1 d.fif.3 && cmp d.fif d.fif.2 && ls w
  d.log
