# A page that shows what the records are like; whatever their texts are, they are texts on it.
file f/a<b.toml
  [layout]
  kind = "table"
  table = "<script>"
  encoding = "utf-8"
  records = 30000
  data = "d.csv"
  [[item]]
  name = "n"
  attribute = 4
  digits = 6
  values = { type = "range", format = "%6U", start = "1", end = "999999" }
  [[item]]
  name = "</td>&"
  attribute = "character"
  length = 30
  values = { type = "list", values = ["<img src=x onerror='y'>", "b"], weights = [3, 1], empty = 0.5 }
  [[item]]
  name = "day"
  attribute = "date"
  values = { type = "range", format = "%4YMD", start = "20240101", end = "20240131" }
file f/b.toml
  [layout]
  kind = "table"
  records = 5
  data = "d.csv"
  [[item]]
  name = "a"
  attribute = 4
  digits = 6
  values = { type = "key", layout = "a<b.toml", item = "n" }
> report f -o r.html
$1 grep -c -e '<script' -e '<img' -e '</td>&' -e 'http:' r.html
  0
$ grep -o '&lt;script&gt;</h2>.*' r.html
  &lt;script&gt;</h2><p>30000 records; the figures are from a sample of 20000 of them</p>
$ grep '^<tr><td><b>' r.html | sed 's/<svg.*svg>/PICTURE/; s/<span[^>]*>[^<]*/WAY/'
  <tr><td><b>n</b></td><td class="made">range %6U: 1 to 999999<br>WAY</span></td><td class="n">0 %</td><td class="n">20000</td><td>000001</td><td>029950</td><td>PICTURE</td></tr>
  <tr><td><b>&lt;/td&gt;&amp;</b></td><td class="made">list of 2 values<br>WAY</span></td><td class="n">50.2 %</td><td class="n">2</td><td>&lt;img src=x onerror=&#39;y&#39;&gt;</td><td>b</td><td>PICTURE</td></tr>
  <tr><td><b>day</b></td><td class="made">range %4YMD: 20240101 to 20240131<br>WAY</span></td><td class="n">0 %</td><td class="n">31</td><td>2024-01-01</td><td>2024-01-31</td><td>PICTURE</td></tr>
  <tr><td><b>a</b></td><td class="made">key: n of a&lt;b.toml<br>WAY</span></td><td class="n">0 %</td><td class="n">5</td><td>000001</td><td>000005</td><td>PICTURE</td></tr>
$ grep -c 'class="key"' r.html
  1
# Ten records of the first, five of the second.
$ grep -c '^<tr><td>[0-9]' r.html
  15
>2 report f -o f/b.toml
  ! f/b.toml: is the layout, expected a file of its own
