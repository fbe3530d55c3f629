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
# A column leads to its table; a set without languages is in all of them.
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
