"""Compares the messages that the source prints with those that the manual page explains: messages.py PAGE SOURCE..."""
import pathlib
import re
import sys

LITERAL = r'"(?:[^"\\]|\\.)*"'


def printed(arguments):
    """What a call prints, with "%" for each value that is not in the source."""
    tokens = re.findall(LITERAL + r'|[^,"]+', re.sub(r'"\s+"', "", arguments))
    form, *values = (token.strip() for token in tokens if token.strip())
    values = iter(value[1:-1] if value.startswith('"') else "%" for value in values)
    return re.sub("%[sd]", lambda _: next(values), form[1:-1]).removesuffix(r"\n")


def explained(item):
    """The same of the page, whose placeholders are the words behind Ar."""
    parts = re.findall(r'Ar \w+|"[^"]*"|!$', item)
    return "".join("%" if part.startswith("Ar ") else part.strip('"') for part in parts)


page, *sources = (pathlib.Path(name).read_text() for name in sys.argv[1:])
source = "".join(sources)
others = set(re.findall(r"\b(?:fputs|f?putc|putchar|fwrite|[fdv]+printf|perror|cout|cerr|clog)\b", source))
in_source = set(map(printed, re.findall(r"\b(?:printf|puts)\((.*?)\);", source, re.DOTALL)))
in_page = set(map(explained, re.findall(r"^\.It ((?:Li|Ar) .*)", page, re.MULTILINE)))
differences = [*(f"not in the page: {text}" for text in in_source - in_page),
               *(f"not in the source: {text}" for text in in_page - in_source),
               *(f"not compared: what {name} prints" for name in others)]
sys.exit("\n".join(differences) or 0)
