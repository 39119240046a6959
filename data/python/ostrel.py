# SPDX-License-Identifier: MIT
"""Reads the chromatograms of the Ostrel MS chart recorder.

    import ostrel

    run = ostrel.read("run.chd")
    print(run.title, "from", run.provenance["begun"] if run.provenance else run.saved)
    for minutes, uv in zip(run.times, run.uv):
        ...

`read` takes a data file (.chd), a log file (.chl) or the directory of a running log. What is not whole is refused, and
`read(path, strict=False)` keeps what is left of it. In a terminal, `python3 -m ostrel run.chd` tells what a file holds.

This file needs Python 3.9 or newer and nothing else. Where numpy is installed the traces are numpy arrays, otherwise
they are arrays of the module `array`. The manual page ostrel-chart(5) describes every byte that is read here.
"""

from __future__ import annotations

import argparse
import errno
import json
import math
import os
import re
import stat
import struct
import sys
import zlib
from array import array
from collections import Counter
from dataclasses import dataclass
from datetime import datetime, timedelta, timezone
from typing import Any, Callable, Iterator, NamedTuple, Optional, Union

try:
    import numpy
except ImportError:
    numpy = None

__all__ = ["read", "Run", "Axes", "Mark", "MethodText"]
__all__ += ["OstrelError", "NotAChart", "NewerVersion", "Damaged", "Truncated"]

SAMPLES_PER_MINUTE = 300


class OstrelError(ValueError):
    """A file or log that cannot be read. What the operating system reports stays an OSError."""

    def __init__(self, message: str, position: Optional[int] = None):
        super().__init__(message)
        self.position = position  #: byte of the file at which the first fault begins, where one byte can be named


class NotAChart(OstrelError):
    """Something else than a chart's file or the directory of a running log."""


class NewerVersion(OstrelError):
    """A file of a newer version than this reader knows."""


class Damaged(OstrelError):
    """A file that is not as it was written, or a running log of which something is missing."""


class Truncated(Damaged):
    """A file that is whole up to its end, which comes too early."""


class Axes(NamedTuple):
    """What the chart showed. Without a good axis in the file, that of a new chart."""

    uv_min: float = -0.2  #: AU
    uv_max: float = 2.0
    conductivity_min: float = 0.0  #: mS/cm
    conductivity_max: float = 500.0
    time_min: float = 0.0  #: minutes
    time_max: float = 10.0


class Mark(NamedTuple):
    """An event mark on the time axis."""

    minutes: float
    label: str
    colour: int  #: 0xBBGGRR
    height: int  #: below zero: it points the other way


class MethodText(NamedTuple):
    """A part of the method, as the instrument sent it. Lines end with CR LF."""

    minutes: float
    text: str


@dataclass(eq=False)
class Run:
    """One run. Sample n is at n / 300 minutes; a sample that is missing is not-a-number."""

    kind: str  #: "data", "log" or "running log"
    version: int  #: of the file's format
    saved: Optional[datetime]  #: when the file was written, or the running log begun, UTC; None when unknown
    title: str  #: of a running log: the name of the instrument's system
    notes: str  #: the operator's; lines end with CR LF
    uv: Any  #: absorbance in AU, 32-bit floats
    conductivity: Any  #: in mS/cm, 32-bit floats
    axes: Axes
    marks: list[Mark]
    method: list[MethodText]
    provenance: Optional[dict[str, Any]]  #: where it comes from, see ostrel-chart(5); None when the file does not tell
    missing: list[str]  #: what is missing, in words; empty for a whole file

    @property
    def times(self) -> Any:
        """Minutes of each sample, 64-bit floats."""
        if numpy is not None:
            return numpy.arange(len(self.uv)) / SAMPLES_PER_MINUTE
        return array("d", map(SAMPLES_PER_MINUTE.__rtruediv__, range(len(self.uv))))


def read(path: Union[str, os.PathLike], strict: bool = True) -> Run:
    """Reads a data file, a log file or the directory of a running log.

    Raises NotAChart, NewerVersion, Truncated or Damaged, all of them OstrelErrors, for a file that is anything but
    whole and for a log of which something is missing. With strict=False it salvages: every record that is whole is
    kept, samples that are missing are filled in as not-a-number so that later ones keep their times, and `Run.missing`
    tells what is missing. What holds nothing of a chart is refused then, too.
    """
    path = os.fsdecode(path)
    try:
        return _read_log(path, strict) if os.path.isdir(path) else _read_file(path, _load(path), strict)
    except MemoryError:
        raise OstrelError(f"{path}: does not fit into memory") from None


