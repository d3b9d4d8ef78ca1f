"""What the host command-line tests share: the probe drawing, running qvad on
a script, reading the probe's records back, and comparing two saved drawings.

Scripts are kept as templates beside this file; "{NAME}" stands for the
handle of the fixture entity NAME, known only once the drawing is written.
"""
import argparse
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

import ezdxf

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "tools"))
import dxfcompare  # noqa: E402
import dxfdiff  # noqa: E402
import dxfload  # noqa: E402

QVAD_TIMEOUT = 120
# Header variables a save or the passing of time changes by itself.
VOLATILE_HEADER = {
    "$HANDSEED", "$TDCREATE", "$TDUCREATE", "$TDUPDATE", "$TDUUPDATE", "$TDINDWG", "$TDUSRTIMER",
    "$FINGERPRINTGUID", "$VERSIONGUID", "$DWGCODEPAGE", "$ACADMAINTVER",
}


def write_probe_drawing(path: Path) -> dict:
    """The drawing every host test starts from; returns the handles by name.

    Model space in this order: L1, L2 (red), C1, T1, I1 (a reference to BOX
    holding BL and BC), L3. The probe's selections are worked out on it.
    """
    doc = ezdxf.new("R2000")
    for name in ("WALLS", "WALLS2", "DOORS", "NOTES", "BLOCKS"):
        doc.layers.add(name)
    box = doc.blocks.new("BOX")
    bl = box.add_line((0, 0), (1, 0))
    bc = box.add_circle((0, 1), 0.3)
    msp = doc.modelspace()
    handles = {
        "L1": msp.add_line((0, 0), (10, 0), dxfattribs={"layer": "WALLS"}),
        "L2": msp.add_line((0, 5), (10, 5), dxfattribs={"layer": "WALLS", "color": 1}),
        "C1": msp.add_circle((20, 0), 2, dxfattribs={"layer": "DOORS"}),
        "T1": msp.add_text("hello", height=2.5, dxfattribs={"layer": "NOTES", "insert": (30, 0)}),
        "I1": msp.add_blockref("BOX", (40, 0), dxfattribs={"layer": "BLOCKS"}),
        "L3": msp.add_line((0, 20), (5, 25), dxfattribs={"layer": "WALLS2"}),
        "BL": bl,
        "BC": bc,
    }
    path.parent.mkdir(parents=True, exist_ok=True)
    doc.saveas(path)
    return {name: entity.dxf.handle.upper() for name, entity in handles.items()}


def script_lines(name: str) -> list:
    """A script template's lines, as stored beside this file."""
    return (HERE / name).read_text(encoding="utf-8").splitlines()


def fill(lines, handles: dict) -> list:
    return [line.format_map(handles) for line in lines]


@dataclass
class Run:
    status: int
    stdout: str
    stderr: str
    output: Path

    def times_asked(self, prompt: str) -> int:
        """How often the prompt starts a line of the transcript, as a person reads it: a message
        glued in front of a prompt does not count."""
        return sum(1 for line in self.stdout.splitlines() if line.startswith(prompt))

    @property
    def transcript(self) -> str:
        return self.stdout + self.stderr

    def describe(self) -> str:
        return f"exit {self.status}\n--- stdout\n{self.stdout}\n--- stderr\n{self.stderr}"


class Host:
    """Runs qvad with the probe module on drawings in one work folder."""

    def __init__(self, qvad, probe, workdir):
        self.qvad = str(Path(qvad).resolve())
        self.probe = str(Path(probe).resolve())
        self.work = Path(workdir).resolve()
        self.work.mkdir(parents=True, exist_ok=True)
        self.drawing = self.work / "probe.dxf"
        self.handles = write_probe_drawing(self.drawing)

    def run(self, name: str, lines, drawing=None, output=True, extra=()) -> Run:
        """Runs the script lines (templates filled in) as WORK/name.scr."""
        script = self.work / f"{name}.scr"
        script.write_text("\n".join(fill(lines, self.handles)) + "\n", encoding="utf-8")
        out = self.work / f"{name}.out.dxf"
        if output and out.exists():
            out.unlink()
        command = [self.qvad, str(drawing or self.drawing), "-s", str(script), "--module", self.probe]
        if output:
            command += ["-o", str(out)]
        command += list(extra)
        proc = subprocess.run(command, capture_output=True, text=True, timeout=QVAD_TIMEOUT,
                              stdin=subprocess.DEVNULL, cwd=self.work)
        return Run(proc.returncode, proc.stdout, proc.stderr, out)


def probe_records(path: Path) -> dict:
    """The probe's "key=value" texts on layer PROBE; a key written twice keeps its last value."""
    doc = ezdxf.readfile(str(path))
    records = {}
    for text in doc.modelspace().query('TEXT[layer=="PROBE"]'):
        key, _, value = text.dxf.text.partition("=")
        records[key] = value
    return records


def header_differences(a, b) -> list:
    keys = (set(a.header.varnames()) | set(b.header.varnames())) - VOLATILE_HEADER
    diffs = []
    for key in sorted(keys):
        va = a.header.get(key)
        vb = b.header.get(key)
        if dxfcompare.first_difference(va, vb) is not None:
            diffs.append(f"header {key}: {va!r} != {vb!r}")
    return diffs


def drawing_differences(a: Path, b: Path) -> list:
    """Entities, tables, groups and header variables of two saved drawings; empty when the same.

    The shared comparison asks whether the second file holds all of the first, so it runs both ways:
    a table record that only one of them has is a difference too.
    """
    diffs, original = dxfdiff.compare_files(a, b)
    if original.doc is None:
        return [f"{a} does not load: {original.error}"]
    back, _ = dxfdiff.compare_files(b, a)
    return diffs + [f"(reversed) {d}" for d in back] + header_differences(original.doc, dxfload.load_plain(b))


class Checks:
    """Collects failed expectations so that one run reports all of them."""

    def __init__(self):
        self.failures = []

    def equal(self, what: str, actual, expected):
        if actual != expected:
            self.failures.append(f"{what}: got {actual!r}, expected {expected!r}")

    def true(self, what: str, condition: bool, detail: str = ""):
        if not condition:
            self.failures.append(what + (f"\n{detail}" if detail else ""))

    def report(self, name: str) -> int:
        for failure in self.failures:
            print(f"FAIL {name}: {failure}")
        print(f"{name}: {'ok' if not self.failures else f'{len(self.failures)} failed'}")
        return 1 if self.failures else 0


def handle_set(handles: dict, *names) -> str:
    """The sorted, comma-separated handles the probe records for a set."""
    return ",".join(sorted(handles[n] for n in names))


def main(doc: str, name: str, *check_functions) -> int:
    """The command line every host_*.py test shares: QVAD PROBE WORKDIR, then each check in turn."""
    parser = argparse.ArgumentParser(description=doc.splitlines()[0])
    parser.add_argument("qvad")
    parser.add_argument("probe")
    parser.add_argument("workdir")
    args = parser.parse_args(sys.argv[1:])
    host = Host(args.qvad, args.probe, args.workdir)
    checks = Checks()
    for check in check_functions:
        check(host, checks)
    return checks.report(name)
