"""Messages and records: sequences, buffers, refusals, threads, and running out of memory."""

import collections.abc
import copy
import gc
import pickle
import sys
import threading

import pytest

import nfc_ndef
from conftest import messages, valid_messages
from nfc_ndef import Message, Record, Text, Uri

HELLO = Text("Hello", language="en")
THREE = Message([HELLO, Record(Uri("https://example.com"), id="1"), Record(type="text/vcard", payload=b"BEGIN")])
CONTROL = nfc_ndef.GenericControl(config=0, target_record=Record(type="t"), action_flag=0)


def test_a_message_is_a_sequence():
    assert isinstance(THREE, collections.abc.Sequence) and len(THREE) == 3
    assert THREE[-1] == THREE[2] and THREE[0] is THREE[0]
    assert THREE[::2] == (THREE[0], THREE[2]) and THREE[5:] == ()
    assert list(reversed(THREE))[0].payload == b"BEGIN"
    assert THREE.index(THREE[1]) == 1 and THREE.count(Record(HELLO)) == 1 and Record(HELLO) in THREE
    first, *rest = THREE
    assert first.content == HELLO and len(rest) == 2
    iterator = iter(THREE)
    assert [iterator.__length_hint__(), len(list(iterator)), iterator.__length_hint__()] == [3, 3, 0]
    assert list(iterator) == [] and list(type(iterator)()) == []
    for outside in (3, -4, 1 << 70):
        with pytest.raises(IndexError):
            THREE[outside]
    with pytest.raises(TypeError):
        THREE["0"]


def test_messages_are_what_their_records_are():
    for message in valid_messages():
        again = nfc_ndef.parse(message.encode())
        assert again == message and hash(again) == hash(message) and not again != message
        assert pickle.loads(pickle.dumps(message)) == message == copy.deepcopy(message)
        assert [pickle.loads(pickle.dumps(record)) for record in message] == list(message)
        assert len(str(message).splitlines()) >= len(message)
        try:
            assert nfc_ndef.from_json(message.to_json()) == message
        except nfc_ndef.JsonError as error:
            assert error.path
    assert THREE != THREE[:2] and THREE != Message(THREE[:2])


def test_bytes_are_those_that_were_read():
    data = bytes.fromhex("B1010154024600000000056E48690A21")
    message = nfc_ndef.parse(data)
    assert bytes(message) is data
    assert message[0].payload == bytes.fromhex("02" "6E48690A21") and message.encode() != data


def test_bytes_that_may_change_later_are_copied():
    data = bytes(THREE)
    lent = bytearray(data)
    message = nfc_ndef.parse(lent)
    lent[:] = bytes(len(lent))
    lent.append(0)  # which a buffer that is still lent refuses
    assert message == THREE and bytes(message) == data
    around = memoryview(b"??" + data + b"!")[2:-1]
    assert nfc_ndef.parse(around) == THREE and bytes(nfc_ndef.parse(around)) == data
    assert nfc_ndef.parse(memoryview(bytearray(data)).toreadonly()) == THREE
    for other in ("text", 5, None, memoryview(bytes(64))[::2]):
        with pytest.raises((TypeError, BufferError)):
            nfc_ndef.parse(other)


@pytest.mark.parametrize("data, record, offset", [("", 0, 0), ("D1010554", 0, 4), ("D0000000", 1, 3), ("91010055", 0, 0)])
def test_refusals_say_what_and_where(data, record, offset):
    with pytest.raises(nfc_ndef.Refused) as refused:
        nfc_ndef.parse(bytes.fromhex(data))
    error = refused.value
    assert isinstance(error, ValueError) and (error.record, error.offset) == (record, offset)
    assert str(error) == f"{error.reason} (record {record}, offset {offset})"