# --- Bytes: the header of a file, and records ---

_MAGIC = b"\x89OSTR\r\n\x1a"
_NEWEST = {b"DATA": 2, b"LOG ": 2, b"TICK": 1}
_HEAD = struct.Struct("<8x4sI8sqIiII")
_RECORD = struct.Struct("<4sIQII")
_NUMBER = struct.Struct("<Q")
_COUNTS = struct.Struct("<3Q")
_AXES = struct.Struct("<6f")
# Of a length below 2^40, so that few checksums need be computed in a search.
_ANY_RECORD = re.compile(rb"(?s)(?:TITL|AXES|NOTE|SIZE|PROV|METH|MARK|SAMP|END )(?=.{9}\0\0\0)")
_MOST_HOLES = 64  # times what is on the disk; a file of nothing but zeros in its samples has fewer


class _Head(NamedTuple):
    """The header of a file."""

    kind: bytes
    version: int
    identity: bytes
    written: int  # milliseconds since 1970, UTC
    sequence: int
    instance: int
    unused: int
    check: int


def _head(data: bytes) -> Optional[_Head]:
    if len(data) < _HEAD.size or not data.startswith(_MAGIC):
        return None
    head = _Head._make(_HEAD.unpack_from(data))
    return head if head.check == zlib.crc32(data[:44]) else None


def _mended_head(data: bytes) -> Optional[_Head]:
    """The header with its one wrong byte put right, if that is what is wrong with it."""
    for place in range(_HEAD.size):
        for byte in range(256):
            head = _head(data[:place] + bytes((byte,)) + data[place + 1 : _HEAD.size])
            if head and head.kind in _NEWEST:
                return head
    return None


def _date(head: Optional[_Head]) -> Optional[datetime]:
    try:
        return head and datetime(1970, 1, 1, tzinfo=timezone.utc) + timedelta(milliseconds=head.written)
    except OverflowError:
        return None


def _key(identity: bytes) -> int:
    """What the checksum of a record's header and that of its first 20 bytes alone differ by.

    It is the same for all records of a file, since the CRC of an exclusive or is the exclusive or of the CRCs.
    """
    return zlib.crc32(identity + bytes(20)) ^ zlib.crc32(bytes(20))


def _key_at(data: bytes, at: int) -> int:
    """The key of the file, if the header of a record is whole here."""
    return zlib.crc32(data[at : at + 20]) ^ int.from_bytes(data[at + 20 : at + 24], "little")


def _likely_key(data: bytes) -> Optional[int]:
    """The key of a file without its header: most pairs of records, one right behind the other, agree on it."""
    keys: Counter[int] = Counter()
    for match in _ANY_RECORD.finditer(data):
        at = match.start()
        if at % 8 == 0 and at + _RECORD.size <= len(data):
            behind = _behind(at, _RECORD.unpack_from(data, at)[2])
            if _ANY_RECORD.match(data[behind : behind + 16]) and _key_at(data, at) == _key_at(data, behind):
                keys[_key_at(data, at)] += 1
    return keys.most_common(1)[0][0] if keys else None


def _behind(at: int, length: int) -> int:
    return at + _RECORD.size + (length + 7) // 8 * 8


def _begins(data: bytes, at: int, key: int) -> bool:
    """The header of a record is whole here, and the file has as many bytes as it says."""
    space = len(data) - at - _RECORD.size
    return space >= 0 and _key_at(data, at) == key and _RECORD.unpack_from(data, at)[2] <= space


class _Record(NamedTuple):
    """A record with a whole header."""

    at: int
    kind: bytes  # empty for a spot where there are zeros instead of a record
    number: int = 0
    payload: Optional[memoryview] = None  # None when it is damaged


def _records(data: bytes, key: int, fault: Callable[..., None] = lambda *_: None) -> Iterator[_Record]:
    """Every record whose header is whole. Behind a fault the next one is at some multiple of eight bytes."""
    view = memoryview(data)
    at, end = _HEAD.size, len(data.rstrip(b"\0"))
    while at < end:
        if not _begins(data, at, key):
            if len(data) - at < _RECORD.size or _key_at(data, at) == key:
                fault(Truncated, len(data), "is cut off")
            fault(Damaged, at, "is damaged", ", where a record should begin")
            if not any(view[at : at + _RECORD.size]):
                yield _Record(at, b"")
            starts = (match.start() for match in _ANY_RECORD.finditer(data, at))
            at = next((start for start in starts if start % 8 == 0 and _begins(data, start, key)), end)
            continue
        kind, number, length, check, _ = _RECORD.unpack_from(data, at)
        begin, behind = at + _RECORD.size, _behind(at, length)
        payload = view[begin : begin + length]
        whole = zlib.crc32(payload) == check
        if not whole or any(view[begin + length : behind]):
            fault(Damaged, at, "is damaged", f", in record {number} ({_name(kind)}) that ends at byte {behind}")
        elif behind > len(data):
            fault(Truncated, len(data), "is cut off")
        yield _Record(at, kind, number, payload if whole else None)
        at = behind


