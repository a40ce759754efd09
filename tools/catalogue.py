"""Parses the catalogue of special processes for the gallery and benchmark scripts."""
import os
import re

CATALOGUE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..",
                         "src/catalogue/modSpecialProcessCatalogue")
TEXT = r'((?:"(?:[^"\\]|\\.)*"\s*)+|nullptr)'
ROW = re.compile(r'\{(SP_\w+|\d+),\s*"SP_\w+",\s*' + TEXT + r",\s*" + TEXT)
FIELD = re.compile(r"\{FieldType::(\w+), InputSlot::\w+, \d, " + TEXT + r",\s*" + TEXT)


def plain(literals):
    """Joins adjacent C++ string literals; nullptr gives ""."""
    return "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', literals))


def processes():
    """Yields (number, label, description, [(letter, label, default), ...]) in catalogue order."""
    with open(CATALOGUE + ".h", encoding="utf-8") as file:
        numbers = dict(re.findall(r"(SP_\w+) = (\d+)", file.read()))
    with open(CATALOGUE + ".cpp", encoding="utf-8") as file:
        source = file.read()
    heads = list(ROW.finditer(source))
    for index, head in enumerate(heads):
        end = heads[index + 1].start() if index + 1 < len(heads) else len(source)
        parameters = [("abcde"[position], plain(field.group(3)) or "Background colour", plain(field.group(2)))
                      for position, field in enumerate(FIELD.finditer(source, head.end(), end))]
        yield int(numbers.get(head.group(1), head.group(1))), plain(head.group(2)), plain(head.group(3)), parameters


def switches(values):
    """Formats a process's parameters as command line switches, leaving out empty values."""
    return " ".join(f"/{'abcde'[position]}{value}" for position, value in enumerate(values) if value)
