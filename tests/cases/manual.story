# What the man page of layouts shows as an example works as it stands there.
$ sed -n '/^\.EX/,/^\.EE/p' <docs>/../man/korvex-layout.5 | sed 's/\\(dq/"/g; /^\.EE/d' | awk '/^\.EX/ { getline; name = NF == 2 && $1 == "#" ? $2 : "first.toml" } { print > name }'; ls
  first.toml
  staff.toml
  tasks.toml
> preview first.toml -n 1
  CUSTOMER_ID  SINCE
     10000001  19700101
> preview staff.toml
   ID  FIRST      SEX  LOGIN         HEAD  SINCE       STATUS  LEFT        PHONE           TASKS  HOURS
  789  Mark       m    mark789             2022-10-10  left    2024-11-01  (415) 555-0104      3     34
  148  Jerry      m    jerry148       789  2021-10-13  active              0131 496 0464       3     20
  318  Sean       m    sean318        789  2022-12-06  active              (212) 555-0118      2     30
  317  Thomas     m    thomas317      148  2020-12-27  left    2022-02-14  07700 900269        1     13
  378  Liam       m    liam378        148  2023-01-12  active                                  2     20
  019  Elizabeth  f    elizabeth019   148  2023-05-10  active              (212) 555-0118      2     15
  647  Shirley    f    shirley647     318  2022-10-31  active                                  3     17
  202  Brian      m    brian202       317  2024-10-22  active              (212) 555-0118      4     36
  369  Scarlett   f    scarlett369    317  2024-03-16  active              (303) 555-0189      1     15
  415  Patricia   f    patricia415    317  2022-07-16  active              0131 496 0353       4     42
> preview tasks.toml -n 3
  STAFF  NUMBER  TASK  PLACE   DAY  HOURS
    378       1  call  home    Wed     05
    378       2  plan  office  Wed     15
    415       1  plan  home    Fri     16
