"""Types of command line options."""

import argparse


def positive(text):
    number = int(text)
    if number < 1:
        raise argparse.ArgumentTypeError("must be at least 1")
    return number
