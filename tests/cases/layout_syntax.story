# A line that can't be read is named, and the lines beside it are read all the same.
def head
  [layout]
  kind = "record"
  records = 1
  data = "d.csv"
def item NAME MORE
  [[item]]
  name = "<NAME>"
  attribute = 4
  <MORE>

# A value that does not end takes in the lines below it, which say nothing about it.
each OPEN
  [ "a.csv"
  """a.csv
  '''a.csv
do
  file l.toml
    [layout]
    kind = "record"
    records = 1
    colour = 1
    data = <OPEN>
    [[item]]
    name = "A"
    attribute = 4
    digits = 3
    values = 5
  >2 check l.toml
    ! l.toml:4:1: <*>
    ! l.toml:5:8: <*>
    ! l.toml:10:10: <*>

# Values that do end are not to blame for what stands below them, and a second header keeps its keys to itself.
each FIRST SECOND THIRD PLACES
  item = [<0A>{ name = "A", attribute = 4, digits = 3, values = { type = "default" } }<0A>{ name = 5 }<0A>] | @head | | 3
  item = [<0A>{ name = "A", attribute = 4, digits = 3 }<0A>] | @head | @item B digits = 3 | 8
  note = """<0A>a = [<0A>b""" | @head | @item A digits = [1 2] | 1 11
  @head | "a=[b" = 1 | @item A digits = [1 2] | 5 9
  @head | @item A digits = 3 | @head | 9
  @head | @item A digits = [ | @item B digits = 3 | 8
  @head | @item A digits = 3<0A>x = [<0A>"signed" = true | | 9
do
  file l.toml
    <FIRST>
    <SECOND>
    <THIRD>
  $ korvex check l.toml 2>&1 | sed -nE 's/^l.toml:([0-9]+):.*/\1/p' | xargs
    <PLACES>

# What no repair gets over ends with what was found, and with no more than that.
each TEXT
  a = """<0A>b<0A>c
  <=*300>
  [a]<0A>[a]<0A>[a]
  <FF><FE><0A><FF>
  x = [1,<0A>2,
do
  file l.toml
    <TEXT>
  >2 check l.toml
    ! l.toml:<*>
    ! ...

# Data in place of a layout is wrong in nearly every line, and one message says so.
each LINE COUNT ENDING
  1,x | 40 | 30 further errors
  1,x | 400 | 91 or more further errors
  [a] | 40 | 32 further errors
do
  $ yes '<LINE>' | head -n <COUNT> > l.toml
  >2 check l.toml
    ! l.toml:<*>
    ! l.toml:<*>
    ! l.toml:<*>
    ! l.toml:<*>
    ! l.toml:<*>
    ! l.toml:<*>
    ! l.toml:<*>
    ! l.toml:<*>
    ! l.toml:<*>
    ! l.toml:<*>
    ! l.toml: is no layout<*><ENDING>
# No more is shown than a person reads, and no more is read than a layout has.
file l.toml
  @head
  @item A digits = 3
$ seq -f 'key%g = 1' 2000 >> l.toml
$ korvex check l.toml 2>&1 | sed -n '1000,$p' | cut -c 1-60
  l.toml:1907:1: unknown key "key1899" in [[item]], expected o
  l.toml:1907:1: further errors are left out
$ yes '[' | head -n 300000 | tr -d '\n' | sed 's/^/a = [/' > l.toml
>2 check l.toml
  ! l.toml: has too many keys and values for its size

# A key of very many parts is refused before it is taken in; what only looks like one is not.
each KEY AT SAYS
  printf '%s = 1' $K | 9:1 | a key of 60000 parts, expected at most 8, in the line a.a
  printf '  %s = 1' $K | 9:3 | a key of 60000 parts
  printf '[%s]' $K | 9:2 | a key of 60000 parts
  printf '[[%s]]' $K | 9:3 | a key of 60000 parts
  printf 'x = "ä#\\""  # '"'"'\ny = \047\047\047\n\047\047\047\047\047\nz = {"ä" = [1.5], %s=1}' $K | 12:19 | a key of 60000 parts
  printf 'x = """\n%s = 1' $K | 10:1 | a key of 60000 parts
  printf 'x = "%s"  # %s\na.a.a.a.a.a.a.a = 1\nx' $K $K | 11:2 | Error while<*>in the line
  printf 'x = '; for i in $(seq 250); do printf '{a.a.a.a.a.a.a.a='; done; printf 1; for i in $(seq 250); do printf '}'; done | 9:1 | unknown key "x"
do
  file l.toml
    @head
    @item A digits = 5
  $ K=$(yes a | head -n 60000 | paste -sd .); { <KEY>; echo; } >> l.toml; korvex check l.toml 2>&1 | grep -m 1 '^l.toml:<AT>:' | cut -c 1-100
    l.toml:<AT>: <SAYS><*>
