"""Records as those of sources.toml, by Debian's python3-fake-factory: python3 sources_fake.py RECORDS"""

import sys
from datetime import date, datetime

from faker import Faker

FIRST_DAY, LAST_DAY = date(2020, 1, 1), date(2024, 12, 31)
FIRST_MOMENT, LAST_MOMENT = datetime(2020, 1, 1), datetime(2024, 12, 31)
FIRST_CUSTOMER, LAST_CUSTOMER = 10_000_001, 10_500_000
STATES = ["new", "open", "paid", "shipped", "returned"]


def main(records):
    fake = Faker("en_US")
    for _ in range(records):
        fields = (
            fake.random_int(1, 9_999_999_999),
            fake.lexify("CUST-?????"),
            fake.date_between_dates(FIRST_DAY, LAST_DAY),
            fake.date_time_between_dates(FIRST_MOMENT, LAST_MOMENT),
            fake.time(),
            f"{fake.random_int(1, 1_999_999) * 0.05:.2f}",
            fake.first_name(),
            fake.last_name(),
            fake.city(),
            fake.random_element(STATES),
            fake.random_int(FIRST_CUSTOMER, LAST_CUSTOMER),
            fake.random_int(FIRST_CUSTOMER, LAST_CUSTOMER),
            fake.lexify("C-?????"),
        )
        sys.stdout.write(",".join(map(str, fields)) + "\r\n")


main(int(sys.argv[1]))
