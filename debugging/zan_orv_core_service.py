"""Shows the values of Zan.Orv.Core.Service in gdb as a person would write them.

    gdb -x debugging/zan_orv_core_service.py PROGRAM

Memory is read and nothing else: no function of the program is called, so that a core file shows as much as a process.
What stands behind a pointer to a class that its header does not show is read by its layout, since the library may have
been built without debug information. What cannot be a value of its class is shown as <invalid>, and what gdb knows by
name alone as <incomplete type>, which is its own word for it.
"""

import datetime

import gdb
import gdb.printing

INVALID = "<invalid>"
INCOMPLETE = "<incomplete type>"


class Invalid(Exception):
    """The memory does not hold a value of its class."""


# ---- memory ----


def array_at(type_, address):
    """What stands at an address, to be indexed."""
    return gdb.Value(address).cast(type_.pointer())


def words(address, count):
    """The first words of an object, each as a number: pointers, sizes."""
    word = gdb.lookup_type("void").pointer()
    return [int(array_at(word, address)[i]) for i in range(count)]


def held_pointer(value):
    """The address in a std::unique_ptr, or in anything else that begins with a pointer and bases without members."""
    type_ = value.type.strip_typedefs()
    if type_.code == gdb.TYPE_CODE_PTR:
        return int(value)
    if type_.code == gdb.TYPE_CODE_STRUCT:
        for field in type_.fields():
            if hasattr(field, "bitpos"):  # a static member has none
                found = held_pointer(value[field])
                if found is not None:
                    return found
    return None


# ---- text ----


MOST_CHARACTERS = 1 << 20  # more are not read; gdb shows 200 unless it is told otherwise


def characters(address, length, unit=1):
    """The bytes of a std::string's characters."""
    count = min(length, MOST_CHARACTERS)
    data = bytes(gdb.selected_inferior().read_memory(address, (count + 1) * unit))
    if count == length and data[-unit:] != bytes(unit):
        raise Invalid("no NUL behind the text")
    return data[:-unit]


def string_bytes(value):
    """The bytes of a std::string of libstdc++."""
    return characters(held_pointer(value), int(value["_M_string_length"]))


def quoted(data):
    """Bytes as gdb shows them as a text: in quotes, with escapes, up to its limit."""
    return gdb.Value(data + b"\0", gdb.lookup_type("char").array(len(data))).format_string()


# ---- time ----

TICKS_PER_MILLISECOND = 1000
TICKS_PER_DAY = 86400000 * TICKS_PER_MILLISECOND
FIRST_DAY = 2232400  # 1400-01-01
LAST_DAY = 5373850  # 10000-12-31
MIN_COUNT = FIRST_DAY * TICKS_PER_DAY
MAX_COUNT = 5373485 * TICKS_PER_DAY - TICKS_PER_MILLISECOND  # the end of 9999-12-31
OUTER_COUNT = 4 * 10**18  # where counts saturate

# From the number of a day to that of Python, whose calendar ends before the year 10000. Dates come again after 400
# years, so they are calculated 400 years earlier.
ORDINAL = -1721425 - 146097


def time_text(count):
    """The moment that a count of Time stands for."""
    if count % TICKS_PER_MILLISECOND != 0 or abs(count) > OUTER_COUNT:
        return INVALID
    day, ticks = divmod(count, TICKS_PER_DAY)
    if day < FIRST_DAY:
        return "<before the calendar>"
    if day > LAST_DAY:
        return "<after the calendar>"
    date = datetime.date.fromordinal(day + ORDINAL)
    second, millisecond = divmod(ticks // TICKS_PER_MILLISECOND, 1000)
    end = {MIN_COUNT: " (min)", MAX_COUNT: " (max)"}.get(count, "")
    return (f"{date.year + 400}-{date.month:02}-{date.day:02} "
            f"{second // 3600:02}:{second // 60 % 60:02}:{second % 60:02}.{millisecond:03}{end}")


def is_incomplete(value):
    """True for a class of which the debug information has the name alone."""
    return not value.type.strip_typedefs().fields()


def time_of(value):
    """The text of a Time."""
    return INCOMPLETE if is_incomplete(value) else time_text(int(value["count_"]))


# ---- one class each ----


class Printer:
    """Shows what text() gives. Memory that cannot be read, or cannot be right, is no reason for a trace."""

    def __init__(self, value):
        is_reference = value.type.strip_typedefs().code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF)
        self.value = value.referenced_value() if is_reference else value

    def to_string(self):
        if is_incomplete(self.value):
            return INCOMPLETE
        try:
            return self.text()
        except (gdb.error, Invalid, OverflowError, TypeError, ValueError):
            return INVALID


