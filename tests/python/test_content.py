"""What payloads read as: each member against the JSON that the library writes of the same record."""

import copy
import enum
import pickle
import re

import pytest

import nfc_ndef
from conftest import messages, valid_messages

FIELDS = {getattr(nfc_ndef, name): [field for field, *_ in fields]
          for name, _, fields, _ in nfc_ndef._core._describe_classes()}
MEMBERS = {"language": "language_code"}  # which are called otherwise in JSON


def hex_of(text):
    """Of the bytes that a text stands for, those that are not UTF-8 being lone surrogates."""
    return text.encode("utf-8", "surrogateescape" if re.search("[\udc80-\udcff]", text) else "strict").hex().upper()


def constant(name):
    return re.sub(r"^(?=\d)", "_", re.sub(r"\W", "_", name).upper())


def same(value, found):
    if isinstance(value, enum.Flag) and isinstance(found, list):
        return value == sum(type(value)[constant(name)] for name in found)
    if isinstance(value, enum.Enum):
        return value.name == constant(found) if isinstance(found, str) else value == found
    if isinstance(value, tuple):
        return len(value) == len(found) and all(map(same, value, found))
    if isinstance(value, nfc_ndef.Record):
        return agrees(value.content, found) if value.content else found["kind"] == "generic"
    if isinstance(value, bytes):
        return value.hex().upper() == found
    return agrees(value, found) if type(value) in FIELDS else type(value) is type(found) and value == found


def agrees(content, json):
    for field in FIELDS[type(content)]:
        value, member = getattr(content, field), MEMBERS.get(field, field)
        if member in json:
            assert same(value, json[member]), (field, value, json)
        elif member + "_hex" in json:
            found = json[member + "_hex"]
            texts, bytes_found = (value, found) if isinstance(found, list) else ([value], [found])
            every_byte = [re.fullmatch("[\udc00-\udcff]*", text) for text in texts]
            got = [bytes(ord(c) - 0xDC00 for c in text).hex().upper() if all_escaped else hex_of(text)
                   for text, all_escaped in zip(texts, every_byte)]
            assert got == list(bytes_found), (field, value, json)
        else:
            assert value is None or not value, (field, value, json)
    return True


def records_with_json():
    for message in valid_messages():
        yield from zip(message, message.to_dict()["records"])


def test_members_are_those_of_json():
    seen = set()
    for record, json in records_with_json():
        assert (record.content is None) == (json["kind"] == "generic")
        if record.content is not None:
            assert agrees(record.content, json)
            seen.add(type(record.content))
    kinds = {getattr(nfc_ndef, name) for name in nfc_ndef._core._content_names()}
    assert seen == kinds


def test_what_is_read_can_be_made_again():
    made = 0
    for record, json in records_with_json():
        content = record.content
        if content is None:
            assert eval(repr(record), vars(nfc_ndef)) == record
            continue
        again = pickle.loads(pickle.dumps(content))
        assert again == content == copy.copy(content) and hash(again) == hash(content)
        try:
            built = nfc_ndef.Record(content, id=record.id)
        except ValueError:
            assert "payload" in json or "other_records" in json, json  # which readers take and nobody makes
            continue
        made += 1
        assert eval(repr(content), vars(nfc_ndef)) == content
        assert content.replace() == content
        if "payload" not in json and "type" not in json:
            assert built == record
    assert made > 200


def test_refused_payloads_say_why():
    refused = [record.refused for message in valid_messages() for record in message if record.refused]
    assert len(refused) > 50
    assert all(isinstance(one, nfc_ndef.Refused) and one.reason and one.offset >= 0 for one in refused)
    poster = nfc_ndef.parse(bytes.fromhex("D1020553709101015501"))[0]
    assert poster.content is None
    assert str(poster.refused) == "a nested record must be there and is not (record 0, offset 5)" or poster.refused


def test_none_of_the_tables_is_taken_otherwise_in_chunks():
    for message in valid_messages():
        for record in message:
            if len(record.payload) < 2 or len(message) > 1 or record.type == "Gc":  # which is read whole only
                continue
            type_name = record.type.encode("utf-8", "surrogateescape")
            first = bytes([0xB0 | record.format, len(type_name), 1]) + type_name + record.payload[:1]
            rest = len(record.payload) - 1
            in_chunks = nfc_ndef.parse(first + b"\x46\x00" + rest.to_bytes(4, "big") + record.payload[1:])
            assert in_chunks[0].payload == record.payload
            assert in_chunks[0].content == record.content or record.content is None


TEXT, URI = nfc_ndef.Text, nfc_ndef.Uri


