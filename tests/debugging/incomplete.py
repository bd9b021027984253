"""What gdb shows where it has no more than the name of a class."""

failures = []
for expression, expected in {
    # Clang describes a class of this kind wherever it is used, and GCC does not.
    "leap": ("<incomplete type>", "2000-02-29 12:30:00.007"),
    "period": ("<incomplete type>",),
    "rate": ("<incomplete type>",),
}.items():
    if shown(expression) not in expected:
        failures.append(f"{expression} shows {shown(expression)} and not {expected[0]}")
finish(failures)
