"""The records of wide.toml: python3 wide.py RECORDS FILE"""

import string
import sys
from datetime import date, datetime, timedelta
from itertools import chain, count, cycle, islice, product, repeat

FIRST_MOMENT, LAST_MOMENT = datetime(1970, 1, 1, 9), datetime(2038, 1, 19, 3, 14, 7)


def again_and_again(make_values):
    return chain.from_iterable(make_values() for _ in repeat(None))


def letters(alphabet):
    return again_and_again(lambda: map("".join, product(alphabet, repeat=5)))


def dates():
    span = LAST_MOMENT.date() - date(1970, 1, 1)
    return cycle([f"{date(1970, 1, 1) + timedelta(days=n):%Y%m%d}" for n in range(span.days + 1)])


def times():
    return cycle([f"{h:02}{m:02}{s:02}" for h in range(24) for m in range(60) for s in range(60)])


def moments():
    moment, step = FIRST_MOMENT, timedelta(seconds=9)
    while moment <= LAST_MOMENT:
        yield f"{moment:%Y%m%d %H%M%S}"
        moment += step


def long_month_days():
    years, months, days = range(70, 100), range(1, 13), range(1, 32)
    return cycle([f"{y:02}{m:02}{d:02}" for y in years for m in months for d in days])


def main(records, path):
    columns = zip(
        count(1),
        again_and_again(lambda: range(1, 100_000)),
        again_and_again(lambda: range(1, 100_000_000)),
        letters(string.ascii_uppercase),
        letters(string.ascii_lowercase),
        dates(),
        times(),
        again_and_again(moments),
        long_month_days(),
    )
    with open(path, "w", encoding="ascii") as file:
        file.writelines(
            f"{number:010},{change:+06},{price / 100:09.2f},{article},CUST-{customer},"
            f"{day},{time},{moment},{batch},,\n"
            for number, change, price, article, customer, day, time, moment, batch
            in islice(columns, records)
        )


main(int(sys.argv[1]), sys.argv[2])
