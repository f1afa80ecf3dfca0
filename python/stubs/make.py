#!/usr/bin/env python3
"""Prints the stub of the extension module: what core.pyi beside it says by hand, and the classes of values and numbers."""

import pathlib
import re

import nfc_ndef
from nfc_ndef import _core
from nfc_ndef._open_enum import OpenEnum, OpenFlag


def taken(annotation, enums):
    """What a constructor takes for a member of this type."""
    one, optional = re.subn(r" \| None$", "", annotation)
    several = re.fullmatch(r"tuple\[(.*), \.\.\.\]", one)
    if several:
        one = f"Iterable[{taken(several[1], enums)}]"
    elif one == "Record":
        one = "Record | Content"
    elif one in enums:
        one = "int"
    return one + (" | None" if optional else "")


def class_of(name, title, fields, positional, enums):
    lines = [f"@final", f"class {name}:", f'    """{title}."""', ""]
    if positional is not None:
        lines.append(f'    __match_args__ = ("{fields[positional][0]}",)')
    for field, annotation, _ in fields:
        lines += ["    @property", f"    def {field}(self) -> {annotation}: ..."]
    arguments = [f"{field}: {taken(annotation, enums)}" + ("" if initial is ... else f" = {initial!r}")
                 for field, annotation, initial in fields]
    changed = [f"{field}: {taken(annotation, enums)} = ..." for field, annotation, _ in fields]
    if positional is None:
        arguments.insert(0, "*")
    else:
        arguments.insert(0, arguments.pop(positional))
        if len(arguments) > 1:
            arguments.insert(1, "*")
    lines += [f"    def __new__(cls, {', '.join(arguments)}) -> {name}: ..."]
    for method in ("replace", "__replace__"):
        lines += [f"    def {method}(self, *, {', '.join(changed)}) -> {name}: ..."]
    return "\n".join(lines) + "\n"


def main():
    enums = {name: value for name, value in vars(nfc_ndef).items()
             if isinstance(value, type) and issubclass(value, (OpenEnum, OpenFlag))}
    classes = _core._describe_classes()
    print("# Written by python/stubs/make.py.")
    print((pathlib.Path(__file__).parent / "core.pyi").read_text().rstrip())
    for name, cls in enums.items():
        print(f"\nclass {name}({cls.__base__.__name__}):")
        for member in cls:
            print(f"    {member.name} = {int(member)}")
    for name, title, fields, positional in classes:
        print("\n" + class_of(name, title, fields, positional, enums).rstrip())
    print("\nContent: TypeAlias = " + " | ".join(_core._content_names()))


if __name__ == "__main__":
    main()
