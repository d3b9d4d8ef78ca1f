#!/usr/bin/python3
"""txt2mtxt end to end: txt2mtxt.py QVAD WORKDIR

Drawings are written with ezdxf, qvad runs txt2mtxt on them from a script, and ezdxf reads the saved
result: the MTEXT's contents with its format codes, insertion point, width, attachment, flow direction,
direction vector, layer, style and colour, and that the source texts are gone. The last result is
printed to PDF with LibreCAD.
"""
import math
import os
import re
import subprocess
import sys
from pathlib import Path

import ezdxf

sys.path.insert(0, str(Path(__file__).resolve().parent))
import librecad_print  # noqa: E402

TIMEOUT = 120
HEIGHT_35 = r"3\.50*"  # the host writes heights with the drawing's precision


class Case:
    def __init__(self, work: Path, name: str):
        self.work = work
        self.name = name
        self.drawing = work / f"{name}.dxf"
        self.output = work / f"{name}.out.dxf"
        self.config = work / f"{name}.config"
        self.doc = ezdxf.new("R2000")
        self.doc.styles.add("NOTES", font="txt")
        self.msp = self.doc.modelspace()
        self.handles = {}

    def text(self, name, string, x, y, height=2.5, **attribs):
        attribs.setdefault("insert", (x, y))
        entity = self.msp.add_text(string, height=height, dxfattribs=attribs)
        self.handles[name] = entity.dxf.handle.upper()
        return entity

    def settings(self, select_type=None, word_wrap=None):
        folder = self.config / "qvad"
        folder.mkdir(parents=True, exist_ok=True)
        lines = ["[QVADEXCMD]"]
        if select_type is not None:
            lines.append(f"TXT2MTXT_SELECTTYPE={select_type}")
        if word_wrap is not None:
            lines.append(f"TXT2MTXT_WORDWARD={word_wrap}")
        (folder / "qvad.ini").write_text("\n".join(lines) + "\n", encoding="utf-8")

    def settings_text(self) -> str:
        path = self.config / "qvad" / "qvad.ini"
        return path.read_text(encoding="utf-8") if path.exists() else ""

    def picks(self, *names):
        return [f"#{self.handles[n]}" for n in names]

    def run(self, lines):
        self.config.mkdir(parents=True, exist_ok=True)
        self.doc.saveas(self.drawing)
        if self.output.exists():
            self.output.unlink()
        script = self.work / f"{self.name}.scr"
        script.write_text("\n".join(lines) + "\n", encoding="utf-8")
        env = dict(os.environ, XDG_CONFIG_HOME=str(self.config.resolve()))
        proc = subprocess.run([QVAD, str(self.drawing), "-s", str(script), "-o", str(self.output)],
                              capture_output=True, text=True, env=env, timeout=TIMEOUT,
                              stdin=subprocess.DEVNULL, cwd=self.work)
        self.status, self.stdout, self.stderr = proc.returncode, proc.stdout, proc.stderr
        return self

    def saved(self):
        return ezdxf.readfile(self.output)

    def describe(self):
        return f"exit {self.status}\n--- stdout\n{self.stdout}\n--- stderr\n{self.stderr}"


class Checks:
    def __init__(self):
        self.failures = []

    def true(self, what, condition, detail=""):
        if not condition:
            self.failures.append(what + (f"\n{detail}" if detail else ""))

    def equal(self, what, actual, expected):
        self.true(what, actual == expected, f"got {actual!r}, expected {expected!r}")

    def near(self, what, actual, expected, tolerance=1e-6):
        same = len(actual) == len(expected) and all(abs(a - b) <= tolerance for a, b in zip(actual, expected))
        self.true(what, same, f"got {tuple(actual)!r}, expected {tuple(expected)!r}")


def one_mtext(checks, case):
    checks.true(f"{case.name}: qvad succeeds", case.status == 0 and case.output.exists(), case.describe())
    if not case.output.exists():
        return None, None
    doc = case.saved()
    mtexts = doc.modelspace().query("MTEXT")
    checks.equal(f"{case.name}: one MTEXT", len(mtexts), 1)
    auditor = doc.audit()
    checks.true(f"{case.name}: nothing for the reader to fix", not auditor.errors and not auditor.fixes,
                "; ".join(str(e.message) for e in [*auditor.errors, *auditor.fixes]))
    return (mtexts[0] if mtexts else None), doc


def remaining_texts(doc):
    return sorted(t.dxf.text for t in doc.modelspace().query("TEXT"))


