"""The rows of tests/data as bytes."""

import json
import pathlib
import re

import nfc_ndef

DATA = pathlib.Path(__file__).parent.parent / "data"


def bytes_of(row):
    """Of hex digits, with text between quotes: "D1 01 05 'T' 02 'en'"."""
    parts = re.findall(r"'([^']*)'|([0-9A-Fa-f]{2})", row)
    return b"".join(text.encode() if text else bytes.fromhex(pair) for text, pair in parts)


def messages():
    """Every message of the tables, valid or not."""
    for name in ("vectors.json", "record-types.json", "json-forms.json"):
        for row in json.loads((DATA / name).read_text(encoding="utf-8")):
            if "hex" in row:
                yield bytes_of(row["hex"])
    yield bytes(nfc_ndef.from_json((DATA / "every-kind.json").read_text(encoding="utf-8")))


def valid_messages():
    for data in messages():
        try:
            yield nfc_ndef.parse(data)
        except nfc_ndef.Refused:
            pass
