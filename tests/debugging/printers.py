"""What gdb shows of each class: gdb -x stopped.py -x ../../debugging/zan_orv_core_service.py -x printers.py PROGRAM"""

import gdb

LEAP = "2000-02-29 12:30:00.007"
failures = []


def expect(expression, expected):
    found = shown(expression)
    if found != expected:
        failures.append(f"{expression}\n  shows    {found}\n  and not  {expected}")


def expect_all(table):
    for expression, expected in table.items():
        expect(expression, expected)


expect_all({
    "leap": LEAP,
    "*pointer": LEAP,
    "reference": LEAP,
    "*nowhere": "Cannot access memory at address 0x0",
    "dates": "{1400-12-31 00:00:00.001, 1900-02-28 23:59:59.000, 9999-12-31 00:00:00.000}",
    "unset": "1400-01-01 00:00:00.000 (min)",
    "end": "9999-12-31 23:59:59.999 (max)",
    "year10000": "10000-01-01 23:59:59.999",
    "early": "<before the calendar>",
    "late": "<after the calendar>",
    "offset": "1 years 2 months -3 days 04:05:06.007",
    "period": f"{LEAP}/9999-12-31 23:59:59.999 (max)",
    "text": r'"now + \"3\" d"',
    "undefined": '""',
    "none": "0 samples",
    "rate": f"2 samples, 2000-01-01 00:00:00.000 to {LEAP} = "
            f"{{[2000-01-01 00:00:00.000] = null, [{LEAP}] = 80}}",
    "directory": '"/data/cases"',
    "nothing": '""',
    "file": '"/data/north.in.csv"',
    "inRoot": '"/file"',
    "unnamed": '"/data"',
    "alone": '"north"',
})

# gdb's own limit holds, for texts and for samples.
gdb.execute("set print elements 3")
expect_all({
    "text": '"now"...',
    "longText": '"abc"...',
    "many": "3000 samples, 2000-01-02 00:00:00.000 to 2008-03-19 00:00:00.000 = "
            "{[2000-01-02 00:00:00.000] = 1, [2000-01-03 00:00:00.000] = 2, [2000-01-04 00:00:00.000] = 3...}",
})
gdb.execute("set print elements unlimited")
expect("longText", f'"{"abc" * 1000}"')
many = shown("many")
if many.count("[") != 3000 or not many.endswith("[2008-03-19 00:00:00.000] = 3000}"):
    failures.append("many does not show all samples in their order")

# What is no lvalue.
gdb.execute("set print elements 200")
gdb.execute("set $copy = rate")
expect("$copy", shown("rate"))

# Memory that holds something else.
for memory, texts in {
    "zeros": {"Time": "<before the calendar>", "Directory": '""'},
    "bytes": {"TimePeriod": "<invalid>/<invalid>"},
    "addresses": {},
}.items():
    for name in ("Time", "TimeString", "TimeAverager", "LogMessageArgs", "Directory", "FileName"):
        expect(f"*(Zan::Orv::Core::Service::{name}*)&{memory}", texts.get(name, "<invalid>"))

gdb.execute("set var text.text_._M_string_length = 5")
expect("text", "<invalid>")

gdb.execute("continue", to_string=True)
gdb.execute("up", to_string=True)
expect("*message", 'Warning: "59 weeks have no value"')

finish(failures)
