# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: recorder.py FILE [ARGUMENT...]

Records in FILE how it was started. With the argument --stay it then runs until it is killed.
"""

import json
import os
import signal
import sys

path, arguments = sys.argv[1], sys.argv[2:]
record = {
    "arguments": arguments,
    "environment": dict(os.environ),
    "folder": os.getcwd(),
    "pid": os.getpid(),
    "session": os.getsid(0),
    "stays": "--stay" in arguments,
}
with open(path + ".part", "w") as file:
    json.dump(record, file)
os.rename(path + ".part", path)
if record["stays"]:
    signal.pause()
