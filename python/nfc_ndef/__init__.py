"""NFC Forum NDEF data: read it, make it, and exchange it with tags.

>>> import nfc_ndef
>>> data = nfc_ndef.encode([nfc_ndef.Uri("https://example.com"), nfc_ndef.Text("Hello", language="en")])
>>> [record.content for record in nfc_ndef.parse(data)]
[Uri('https://example.com'), Text('Hello', language='en')]
"""

import collections.abc as _abc
import typing as _typing

from . import _core
from . import _examples

# What a record may hold, for annotations.
_core.Content = _typing.Union[tuple(getattr(_core, name) for name in _core._content_names())]

from ._core import *  # noqa: E402, F403

if hasattr(_core, "Reader"):  # built with PC/SC
    from ._tags import tags

_abc.Sequence.register(_core.Message)
_examples.add_to(_core)
