"""gdb runs this when it loads the library: its name, with -gdb.py behind it, stands below share/gdb/auto-load."""

import os
import runpy
import sys

import gdb

# Not __file__, which keeps the name of the script that a user began with when this one runs inside of it.
share = sys._getframe().f_code.co_filename.partition("/gdb/auto-load/")[0]

# Run and not imported: two versions of the library in one session have their own printers.
runpy.run_path(os.path.join(share, "ZanOrvCoreService", "zan_orv_core_service.py"))["register"](gdb.current_objfile())
