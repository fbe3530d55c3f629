-- The records of wide.toml: sqlite3 :memory: '.parameter init' '.parameter set :records N' \
--   '.mode list' '.separator ,' '.output FILE' '.read wide.sql'
-- The two empty columns after the last value make its comma and that of the empty item.
WITH n AS (SELECT value AS n, value % 11881376 AS letters
           FROM generate_series(0, :records - 1))
SELECT printf('%010d', n + 1),
       printf('%+06d', n % 99999 + 1),
       printf('%09.2f', (n % 99999999 + 1) / 100.0),
       char(65 + letters / 456976, 65 + letters / 17576 % 26, 65 + letters / 676 % 26,
            65 + letters / 26 % 26, 65 + letters % 26),
       'CUST-' || char(97 + letters / 456976, 97 + letters / 17576 % 26, 97 + letters / 676 % 26,
                       97 + letters / 26 % 26, 97 + letters % 26),
       strftime('%Y%m%d', n % 24856 * 86400, 'unixepoch'),
       strftime('%H%M%S', n % 86400, 'unixepoch'),
       strftime('%Y%m%d %H%M%S', 32400 + n % 238605695 * 9, 'unixepoch'),
       printf('%02d%02d%02d', 70 + n / 372 % 30, n / 31 % 12 + 1, n % 31 + 1),
       '', ''
FROM n;