def _has_records(data: bytes, key: int) -> bool:
    return any(record.payload is not None for record in _records(data, key))


def _name(kind: bytes) -> str:
    return kind.decode("ascii", "replace").strip()


def _load(path: str, most: Optional[int] = None) -> bytes:
    """The file, but for a hole at its end, or its first bytes. A pipe or a device is refused without a wait."""
    without_wait = getattr(os, "O_NONBLOCK", 0)
    with open(path, "rb", opener=lambda name, flags: os.open(name, flags | without_wait)) as file:
        status = os.fstat(file.fileno())
        if not stat.S_ISREG(status.st_mode):
            raise NotAChart(f"{path}: is not a plain file")
        filled, end = _extent(file.fileno(), status.st_size)
        if most is None and end > filled * _MOST_HOLES:
            raise NotAChart(f"{path}: is not a chart file: it is a hole but for {filled} bytes")
        file.seek(0)
        return file.read(end + 8 if most is None else most)  # whatever follows the end of a chart shows by one byte


def _extent(file: int, size: int) -> tuple[int, int]:
    """How many bytes are no hole, and where the last of them ends."""
    filled = end = 0
    try:
        while end < size:
            begin = os.lseek(file, end, os.SEEK_DATA)
            end = os.lseek(file, begin, os.SEEK_HOLE)
            filled += end - begin
    except AttributeError:
        return size, size  # this system does not tell holes
    except OSError as error:
        return (filled, end) if error.errno == errno.ENXIO else (size, size)
    return filled, end


# --- What records hold ---


def _text(payload: memoryview) -> str:
    return str(payload, "utf-16-le", "surrogatepass")


def _mark(minutes: float, colour: int, height: int, zero: int, label: str) -> Mark:
    if zero != 0:
        raise ValueError("not zero")
    return Mark(minutes, label, colour, height)


_ITEMS: dict[bytes, tuple[struct.Struct, Any]] = {
    b"METH": (struct.Struct("<fI"), MethodText),
    b"MARK": (struct.Struct("<fihHI"), _mark),
}


def _items(kind: bytes, payload: memoryview) -> list[Any]:
    form, make = _ITEMS[kind]
    items, at = [], _NUMBER.size
    while at < len(payload):
        *values, units = form.unpack_from(payload, at)
        at += form.size
        if units * 2 > len(payload) - at:
            raise ValueError("too short for its text")
        items.append(make(*values, _text(payload[at : at + units * 2])))
        at += units * 2
    return items


_PROVENANCE = {
    "identity": str,
    "system": str,
    "device": str,
    "program": str,
    "interval": float,  # seconds
    "begun": str,
    "ended": str,
    "stretches": [{"from": float, "to": float, "begun": str, "ended": str}],
    "clockSteps": [{"minutes": float, "seconds": float}],
    "parent": {"identity": str, "from": float, "to": float},
    "history": [{"saved": str, "program": str, "change": str}],
}


def _shaped(value: Any, form: Any) -> Any:
    """The value with exactly the keys of this form. What is missing or of another type is None or an empty list."""
    if isinstance(form, list):
        return [_shaped(item, form[0]) for item in value if isinstance(item, dict)] if isinstance(value, list) else []
    if isinstance(form, dict):
        return {key: _shaped(value.get(key), item) for key, item in form.items()} if isinstance(value, dict) else None
    return value if isinstance(value, form) and (form is str or math.isfinite(value)) else None


def _provenance(payload: memoryview) -> dict[str, Any]:
    try:
        # Whole numbers become floats, too, since they may have any number of digits; int refuses NaN, which is no JSON.
        provenance = _shaped(json.loads(str(payload, "utf-8"), parse_int=float, parse_constant=int), _PROVENANCE)
    except RecursionError:
        provenance = None
    if provenance is None:
        raise ValueError("no JSON object")
    return provenance


_LAST_NUMBER = 1 << 48  # beyond any run
_PAIR = 8  # bytes of a sample
_NO_SAMPLE = struct.pack("<2f", math.nan, math.nan)


