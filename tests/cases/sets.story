# The built-in sets: what is listed, what is shown, and what is refused.
> sets --language ja
  Column<*>Languages<*>Rows  Examples
  awkward.text<*>157  O'Brien, <*>
  ...
  people.given<*>de en es fr ja<*>恵子, 誠, 洋子
  people.given_ascii<*>Keiko, Makoto, Yoko
  ...
# A set of two tables, weights at the right, and wide characters under wide ones.
> sets people --language ja -n 2
  family  family_ascii  weight
  佐藤    Sato            1000
  鈴木    Suzuki           <n>

  given  given_ascii  sex  weight
  恵子   Keiko        f      1000
  誠     Makoto       m      1000
# A column shows its table; a set without languages is in all of them.
> sets currencies.code -n 1 --language de
  currency   code  symbol  decimals  weight
  US-Dollar  USD   $       2            300
> sets awkward -n 1 --language fr
  text     reason
  O'Brien  apostrophe in a name
$ korvex sets places.city --language fr --tsv | sed 3q | tr '\t' '|'
  city|city_ascii|region|postcode|postcode_form|country|country_code|dial|weight
  Paris|Paris|Île-de-France|75001|75###|France|FR|+33|2133
  Montréal|Montreal|Québec|H2Y 1C6|H2? #?#|Canada|CA|+1|1763

each OPTIONS SAYS
  peple | the set is "peple", expected one of "awkward", "colours", <*>
  people. | the set is "people.", expected one of "people.family", "people.family_ascii", "people.given", <*>
  people.city | the set is "people.city", expected one of "people.family", <*>
  .given | the set is ".given", expected one of "awkward", <*>
  people --language xx | --language is "xx", expected one of "de", "en", "es", "fr", "ja"
  --language xx | --language is "xx", expected one of "de", "en", "es", "fr", "ja"
  people --tsv | --tsv prints one table, expected the name of a column that is in it
  --tsv | --tsv prints one table, expected <*>
do
  >2 sets <OPTIONS>
    ! <SAYS>

# Tables of the user's own, in a folder that is looked for when sets are.
set XDG_DATA_HOME=<folder>/data
file data/korvex/sets/people.given.it.tsv
  given<09>sex<09>weight
  Giulia<09>f<09>3
  Marco<09>m<09>2
file data/korvex/sets/parts.tsv
  <EF><BB><BF>part<0D>
  Schraube<0D>
> sets people.given --language it
  given   sex  weight
  Giulia  f         3
  Marco   m         2
> sets parts
  part
  Schraube
>2 sets people.family --language it
  ! --language is "it", expected one of "de", "en", "es", "fr", "ja"
each SET NAME CONTENT SAYS
  people | people.given.de | given<0A>Uwe | : a built-in table has this name, which never changes
  wrong | wrong | a<09>b<0A>1<09>2<0A>3 | :3: 1 texts, expected 2 with tabs in between
  wrong | wrong | a<09>weight<0A>x<09>1<0A>y<09>0 | :3: weight is "0", expected a number from 1
  wrong | wrong | a<09>a<0A>1<09>2 | :1: there are two columns "a"
  wrong | wrong | a<09><0A>1<09>2 | :1: a column has no name
  wrong | wrong | weight<0A>1 | :1: there are weights only
  wrong | wrong | a | :1: there are no rows
  wrong | wrong | a<0A>x<0A><E9>t<E9> | :3: is not UTF-8
do
  file data/korvex/sets/<NAME>.tsv
    <CONTENT>
  > sets --language it ...
    ! <folder>/data/korvex/sets/<NAME>.tsv<SAYS>
  >2 sets <SET> --language de
    ! the set cannot be read: <folder>/data/korvex/sets/<NAME>.tsv<SAYS>
  $ rm data/korvex/sets/<NAME>.tsv
file data/korvex/sets/Wrong.tsv
  a
> sets --language it ...
  ! <folder>/data/korvex/sets/Wrong.tsv: expected a name SET.tsv or SET.LANGUAGE.tsv
