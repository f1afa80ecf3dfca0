#!/usr/bin/env python3
"""The commands for tags against the real daemon, whose virtual reader gets virtual tags: daemon_test.py NDEF TAG [MODULE]

MODULE is the directory of the module for Python, which then does the same."""
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

skipped = 77
ndef, virtual_tag, *module = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])

# The daemon has one place for its socket, so the test lives among mounts of its own.
if os.environ.get("NDEF_TAGS_TEST") != "inside":
    driver = next(pathlib.Path("/usr/lib/pcsc/drivers/serial").glob("libifdvpcd.so*"), None)
    daemon = shutil.which("pcscd", path="/usr/sbin:/usr/bin")
    if not driver or not daemon:
        sys.exit("pcscd and vsmartcard-vpcd are not installed: scripts/setup test")
    own = ["unshare", "--mount"] + ([] if os.geteuid() == 0 else ["--map-root-user"])
    if subprocess.run(own + ["true"], stderr=subprocess.DEVNULL).returncode != 0:
        print("skipped: no mounts of its own for the daemon")
        sys.exit(skipped)
    os.environ.update(NDEF_TAGS_TEST="inside", PCSCD=daemon, DRIVER=str(driver))
    os.execvp("unshare", own + [sys.executable, *sys.argv])

run = pathlib.Path("/run/pcscd")
if not run.is_dir():  # which only root may make, and others find where the daemon is installed
    subprocess.run(["mount", "-t", "tmpfs", "tmpfs", "/run"], check=True)
    run.mkdir()
subprocess.run(["mount", "-t", "tmpfs", "tmpfs", str(run)], check=True)
folder = pathlib.Path(tempfile.mkdtemp())
os.chdir(folder)


