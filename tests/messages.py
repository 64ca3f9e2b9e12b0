"""Compares the messages that the source prints with those that the manual page explains: messages.py PAGE SOURCE..."""
import pathlib
import re
import sys


def explained(item):
    """The text of an item of the page, with "%" for a placeholder, the word behind Ar."""
    parts = re.findall(r'Ar \w+|"[^"]*"|!$', item)
    return "".join("%" if part.startswith("Ar ") else part.strip('"') for part in parts)


page, *sources = (pathlib.Path(name).read_text() for name in sys.argv[1:])
calls = re.findall(r'\b([fdv]*printf|\w*put[cs]\w*|fwrite|perror|cout|cerr|clog)\b(?:\("(.*?)(?:\\n)?"[,)])?',
                   "".join(sources))
in_source = {re.sub("%[sd]", "%", text) or f"(whatever {function} prints)" for function, text in calls}
in_page = set(map(explained, re.findall(r"^\.It ((?:Li|Ar) .*)", page, re.MULTILINE)))
sys.exit("\n".join(f"only in source or page: {text}" for text in in_source ^ in_page) or 0)