class _Parts:
    """The parts of a run, put together from its records. `room` is for how many samples that fill gaps."""

    def __init__(self, room: int):
        self.room = room
        self.texts: dict[bytes, str] = {}
        self.axes: Optional[Axes] = None
        self.provenance: Optional[dict[str, Any]] = None
        self.counts: dict[bytes, tuple[int, ...]] = {}
        self.pieces: list[Any] = []  # of the samples, as they are in the file
        self.held = 0  # samples in these pieces
        self.next = 0  # number of the next sample in its run
        self.numbered: dict[bytes, dict[int, Any]] = {b"MARK": {}, b"METH": {}}
        self.items: dict[bytes, list[Any]] = {b"MARK": [], b"METH": []}
        self.missing: list[str] = []
        self.kinds: set[bytes] = set()  # of the records that were there, whole or not
        self.ends = False  # the last record has the number that it should have

    def take(self, kind: bytes, payload: memoryview) -> None:
        """Raises a ValueError or a struct.error when the payload is not of its kind's form, and takes nothing then."""
        if kind in (b"TITL", b"NOTE"):
            self.texts[kind] = _text(payload)
        elif kind == b"AXES":
            self.axes = Axes._make(_AXES.unpack(payload))
        elif kind == b"PROV":
            self.provenance = _provenance(payload)
        elif kind in (b"SIZE", b"END "):
            self.counts[kind] = _COUNTS.unpack(payload)
        elif kind == b"SAMP":
            self._take_samples(payload)
        elif kind in _ITEMS:
            self._take_items(kind, payload)

    def held_counts(self) -> tuple[int, ...]:
        return self.next, len(self.numbered[b"MARK"]), len(self.numbered[b"METH"])

    def number_of(self, kind: bytes) -> Optional[int]:
        """The number with which the next record of this kind goes on."""
        return self.next if kind == b"SAMP" else len(self.numbered[kind]) if kind in _ITEMS else None

    def _take_samples(self, payload: memoryview) -> None:
        (first,) = _NUMBER.unpack_from(payload)
        count, rest = divmod(len(payload) - _NUMBER.size, _PAIR)
        if rest or first > _LAST_NUMBER:
            raise ValueError("no samples")
        if first + count > self.next:
            self.bridge(first)
            self.pieces.append(payload[_NUMBER.size + (self.next - first) * _PAIR :])
            self.held += first + count - self.next
            self.next = first + count

    def bridge(self, until: int, fill: bool = True) -> None:
        """Tells of the samples that are missing before this number, and fills them in while there is room."""
        count = until - self.next
        if count <= 0:
            return
        begin, end = self.held / SAMPLES_PER_MINUTE, (self.held + count - 1) / SAMPLES_PER_MINUTE
        told = f"minutes {begin:.2f} to {end:.2f} ({count} sample{'s'[: count > 1]})"
        if fill and count <= self.room:
            self.pieces.append(_NO_SAMPLE * count)
            self.room -= count
            self.held += count
        elif fill:
            told += "; later times have moved up"
        self.missing.append(told)
        self.next = until

    def _take_items(self, kind: bytes, payload: memoryview) -> None:
        (first,) = _NUMBER.unpack_from(payload)
        if first > _LAST_NUMBER:
            raise ValueError("no number")
        shift = (self.held - self.next) / SAMPLES_PER_MINUTE  # behind another run, or behind a gap that is not filled
        for number, item in enumerate(_items(kind, payload), first):
            self.numbered[kind].setdefault(number, item._replace(minutes=item.minutes + shift) if shift else item)

    def end_run(self, counts: tuple[int, ...], fill: bool) -> None:
        """Tells of what is missing of so many samples, marks and method texts. Another run may follow."""
        self.bridge(counts[0], fill)
        self.next = 0
        for kind, count, name in ((b"MARK", counts[1], "event mark"), (b"METH", counts[2], "method text")):
            found = self.numbered[kind]
            lost = max([count, *(number + 1 for number in found)]) - len(found)
            if lost > 0:
                self.missing.append(f"{lost} {name}{'s'[: lost > 1]}")
            self.items[kind] += [found[number] for number in sorted(found)]
            found.clear()

    def run(self, kind: str, version: int, saved: Optional[datetime]) -> Run:
        uv, conductivity = _traces(b"".join(self.pieces))
        return Run(
            kind=kind,
            version=version,
            saved=saved,
            title=self.texts.get(b"TITL", ""),
            notes=self.texts.get(b"NOTE", ""),
            uv=uv,
            conductivity=conductivity,
            axes=_usable(self.axes or Axes()),
            marks=self.items[b"MARK"],
            method=self.items[b"METH"],
            provenance=self.provenance,
            missing=self.missing,
        )