def start_daemon():
    with socket.socket() as free:
        free.bind(("127.0.0.1", 0))
        port = free.getsockname()[1] & ~1  # the driver takes two
    configuration = folder / "readers"
    configuration.mkdir(exist_ok=True)
    (configuration / "virtual").write_text(
        f'FRIENDLYNAME "Virtual PCD"\nDEVICENAME /dev/null:0x{port:X}\nLIBPATH {os.environ["DRIVER"]}\n'
        f"CHANNELID 0x{port:X}\n")
    daemon = subprocess.Popen([os.environ["PCSCD"], "-f", "-c", str(configuration)], stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL)
    for _ in range(100):
        if subprocess.run([ndef, "readers"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0:
            return daemon, port
        time.sleep(0.1)
    sys.exit("the daemon does not start")


class Tag:
    """A tag on the reader as long as the block lasts; its memory is in the file `tag`."""

    def __init__(self, kind, memory, changes=None):
        pathlib.Path("tag").write_bytes(memory)
        self.command = [virtual_tag, str(port), kind, "tag"] + ([str(changes)] if changes else [])

    def __enter__(self):
        self.process = subprocess.Popen(self.command)

    def __exit__(self, *_):
        self.process.terminate()
        status = self.process.wait()
        time.sleep(0.9)  # until the daemon has seen it go
        assert status in (0, -signal.SIGTERM), "the tag had to refuse what no reader should ask for"


def call(*arguments, given=b""):
    called = subprocess.run([ndef, *arguments], input=given, capture_output=True, timeout=60)
    return called.returncode, called.stdout, called.stderr.decode()


def expect(status, pattern, *arguments, given=b""):
    got, out, error = call(*arguments, given=given)
    text = out.decode(errors="replace") + error
    assert got == status and re.search(pattern, text, re.DOTALL), f"ndef {arguments}: {got}: {text}"
    return out


def type2(size, tlvs, access=0):
    memory = bytes.fromhex("0401028F 03040506 04480000 E110") + bytes([size // 8, access]) + tlvs
    return memory.ljust(16 + size + (20 if size > 48 else 0), b"\0")


def type5(size, tlvs):
    return (bytes([0xE1, 0x40, size // 8 - 1, 0]) + tlvs).ljust(size, b"\0")


def type4(size, message):
    return (len(message).to_bytes(2, "big") + message).ljust(size, b"\0")


def tlv(message):
    return bytes([3, len(message)]) + message + b"\xfe"


expect(2, "no PC/SC service", "read", "--wait", "0")
daemon, port = start_daemon()

old = call("make", "text", "before")[1]
new = call("make", "uri", "https://example.com/new")[1]
kinds = {
    "type2": (lambda message: type2(144, bytes.fromhex("0103A00C34") + tlv(message)), "Type 2 tag, serial number 04010203040506, 137 bytes"),
    "type4": (lambda message: type4(100, message), "Type 4 tag, no serial number, 98 bytes"),
    "type5": (lambda message: type5(112, tlv(message)), "Type 5 tag, serial number 04010203040506, 102 bytes"),
}

# Without a tag, and with options that say nothing.
expect(0, "Virtual PCD.*: no tag\n", "readers")
expect(2, "^ndef: there is no tag on the reader$", "read", "--wait", "0", "--reader", "00 00")
expect(2, "no reader of that name", "read", "--wait", "0", "--reader", "other")
expect(2, "fits several", "read", "--wait", "0", "--reader", "Virtual")
expect(2, "--wait soon: not a number of seconds", "read", "--wait", "soon")
expect(2, "say --yes", "lock")

for kind, (memory_with, title) in kinds.items():
    with Tag(kind, memory_with(old)):
        expect(0, f'^{title}, [0-9]+ free, writable\n.*text: "before"', "read")
        expect(0, f"{title}.*\nVirtual PCD.*01: no tag\n", "readers")
        assert expect(0, "", "read", "--format", "raw") == old
        expect(0, '"text": "before"', "read", "--json")
        expect(0, "", "read", "-o", "message", "--memory", "memory")
        assert pathlib.Path("message").read_bytes() == old
        assert pathlib.Path("memory").read_bytes() == pathlib.Path("tag").read_bytes()
        expect(0, f"^Written, {len(new)} bytes: {title}", "write", given=new)
        expect(0, 'uri: "https://example.com/new"', "read")
        expect(0, "Written", "write", given=call("json", given=old)[1])
        assert expect(0, "", "read", "--format", "raw") == old
        expect(0, "Written", "write", given=old.hex().encode())
        expect(1, r"too small by \d+ bytes?: the tag holds a message of \d+ at most", "write", given=call("make", "text", "x" * 150)[1])
        expect(1, "not an NDEF message", "write", given=b"\xd1\x01\xff")
        assert expect(0, "", "read", "--format", "raw") == old
        expect(0, f"^Erased: {title}", "erase")
        expect(0, "No message", "read")
        assert expect(0, "", "read", "--json") == b'{\n  "records": []\n}\n'
        expect(1 if kind == "type4" else 0, "cannot be formatted" if kind == "type4" else "^Formatted already", "format")
        expect(1 if kind == "type4" else 0, "cannot be locked" if kind == "type4" else "^Locked.*read-only", "lock", "--yes")

# What is wrong with tags.
with Tag("type2", type2(48, tlv(b"\xd1\x01\x05T"))):
    expect(1, "the tag: not an NDEF message: record 1, byte 4: ", "read")
    expect(1, "the tag: not an NDEF message", "read", "--format", "hex")
with Tag("type2", type2(48, tlv(old), 0x0F)):
    expect(1, "the tag is read-only", "write", given=new)
for kind, size in (("type2", 64), ("type5", 112)):
    with Tag(kind, bytes(size)):
        expect(1, "not formatted", "read")
        expect(0, "^Formatted: .*writable", "format")
        expect(0, "Written", "write", given=new)
with Tag("classic", (pathlib.Path(__file__).parents[2] / "samples/forms/classic.bin").read_bytes()):
    expect(0, 'MIFARE Classic card.*read-only\n.*uri: "https://example.com', "read")
    expect(1, "cannot be written, only read", "write", given=new)

# One tag after the other; nothing is lost at the end.
watching = subprocess.Popen([ndef, "watch", "--lines"], stdout=subprocess.PIPE)
for message in (old, new):
    with Tag("type2", type2(144, tlv(message))):
        line = watching.stdout.readline().decode()
        assert '"serial_number":"04010203040506"' in line and '"records":[{' in line, line
    time.sleep(1)
watching.send_signal(signal.SIGINT)
assert watching.wait() == 0

# The module for Python, which finds three tags.
def reads_next(answer):
    line = reading.stdout.readline().decode()
    assert line.startswith(answer), (answer, line, reading.stderr.read().decode())


if module:
    is_watched = any(b"__asan_init" in path.read_bytes() for path in (module[0] / "nfc_ndef").glob("_core*.so"))
    libraries = [subprocess.check_output(["g++", f"-print-file-name={name}"], text=True).strip()
                 for name in ("libasan.so", "libstdc++.so")]
    with_module = dict(os.environ, PYTHONPATH=str(module[0]), PYTHONDONTWRITEBYTECODE="1")
    if is_watched:
        with_module.update(LD_PRELOAD=" ".join(libraries), ASAN_OPTIONS="detect_leaks=0", PYTHONMALLOC="malloc")
    reading = subprocess.Popen([sys.executable, pathlib.Path(__file__).parent.resolve() / "python_reader.py"],
                               stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=with_module)
    reads_next("ready ['Virtual PCD")
    with Tag("type2", type2(144, tlv(old))):
        reads_next("written")
    assert expect(0, "", "json", "--as", "type2", "tag") == call("json", given=new)[1]
    with Tag("type2", type2(48, tlv(old), 0x0F)):
        reads_next("refused")
    with Tag("type2", bytes(64)):
        reads_next("formatted")
    reads_next("closed")
    assert reading.wait() == 0, reading.stderr.read().decode()

# Torn away after each change: the old message, none or the new one. An interruption does not end what was begun.
known = [call("json", given=message)[1] for message in (old, new)]
for kind, (memory_with, _) in kinds.items():
    done = False
    for changes in range(1, 40):
        with Tag(kind, memory_with(old), changes):
            status, out, error = call("write", given=new)
        done = status == 0
        assert done or status == 2, error
        left = call("json", "--as", kind, "tag")
        assert left[1] in known or "an empty formatted tag" in left[2], f"{kind}: {changes}: {left}"
        assert not done or left[1] == known[1]
        if done:
            break
    assert done
with Tag("type2", type2(144, tlv(old))):
    writing = subprocess.Popen([ndef, "write"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    writing.stdin.write(new)
    writing.stdin.close()
    while pathlib.Path("tag").read_bytes()[17:18] != b"\0" and writing.poll() is None:
        pass
    writing.send_signal(signal.SIGINT)
    assert writing.wait() == 0
    assert expect(0, "", "read", "--format", "raw") == new

daemon.terminate()
daemon.wait()
shutil.rmtree(folder)
