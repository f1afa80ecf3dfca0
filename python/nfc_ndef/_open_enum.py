"""Enumerations that keep a number without a name."""

from __future__ import annotations

import enum


def _expression(member: enum.Enum) -> str:
    """How to write a member, in place of the repr of the standard library, which is no expression."""
    cls = type(member)
    name = member._name_
    return f"{cls.__name__}.{name}" if name in cls.__members__ else f"{cls.__name__}({member._value_})"


class OpenEnum(enum.IntEnum):
    @classmethod
    def _missing_(cls, value: object) -> OpenEnum | None:
        if not isinstance(value, int) or value < 0:
            return None
        member = int.__new__(cls, value)
        member._name_ = f"UNKNOWN_{value}"
        member._value_ = int(value)
        return member

    __repr__ = _expression

    def __reduce_ex__(self, protocol: object) -> tuple[type, tuple[int]]:
        return type(self), (int(self),)


class OpenFlag(enum.IntFlag):
    __repr__ = _expression

    def __reduce_ex__(self, protocol: object) -> tuple[type, tuple[int]]:
        return type(self), (int(self),)