def _traces(pairs: bytes) -> tuple[Any, Any]:
    """UV and conductivity, bit for bit."""
    if numpy is not None:
        both = numpy.frombuffer(pairs, "<f4")
        return both[0::2].astype(numpy.float32), both[1::2].astype(numpy.float32)
    both = array("f", pairs)
    if sys.byteorder == "big":
        both.byteswap()
    return both[0::2], both[1::2]


def _usable(axes: Axes) -> Axes:
    ends = list(Axes())
    for low in (0, 2, 4):
        if -1e6 <= axes[low] < axes[low + 1] <= 1e6:
            ends[low : low + 2] = axes[low : low + 2]
    return Axes._make(ends)


# --- Data files and log files ---


def _check_kind(path: str, head: _Head) -> None:
    if head.kind == b"TICK":
        raise NotAChart(f"{path}: is a file of a running log; name its directory", 8)
    if head.kind not in _NEWEST or head.version == 0:
        raise NotAChart(f"{path}: is not a chart file, by its bytes 8 to 15", 8)
    known = _NEWEST[head.kind]
    if head.version > known:
        raise NewerVersion(f"{path}: is of a newer version, {head.version} at byte 12; this reader knows {known}", 12)


def _read_file(path: str, data: bytes, strict: bool) -> Run:
    def fault(error: type[OstrelError], at: int, what: str, where: str = "") -> None:
        if strict:
            raise error(f"{path}: {what} at byte {at}{where}", at)

    intact = _head(data)
    head = intact or _mended_head(data)
    marked = data.startswith(_MAGIC[:5])  # a transfer as text changes what follows
    if not intact and marked and len(data) < _HEAD.size:
        raise Truncated(f"{path}: is cut off at byte {len(data)}, in its header", len(data))
    if not intact and (head or marked):
        fault(Damaged, 0, "is damaged", ", in its header")
    if head:
        _check_kind(path, head)
    key = _file_key(data, head, strict)
    if key is None:
        raise NotAChart(f"{path}: is not a chart file, from byte 0 on", 0)

    parts = _Parts(room=len(data) // _PAIR)
    _take_file(data, key, head, parts, fault)
    version = head.version if head else 2 if parts.kinds & {b"SIZE", b"PROV"} else 1
    parts.end_run(tuple(map(max, zip((0, 0, 0), *parts.counts.values()))), fill=False)
    if not parts.counts and not parts.ends:
        parts.missing.append(f"whatever the run held from minute {parts.held / SAMPLES_PER_MINUTE:.2f} on")
    once = {"the title": parts.texts.get(b"TITL"), "the axes": parts.axes, "the notes": parts.texts.get(b"NOTE")}
    once["where the run comes from"] = parts.provenance if version > 1 else {}
    once["when the file was saved"] = head
    parts.missing += [name for name, part in once.items() if part is None]
    if version > 1 and parts.provenance is None:
        parts.provenance = _shaped({}, _PROVENANCE)
    is_log = head.kind == b"LOG " if head else path.lower().endswith(".chl")
    return parts.run("log" if is_log else "data", version, _date(head))


def _file_key(data: bytes, head: Optional[_Head], strict: bool) -> Optional[int]:
    """The key by which records are found. None when there is neither a header nor a record."""
    said = _key(head.identity) if head else None
    if strict or (head and _has_records(data, said)):
        return said
    others = (key for key in (_likely_key(data), _key(data[16:24])) if key is not None and _has_records(data, key))
    return next(others, said)


def _take_file(data: bytes, key: int, head: Optional[_Head], parts: _Parts, fault: Callable[..., None]) -> None:
    """Takes all records that are whole. Where anything is not as it should be, it calls `fault`."""
    once = [b"TITL", b"AXES", b"NOTE", b"SIZE", b"PROV"][: 3 if head and head.version == 1 else 5]
    order = once + [b"METH", b"MARK", b"SAMP", b"END "]
    place, behind = 0, _HEAD.size
    if head and (head.sequence != 0 or head.instance != 0):
        fault(Damaged, 32, "is damaged", ": only files of a running log have a number here")
    for count, (at, kind, number, payload) in enumerate(_records(data, key, fault)):
        parts.kinds.add(kind)
        parts.ends = kind == b"END " and number == count
        last, place = place, order.index(kind) if kind in order else -1
        goes_on = parts.number_of(kind)
        wrong = ""
        if number != count or (place != count if count < len(once) else place < max(last, len(once))):
            wrong = "another one belongs here"
        elif payload is not None and goes_on is not None and payload[:8] != _NUMBER.pack(goes_on):
            wrong = "its numbers do not go on from those before"
        try:
            if payload is not None:
                parts.take(kind, payload)
                behind = _behind(at, len(payload))
        except (ValueError, struct.error):
            wrong = wrong or "what it holds is of another form"
        if goes_on == parts.number_of(kind) is not None:
            wrong = wrong or "it is empty"
        elif kind == b"SAMP" and goes_on >> 16 != (parts.next - 1) >> 16:
            wrong = wrong or "its samples cross a multiple of 65536"
        elif kind == b"END " and any(counts != parts.held_counts() for counts in parts.counts.values()):
            wrong = wrong or "the file holds more or less than it says"
        if wrong:
            fault(Damaged, at, "is damaged", f", in record {number} ({_name(kind)}): {wrong}")
        if kind == b"END " and behind < len(data):
            fault(Damaged, behind, "goes on behind its end")
    if b"END " not in parts.counts:
        fault(Truncated, behind, "is cut off")


# --- The running log ---

_LOG_NAME = re.compile(r"Log([0-9]{5,9})\.dat")
_ORDER = (b"SAMP", b"MARK", b"METH", b"TITL", b"NOTE", b"PROV", b"END ")  # within one writing
_WHOLE = (b"TITL", b"NOTE", b"PROV")  # written again as a whole when they change


class _LogFile(NamedTuple):
    first: float  # number of its first sample
    sequence: int
    number: int  # in its name
    key: int
    data: bytes


class _Promises:
    """Each writing ends with a promise: how much the log then held. So what is missing shows though nothing follows it.

    A promise behind zeros counts only when another record follows it: a power cut may have left it half-written.
    """

    def __init__(self) -> None:
        self.counts = (0, 0, 0)
        self.lost: set[bytes] = set()  # kinds of _WHOLE, or b"" for a record of unknown kind, perhaps one of these
        self._writing: set[bytes] = set()  # the same of the present writing
        self._open: Optional[tuple[int, ...]] = None  # a promise that does not count yet
        self._torn = False
        self.begin_file()

    def begin_file(self) -> None:
        self._number, self._place = 0, -1

    def see(self, record: _Record, whole: bool, counts: Optional[tuple[int, ...]]) -> None:
        """Takes each record; a promise has `counts`."""
        if not record.kind:
            self._torn = True
            return
        if self._open is not None:
            self._keep(self._open)
        self._find_lost(record)
        if counts is not None:
            self._place = -1
            if not self._torn:
                self._keep(counts)
            else:
                self._open, self._torn = counts, False
        elif record.kind in _WHOLE:
            self.lost.discard(record.kind) if whole else self._writing.add(record.kind)

    def _find_lost(self, record: _Record) -> None:
        """Finds the kind of a record that is missing before this one from those before and behind it."""
        gone = record.number - self._number
        place = _ORDER.index(record.kind) if record.kind in _ORDER else len(_ORDER)
        next_writing = place <= self._place  # one that is missing there was a promise, which is no loss
        if gone > 1 or (gone == 1 and not next_writing):
            for kind in _WHOLE:
                if next_writing or self._place < _ORDER.index(kind) < place:
                    self._writing.add(kind if place - self._place == 2 else b"")
        self._number, self._place = record.number + 1, place

    def _keep(self, counts: tuple[int, ...]) -> None:
        self.counts = tuple(map(max, zip(self.counts, counts)))
        self.lost |= self._writing
        self._open, self._writing = None, set()


def _read_log(folder: str, strict: bool) -> Run:
    runs, begun, missing = _log_files(folder, strict)
    if not runs and not missing:
        raise NotAChart(f"{folder}: holds no running log")
    parts = _Parts(room=sum(len(file.data) for run in runs for file in run) // _PAIR)
    parts.missing = missing
    title, notes = "", ""
    for run in runs:
        latest = _join(run, parts)
        title = title or latest[b"TITL"]
        if latest[b"NOTE"] not in notes:
            notes += ("\r\n" if notes else "") + latest[b"NOTE"]
        if parts.provenance is None:
            parts.provenance = latest[b"PROV"]
        elif latest[b"PROV"] is not None:
            for key in ("stretches", "clockSteps"):
                parts.provenance[key] += latest[b"PROV"][key]
    if parts.provenance and parts.provenance["stretches"]:
        stretches = parts.provenance["stretches"]
        parts.provenance.update(begun=stretches[0]["begun"], ended=stretches[-1]["ended"])
    if strict and missing:
        more = f", {len(missing) - 5} more" if len(missing) > 5 else ""
        raise Damaged(f"{folder}: is missing {', '.join(missing[:5])}{more}")
    parts.texts = {b"TITL": title, b"NOTE": notes}
    parts.axes = Axes(time_max=max(0, parts.held - 1) / SAMPLES_PER_MINUTE)
    return parts.run("running log", 1, begun)


def _log_files(folder: str, strict: bool) -> tuple[list[list[_LogFile]], Optional[datetime], list[str]]:
    """The files of each run in the order of their first samples; when the log was begun; what cannot be read."""
    runs: dict[int, list[_LogFile]] = {}
    heads: list[_Head] = []
    missing: list[str] = []
    headless: list[tuple[int, str, bytes]] = []

    def add(number: int, key: int, sequence: int, data: bytes) -> None:
        numbers = (record.payload[:8] for record in _records(data, key) if record.kind == b"SAMP" and record.payload)
        first = next((_NUMBER.unpack(number)[0] for number in numbers if len(number) == 8), math.inf)
        runs.setdefault(key, []).append(_LogFile(first, sequence, number, key, data))

    for name in sorted(os.listdir(folder)):
        path = os.path.join(folder, name)
        named = _LOG_NAME.fullmatch(name)
        try:
            if not stat.S_ISREG(os.lstat(path).st_mode):
                continue
            head = _head(_load(path, _HEAD.size))
            if head.kind != b"TICK" if head else not named:
                continue
            if head and head.version > _NEWEST[b"TICK"]:
                raise NewerVersion(f"{path}: is of a newer version, {head.version} at byte 12", 12)
            data = _load(path)
        except FileNotFoundError:
            continue  # it has just been moved away
        except (OSError, OstrelError) as error:
            if not name.lower().endswith((".chd", ".chl")):
                if strict:
                    raise
                missing.append(str(error) if isinstance(error, OstrelError) else f"{path}: {error.strerror}")
            continue
        number = int(named[1]) if named else 0
        if head:
            add(number, _key(head.identity), head.sequence, data)
            heads.append(head)
        elif data[_HEAD.size :].strip(b"\0"):  # or else the power went while it was begun
            headless.append((number, path, data))
    for number, path, data in headless:
        mended = _mended_head(data)
        head = mended or _Head._make(_HEAD.unpack_from(data))
        for key in (_key(head.identity), *list(runs)[:1], _likely_key(data)):
            if key is not None and _has_records(data, key):
                add(number, key, head.sequence, data)
                heads += [mended] if mended else []
                break
        else:
            if data[: _HEAD.size].strip(b"\0"):
                missing.append(f"{path}: damaged at byte 0")
    first = min(heads, key=lambda head: head.written, default=None)
    return [sorted(run, key=lambda file: file[:2]) for run in runs.values()], _date(first), missing


def _join(files: list[_LogFile], parts: _Parts) -> dict[bytes, Any]:
    """Adds one run to the parts. Answers its latest title, notes and provenance."""
    promises = _Promises()
    latest: dict[bytes, tuple[int, Any]] = {b"TITL": (-1, ""), b"NOTE": (-1, ""), b"PROV": (-1, None)}
    told, first = len(parts.missing), parts.held
    for file in files:
        promises.begin_file()
        for record in _records(file.data, file.key):
            whole, counts = record.payload is not None, None
            try:
                if whole and record.kind == b"END ":
                    counts = _COUNTS.unpack(record.payload)
                elif whole and record.kind in latest:
                    found = (_provenance if record.kind == b"PROV" else _text)(record.payload)
                    if file.number >= latest[record.kind][0]:
                        latest[record.kind] = (file.number, found)
                elif whole:
                    parts.take(record.kind, record.payload)
            except (ValueError, struct.error):
                whole = False
            if counts is not None or record.kind != b"END ":
                promises.see(record, whole, counts)
    samples, marks, method = promises.counts
    samples = samples if samples <= _LAST_NUMBER else 0
    parts.end_run((samples, min(marks, _LAST_NUMBER), min(method, _LAST_NUMBER)), fill=True)
    if promises.lost - ({b""} if len(parts.missing) > told else set()):
        parts.missing.append("the notes, the name of the system or where the run comes from, perhaps")
    if latest[b"PROV"][1]:
        _end_stretch(latest[b"PROV"][1], first, parts.held)
    return {kind: found for kind, (_, found) in latest.items()}


def _end_stretch(provenance: dict[str, Any], first: int, end: int) -> None:
    """Ends the last stretch with the samples of the run, and moves all times behind the runs before."""
    for stretch in provenance["stretches"][-1:]:
        begin = stretch["from"] or 0.0
        stretch["to"] = max(begin, (end - 1 - first) / SAMPLES_PER_MINUTE)
        try:
            ended = datetime.fromisoformat(stretch["begun"]) + timedelta(minutes=stretch["to"] - begin)
            stretch["ended"] = ended.isoformat(timespec="seconds")
        except (TypeError, ValueError, OverflowError):
            pass  # nobody knows when it was begun
    for item in provenance["stretches"] + provenance["clockSteps"]:
        for key in {"from", "to", "minutes"} & item.keys():
            item[key] = (item[key] or 0.0) + first / SAMPLES_PER_MINUTE


# --- The summary ---

# What a terminal obeys, or what shows the rest of a line in another order; and halves of surrogate pairs.
_CONTROL = re.compile("[\0-\x1f\x7f-\x9f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069\ud800-\udfff]")


def _shown(text: str) -> str:
    return _CONTROL.sub(lambda c: f"\\x{ord(c[0]):02x}" if c[0] <= "\xff" else f"\\u{ord(c[0]):04x}", text)


def _range(trace: Any, unit: str) -> str:
    values = list(filter(math.isfinite, trace.tolist()))
    return f"{min(values):.6g} to {max(values):.6g} {unit}" if values else "none"


def _lines(provenance: dict[str, Any]) -> Iterator[tuple[str, str]]:
    for key in ("system", "device", "program", "identity"):
        yield key.capitalize(), provenance[key] or "unknown"
    yield "Interval", f"{provenance['interval']:g} s" if provenance["interval"] else "unknown"
    yield "Recorded", f"{provenance['begun'] or 'unknown'} to {provenance['ended'] or 'unknown'}"
    lists = (("Stretch", "stretches"), ("Clock set", "clockSteps"), ("Part of", "parent"), ("Saved", "history"))
    for name, key in lists:
        items = provenance[key] or []
        for item in items if isinstance(items, list) else [items]:
            yield name, ", ".join(f"{key} {value}" for key, value in (item or {}).items() if value is not None)


def _facts(path: str, run: Run) -> Iterator[tuple[str, str]]:
    minutes = max(0, len(run.uv) - 1) / SAMPLES_PER_MINUTE
    seconds = round(minutes * 60)
    yield "File", path
    yield "Kind", f"{run.kind}, version {run.version}"
    yield "Written", f"{run.saved:%Y-%m-%d %H:%M:%S} UTC" if run.saved else "unknown"
    yield "Title", run.title
    if run.provenance:
        yield from _lines(run.provenance)
    yield "Duration", f"{minutes:.2f} minutes ({seconds // 3600}:{seconds // 60 % 60:02}:{seconds % 60:02})"
    yield "Samples", str(len(run.uv))
    yield "UV", _range(run.uv, "AU")
    yield "Conductivity", _range(run.conductivity, "mS/cm")
    yield "Method texts", str(len(run.method))
    yield "Notes", f"{len(run.notes)} characters" if run.notes else "none"
    yield "Event marks", str(len(run.marks))
    for mark in run.marks:
        yield "", f"{mark.minutes:10.3f} min  {mark.label}"
    for what in run.missing:
        yield "Missing", what


def _tell(path: str) -> bool:
    """Writes what is in a file. False when it is not whole."""
    run, error = None, ""
    try:
        try:
            run = read(path)
        except Damaged as damage:
            error = str(damage)
            run = read(path, strict=False)
    except OSError as reason:
        error = f"{path}: {reason.strerror}"
    except OstrelError as reason:
        error = error or str(reason)
    for name, value in _facts(path, run) if run else ():
        print(f"{name + ':' if name else '':16}" + _shown(value))
    print("ostrel: " + _shown(error) if error else "", file=sys.stderr if error else sys.stdout)
    return not error


def main() -> int:
    """Writes a summary of each file. Answers 0, or 1 when one is not whole or cannot be read."""
    parser = argparse.ArgumentParser(prog="ostrel", description="Tells what files of the Ostrel MS recorder hold.")
    parser.add_argument("path", nargs="+", help="data file, log file, or directory of a running log")
    paths = parser.parse_args().path
    sys.stdout.reconfigure(errors="backslashreplace")
    try:
        good = [_tell(path) for path in paths]
        sys.stdout.flush()
    except BrokenPipeError:  # nobody reads any more
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        return 1
    return 0 if all(good) else 1


if __name__ == "__main__":
    sys.exit(main())
