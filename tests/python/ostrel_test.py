# SPDX-License-Identifier: MIT
"""The reader for Python, on files of the recorder's and on files made here. WITHOUT_NUMPY hides numpy from it."""

import json
import math
import os
import pathlib
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

root = pathlib.Path(__file__).parents[2]
reader = root / "data/python/ostrel.py"
sys.path.insert(0, str(reader.parent))
if "WITHOUT_NUMPY" in os.environ:
    sys.modules["numpy"] = None
import ostrel

recorder = os.environ.get("OSTREL_FILE")  # ostrel-file, which writes files of its own

MAGIC = b"\x89OSTR\r\n\x1a"


def text(what):
    return what.encode("utf-16-le", "surrogatepass")


def samples(first, count):
    return struct.pack("<Q", first) + b"".join(struct.pack("<2f", n / 1000, n) for n in range(first, first + count))


def marks(first, *labels):
    items = (struct.pack("<fihHI", 0.5, 0xFF00, -9, 0, len(text(label)) // 2) + text(label) for label in labels)
    return struct.pack("<Q", first) + b"".join(items)


def method(first, *texts):
    return struct.pack("<Q", first) + b"".join(struct.pack("<fI", 0.25, len(text(t)) // 2) + text(t) for t in texts)


class Chart:
    """A file in the making: `records` are pairs of kind and payload, and may be changed before its bytes are taken."""

    provenance = {"identity": "0f" * 16, "device": "/dev/ttyUSB0", "interval": 0.2, "stretches": [{"from": 0, "to": 1}]}

    def __init__(self, version=2, kind=b"DATA", identity=b"identity", sequence=0):
        self.version, self.kind, self.identity, self.sequence = version, kind, identity, sequence
        self.records = [(b"TITL", text("Größe\0\ud800")), (b"AXES", struct.pack("<6f", 0, 1, 5, 4, 0, math.nan))]
        self.records += [(b"NOTE", text("two\r\nlines"))]
        if version == 2:
            self.records += [(b"SIZE", struct.pack("<3Q", 20, 3, 1)), (b"PROV", json.dumps(self.provenance).encode())]
        self.records += [(b"METH", method(0, "Load")), (b"MARK", marks(0, "S", "µ 1")), (b"MARK", marks(2, ""))]
        self.records += [(b"SAMP", samples(0, 8)), (b"SAMP", samples(8, 7)), (b"SAMP", samples(15, 5))]
        self.records += [(b"END ", struct.pack("<3Q", 20, 3, 1))]

    def bytes(self):
        saved = 1795073509123
        made = MAGIC + struct.pack("<4sI8sqIiI", self.kind, self.version, self.identity, saved, self.sequence, 0, 0)
        made += struct.pack("<I", zlib.crc32(made))
        for number, (kind, payload) in enumerate(self.records):
            start = struct.pack("<4sIQI", kind, number, len(payload), zlib.crc32(payload))
            made += start + struct.pack("<I", zlib.crc32(self.identity + start)) + payload + bytes(-len(payload) % 8)
        return made


def content(run):
    """All that a run holds, bit for bit."""
    texts = (run.title, run.notes, run.axes, run.marks, run.method, run.provenance)
    return run.uv.tobytes(), run.conductivity.tobytes(), repr(texts)


def flipped(data, place):
    return data[:place] + bytes((data[place] ^ 0x10,)) + data[place + 1 :]


class Case(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def lay(self, data, name="run.chd"):
        (self.folder / name).write_bytes(data)
        return self.folder / name

    def left(self, data):
        """What is left of a file that is not whole."""
        with self.assertRaises(ostrel.OstrelError):
            ostrel.read(self.lay(data))
        return ostrel.read(self.folder / "run.chd", strict=False)

    def terminal(self, *arguments, **options):
        call = [sys.executable, "-B", reader, *arguments]
        return subprocess.run(call, capture_output=True, encoding="utf-8", **options)


class Files(Case):
    def test_the_recorders_own_files(self):
        for kind, name in (("data", "version1.chd"), ("log", "version1.chl")):
            run = ostrel.read(root / "tests/golden" / name)
            self.assertEqual((run.kind, run.version, run.title), (kind, 1, "Run 7"))
            self.assertEqual(run.notes, "Säule 2\r\n\u6e2c\u5b9a")
            self.assertEqual(run.axes, (-0.125, 1.5, 2, 250, 0, 20))
            self.assertEqual(run.marks, [(0, "S", 0xFFFF00, 50), (0.125, "µ 1", 0xFF, -10)])
            self.assertEqual(run.method, [(0.03125, "Gradient\r\n0 % B\r\n")])
            self.assertEqual(list(run.uv[:40]), [n / 64 for n in range(40)])
            self.assertEqual(run.uv[40:].tobytes(), b"\x23\1\xc0\x7f")
            self.assertEqual((run.conductivity[1], run.times[40]), (19.75, 40 / 300))
            self.assertEqual((run.saved.isoformat()[:16], run.provenance, run.missing), ("2026-11-21T06:56", None, []))
        if recorder:
            call = [recorder, "salvage", root / "tests/golden/version1.chd", self.folder / "new.chl"]
            subprocess.run(call, check=True, capture_output=True)
            self.assertEqual(content(ostrel.read(self.folder / "new.chl"))[:2], content(run)[:2])

    def test_version_2_tells_where_a_run_comes_from(self):
        chart = Chart()
        run = ostrel.read(str(self.lay(chart.bytes())))
        self.assertEqual((run.title, run.axes), ("Größe\0\ud800", (0, 1, 0, 500, 0, 10)))
        self.assertEqual([mark.label for mark in run.marks], ["S", "µ 1", ""])
        wanted = {"identity", "system", "device", "program", "interval", "begun", "ended", "stretches", "clockSteps"}
        self.assertEqual(set(run.provenance), wanted | {"parent", "history"})
        self.assertEqual(run.provenance["stretches"], [{"from": 0, "to": 1, "begun": None, "ended": None}])
        self.assertEqual((run.provenance["history"], run.provenance["system"]), ([], None))
        chart.records[4] = (b"PROV", b'{"later": [1], "system": 7, "parent": [], "history": null, "interval": 1e999}')
        self.assertEqual(set(map(str, ostrel.read(self.lay(chart.bytes())).provenance.values())), {"None", "[]"})
        run = ostrel.read(root / "tests/golden/version2.chl")
        self.assertEqual((run.kind, run.version, run.missing), ("log", 2, []))
        self.assertEqual(run.provenance["clockSteps"], [{"minutes": 0.03125, "seconds": -90.5}])

    def test_anything_else_is_refused_with_its_place(self):
        def changed(at, kind, payload, **options):
            chart = Chart(**options)
            chart.records[at : at + 1] = [(kind, payload)]
            return chart.bytes()

        whole = Chart().bytes()
        swapped = Chart()
        swapped.records[8:10] = reversed(swapped.records[8:10])
        long = Chart()
        long.records[8:11] = [(b"SAMP", struct.pack("<Q", 0) + bytes(8 * 65537))]
        long.records[9] = (b"END ", struct.pack("<3Q", 65537, 3, 1))
        counts = struct.pack("<3Q", 20, 3, 1)
        bad = [
            ("NotAChart byte 0", b""),
            ("NotAChart byte 0", b"x" * 99),
            ("NotAChart bytes 8", Chart(version=0).bytes()),
            ("NotAChart directory", Chart(kind=b"TICK", version=1).bytes()),
            ("NewerVersion newer", Chart(version=3).bytes()),
            ("Truncated byte 20", whole[:20]),
            ("Truncated byte 88", whole[:88] + bytes(99)),
            (f"Truncated byte {len(whole) - 1}", whole[:-1]),
            ("Damaged byte 0", whole[:5] + b"\n" + whole[6:]),
            ("Damaged byte 32", Chart(sequence=1).bytes()),
            (f"Damaged goes on behind its end at byte {len(whole)}", whole + b"\0"),
            ("Damaged go on", swapped.bytes()),
            ("Damaged another", changed(0, b"NOTE", b"")),
            ("Damaged another", changed(7, b"ELSE", b"")),
            ("Damaged another", changed(3, b"SIZE", counts, version=1)),
            ("Damaged more or less", changed(3, b"SIZE", struct.pack("<3Q", 21, 3, 1))),
            ("Damaged 65536", long.bytes()),
            ("Damaged go on", changed(7, b"MARK", marks(1, "x"))),
            ("Damaged go on", changed(9, b"SAMP", samples(9, 6))),
            ("Damaged empty", changed(7, b"MARK", marks(2))),
            ("Damaged form", changed(2, b"NOTE", b"x")),
            ("Damaged form", changed(5, b"METH", struct.pack("<QfI", 0, 0, 2**32 - 1))),
            ("Damaged form", changed(7, b"MARK", marks(2, "x")[:-1])),
            ("Damaged form", changed(7, b"MARK", marks(2, "x").replace(b"\xf7\xff\0", b"\xf7\xff\1"))),
            ("Damaged form", changed(9, b"SAMP", samples(8, 7)[:-1])),
        ]
        no_json = (b"", b"[]", b"\xef\xbb\xbf{}", b'{"a": "\xff"}', b'{"interval": NaN}', b"[" * 9**6)
        bad += [("Damaged form", changed(4, b"PROV", payload)) for payload in no_json]
        for kind, data in bad:
            with self.subTest(kind, data=data[:200]), self.assertRaises(ostrel.OstrelError) as caught:
                ostrel.read(self.lay(data))
            self.assertEqual(type(caught.exception).__name__, kind.split()[0], caught.exception)
            self.assertRegex(str(caught.exception), kind.partition(" ")[2])
        for path in (self.folder / "none", self.folder / "none/run.chd"):
            self.assertRaises(OSError, ostrel.read, path)
        os.mkfifo(self.folder / "pipe")
        self.assertRaises(ostrel.NotAChart, ostrel.read, self.folder / "pipe", strict=False)

    def test_a_wrong_byte_costs_one_record_at_most_and_is_told(self):
        for chart in (Chart(1), Chart()):
            whole = chart.bytes()
            run = ostrel.read(self.lay(whole))
            for place in range(len(whole)):
                left = self.left(flipped(whole, place))
                with self.subTest(place=place, missing=left.missing):
                    self.assertLessEqual(len(left.missing), 1)
                    if chart.version == 2 or place < whole.rindex(b"END "):  # or else nobody knows what there was
                        self.assertEqual(not left.missing, content(left) == content(run))
                    self.assertIn(len(left.uv), (20, 15))

    def test_a_file_that_was_cut_tells_how_much_is_missing(self):
        whole = Chart().bytes()
        run = ostrel.read(self.lay(whole))
        for size in range(len(whole)):
            with self.subTest(size=size):
                try:
                    left = self.left(whole[:size] + bytes(size % 2 * 200))
                except ostrel.OstrelError:
                    self.assertLess(size, 48)
                else:
                    self.assertEqual(not left.missing, content(left) == content(run))
        self.assertEqual(self.left(whole[: whole.rindex(b"SAMP")]).missing, ["minutes 0.05 to 0.06 (5 samples)"])

    def test_without_a_header_and_between_damage_records_are_found(self):
        whole, run = Chart().bytes(), ostrel.read(self.lay(Chart().bytes()))
        left = self.left(b"\xa5" * 48 + whole[48:])
        self.assertEqual((content(left), left.missing), (content(run), ["when the file was saved"]))
        gap = whole.index(b"SAMP") + 8
        left = self.left(b"\xa5" * 80 + whole[80:gap] + b"x" + whole[gap + 1 :])
        self.assertEqual(left.missing, ["minutes 0.00 to 0.02 (8 samples)", "the title", "when the file was saved"])
        self.assertTrue(all(map(math.isnan, left.uv[:8])))
        self.assertEqual((len(left.uv), left.conductivity[8], left.times[8]), (20, 8, 8 / 300))
        forged = Chart()
        forged.records[9] = (b"SAMP", samples(2**40, 1))
        left = self.left(forged.bytes())
        self.assertLess(len(left.uv), 30)
        self.assertIn("later times have moved up", "".join(left.missing))

    def test_a_hole_costs_nothing(self):
        os.truncate(self.lay(Chart().bytes()), 1 << 40)
        self.assertEqual(ostrel.read(self.folder / "run.chd", strict=False).missing, [])
        with open(self.folder / "run.chd", "ab") as file:
            file.write(b"x")
        self.assertRaises(ostrel.NotAChart, ostrel.read, self.folder / "run.chd", strict=False)

    def test_the_summary(self):
        chart = Chart()
        chart.records[0] = (b"TITL", text("a\x1b[2J\u202eb"))
        good, cut = self.lay(chart.bytes(), "good"), self.lay(chart.bytes()[:-60], "cut")
        for environment in ({}, {"PYTHONIOENCODING": "ascii"}):
            told = self.terminal(good, env={**os.environ, **environment})
            self.assertEqual((told.returncode, told.stderr), (0, ""))
            for fact in (r"a\x1b[2J\u202eb", "0.06 minutes (0:00:04)", "0 to 0.019 AU", "/dev/ttyUSB0", "0.500 min  S"):
                self.assertIn(fact, told.stdout)
        told = self.terminal(cut, self.folder / "none", good)
        self.assertEqual(told.returncode, 1)
        self.assertRegex(told.stderr, "cut: is cut off at byte .*\n.*none: No such file")
        self.assertIn("Missing:", told.stdout)
        self.assertEqual(self.terminal().returncode, 2)


class RunningLog(Case):
    def tick(self, number, identity=b"identity", promise=True, end=0):
        """One file of a log with ten samples and a mark in each, from its place in the row on."""
        file = Chart(1, b"TICK", identity, number)
        file.records = [(b"SAMP", samples(10 * number, 10)), (b"MARK", marks(number, str(number)))]
        file.records += [(b"TITL", text("Anna")), (b"NOTE", text(f"note {number}"))]
        stretches = [{"from": 0, "begun": "2026-03-29T01:59:58+01:00", "to": None}]
        file.records += [(b"PROV", json.dumps({"system": "Anna", "stretches": stretches}).encode())]
        file.records += [(b"END ", struct.pack("<3Q", 10 * number + 10, number + 1, 0))] if promise else []
        return self.lay(file.bytes() + bytes(end), f"Log{number + 1:05}.dat")

    def missing(self):
        """What is missing of the log; the strict reader says the same."""
        run = ostrel.read(self.folder, strict=False)
        if run.missing:
            with self.assertRaises(ostrel.Damaged) as caught:
                ostrel.read(self.folder)
            self.assertIn(run.missing[0], str(caught.exception))
        else:
            self.assertEqual(content(ostrel.read(self.folder)), content(run))
        return run, [what.replace(str(self.folder), ".") for what in run.missing]

    def test_a_log_is_put_together_and_its_gaps_are_told(self):
        self.assertRaises(ostrel.NotAChart, ostrel.read, self.folder, strict=False)
        files = [self.tick(number, end=500) for number in range(4)]
        self.lay(b"mine", "notes.txt")
        self.lay(b"", "Log00009.dat")
        (self.folder / "Log00008.dat").symlink_to("/nowhere")
        run, missing = self.missing()
        self.assertEqual((run.kind, run.title, run.notes, missing), ("running log", "Anna", "note 3", []))
        self.assertEqual(list(run.conductivity), list(range(40)))
        self.assertEqual(run.provenance["ended"], "2026-03-29T02:00:05+01:00")
        data = files[1].read_bytes()
        files[1].write_bytes(data[:16] + b"another!" + data[24:])  # the file beside it tells the identity
        self.assertEqual(content(self.missing()[0]), content(run))
        files[1].unlink()
        left, missing = self.missing()
        self.assertEqual(missing, ["minutes 0.03 to 0.06 (10 samples)", "1 event mark"])
        self.assertTrue(math.isnan(left.uv[19]) and left.conductivity[39] == 39)
        self.assertEqual([mark.label for mark in left.marks], ["0", "2", "3"])
        if recorder:
            with tempfile.TemporaryDirectory() as other:
                call = [recorder, "salvage", self.folder, other + "/new.chd"]
                self.assertEqual(subprocess.run(call, capture_output=True).returncode, 3)
                salvaged = ostrel.read(other + "/new.chd")
            self.assertEqual(content(salvaged)[:2], content(left)[:2])
            self.assertEqual(salvaged.provenance["ended"], left.provenance["ended"])

    def test_every_wrong_byte_of_a_log_is_told_or_does_no_harm(self):
        run = (self.tick(0), self.tick(1), ostrel.read(self.folder))[2]
        file = self.tick(0)
        whole = file.read_bytes()
        for place in range(len(whole)):
            file.write_bytes(flipped(whole, place))
            with self.subTest(place=place):
                left, missing = self.missing()
                self.assertTrue(missing or content(left) == content(run))
                self.assertLessEqual(len(missing), 1)
                self.assertEqual(len(left.uv), 20)

    def test_what_was_promised_counts_unless_the_power_was_cut_before(self):
        file = self.tick(0)
        whole = file.read_bytes()
        mark = whole.index(b"MARK")
        file.write_bytes(whole[:mark] + bytes(whole.index(b"TITL") - mark) + whole[whole.index(b"TITL") :])
        self.assertEqual(self.missing()[1], [])
        self.tick(1)
        self.assertEqual(self.missing()[1], ["1 event mark"])

    def test_runs_stand_one_behind_the_other(self):
        self.tick(0).rename(self.folder / "Log00005.dat")
        self.tick(0, b"the next")
        run, missing = self.missing()
        self.assertEqual((len(run.uv), run.conductivity[10], missing), (20, 0, []))
        self.assertAlmostEqual(run.marks[1].minutes, 0.5 + 10 / 300)
        second = run.provenance["stretches"][1]
        self.assertEqual((round(second["from"], 6), round(second["to"], 6)), (0.033333, 0.063333))
        self.lay(Chart(2, b"TICK").bytes(), "Log00006.dat")
        self.assertRegex(ostrel.read(self.folder, strict=False).missing[0], "newer")
        self.assertRaises(ostrel.NewerVersion, ostrel.read, self.folder)


if __name__ == "__main__":
    unittest.main()
