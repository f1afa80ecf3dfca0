#!/usr/bin/env python3
"""Writes the links of a table onto a stack of tags, one after another: links_from_csv.py links.csv

Each row of the table is a link and, if there is one, a title and its language.
"""

import csv
import sys

import nfc_ndef
from nfc_ndef import Message, SmartPoster, Text, Uri


def message_of(row: list[str]) -> Message:
    link, *rest = row
    if not rest:
        return Message([Uri(link)])
    title, language = rest[0], rest[1] if len(rest) > 1 else "en"
    return Message([SmartPoster(Uri(link), titles=[Text(title, language=language)])])


def main() -> None:
    with open(sys.argv[1], newline="", encoding="utf-8") as table:
        messages = [message_of(row) for row in csv.reader(table) if row]
    if sys.argv[2:] == ["--dry-run"]:
        for message in messages:
            print(f"{len(bytes(message))} bytes: {message}")
        return
    tags = nfc_ndef.tags()
    for message in messages:
        print(f"Put a tag on the reader for: {message}")
        for tag in tags:
            try:
                if not tag.is_formatted:
                    tag.format()
                tag.write(message)
                break
            except OSError as error:
                print(f"{error}; another one, please")


if __name__ == "__main__":
    main()
