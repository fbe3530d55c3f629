# Value lists: what a line may hold, what a list is made of, and the report of its errors.
# The values in brackets, each after what is wrong with it; once for attributes that all say the same.
file tell
  attributes=$1 size=$2; shift 2; printf '%s\n' "$@" | iconv -t CP932 > list.txt
  for attribute in $attributes; do
    printf '[layout]\nkind="record"\nrecords=9\ndata="d.csv"\n[[item]]\nname="A"\nattribute=%s\n%s\n' $attribute "$size" > l.toml
    printf 'values={ type="enumeration", file="list.txt" }\n' >> l.toml
    rm -f list.txt.err d.csv; korvex generate l.toml > said 2> told || touch list.txt.err
    [ -e list.txt.err ] || { tr -d '\n' < d.csv | iconv -f CP932; echo; continue; }
    awk 'NR == FNR { value[FNR] = $0; next } /^[0-9]+ line/ { n = $1; sub(/.*file /, ""); if ($0 != last) printf "%s%s", sep, $0
      printf " [%s]", value[n]; last = $0; sep = ";" } END { print "" }' list.txt list.txt.err
  done | uniq | tr ';' '\n'
$ sh tell "1 2 3 6 7" digits=5 abcde " $(printf '\t\032') "
  abcde, <09><1A> ,abcde, <09><1A> ,abcde, <09><1A> ,abcde, <09><1A> ,abcde,
$ sh tell "1 2 3 6 7" digits=5 abcdef "     6"
  Data longer than Item has been defined. [abcdef] [     6]
$ sh tell "1 2 3 6 7" "$(printf 'length=3\ndigits=0')" abc abcd
  Data longer than Item has been defined. [abcd]
# Numbers with a sign, without and with decimals.
set NUMBERS=4 5 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 29 30
$ sh tell "$NUMBERS" "$(printf 'length=5\ndigits=4\nsigned=true')" -1234 +1234 1234 -
  -1234,+1234,1234,-,-1234,+1234,1234,-,-1234,
$ sh tell "$NUMBERS" "$(printf 'length=5\ndigits=4\nsigned=true')" 12345 -12345 123.0 1x '1 ' 12345678x +-1 -1+ 1-2 123456- 1.2.3 1.0
  Data longer than Item has been defined. [12345] [-12345] [123.0]
  The numeric value data Item includes a non-numeric value. [1x] [1 ] [12345678x]
  The numeric value data Item includes two signs. [+-1] [-1+]
  A sign was found in the middle of the numeric value data Item. [1-2] [123456-]
  The numeric value data Item includes two decimal points. [1.2.3]
  The numeric value Item includes a decimal part which should not be specified. [1.0]
$ sh tell "$NUMBERS" "$(printf 'length=7\ndigits=5\ndecimals=2\nsigned=true')" -123.45 123.45 +.5 5.
  -123.45,123.45,+.5,5.,-123.45,123.45,+.5,5.,-123.45,
$ sh tell "$NUMBERS" "$(printf 'length=7\ndigits=5\ndecimals=2\nsigned=true')" 1234567 1234.567 1.. -1.234 -1234.5 1234.5 123456
  Data longer than Item has been defined. [1234567] [1234.567]
  The numeric value data Item includes two decimal points. [1..]
  The numeric value Item includes a decimal part which should not be specified. [-1.234]
  The numeric value Item includes an integer part which should not be specified. [-1234.5] [1234.5] [123456]
# Without a sign the digits are the limit, whatever the length; with decimals the length is.
$ sh tell "$NUMBERS" "$(printf 'length=9\ndigits=5')" 123456 +12345 +1 -1.0 1.0
  Data longer than Item has been defined. [123456] [+12345]
  The numeric value Item which should be unsigned, includes a sign. [+1] [-1.0]
  The numeric value Item includes a decimal part which should not be specified. [1.0]
$ sh tell "$NUMBERS" "$(printf 'length=6\ndigits=5\ndecimals=2')" 123.45 123 .12
  123.45,123,.12,123.45,123,.12,123.45,123,.12,
$ sh tell "$NUMBERS" "$(printf 'length=6\ndigits=5\ndecimals=2')" 1234567 +1.2345 +1.2 1.234 12.345 1234.5 1234
  Data longer than Item has been defined. [1234567] [+1.2345]
  The numeric value Item which should be unsigned, includes a sign. [+1.2]
  The numeric value Item includes a decimal part which should not be specified. [1.234] [12.345]
  The numeric value Item includes an integer part which should not be specified. [1234.5] [1234]
$ sh tell "$NUMBERS" "$(printf 'length=10\ndigits=5\ndecimals=2')" 1234567.89 12345.678 12345678.9
  The numeric value Item includes a decimal part which should not be specified. [12345.678]
  The numeric value Item includes an integer part which should not be specified. [12345678.9]