def check_top_to_bottom(work, checks):
    """No settings: top to bottom, word wrap; BYLAYER, BYBLOCK and red; the heights change and return."""
    case = Case(work, "top_to_bottom")
    case.doc.layers.add("NOTES", color=3)
    case.text("A", "alpha", 10, 20, layer="NOTES", style="NOTES")
    case.text("B", "bravo", 14, 0, height=3.5, color=1, layer="NOTES")
    case.text("C", "charlie", 12, 10, color=0, layer="NOTES")
    case.text("D", "delta", 11, -10, color=0, layer="NOTES")
    case.run(["txt2mtxt", *case.picks("B", "D", "A", "C"), ""])
    mtext, doc = one_mtext(checks, case)
    if mtext is None:
        return
    pattern = rf"alpha\\C0; charlie\\H{HEIGHT_35};\\C1; bravo\\H2\.50*;\\C0; delta"
    checks.true(f"{case.name}: contents", re.fullmatch(pattern, mtext.text) is not None, repr(mtext.text))
    checks.near(f"{case.name}: insertion", mtext.dxf.insert, (10, 22.5, 0))
    checks.equal(f"{case.name}: attachment", mtext.dxf.attachment_point, 1)
    checks.equal(f"{case.name}: flow", mtext.dxf.flow_direction, 5)
    checks.near(f"{case.name}: direction", mtext.dxf.text_direction, (1, 0, 0))
    checks.equal(f"{case.name}: layer", mtext.dxf.layer, "NOTES")
    checks.equal(f"{case.name}: style", mtext.dxf.style, "NOTES")
    checks.equal(f"{case.name}: colour", mtext.dxf.color, 256)
    checks.equal(f"{case.name}: height", mtext.dxf.char_height, 2.5)
    # From the leftmost start (10) beyond the furthest start (14) by some text length.
    checks.true(f"{case.name}: width spans the texts", mtext.dxf.width > 4.0, str(mtext.dxf.width))
    checks.equal(f"{case.name}: sources gone", remaining_texts(doc), [])
    checks.true(f"{case.name}: count printed", "4 texts joined" in case.stdout, case.describe())


def check_selection_order_paragraphs(work, checks):
    """Selection order picked bottom to top stays so; paragraph mode has width 0 and leading spaces."""
    case = Case(work, "selection_paragraphs")
    case.settings("TRUE", "FALSE")
    case.text("LOW", "low", 0, 0)
    case.text("MID", "mid", 0, 5)
    case.text("HIGH", "high", 0, 10, color=2)
    case.run(["txt2mtxt", *case.picks("LOW", "MID", "HIGH"), ""])
    mtext, doc = one_mtext(checks, case)
    if mtext is None:
        return
    checks.equal(f"{case.name}: contents", mtext.text, "low\\P mid\\P\\C2; high")
    checks.equal(f"{case.name}: width", mtext.dxf.width, 0.0)
    checks.near(f"{case.name}: insertion", mtext.dxf.insert, (0, 2.5, 0))
    checks.equal(f"{case.name}: sources gone", remaining_texts(doc), [])


def check_equal_y(work, checks):
    """Top to bottom, texts at one height join in the order they were picked; X plays no part."""
    case = Case(work, "equal_y")
    case.settings("FALSE", "FALSE")
    case.text("RIGHT", "right", 50, 3)
    case.text("LEFT", "left", 0, 3)
    case.text("TOP", "top", 100, 9)
    case.run(["txt2mtxt", *case.picks("RIGHT", "LEFT", "TOP"), ""])
    mtext, _ = one_mtext(checks, case)
    if mtext is not None:
        checks.equal(f"{case.name}: contents", mtext.text, "top\\P right\\P left")
        checks.near(f"{case.name}: insertion", mtext.dxf.insert, (100, 11.5, 0))
        checks.equal(f"{case.name}: a text without a style group joins in the standard style",
                     mtext.dxf.style.upper(), "STANDARD")


