#!/usr/bin/env python3
"""Takes the moment of its making out of a type library, in which widl writes it twice, as a text and as a number:
what is built from the same sources is to be the same, byte for byte.

usage: undate.py FILE.tlb
"""

import re
import sys
import time

with open(sys.argv[1], "rb") as file:
    content = file.read()
found = re.search(rb"Created by WIDL version \S+ at (.{24})", content)
if not found:
    sys.exit(f"{sys.argv[1]}: no moment found")
moment = int(time.mktime(time.strptime(found[1].decode("ascii"))))
number = moment.to_bytes(4, "little")
if number not in content:
    sys.exit(f"{sys.argv[1]}: the moment stands there as a text only")
content = content.replace(found[1], b"Thu Jan  1 00:00:00 1970").replace(number, bytes(4))
with open(sys.argv[1], "wb") as file:
    file.write(content)
