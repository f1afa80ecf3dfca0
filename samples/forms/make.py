#!/usr/bin/env python3
"""Writes the other files of this folder anew: one message (message.ndef) as tools write it and as it lies on tags.

The serial numbers, keys and passwords are made up. "xxd" and "hexdump" print the files that are named after them.
"""
import json
import pathlib
import subprocess

here = pathlib.Path(__file__).parent
uri = b"\x04example.com/a?id=0123456789abcdefghijklmnopqrstuvwxyz"
message = bytes([0xD1, 1, len(uri)]) + b"U" + uri
block = bytes([3, len(message)]) + message + b"\xfe"  # an NDEF message TLV and a terminator


def padded(data, length):
    return data + bytes(length - len(data))


def cut(data, size):
    return [data[at : at + size] for at in range(0, len(data), size)]


def upper(data, separator=" "):
    return data.hex(separator).upper() if separator else data.hex().upper()


# Type 1: serial number, capability container, data area, reserved and lock bytes.
type1 = padded(bytes.fromhex("0102030405060700 E1100E00") + block, 104) + bytes.fromhex("55AA000000000000") + bytes(8)

# Type 2, an NTAG213: serial number and check bytes, lock bits, capability container, a lock control TLV, the message;
# dynamic lock bits, configuration and password.
uid = bytes.fromhex("04A1B2C3D4E5F6")
checks = [0x88 ^ uid[0] ^ uid[1] ^ uid[2], uid[3] ^ uid[4] ^ uid[5] ^ uid[6]]
type2 = uid[:3] + bytes([checks[0]]) + uid[3:] + bytes([checks[1], 0x48, 0, 0]) + bytes.fromhex("E1101200 0103A01044")
type2 = padded(type2 + block, 160) + bytes.fromhex("000000BD 040000FF 00050000 00000000 00000000")

# Type 3: the attribute information block with its sum, 13 blocks of data.
attributes = bytes([0x10, 4, 1, 0, 13, 0, 0, 0, 0, 0, 1]) + len(message).to_bytes(3, "big")
type3 = padded(attributes + sum(attributes).to_bytes(2, "big") + message, 14 * 16)

type4 = len(message).to_bytes(2, "big") + message
type5 = padded(bytes.fromhex("E1400E01") + block, 4 + 14 * 8)


def checksum(directory):
    value = 0xC7
    for byte in directory:
        value ^= byte
        for _ in range(8):
            value = (value << 1 ^ 0x1D if value & 0x80 else value << 1) & 0xFF
    return bytes([value])


# MIFARE Classic 1K: the application directory in sector 0 gives all others to NDEF.
directory = b"\x01" + b"\x03\xe1" * 15
classic = bytes.fromhex("11223344 44080400 6263646566676869") + checksum(directory) + directory
classic += bytes.fromhex("A0A1A2A3A4A5 787788C1 FFFFFFFFFFFF")
for data in cut(padded(block, 15 * 48), 48):
    classic += data + bytes.fromhex("D3F7D3F7D3F7 7F078840 FFFFFFFFFFFF")


def flipper(device, *lines):
    return "\n".join(("Filetype: Flipper NFC device", "Version: 4", f"Device type: {device}") + lines) + "\n"


def numbered(name, pieces):
    return "\n".join(f"{name} {number}: {piece}" for number, piece in enumerate(pieces))


def without_keys(number, data):
    unknown = " ".join(["??"] * 6)
    return f"{unknown} {upper(data[6:10])} {unknown}" if number % 4 == 3 else upper(data)


pages = [upper(page) for page in cut(type2, 4)]
blocks = [without_keys(number, data) for number, data in enumerate(cut(classic, 16))]
proxmark = {
    "Created": "proxmark3",
    "FileType": "mfc v2",
    "Card": {"UID": "11223344", "ATQA": "0400", "SAK": "08"},
    "blocks": {str(number): upper(data, "") for number, data in enumerate(cut(classic, 16))},
}

files = {
    "message.ndef": message,
    "type-1-tag.bin": type1,
    "type-2-tag.bin": type2,
    "type-3-tag.bin": type3,
    "type-4-file.bin": type4,
    "type-5-tag.bin": type5,
    "data-area.bin": padded(block, 144),
    "classic.bin": classic,
    "classic-from-block-4.bin": classic[64:],
    "assembler.txt": "".join(f"{byte:02X}h " for byte in message),
    "utf-16.txt": upper(message).encode("utf-16"),
    "flipper-ntag213.nfc": flipper(
        "NTAG/Ultralight", f"UID: {upper(uid)}", "ATQA: 00 44", "SAK: 00", "NTAG/Ultralight type: NTAG213",
        "Pages total: 45", "Pages read: 45", numbered("Page", pages)),
    "flipper-classic.nfc": flipper(
        "Mifare Classic", "UID: 11 22 33 44", "ATQA: 00 04", "SAK: 08", "Mifare Classic type: 1K",
        "Data format version: 2", numbered("Block", blocks)),
    "flipper-iso15693.nfc": flipper(
        "ISO15693-3", "UID: E0 04 01 50 12 34 56 78", "Block Count: 29", "Block Size: 04",
        f"Data Content: {upper(type5)}"),
    "proxmark-classic.json": json.dumps(proxmark, indent=2) + "\n",
    "proxmark-classic.eml": "".join(upper(data, "") + "\n" for data in cut(classic, 16)),
}
for name, data in files.items():
    (here / name).write_bytes(data.encode() if isinstance(data, str) else data)

for name, command in {
    "xxd.txt": "xxd message.ndef",
    "xxd-type-2.txt": "xxd -a type-2-tag.bin",
    "xxd-array.h": "xxd -i message.ndef",
    "hexdump.txt": "hexdump -C message.ndef",
}.items():
    (here / name).write_bytes(subprocess.run(command.split(), cwd=here, capture_output=True, check=True).stdout)
