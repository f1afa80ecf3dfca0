"""What the module for Python does with three tags that come onto the reader, one after another."""

import nfc_ndef
from nfc_ndef import Message, Text, Uri

new = Message([Uri("https://example.com/new")])
print("ready", nfc_ndef.reader_names(), flush=True)

with nfc_ndef.Reader("Virtual", timeout=20) as reader:
    tag = next(reader)
    assert (tag.type, tag.serial_number.hex(), tag.is_writable) == ("Type 2 tag", "04010203040506", True)
    assert str(tag.message) == 'Text "before"' or tag.message[0].content.text == "before"
    assert tag.is_formatted and tag.size == 142 and "Virtual" in tag.reader
    assert tag.memory[16:18] == b"\x03\x0d", tag.memory.hex()
    for wrong, error in ((b"\xd1\x01\x05T", nfc_ndef.Refused), ([], ValueError), ([5], TypeError)):
        try:
            tag.write(wrong)
        except error:
            pass
        else:
            raise AssertionError(wrong)
    tag.write(new)
    assert tag.message == new
    tag.erase()
    assert tag.message is None
    tag.write([Uri("https://example.com/new")])
    print("written", flush=True)

    first, tag = tag, next(reader)
    for call in (lambda: first.message, lambda: first.write(new)):
        try:
            call()
        except nfc_ndef.TagUnavailable as error:
            assert "let go" in str(error)
        else:
            raise AssertionError("a tag of the past was asked")
    assert not tag.is_writable
    try:
        tag.write(new)
    except nfc_ndef.TagRefused as error:
        assert isinstance(error, OSError) and "read-only" in str(error)
    else:
        raise AssertionError("a read-only tag was written")
    print("refused", flush=True)

    tag = next(reader)
    assert not tag.is_formatted
    tag.format()
    tag.write(Text("Hello", language="en"))
    print("formatted", flush=True)
    assert reader.wait(timeout=0) is None  # the same one does not come again

try:
    reader.wait()
except nfc_ndef.TagUnavailable:
    print("closed", flush=True)
for tag in nfc_ndef.tags("no such reader", timeout=0.3):
    raise AssertionError(tag)
