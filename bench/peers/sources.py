"""Records as those of sources.toml, drawn by the module random: python3 sources.py RECORDS"""

import pathlib
import random
import string
import sys
from datetime import date, datetime, timedelta

SETS = pathlib.Path(__file__).resolve().parents[2] / "data" / "sets"
CUSTOMERS = range(10_000_001, 10_500_001)
STATES = ["new", "open", "paid", "shipped", "returned"]
FIRST_DAY, DAYS = date(2020, 1, 1), 1827
FIRST_MOMENT = datetime(2020, 1, 1)
SECONDS = 24 * 60 * 60


def column(table, number):
    lines = (SETS / f"{table}.en.1.tsv").read_text(encoding="utf-8").splitlines()
    return [line.split("\t")[number] for line in lines[1:]]


def letters():
    return "".join(random.choices(string.ascii_lowercase, k=5))


def main(records):
    given, family, cities = column("people.given", 0), column("people.family", 0), column("places", 0)
    campaigns = [f"C-{letters()}" for _ in CUSTOMERS]
    for _ in range(records):
        second = random.randrange(SECONDS)
        fields = (
            random.randint(1, 9_999_999_999),
            f"CUST-{letters()}",
            FIRST_DAY + timedelta(random.randrange(DAYS)),
            FIRST_MOMENT + timedelta(seconds=random.randrange(DAYS * SECONDS)),
            f"{second // 3600:02}:{second // 60 % 60:02}:{second % 60:02}",
            f"{random.randint(1, 1_999_999) * 0.05:.2f}",
            random.choice(given),
            random.choice(family),
            random.choice(cities),
            random.choice(STATES),
            random.choice(CUSTOMERS),
            random.choice(CUSTOMERS),
            random.choice(campaigns),
        )
        sys.stdout.write(",".join(map(str, fields)) + "\r\n")


main(int(sys.argv[1]))
