"""Finds emojis by the words of their names, in the data of Unicode (Debian: unicode-data)."""
import json
import re
import sys

DATA = "/usr/share/unicode/emoji/emoji-test.txt"
# 1F600 ; fully-qualified # 😀 E1.0 grinning face
LINE = re.compile(r"[^;#]+; fully-qualified +# (\S+) E\S+ (.+)")
ROWS = 50

words = sys.argv[1].lower().split()
items = []
with open(DATA, encoding="utf-8") as file:
    for match in filter(None, map(LINE.match, file)):
        emoji, name = match.groups()
        if len(items) < ROWS and all(word in name.lower() for word in words):
            items.append({"title": f"{emoji}  {name}", "arg": emoji, "autocomplete": name})
print(json.dumps({"items": items}))
