# The first error is named with its place, and nothing else: what is below it may mean anything.
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
each LINE AT SAYS
  level = 1O | 6:10 | Error while parsing decimal integer: expected digit, saw 'O', in the line level = 1O
  name = "B | 6:10 | <*>, in the line name = "B, expected a table's header or a key with its value
  attribute = decimal | 6:13 | <*>, in the line attribute = decimal, expected a table's header or a key with its value
  colour = 1 | 11:2 | <*>, in the line 1,x
  colour = [ "a.csv" | 7:1 | Error while parsing array: expected comma or closing ']', saw '[', in the line [[item]]
  colour = """a.csv | <*> | <*>encountered end-of-file<*>, expected its end
  data = "e.csv" | 6:8 | <*>, in the line data = "e.csv", expected each key once
  [layout] | 6:1 | <*>, in the line [layout], expected each key once
  <=*300> | 6:1 | <*>, in the line <=*60>
  <FF><FE> | 5:15 | Encountered invalid utf-8 sequence, in the line <*>
do
  file l.toml
    colour = 1
    @head
    <LINE>
    @item A digits = 3
    1,x
  >2 check l.toml
    ! l.toml:<AT>: <SAYS>

# A file of another kind is wrong in every line, and one message says so.
$ seq -f 'key%g = 1' 40 > l.toml
$ korvex check l.toml 2>&1 | tail -n 2
  l.toml:8:1: unknown key "key8" in the layout, expected one of "item", "layout"
  l.toml: is no layout, which has [layout] and [[item]]: 32 further errors
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
  printf 'x = """\n%s = 1' $K | 10:120005 | Error while parsing string
  printf 'x = "%s"  # %s\na.a.a.a.a.a.a.a = 1\nx' $K $K | 11:2 | Error while<*>in the line
  printf 'x = '; for i in $(seq 250); do printf '{a.a.a.a.a.a.a.a='; done; printf 1; for i in $(seq 250); do printf '}'; done | 9:1 | unknown key "x"
do
  file l.toml
    @head
    @item A digits = 5
  $ K=$(yes a | head -n 60000 | paste -sd .); { <KEY>; echo; } >> l.toml; korvex check l.toml 2>&1 | grep -m 1 '^l.toml:<AT>:' | cut -c 1-100
    l.toml:<AT>: <SAYS><*>
