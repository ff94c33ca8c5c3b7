#!/usr/bin/env python3
"""Writes quadratic_fits.txt: curves as they arise from uncertainties over length, with the exact parabola of each.

The points are doubles, and the least-squares parabola of exactly these doubles is computed with rational numbers; each
coefficient is the double next to the exact one. Every number is written with as many digits as give the same double
when it is read.

The script also fits the observations of nist_pontius.txt and stops if the exact solution misses a digit of the
certified values.
"""

import pathlib
from decimal import Decimal
from fractions import Fraction
from math import sqrt

FOLDER = pathlib.Path(__file__).parent

CURVES = {
    "Parabola": lambda x: 0.0005 + 2e-6 * x + 1e-9 * x * x,
    "Root_of_squares": lambda x: sqrt(0.0003**2 + (1.2e-6 * x) ** 2),
}

# Name: start, increment and number of lengths, in mm
RANGES = {
    "0_to_1000": (0.0, 50.0, 21),
    "9000_to_10000": (9000.0, 50.0, 21),
    "49000_to_50000": (49000.0, 50.0, 21),
    "9000_to_9001": (9000.0, 0.1, 11),
    "100000_to_100001": (100000.0, 0.1, 11),
    "121_broken_lengths": (1234.567, 0.7, 121),
}


def determinant(u, v, w):
    return (
        u[0] * (v[1] * w[2] - v[2] * w[1])
        - u[1] * (v[0] * w[2] - v[2] * w[0])
        + u[2] * (v[0] * w[1] - v[1] * w[0])
    )


def exact_parabola(points):
    """The coefficients of x^2, x and 1."""
    x = [sum(px**power for px, _ in points) for power in range(5)]
    y = [sum(py * px**power for px, py in points) for power in range(3)]
    square, linear, constant, right = x[4:1:-1], x[3:0:-1], x[2::-1], y[::-1]
    whole = determinant(square, linear, constant)
    return (
        determinant(right, linear, constant) / whole,
        determinant(square, right, constant) / whole,
        determinant(square, linear, right) / whole,
    )


def check_pontius():
    rows = [line.split() for line in (FOLDER / "nist_pontius.txt").read_text().splitlines()]
    points = [(Fraction(row[1]), Fraction(row[2])) for row in rows if row[0] == "point"]
    certified = [Decimal(value) for row in rows if row[0] == "fit" for value in row[2:]]

    assert len(points) == 40 and len(certified) == 3
    for exact, value in zip(exact_parabola(points), certified):
        assert (Decimal(exact.numerator) / Decimal(exact.denominator)).quantize(value) == value, value


def block(name, points):
    coefficients = exact_parabola([(Fraction(x), Fraction(y)) for x, y in points])
    yield f"fit {name} " + " ".join(repr(float(coefficient)) for coefficient in coefficients)
    for x, y in points:
        yield f"point {x!r} {y!r}"


def main():
    check_pontius()
    lines = ["# Written by quadratic_fits.py", "# fit <name> <a> <b> <c> of y = a*x^2 + b*x + c", "# point <x> <y>"]
    for curve, value in CURVES.items():
        for name, (start, increment, count) in RANGES.items():
            lengths = [start + index * increment for index in range(count)]
            lines += block(f"{curve}_{name}", [(x, value(x)) for x in lengths])
    (FOLDER / "quadratic_fits.txt").write_text("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
