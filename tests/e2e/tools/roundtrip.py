"""Round-trip a set of drawings through qvad and check each saved file.

Shared by the corpus and the generated-drawing tests: run `qvad IN -o OUT`,
then ezdxf must load OUT without recovery, audit it clean, and find the
original's content in it.
"""
import concurrent.futures
import os
import shutil
import signal
import subprocess
import tempfile
from dataclasses import dataclass, field
from pathlib import Path

import dxfcheck
import dxfdiff
import dxfload

QVAD_TIMEOUT = 60
# qvad never writes anything older than R2000, and never downgrades.
OLDEST_SAVED_VERSION = "AC1015"


@dataclass
class Result:
    name: str
    problems: list = field(default_factory=list)
    original: str = ""  # how ezdxf reads the original, see original_state()


def resolve_program(name: str) -> str:
    """An absolute path, so that the same program runs whatever the folder."""
    return os.path.abspath(name) if os.sep in name else (shutil.which(name) or name)


def run_qvad(qvad, src: Path, dst: Path):
    """None on success, else the reason."""
    try:
        proc = subprocess.run([str(qvad), str(src), "-o", str(dst)], capture_output=True,
                              text=True, errors="replace", timeout=QVAD_TIMEOUT,
                              stdin=subprocess.DEVNULL)
    except subprocess.TimeoutExpired:
        return f"qvad did not finish within {QVAD_TIMEOUT} s"
    except OSError as error:
        return f"qvad cannot be started: {error}"
    if proc.returncode < 0:
        return f"qvad killed by {signal.Signals(-proc.returncode).name}"
    if proc.returncode != 0:
        lines = (proc.stderr.strip() or proc.stdout.strip()).splitlines()
        return f"qvad exit status {proc.returncode}: {lines[0] if lines else '(no message)'}"
    if not dst.is_file():
        return "qvad reported success but wrote no file"
    return None


def original_state(original) -> str:
    """plain | audit-errors | audit-crash | recover | unreadable"""
    if original.how != "plain":
        return original.how
    problems = dxfcheck.audit_doc(original.doc)
    if problems and problems[0].startswith("audit crashed"):
        return "audit-crash"
    return "audit-errors" if problems else "plain"


def file_version(doc) -> str:
    """The version the file says it is; ezdxf's model lifts R13/R14 to R2000."""
    return doc.loaded_dxfversion or doc.dxfversion


def check_saved(src: Path, dst: Path, original) -> list:
    try:
        saved = dxfload.load_plain(dst)
    except Exception as error:
        return [f"saved file does not load without recovery: {dxfload.describe(error)}"]
    problems = []
    # A drawing keeps its own version; R12 and older ones are brought up to R2000 at least.
    own = file_version(original.doc) if original.doc else ""
    if own > "AC1009" and file_version(saved) != own:
        problems.append(f"saved as {file_version(saved)}, expected its own version {own}")
    elif own <= "AC1009" and file_version(saved) < OLDEST_SAVED_VERSION:
        problems.append(f"saved as {file_version(saved)}, expected {OLDEST_SAVED_VERSION} or newer")
    if original.doc is not None:
        diffs, _ = dxfdiff.compare_files(src, dst, original=original, saved_doc=saved)
        problems += diffs
    # The audit repairs what it finds, so it runs after the comparison.
    problems += dxfcheck.audit_doc(saved)
    return problems


def check_one(task) -> Result:
    qvad, src, dst, name = task
    dst.unlink(missing_ok=True)
    failure = run_qvad(qvad, src, dst)
    original = dxfload.load_original(src)
    try:
        problems = [failure] if failure else check_saved(src, dst, original)
        state = original_state(original)
    except Exception as error:  # one odd file must not end the whole run
        return Result(name, [f"checker crashed: {dxfload.describe(error)}"], "checker-crash")
    return Result(name, problems, state)


def run_all(qvad, drawings, outdir, jobs=2, report=print) -> list:
    """drawings: (name, path) pairs; name is unique and file-name safe.
    Reports one line per failing drawing while running; returns the results."""
    qvad = resolve_program(qvad)
    outdir = Path(outdir)
    outdir.mkdir(parents=True, exist_ok=True)
    tasks = [(qvad, Path(src), outdir / name, name) for name, src in drawings]
    results = []
    with concurrent.futures.ProcessPoolExecutor(max_workers=max(1, jobs)) as pool:
        for result in pool.map(check_one, tasks, chunksize=1):
            results.append(result)
            if result.problems:
                shown = " | ".join(result.problems[:3])
                more = len(result.problems) - 3
                report(f"FAIL {result.name}: {shown}" + (f" (+{more} more)" if more > 0 else ""))
    return results


def summary(results) -> str:
    failed = sum(1 for r in results if r.problems)
    return f"{len(results) - failed} passed, {failed} failed"


def scratch_dir(requested):
    """The requested folder, or a temporary one removed at exit."""
    if requested:
        return Path(requested), None
    holder = tempfile.TemporaryDirectory(prefix="qvad-e2e-")
    return Path(holder.name), holder
