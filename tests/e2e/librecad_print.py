#!/usr/bin/python3
"""Print a drawing qvad saved with LibreCAD: librecad_print.py QVAD WORKDIR [--drawing NAME ...]

LibreCAD is a second, unrelated reader: if it can open what qvad wrote and
print it to PDF with about as much ink as the original, the file is usable
beyond ezdxf. NAME is a generated drawing (default all_R2000.dxf). Ends with
"N passed, N failed".
"""
import argparse
import os
import shutil
import signal
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "tools"))
import make_entity_drawings  # noqa: E402
import roundtrip  # noqa: E402

PRINT_TIMEOUT = 180
# Less ink than this share of the original's print means entities went missing.
MIN_INK_SHARE = 0.5
MIN_INK_PIXELS = 20


def run_group(command, timeout):
    """LibreCAD waits forever on a dialog for files it cannot read; the whole
    process group (xvfb-run, Xvfb, LibreCAD) goes on timeout."""
    proc = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                            stdin=subprocess.DEVNULL, start_new_session=True, text=True,
                            errors="replace")
    try:
        output, _ = proc.communicate(timeout=timeout)
        return proc.returncode, output
    except subprocess.TimeoutExpired:
        # TERM first: xvfb-run then stops its X server and removes its lock file
        os.killpg(proc.pid, signal.SIGTERM)
        try:
            proc.communicate(timeout=10)
        except subprocess.TimeoutExpired:
            os.killpg(proc.pid, signal.SIGKILL)
            proc.communicate()
        return None, f"no result within {timeout} s"


def print_to_pdf(dxf: Path):
    """(pdf path, None) or (None, reason). dxf2pdf writes NAME.pdf beside
    NAME.dxf; -a fits the drawing to the page."""
    pdf = dxf.with_suffix(".pdf")
    pdf.unlink(missing_ok=True)
    status, output = run_group(["xvfb-run", "-a", "librecad", "dxf2pdf", "-a", str(dxf)],
                               PRINT_TIMEOUT)
    if status is None:
        return None, f"LibreCAD: {output}"
    if not pdf.is_file() or pdf.stat().st_size == 0:
        return None, f"LibreCAD wrote no PDF (exit status {status}): {_last_line(output)}"
    return pdf, None


def _last_line(text):
    lines = [line for line in text.splitlines() if line.strip()]
    return lines[-1] if lines else "(no output)"


def ink(pdf: Path):
    """(dark pixels on page 1 at 50 dpi, None) or (None, reason)."""
    prefix = pdf.with_suffix("")
    proc = subprocess.run(["pdftoppm", "-gray", "-r", "50", "-singlefile", str(pdf), str(prefix)],
                          capture_output=True, text=True, errors="replace", timeout=300)
    pgm = prefix.with_suffix(".pgm")
    if proc.returncode != 0 or not pgm.is_file():
        return None, f"pdftoppm failed: {_last_line(proc.stderr)} ({page_size(pdf)})"
    width, height, maxval, pixels = read_pgm(pgm.read_bytes())
    if width * height < 10000:
        return None, f"page rendered as {width}x{height} pixels ({page_size(pdf)})"
    return sum(1 for p in pixels if p < maxval * 0.8), None


def page_size(pdf: Path) -> str:
    info = subprocess.run(["pdfinfo", str(pdf)], capture_output=True, text=True,
                          errors="replace").stdout
    size = next((line for line in info.splitlines() if line.startswith("Page size")), "")
    return size or "page size unknown"


def read_pgm(data: bytes):
    """Binary PGM (P5), 8-bit: width, height, maxval, pixel bytes."""
    fields, pos = [], 0
    while len(fields) < 4:
        while data[pos:pos + 1].isspace():
            pos += 1
        if data[pos:pos + 1] == b"#":
            pos = data.index(b"\n", pos) + 1
            continue
        end = pos
        while not data[end:end + 1].isspace():
            end += 1
        fields.append(data[pos:end])
        pos = end
    if fields[0] != b"P5":
        raise ValueError("not a binary PGM")
    width, height, maxval = (int(f) for f in fields[1:])
    if maxval > 255:
        raise ValueError("16-bit PGM")
    pixels = data[pos + 1: pos + 1 + width * height]
    return width, height, maxval, pixels


def check(qvad, original: Path, work: Path):
    """None when the saved drawing prints, else the reason."""
    work.mkdir(parents=True, exist_ok=True)
    reference = work / f"original_{original.name}"
    shutil.copyfile(original, reference)
    saved = work / f"saved_{original.name}"
    saved.unlink(missing_ok=True)
    failure = roundtrip.run_qvad(qvad, original, saved)
    if failure:
        return failure
    ref_pdf, failure = print_to_pdf(reference)
    if failure:
        return f"the original itself does not print: {failure}"
    ref_ink, failure = ink(ref_pdf)
    if failure:
        return f"the original itself does not render: {failure}"
    pdf, failure = print_to_pdf(saved)
    if failure:
        return failure
    saved_ink, failure = ink(pdf)
    if failure:
        return failure
    if saved_ink < MIN_INK_PIXELS or saved_ink < MIN_INK_SHARE * ref_ink:
        return f"printed page nearly blank: {saved_ink} dark pixels, original {ref_ink}"
    return None


def main(argv) -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("qvad")
    parser.add_argument("workdir")
    parser.add_argument("--drawing", action="append",
                        help="generated drawing to print (repeatable)")
    args = parser.parse_args(argv)

    work = Path(args.workdir)
    generated = {p.name: p for p in make_entity_drawings.write_all(work / "generated")}
    names = args.drawing or ["all_R2000.dxf"]
    unknown = [n for n in names if n not in generated]
    if unknown:
        print(f"no such generated drawing: {', '.join(unknown)}")
        return 2
    qvad = roundtrip.resolve_program(args.qvad)
    passed = failed = 0
    for name in names:
        problem = check(qvad, generated[name], work / "print")
        if problem:
            failed += 1
            print(f"FAIL {name}: {problem}", flush=True)
        else:
            passed += 1
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
