# The examples: what count says comes true, with and without a settings file that is there.
$ cp -r <examples>/* .
each NAME RECORDS ITEMS SIZE FIRST
  customers | 1000 | 89999999 | 9809999891 bytes (data items x item lengths) | 10000001,CUST-aaaaa,AA,あああ,-00099.95,000,19700101,090000,20240101 000000,,
  orders | 500 | 999999 | 73999926 bytes (data items x item lengths) | +000001,"AA-0001",0000019.90,9,"2024/02/29","2024/01/01 08:00:00",,
  iso | 365 | 9999999999 | too large (above CheckFileSizeMax) | wx-aaa,99-01-01,+024.5,0000000001
  fullwidth | 200 | 9999 | 399960 bytes (data items x item lengths) | "あいうえ","カナアアア","第ア-0001","2024/04/01",
  prices | 12 | 680019 | 32640912 bytes (data items x item lengths) | 100010,"Espresso cup",4.50,10,"19700101",
  calendar | 84 | 84 | 2352 bytes (data items x item lengths) | 2024/02/12,SHOP-01,A10,SHOP-01,001,
do
  $ for i in 1 2; do korvex count <NAME>.toml > counted; korvex generate <NAME>.toml; head -n 1 out/<NAME>.csv | iconv -f CP932 -t UTF-8; wc -l < out/<NAME>.csv; cat counted; stat -c '(%s bytes)' out/<NAME>.csv; done
    <RECORDS> records, <n> bytes, <t> s: out/<NAME>.csv
    <FIRST>
    <RECORDS>
    Data items:          <ITEMS>
    Predicted size:      <SIZE>
    DGCheckRepeatCnt:    0 (the settings can be evaluated)
    Records to generate: <RECORDS>
    Exact file size:     <n> bytes
    ...
  $ size=$(stat -c %s out/<NAME>.csv); korvex count <NAME>.toml | grep -c "size:     $size bytes"
    1
