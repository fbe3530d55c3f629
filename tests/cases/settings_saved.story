# What stays in the settings file from run to run, and what a run changes in it.
file l.toml
  @layout
  @number A type = "range", format = "%3U", start = 1, end = 9, repeat = { level = 1, count = 3 }
  @number B type = "reference", item = "A"
> generate --settings-only l.toml
  2 items with settings: d.fif
$ korvex show d.fif | grep -E 'level 1|item [0-9]|repeat  '
  level 1: records 5, items 2, size 2536, offset 76, with repeats
    item 1: type 2 (range), elements 1, lead element 1
      repeat     level 1, 3 times
    item 2: type 2 (range), elements 1, lead element 1
# Values that are left out of the layout are kept, repeat included; values without a repeat clear it.
file l.toml
  @layout
  @kept A 4 digits=3
  @number B type = "range", format = "%3U", start = 5, end = 6
> generate --settings-only l.toml
  2 items with settings: d.fif
$ korvex show d.fif | grep -E 'level 1|repeat  |start'
  level 1: records 5, items 2, size 2536, offset 76, with repeats
      repeat     level 1, 3 times
        start "001", end "009", sign 0, span 0:8
        start "005", end "006", sign 0, span 0:1
file l.toml
  @layout
  @number A type = "default"
> generate --settings-only l.toml
  2 items with settings: d.fif
$ korvex show d.fif | grep -E 'level 1|repeat  |start'
  level 1: records 5, items 2, size 2536, offset 76
        start "001", end "999", sign 0, span 0:998
        start "005", end "006", sign 0, span 0:1
# Another level of the same file leaves the first one as it is; so do items that the layout does not name.
file l2.toml
  @layout
  @item C 4 digits=5 type = "initial"
edit l2.toml records => level = 2<0A>quote = "double"<0A>records
> generate --settings-only l2.toml
  1 item with settings: d.fif
$ korvex show d.fif | grep -E 'quotation|level|start'
    quotation    1 (double)
    levels       2
  level 1: records 5, items 2, size 2536, offset 108
        start "001", end "999", sign 0, span 0:998
        start "005", end "006", sign 0, span 0:1
  level 2: records 5, items 1, size 1268, offset 2644

# A reference takes the values of its source, which is stored in front of it; its own attributes stay its own.
$ rm d.fif
file l.toml
  @layout
  @item A 4 digits=3<0A>length=5 type = "reference", item = "B"
  @number B type = "range", format = "%3U", start = 7, end = 9, repeat = { level = 1, count = 2 }
  @item C 4 digits=5 type = "reference", item = "D"
  @item D 4 digits=5 type = "reference", item = "A"
  @item E 28 digits=8 type = "reference", item = "F"
  @number F type = "initial"
> generate --settings-only l.toml
  6 items with settings: d.fif
$ korvex show d.fif | grep -E 'item [0-9]|repeat  |length|start'
    item 2: type 2 (range), elements 1, lead element 1
      attribute 4 (decimal), unsigned, length 3, digits 3, decimals 0
      repeat     level 1, 2 times
        start "007", end "009", sign 0, span 0:2
    item 1: type 2 (range), elements 1, lead element 1
      attribute 4 (decimal), unsigned, length 5, digits 3, decimals 0
        start "007", end "009", sign 0, span 0:2
    item 4: type 2 (range), elements 1, lead element 1
      attribute 4 (decimal), unsigned, length 5, digits 5, decimals 0
        start "007", end "009", sign 0, span 0:2
    item 3: type 2 (range), elements 1, lead element 1
      attribute 4 (decimal), unsigned, length 5, digits 5, decimals 0
        start "007", end "009", sign 0, span 0:2
    item 6: type 1 (initial), elements 1, lead element 1
      attribute 4 (decimal), unsigned, length 3, digits 3, decimals 0
    item 5: type 1 (initial), elements 1, lead element 1
      attribute 28 (date), unsigned, length 8, digits 8, decimals 0

# New values always fit, whatever stood there.
file l.toml
  @layout
  @item A 4 digits=4 type = "range", format = "%4U", start = 1, end = 9
  @kept B 4 digits=3
> generate --settings-only l.toml
  6 items with settings: d.fif
files
  d.fif
  l.toml
  l2.toml
  w/

# Items without values need settings that are there.
$ rm d.fif
file l.toml
  @layout
  @kept A 4 digits=3
>1 generate l.toml
  ! d.fif: 99006:The format is not set to Item.
  ! Please set the format.
  ! To close the data generation screen, click Cancel.
file d.fif
  no settings, but long enough to hold a header of 44 bytes
>1 generate l.toml
  ! d.fif: 99005:The versions of the Format Information files are not the same.
$ head -c 30 d.fif > cut && mv cut d.fif
>1 generate l.toml
  ! d.fif: 99003:Failed to read the control file.
