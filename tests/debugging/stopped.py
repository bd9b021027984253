"""Runs the program up to its first call of Stop, and looks from there at main. Nothing of the program may be called."""

import gdb


def leave(code, reason):
    """Ends gdb with this exit code."""
    print(reason)
    if gdb.selected_inferior().pid:
        gdb.execute("kill")
    gdb.execute(f"quit {code}")


def finish(failures):
    """Says what failed, and ends gdb with the number."""
    leave(len(failures), "\n".join(failures) or "As expected.")


def shown(expression):
    """What print says of an expression, be it an error."""
    try:
        return gdb.execute(f"print {expression}", to_string=True).partition(" = ")[2].rstrip("\n")
    except gdb.error as error:
        return str(error)


gdb.execute("set width 0")
gdb.execute("set may-call-functions off")
gdb.execute("set startup-with-shell off")
gdb.Breakpoint("Stop")
try:
    gdb.execute("run")
except gdb.error as error:
    leave(77, f"gdb can not trace here: {error}")
gdb.execute("up", to_string=True)