class TimePrinter(Printer):
    def text(self):
        return time_of(self.value)


class TimeOffsetPrinter(Printer):
    def text(self):
        years, months, days, hours, minutes, seconds, milliseconds = (
            int(self.value[name + "_"])
            for name in ("years", "months", "days", "hours", "minutes", "seconds", "milliseconds"))
        return (f"{years} years {months} months {days} days "
                f"{hours:02}:{minutes:02}:{seconds:02}.{milliseconds:03}")


class TimePeriodPrinter(Printer):
    def text(self):
        return f"{time_of(self.value['begin_'])}/{time_of(self.value['end_'])}"


class TimeStringPrinter(Printer):
    def text(self):
        return quoted(string_bytes(self.value["text_"]))


class LogMessageArgsPrinter(Printer):
    def text(self):
        severity = str(self.value["severity_"]).rpartition("::")[2]
        return f"{severity}: {quoted(string_bytes(self.value['message_']))}"


class TimeAveragerPrinter(Printer):
    """The number and the range of the samples; below, the samples by their moments."""

    # A block is the moment of its last sample and a std::vector, a sample its moment and its value.
    SAMPLE_SIZE = 16

    def blocks(self):
        """The address of the first sample and the number of samples, of each block."""
        moment = gdb.lookup_type("long long")
        begin, end = words(held_pointer(self.value["samples_"]), 2)
        size = moment.sizeof + 3 * gdb.lookup_type("void").pointer().sizeof
        if end < begin or (end - begin) % size != 0:
            raise Invalid("no vector")
        for block in range(begin, end, size):
            first, past = words(block + moment.sizeof, 2)
            last = past - self.SAMPLE_SIZE
            if last < first or (past - first) % self.SAMPLE_SIZE != 0:
                raise Invalid("no block")
            if array_at(moment, block)[0] != array_at(moment, last)[0]:
                raise Invalid("a block that does not end with its last sample")
            yield first, (past - first) // self.SAMPLE_SIZE

    def samples(self):
        """The moment and the value of each sample."""
        for first, count in self.blocks():
            for address in range(first, first + count * self.SAMPLE_SIZE, self.SAMPLE_SIZE):
                moment = int(array_at(gdb.lookup_type("long long"), address)[0])
                value = array_at(gdb.lookup_type("double"), address + 8)[0]
                yield time_text(MIN_COUNT + moment * TICKS_PER_MILLISECOND), value

    def text(self):
        count = sum(count for _, count in self.blocks())
        if count == 0:
            return "0 samples"
        return (f"{count} sample{'s' if count != 1 else ''}, "
                f"{time_of(self.value['firstTime_'])} to {time_of(self.value['lastTime_'])}")

    def children(self):
        if self.to_string() in (INCOMPLETE, INVALID):
            return
        for time, value in self.samples():
            yield f"[{time}]", "null" if float(value) != float(value) else value


def path_bytes(directory):
    """The path of a Directory. It stands in a std::string of its own, or on Windows in a std::wstring."""
    path = held_pointer(directory["path_"])
    if path == 0:
        return b""
    address, length = words(path, 2)
    if gdb.lookup_type("wchar_t").sizeof == 2:
        return characters(address, length, 2).decode("utf-16-le", "replace").encode()
    return characters(address, length)


class DirectoryPrinter(Printer):
    def text(self):
        return quoted(path_bytes(self.value))


class FileNamePrinter(Printer):
    def text(self):
        directory = path_bytes(self.value["directory_"])
        name = string_bytes(self.value["rootName_"])
        extension = string_bytes(self.value["extension_"])
        if extension:
            name += b"." + extension
        if directory and name and directory[-1:] not in (b"/", b"\\"):
            directory += b"\\" if b"\\" in directory else b"/"
        return quoted(directory + name)


def register(objfile):
    """Registers the printers for one object file, or for all with None."""
    collection = gdb.printing.RegexpCollectionPrettyPrinter("Zan.Orv.Core.Service")
    for printer in (TimePrinter, TimeOffsetPrinter, TimePeriodPrinter, TimeStringPrinter, TimeAveragerPrinter,
                    LogMessageArgsPrinter, DirectoryPrinter, FileNamePrinter):
        name = printer.__name__[:-len("Printer")]
        collection.add_printer(name, f"^Zan::Orv::Core::Service::{name}$", printer)
    gdb.printing.register_pretty_printer(objfile, collection, replace=True)


if __name__ == "__main__":
    register(None)
