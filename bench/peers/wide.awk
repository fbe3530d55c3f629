# The records of wide.toml: mawk -v records=N -f wide.awk > FILE

function letters(n, alphabet) {
  n %= 26 ^ 5
  return substr(alphabet, int(n / 26 ^ 4) + 1, 1) substr(alphabet, int(n / 26 ^ 3) % 26 + 1, 1) \
    substr(alphabet, int(n / 26 ^ 2) % 26 + 1, 1) substr(alphabet, int(n / 26) % 26 + 1, 1) \
    substr(alphabet, n % 26 + 1, 1)
}

BEGIN {
  upper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
  lower = "abcdefghijklmnopqrstuvwxyz"
  day = 86400
  first_moment = 9 * 3600
  last_moment = 2 ^ 31 - 1
  days = int(last_moment / day) + 1
  moments = int((last_moment - first_moment) / 9) + 1
  years = 30
  for (n = 0; n < records; n++) {
    printf "%010d,%+06d,%09.2f,%s,CUST-%s,%s,%s,%s,%02d%02d%02d,,\n",
      n + 1, n % 99999 + 1, (n % 99999999 + 1) / 100, letters(n, upper), letters(n, lower),
      strftime("%Y%m%d", n % days * day, 1), strftime("%H%M%S", n % day, 1),
      strftime("%Y%m%d %H%M%S", first_moment + n % moments * 9, 1),
      70 + int(n / (12 * 31)) % years, int(n / 31) % 12 + 1, n % 31 + 1
  }
}