# Numbers without digits.
$ sh tell "19 20 21 22 23 24 25 26 27 29 30" "$(printf 'length=3\ndigits=0')" abc +-. abcd
  Data longer than Item has been defined. [abcd]
$ sh tell "4 5 13 14 15 16 17 18" "$(printf 'length=3\ndigits=0')" 1 a
  Data longer than Item has been defined. [1]
  The numeric value data Item includes a non-numeric value. [a]
# Full-width characters, of the code page and of no meaning.
$ sh tell "11 12" digits=2 あ亜 あ
  あ亜,あ,あ亜,あ,あ亜,あ,あ亜,あ,あ亜,
$ sh tell "11 12" digits=2 あ亜い あ亜a あa ab あab
  Data longer than Item has been defined. [<82><A0><88><9F><82><A2>] [<82><A0><88><9F>a]
  The word Item includes a non-full width character. [<82><A0>a] [ab] [<82><A0>ab]
# Attributes that take no list say so once a line.
$ for attribute in 8 9 10 28 31 32; do sh tell $attribute digits=8 1 2 > said; cat list.txt.err; done | sort | uniq -c
       12 Select another generation type.
       12 This attribute does not allow use of the enumeration type.

# Bytes that begin or end no character.
$ printf '\201\077\n\201\177\n\201\375\n\200\100\n\240\100\n\337\100\n\375\100\n\201\100\374\374\n' > list.txt
$ sed -i 's/attribute=32/attribute=11/' l.toml
>1 generate l.toml ...
  ! ...
$ cut -d ' ' -f 1,7- list.txt.err
  1 The word Item includes a non-full width character.
  2 The word Item includes a non-full width character.
  3 The word Item includes a non-full width character.
  4 The word Item includes a non-full width character.
  5 The word Item includes a non-full width character.
  6 The word Item includes a non-full width character.
  7 The word Item includes a non-full width character.

# Lines end in line feeds or pairs, empty ones are none, a long one is read as several, and zero bytes end one.
file bytes.toml
  @layout
  @item A 1 digits=40000 type = "enumeration", file = "list.txt", exceeded = "initialize"
file list.txt
  <0D>

  a<0D>b<0D>
  c<0D><0D>
  <1A>
  ab<00>cd
   d <0D><end>
> generate bytes.toml --records 8 --quiet
cat d.csv
  a<0D>b,
  c<0D>,
  <1A>,
  ab,
   d <0D>,
  ,
  ,
  ,
$ { printf '%032768d%032768d\n\nnext\n%032767d\ry' 0 0 1; } > list.txt
> generate bytes.toml --records 6 --quiet
$ tr -d 0 < d.csv; awk '{ print length($0) }' d.csv
  ,
  ,
  next,
  1<0D>,
  y,
  ,
  32769
  32769
  5
  32769
  2
  1
# Pairs may fall anywhere around the end of a piece and of what is read at once.
$ for size in $(seq 32765 32770) $(seq 262141 262147) $(seq 294909 294914); do yes xxxxxxx | head -c $size | sed '$s/.$/y\r/' > list.txt; printf '\nrest\r' >> list.txt; korvex generate bytes.toml --records 40000 --quiet; tail -n +$((size / 8)) d.csv | grep '[^x,]' | tr -d x | xargs echo; done | uniq -c
       19 y, rest<0D>,
$ for size in 32765 32766 32767 32768 32769; do { head -c $size /dev/zero | tr '\0' x; printf '\r\nrest\r'; } > list.txt; korvex generate bytes.toml --quiet; echo $size $(awk '{ print length($0) - 1 }' d.csv); done
  32765 32765 5 0 0 0
  32766 32766 5 0 0 0
  32767 32767 5 0 0 0
  32768 32768 5 0 0 0
  32769 32768 1 5 0 0

# Files that are no list.
edit bytes.toml list.txt => none.txt
>2 generate bytes.toml
  ! bytes.toml:11:41: item A: file names <folder>/none.txt, which does not exist, expected a value list
edit bytes.toml none.txt => .
>1 generate bytes.toml
  ! <folder>/.
  ! 99111:The target file has not been assigned the required access permissions.
  ! Contact the system administrator.
edit bytes.toml "." => "list.txt"
$1 flock -x list.txt korvex generate bytes.toml
  ! <folder>/list.txt
  ! 99115:The target file is exclusively controlled.
  ! Close the application that is using the target file, then retry.
# A list of nothing but empty lines has no value.
$ printf "\n\n" > list.txt
>1 generate l.toml
  ! <folder>/list.txt
  ! 99136:The Enumeration file does not include any data.
  ! Specify the data in the Enumeration file.
