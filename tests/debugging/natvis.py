"""Holds the views for Visual Studio against the classes.

Every name in an expression is known, and the views of the time classes give what the printers do. gdb evaluates the
expressions, which are C++.
"""

import datetime
import os
import re
import xml.etree.ElementTree

import gdb

# How Visual C++ holds what stands in a std::unique_ptr or a std::vector.
FOREIGN = {"_Mypair", "_Myval2", "_Myfirst", "_Mylast"}
INNER = ("SampleSeries", "SampleSeries::Block", "Directory::Path")
NAMESPACE = "Zan::Orv::Core::Service::"
failures = []


def fields(type_):
    """The names of a class's members."""
    return {field.name for field in type_.strip_typedefs().fields() if not field.is_base_class}


reachable = set.union(FOREIGN, fields(gdb.lookup_type("boost::filesystem::path")),
                      *(fields(gdb.lookup_type(NAMESPACE + name)) for name in INNER))


class View:
    """One Type element."""

    def __init__(self, element):
        def of(name):
            return element.iter("{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}" + name)

        self.name = element.get("Name")
        self.fields = fields(gdb.lookup_type(self.name))
        self.intrinsics = {intrinsic.get("Name"): intrinsic.get("Expression") for intrinsic in of("Intrinsic")}
        self.variables = {variable.get("Name") for variable in of("Variable")}
        self.texts = [(text.get("Condition"), text.text) for text in of("DisplayString")]
        self.expressions = list(self.intrinsics.values())
        for part in element.iter():
            self.expressions += [part.get(key) for key in ("Condition", "InitialValue") if part.get(key)]
        self.expressions += [part.text for name in ("Item", "Exec") for part in of(name)]
        self.expressions += [hole for _, text in self.texts for hole in re.findall(r"\{(.*?)(?:,\w+)?\}", text)]

    def check_names(self):
        for expression in self.expressions:
            for before, name, call in re.findall(r"(->|\.|)\b([A-Za-z_]\w*)\b(\(\))?", expression):
                known = reachable if before else self.intrinsics if call else self.fields | self.variables
                if name not in known:
                    failures.append(f"{self.name}: {name} is not known in {expression}")

    def evaluate(self, expression, variable):
        """The value of an expression for a variable of the program."""
        def replaced(match):
            name, call = match.groups()
            if call:
                return f"({spelled(self.intrinsics[name])})"
            return f"({variable}).{name}" if name in self.fields else name

        def spelled(text):
            return re.sub(r"\b([A-Za-z_]\w*)\b(\(\))?", replaced, text)

        return gdb.parse_and_eval(spelled(expression))

    def shown(self, variable):
        """What the first display string whose condition holds says of a variable."""
        text = next(text for condition, text in self.texts if not condition or self.evaluate(condition, variable))
        return re.sub(r"\{(.*?)(?:,\w+)?\}", lambda hole: str(self.evaluate(hole.group(1), variable)), text)


views = {}
for element in xml.etree.ElementTree.parse(os.environ["ORV_NATVIS"]).getroot():
    view = View(element)
    view.check_names()
    views[view.name.removeprefix(NAMESPACE)] = view

times = ["leap", "dates[0]", "dates[1]", "dates[2]", "unset", "end", "year10000", "early", "late",
         f"*({NAMESPACE}Time*)&bytes"]
for kind, variables in {"Time": times, "TimeOffset": ["offset"], "TimePeriod": ["period"]}.items():
    for variable in variables:
        view, printer = views[kind].shown(variable), shown(variable)
        if view != printer:
            failures.append(f"{variable}: the view shows {view}, the printer {printer}")

# Samples have no printer of their own. Each stands for a day; those at the ends of months are looked at.
block = f"(*({NAMESPACE}SampleSeries**)&many.samples_)->blocks_._M_impl._M_start"
for index in range(430):
    day, next_day = (datetime.date(2000, 1, 2) + datetime.timedelta(index + more) for more in (0, 1))
    if 1 in (day.day, next_day.day):
        sample = views["SampleSeries::Sample"].shown(f"{block}->samples._M_impl._M_start[{index}]")
        if sample != f"{day} 00:00:00.000: {index + 1}":
            failures.append(f"The sample of {day} shows {sample}")

finish(failures)
