#!/usr/bin/env python3
"""Reads random messages, most of them near valid ones, and sees that memory does not grow: random_messages.py COUNT"""

import gc
import random
import resource
import sys

import nfc_ndef
from conftest import messages


def changed(data, chance):
    data = bytearray(data)
    for _ in range(chance.randrange(1, 4)):
        place = chance.randrange(len(data) + 1)
        what = chance.randrange(4)
        if what == 0:
            data[place:place + 1] = bytes([chance.randrange(256)])
        elif what == 1:
            data[place:place] = chance.randbytes(chance.randrange(4))
        elif what == 2:
            del data[place:place + chance.randrange(4)]
        elif place < len(data):
            data[place] ^= 1 << chance.randrange(8)
    return bytes(data)


def visit(record):
    record.type, record.id, record.payload, record.refused
    content = record.content
    if content is not None:
        try:
            assert nfc_ndef.Record(content).content == content
        except ValueError:
            pass
        repr(record)


def main():
    count = int(sys.argv[1])
    chance = random.Random(count)
    valid, taken, memory, every = [data for data in messages() if data], 0, [], max(1, count // 10)
    for i in range(count):
        try:
            message = nfc_ndef.parse(changed(chance.choice(valid), chance))
        except nfc_ndef.Refused:
            pass
        else:
            taken += 1
            for record in message:
                visit(record)
        if i % every == 0:
            gc.collect()
            memory.append((sys.getallocatedblocks(), resource.getrusage(resource.RUSAGE_SELF).ru_maxrss))
    (blocks, _), (blocks_later, _) = memory[1], memory[-1]
    (_, kib), (_, kib_later) = memory[len(memory) // 2], memory[-1]
    print(f"{count} random messages, {taken} valid; blocks {blocks} and {blocks_later}, {kib} and {kib_later} KiB")
    assert taken > count // 20
    assert blocks_later - blocks < 200, memory
    assert kib_later - kib < 3000, memory


if __name__ == "__main__":
    main()