def check_vertical_and_rotated(work, checks):
    """Vertical texts add their height on one side; the lead's rotation gives the direction."""
    case = Case(work, "vertical")
    case.settings("TRUE", "TRUE")
    case.text("UP", "up", 0, 0, height=2, rotation=90)
    case.text("DOWN", "down", 10, 0, height=3, rotation=270)
    case.run(["txt2mtxt", *case.picks("UP", "DOWN"), ""])
    mtext, _ = one_mtext(checks, case)
    if mtext is not None:
        checks.true(f"{case.name}: width", abs(mtext.dxf.width - 15.0) < 1e-9, str(mtext.dxf.width))
        checks.near(f"{case.name}: direction", mtext.dxf.text_direction, (0, 1, 0))
        checks.true(f"{case.name}: height code", re.fullmatch(r"up\\H3(\.0*)?; down", mtext.text) is not None,
                    repr(mtext.text))

    rotated = Case(work, "rotated")
    rotated.settings("TRUE", "TRUE")
    rotated.text("R", "turned", 5, 2, rotation=30)
    rotated.text("F", "flipped", 7, 2, extrusion=(0, 0, -1))
    rotated.run(["txt2mtxt", *rotated.picks("R", "F"), ""])
    mtext, _ = one_mtext(checks, rotated)
    if mtext is not None:
        angle = math.radians(30)
        checks.near(f"{rotated.name}: direction", mtext.dxf.text_direction, (math.cos(angle), math.sin(angle), 0))
        checks.near(f"{rotated.name}: insertion", mtext.dxf.insert, (5, 4.5, 0))

    mirrored = Case(work, "object_system")
    mirrored.settings("TRUE", "FALSE")
    mirrored.text("F", "flipped", 7, 2, extrusion=(0, 0, -1))
    mirrored.text("G", "plain", 0, 0)
    mirrored.run(["txt2mtxt", *mirrored.picks("F", "G"), ""])
    mtext, _ = one_mtext(checks, mirrored)
    if mtext is not None:
        checks.near(f"{mirrored.name}: insertion in world", mtext.dxf.insert, (-7, 4.5, 0))
        checks.near(f"{mirrored.name}: direction in world", mtext.dxf.text_direction, (-1, 0, 0))


def check_locked_and_other_entities(work, checks):
    """Texts on locked layers and other entities are skipped and counted; none left changes nothing."""
    case = Case(work, "locked")
    case.settings("TRUE", "FALSE")
    case.doc.layers.add("FIXED").lock()
    case.text("ONE", "one", 0, 0)
    case.text("KEPT", "kept", 0, 5, layer="FIXED")
    case.text("TWO", "two", 0, 10)
    line = case.msp.add_line((0, 0), (5, 5))
    case.handles["LINE"] = line.dxf.handle.upper()
    case.run(["txt2mtxt", *case.picks("ONE", "KEPT", "LINE", "TWO"), ""])
    mtext, doc = one_mtext(checks, case)
    if mtext is not None:
        checks.equal(f"{case.name}: contents", mtext.text, "one\\P two")
        checks.equal(f"{case.name}: locked text stays", remaining_texts(doc), ["kept"])
        checks.true(f"{case.name}: skipped count", "skipped (not single-line text, or on a locked layer): 2."
                    in case.stdout, case.describe())

    none = Case(work, "nothing_to_join")
    none.doc.layers.add("FIXED").lock()
    none.text("KEPT", "kept", 0, 5, layer="FIXED")
    line = none.msp.add_line((0, 0), (5, 5))
    none.handles["LINE"] = line.dxf.handle.upper()
    none.run(["txt2mtxt", *none.picks("KEPT", "LINE"), ""])
    checks.true(f"{none.name}: qvad succeeds", none.status == 0 and none.output.exists(), none.describe())
    checks.true(f"{none.name}: says so", "No text to join." in none.stdout, none.describe())
    if none.output.exists():
        doc = none.saved()
        checks.equal(f"{none.name}: no MTEXT", len(doc.modelspace().query("MTEXT")), 0)
        checks.equal(f"{none.name}: text stays", remaining_texts(doc), ["kept"])


def check_pick_first(work, checks):
    """Texts chosen with SELECT before the command are joined without a prompt."""
    case = Case(work, "pick_first")
    case.settings("TRUE", "FALSE")
    case.text("P", "picked", 0, 0)
    case.text("Q", "first", 0, 5)
    case.run(["SELECT", *case.picks("P", "Q"), "", "txt2mtxt"])
    mtext, _ = one_mtext(checks, case)
    if mtext is not None:
        checks.equal(f"{case.name}: contents", mtext.text, "picked\\P first")
    checks.equal(f"{case.name}: no selection prompt", case.stdout.count("Select texts to join"), 0)
    checks.true(f"{case.name}: selected count", "Texts selected: 2." in case.stdout, case.describe())

    single = Case(work, "pick_first_short")
    single.settings("TRUE", "FALSE")
    single.text("P", "picked", 0, 0)
    line = single.msp.add_line((0, 0), (5, 5))
    single.handles["LINE"] = line.dxf.handle.upper()
    single.text("Q", "other", 0, 5)
    single.run(["SELECT", *single.picks("P", "LINE"), "", "txt2mtxt", *single.picks("Q", "P"), ""])
    mtext, _ = one_mtext(checks, single)
    if mtext is not None:
        checks.equal(f"{single.name}: prompt used", mtext.text, "other\\P picked")
    checks.true(f"{single.name}: valid count", "skipped (not single-line text, or on a locked layer): 1."
                in single.stdout, single.describe())