def test_records_of_any_type():
    formats = nfc_ndef.TypeNameFormat
    for given, format, name in (("text/vcard", formats.MEDIA, "text/vcard"),
                                ("example.com:x", formats.EXTERNAL, "example.com:x"),
                                ("urn:nfc:ext:example.com:x", formats.EXTERNAL, "example.com:x"),
                                ("urn:nfc:wkt:T", formats.WELL_KNOWN, "T"),
                                ("https://example.com/x", formats.ABSOLUTE_URI, "https://example.com/x"),
                                ("T", formats.WELL_KNOWN, "T"), (b"\xff", formats.WELL_KNOWN, "\udcff")):
        record = Record(type=given, payload=b"x")
        assert (record.format, record.type) == (format, name)
        assert nfc_ndef.parse(nfc_ndef.encode(record))[0] == record == eval(repr(record), vars(nfc_ndef))
    assert Record().format == formats.EMPTY and Record(payload=b"x").format == formats.UNKNOWN
    assert Record(THREE[1], id="2").content == THREE[1].content and Record(HELLO, id=b"\xff").id == "\udcff"
    for error, given in ((ValueError, {"type": "x" * 256}), (ValueError, {"type": "T", "id": "x" * 256}),
                         (ValueError, {"format": 8}), (ValueError, {"format": -1}), (ValueError, {"id": "x"}),
                         (ValueError, {"format": 5, "type": "x"}), (ValueError, {"format": 0, "payload": b"x"}),
                         (TypeError, {"payload": "x"}), (TypeError, {"payload": 5}), (TypeError, {"format": "media"}),
                         (TypeError, {"content": HELLO, "type": "T"}), (TypeError, {"content": 5}),
                         (TypeError, {"name": "T"}), (TypeError, {"id": 1})):
        with pytest.raises(error):
            Record(**given)


def test_what_cannot_be_a_message():
    for error, records in ((ValueError, []), (ValueError, [Record(type="T")] * 255), (TypeError, [5]), (TypeError, 5),
                           (TypeError, b"bytes")):
        with pytest.raises(error):
            nfc_ndef.encode(records)
    assert nfc_ndef.encode([CONTROL, CONTROL]).count(b"\xd1\x02") == 2  # a sequence of messages
    deep = nfc_ndef.SmartPoster(Uri("a:b"))
    for _ in range(20):
        deep = nfc_ndef.SmartPoster(Uri("a:b"), other_records=[deep])
    records, depth = nfc_ndef.parse(nfc_ndef.encode(deep)), 0
    while records and records[-1].content:
        records, depth = records[-1].content.other_records, depth + 1
    assert depth == 8  # records nested deeper are not looked into


def test_threads_share_a_message():
    for data in (bytes(Message([HELLO] * 254)), bytes(Message([Record(type="a/b", payload=bytes(1 << 20))]))):
        message = nfc_ndef.parse(data)
        found, start = [], threading.Barrier(8)

        def read():
            start.wait()
            found.append([(record.content, len(record.payload)) for record in nfc_ndef.parse(data)] ==
                         [(record.content, len(record.payload)) for record in message] and
                         nfc_ndef.encode(message) == data)

        threads = [threading.Thread(target=read) for _ in range(8)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        assert found == [True] * 8


def everything(data):
    message = nfc_ndef.parse(data)
    for record in message:
        record.type, record.id, record.payload, record.content, record.refused
    made = [Record(Uri("https://example.com"), id="1"), HELLO.replace(language="de")]
    wifi = nfc_ndef.WifiCredential(ssid="a", authentication_type=1, encryption_type=1)
    repr(message), hash(message), str(message)
    return nfc_ndef.encode([*made, nfc_ndef.SmartPoster(made[0], titles=[HELLO]), nfc_ndef.Wifi(credentials=[wifi])])


def test_no_memory_is_a_memory_error():
    testing = pytest.importorskip("_testcapi")
    data = bytes(Message([HELLO, nfc_ndef.SmartPoster(Uri("https://example.com"), titles=[HELLO])]))
    expected, refused = everything(data), 0
    for allocations in range(1, 2000):
        got = None
        testing.set_nomemory(allocations, allocations + 1)
        try:
            got = everything(data)
        except MemoryError:
            refused += 1
        finally:
            testing.remove_mem_hooks()
        if got is not None:
            assert got == expected
    assert refused > 50


def test_nothing_is_left_behind():
    def once():
        for data in messages():
            try:
                message = nfc_ndef.parse(data)
            except nfc_ndef.Refused:
                continue
            repr(message), [record.refused for record in message], message.to_dict()
            for record in message:
                try:
                    Record(record.content)
                except (TypeError, ValueError):
                    pass

    counts = []
    for _ in range(4):
        once()
        gc.collect()
        counts.append(sys.getallocatedblocks())
    assert counts[3] - counts[1] < 100, counts
