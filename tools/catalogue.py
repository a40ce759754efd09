"""What the catalogue's source says of the special processes, for the scripts that show and measure them."""
import os
import re

CATALOGUE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..",
                         "src/catalogue/modSpecialProcessCatalogue")
TEXT = r'((?:"(?:[^"\\]|\\.)*"\s*)+|nullptr)'
ROW = re.compile(r'\{(SP_\w+),\s*"SP_\w+",\s*' + TEXT + r",\s*" + TEXT)
FIELD = re.compile(r"\{FieldType::(\w+), InputSlot::\w+, \d, " + TEXT + r",\s*" + TEXT)


def plain(literals):
    """The text of C++ literals that follow each other; "" for nullptr."""
    return "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', literals))


def processes():
    """The rows (number, label, description, parameters as (letter, label, first-start value)), in their order."""
    with open(CATALOGUE + ".h", encoding="utf-8") as file:
        numbers = dict(re.findall(r"(SP_\w+) = (\d+)", file.read()))
    with open(CATALOGUE + ".cpp", encoding="utf-8") as file:
        source = file.read()
    heads = list(ROW.finditer(source))
    for index, head in enumerate(heads):
        end = heads[index + 1].start() if index + 1 < len(heads) else len(source)
        parameters = [("abcde"[position], plain(field.group(3)) or "Background colour", plain(field.group(2)))
                      for position, field in enumerate(FIELD.finditer(source, head.end(), end))]
        yield int(numbers[head.group(1)]), plain(head.group(2)), plain(head.group(3)), parameters


def switches(values):
    """The command line's switches for a process's own values, in their order; empty ones are left out."""
    return " ".join(f"/{'abcde'[position]}{value}" for position, value in enumerate(values) if value)