def check_dialog(work, checks):
    """An empty answer opens the options; OK writes them and they steer this run; Cancel writes nothing."""
    case = Case(work, "dialog_ok")
    case.text("LOW", "low", 0, 0)
    case.text("HIGH", "high", 0, 10)
    case.run(["txt2mtxt", "", "Yes", "No", "OK", *case.picks("LOW", "HIGH"), ""])
    mtext, _ = one_mtext(checks, case)
    if mtext is not None:
        checks.equal(f"{case.name}: selection order, paragraphs", mtext.text, "low\\P high")
        checks.equal(f"{case.name}: width", mtext.dxf.width, 0.0)
    stored = case.settings_text()
    checks.true(f"{case.name}: settings written", "TXT2MTXT_SELECTTYPE=TRUE" in stored
                and "TXT2MTXT_WORDWARD=FALSE" in stored, stored)

    cancel = Case(work, "dialog_cancel")
    cancel.settings("FALSE", "TRUE")
    cancel.text("LOW", "low", 0, 0)
    cancel.text("HIGH", "high", 0, 10)
    cancel.run(["txt2mtxt", "", "Yes", "No", "Cancel", *cancel.picks("LOW", "HIGH"), ""])
    mtext, _ = one_mtext(checks, cancel)
    if mtext is not None:
        checks.equal(f"{cancel.name}: settings kept", mtext.text, "high low")
    stored = cancel.settings_text()
    checks.true(f"{cancel.name}: nothing written", "TXT2MTXT_SELECTTYPE=FALSE" in stored, stored)


def check_cancel_and_undo(work, checks):
    """Input ending at the prompt changes nothing; UNDO brings every source text back."""
    cut = Case(work, "cancelled")
    cut.text("A", "a", 0, 0)
    cut.text("B", "b", 0, 5)
    cut.run(["txt2mtxt"])
    checks.true(f"{cut.name}: exits nonzero", cut.status != 0, cut.describe())
    checks.true(f"{cut.name}: nothing saved", not cut.output.exists(), cut.describe())
    checks.true(f"{cut.name}: no MTEXT made", "texts joined" not in cut.stdout, cut.describe())

    case = Case(work, "undo")
    for i in range(5):
        case.text(f"T{i}", f"line {i}", 0, i * 4, color=i + 1)
    case.run(["txt2mtxt", *case.picks(*(f"T{i}" for i in range(5))), "", "U"])
    checks.true(f"{case.name}: qvad succeeds", case.status == 0 and case.output.exists(), case.describe())
    if case.output.exists():
        doc = case.saved()
        checks.equal(f"{case.name}: no MTEXT", len(doc.modelspace().query("MTEXT")), 0)
        checks.equal(f"{case.name}: every text back", remaining_texts(doc), [f"line {i}" for i in range(5)])
        back = {t.dxf.handle.upper(): t.dxf.color for t in doc.modelspace().query("TEXT")}
        checks.equal(f"{case.name}: same handles and colours",
                     back, {case.handles[f"T{i}"]: i + 1 for i in range(5)})


def check_librecad(work, checks):
    """A joined result opens in LibreCAD and prints."""
    source = work / "top_to_bottom.out.dxf"
    if not source.exists():
        checks.true("librecad: nothing to print", False)
        return
    pdf, reason = librecad_print.print_to_pdf(source)
    checks.true("librecad: prints the joined drawing", pdf is not None, reason or "")


def main():
    global QVAD
    QVAD = str(Path(sys.argv[1]).resolve())
    work = Path(sys.argv[2]).resolve()
    work.mkdir(parents=True, exist_ok=True)
    checks = Checks()
    check_top_to_bottom(work, checks)
    check_selection_order_paragraphs(work, checks)
    check_equal_y(work, checks)
    check_vertical_and_rotated(work, checks)
    check_locked_and_other_entities(work, checks)
    check_pick_first(work, checks)
    check_dialog(work, checks)
    check_cancel_and_undo(work, checks)
    if "--no-print" not in sys.argv:
        check_librecad(work, checks)
    for failure in checks.failures:
        print("FAIL:", failure)
    print(f"txt2mtxt: {'ok' if not checks.failures else f'{len(checks.failures)} failed'}")
    return 1 if checks.failures else 0


if __name__ == "__main__":
    sys.exit(main())