@pytest.mark.parametrize(
    "error, text, make",
    [
        (TypeError, "Text() needs 'language'", lambda: TEXT("Hello")),
        (TypeError, "Text() has no member 'lang'", lambda: TEXT("Hello", lang="en")),
        (TypeError, "Text() got two values for 'text'", lambda: TEXT("Hello", text="Hello", language="en")),
        (TypeError, "Text() takes one member without its name", lambda: TEXT("Hello", "en")),
        (TypeError, "BluetoothOob() takes members by their names", lambda: nfc_ndef.BluetoothOob("01:02:03:04:05:06")),
        (TypeError, "Text.text must be a str", lambda: TEXT(b"Hello", language="en")),
        (TypeError, "Text.utf16 must be True or False", lambda: TEXT("Hello", language="en", utf16=1)),
        (ValueError, "Text.language must be 1 to 63 bytes", lambda: TEXT("Hello", language="e" * 64)),
        (ValueError, "Text.text must not hold a NUL", lambda: TEXT("a\0b", language="en")),
        (ValueError, "half a surrogate pair", lambda: TEXT("\ud800", language="en")),
        (ValueError, "Text.byte_order_mark is for UTF-16 only", lambda: TEXT("a", language="en", byte_order_mark=1)),
        (ValueError, "Text.byte_order_mark must be one of", lambda: TEXT("a", language="e", byte_order_mark=7)),
        (ValueError, "Uri.uri must not hold control characters", lambda: URI("https://\n")),
        (ValueError, "Uri.identifier_code must be 0 to 255", lambda: URI("a:b", identifier_code=256)),
        (ValueError, "Uri.identifier_code must be 0 to 255", lambda: URI("a:b", identifier_code=1 << 80)),
        (ValueError, "cr_record is needed with version 1.2", lambda: nfc_ndef.HandoverRequest("1.2")),
        (ValueError, "version is not one that is made", lambda: nfc_ndef.HandoverSelect("1.1")),
        (ValueError, "version must be a version such as", lambda: nfc_ndef.HandoverSelect("1.16")),
        (ValueError, "uri_record must be of the well-known type \"U\"",
         lambda: nfc_ndef.SmartPoster(TEXT("a", language="b"))),
        (TypeError, "a Record, or a value such as Text", lambda: nfc_ndef.SmartPoster("https://example.com")),
        (TypeError, "credentials must be of the class WifiCredential", lambda: nfc_ndef.Wifi(credentials=[1])),
        (TypeError, "credentials must be a sequence", lambda: nfc_ndef.Wifi(credentials="no")),
        (ValueError, "WifiCredential.ssid is missing", lambda: nfc_ndef.WifiCredential(network_key="x")),
        (ValueError, "at most 32 bytes", lambda: nfc_ndef.Wifi(ssid="x" * 33)),
        (ValueError, "device_address must be 6 bytes such as '12:34:56:78:90:AB'",
         lambda: nfc_ndef.BluetoothOob(device_address="1:2", class_of_device="240404")),
        (ValueError, "randomizer_r", lambda: nfc_ndef.BluetoothOob(
            device_address="01:02:03:04:05:06", class_of_device="240404", randomizer_r=bytes(16))),
        (TypeError, "must be bytes", lambda: nfc_ndef.ManufacturerData("x")),
    ],
)
def test_what_cannot_be_made_is_refused_by_name(error, text, make):
    with pytest.raises(error, match=re.escape(text)):
        make()


def test_values_are_frozen_and_compare():
    hello = TEXT("Hello", language="en")
    with pytest.raises(AttributeError):
        hello.text = "Bye"
    with pytest.raises(AttributeError):
        hello.other = 1
    assert hello == TEXT("Hello", language="en") != hello.replace(text="Bye")
    assert len({hello, TEXT("Hello", language="en"), hello.replace(language="de")}) == 2
    assert hello != URI("Hello") and hello != "Hello"
    assert URI("https://example.com").replace(uri="http://www.example.com").identifier_code == 1


def test_enumerations_keep_numbers_without_a_name():
    kept = nfc_ndef.HashType(77)
    assert kept == 77 and repr(kept) == "HashType(77)" and pickle.loads(pickle.dumps(kept)) == kept
    bits = nfc_ndef.AuthenticationType(0x8001)
    assert bits & nfc_ndef.AuthenticationType.OPEN and pickle.loads(pickle.dumps(bits)) == 0x8001
    with pytest.raises(ValueError):
        nfc_ndef.HashType(-1)


def test_texts_that_are_none_keep_their_bytes():
    for payload in ("02656EFF41", "82656E41", "82656EFEFF", "82656ED800", "02656E4100"):
        data = bytes.fromhex(f"D101{len(payload) // 2:02X}54{payload}")
        record = nfc_ndef.parse(data)[0]
        if "\0" not in record.content.text:
            assert nfc_ndef.Record(record.content).payload == record.payload
