"""Tags on any reader."""

from __future__ import annotations

from collections.abc import Iterator

from ._core import Reader, Tag


def tags(reader: str = "", timeout: float | None = None) -> Iterator[Tag]:
    """Each tag that comes onto a reader whose name holds `reader`, until none comes for `timeout` seconds.

    >>> for tag in nfc_ndef.tags(timeout=1):  # doctest: +SKIP
    ...     print(tag.message)
    """
    with Reader(reader, timeout) as held:
        yield from held
