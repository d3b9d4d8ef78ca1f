#!/usr/bin/python3
"""qvad run by scripts: app_script_run.py QVAD WORKDIR

- a script and -c lines change a drawing, -o saves it, and ezdxf reads the result;
- a script that ends inside a command exits nonzero, names the script and line, and saves nothing;
- QUIT in a script discards the changes: nothing is saved even with -o;
- --commands lists the host's own commands (and whatever modules loaded) as GROUP GLOBAL LOCAL;
- a module that cannot be loaded is reported and the run goes on.
Ends with "N passed, N failed"; exit status 1 when anything failed.
"""
import shutil
import subprocess
import sys
from pathlib import Path

import ezdxf

TIMEOUT = 120


def run(qvad, *args, cwd):
    return subprocess.run([str(qvad), *map(str, args)], capture_output=True, text=True, errors="replace",
                          timeout=TIMEOUT, stdin=subprocess.DEVNULL, cwd=cwd)


def two_lines(path):
    doc = ezdxf.new("R2010")
    msp = doc.modelspace()
    first = msp.add_line((0, 0), (10, 0))
    msp.add_line((0, 5), (10, 5))
    doc.saveas(str(path))
    return first.dxf.handle


def script_changes_and_saves(qvad, work):
    drawing = work / "two.dxf"
    handle = two_lines(drawing)
    script = work / "edit.scr"
    script.write_text(f"; erase the first line by its handle\nERASE\n#{handle}\n\nSETVAR\nUSERR1\n2.5\n")
    out = work / "edited.dxf"
    proc = run(qvad, drawing, "-c", "SETVAR USERI2 7", "-s", script, "-o", out, cwd=work)
    if proc.returncode != 0:
        return f"exit status {proc.returncode}: {proc.stderr.strip()}"
    if "Select objects: #" + handle not in proc.stdout:
        return "the transcript does not show the script's answers:\n" + proc.stdout
    doc = ezdxf.readfile(str(out))
    handles = [e.dxf.handle for e in doc.modelspace()]
    if handle in handles or len(handles) != 1:
        return f"the erased line is still there: {handles}"
    if doc.header.get("$USERR1") != 2.5 or doc.header.get("$USERI2") != 7:
        return f"USERR1 {doc.header.get('$USERR1')}, USERI2 {doc.header.get('$USERI2')}"
    auditor = doc.audit()
    if auditor.has_errors:
        return "ezdxf audit: " + "; ".join(str(e.message) for e in auditor.errors)
    return None


def script_ending_inside_a_command_fails(qvad, work):
    drawing = work / "two.dxf"
    handle = two_lines(drawing)
    script = work / "unfinished.scr"
    script.write_text(f"ERASE\n#{handle}\n")  # the selection is never finished
    out = work / "unfinished.dxf"
    proc = run(qvad, drawing, "-s", script, "-o", out, cwd=work)
    if proc.returncode == 0:
        return "exit status 0"
    if out.exists():
        return "the drawing was saved"
    if f"{script}:2:" not in proc.stderr:
        return "the message does not name the script's last line: " + proc.stderr.strip()
    return None


def quit_discards(qvad, work):
    drawing = work / "two.dxf"
    handle = two_lines(drawing)
    script = work / "quit.scr"
    script.write_text(f"ERASE\n#{handle}\n\nQUIT\nYes\n")
    out = work / "quit.dxf"
    proc = run(qvad, drawing, "-s", script, "-o", out, cwd=work)
    if proc.returncode != 0:
        return f"exit status {proc.returncode}: {proc.stderr.strip()}"
    if "Discard changes to the drawing?" not in proc.stdout:
        return "QUIT did not ask before discarding changes:\n" + proc.stdout
    if out.exists():
        return "QUIT saved the drawing"
    return None


def command_list(qvad, work):
    proc = run(qvad, "--commands", "--module", work / "absent.omx", cwd=work)
    if proc.returncode != 0:
        return f"exit status {proc.returncode}: {proc.stderr.strip()}"
    if f"qvad: cannot load module {work / 'absent.omx'}:" not in proc.stderr:
        return "no message about the module that cannot be loaded: " + proc.stderr.strip()
    rows = [line.split(" ") for line in proc.stdout.splitlines()]
    if any(len(row) != 3 for row in rows):
        return "lines not of the form GROUP GLOBAL LOCAL:\n" + proc.stdout
    for wanted in (["QVAD", "SAVE", "SAVE"], ["QVAD", "SAVEAS", "SAVEAS"], ["QVAD", "QUIT", "QUIT"]):
        if wanted not in rows:
            return f"{' '.join(wanted)} missing from:\n" + proc.stdout
    # Without --module the modules folder is loaded: whatever groups are there besides the host's.
    default = run(qvad, "--commands", cwd=work)
    if default.returncode != 0 or not set(proc.stdout.splitlines()) <= set(default.stdout.splitlines()):
        return "the default run lists fewer commands than the host alone:\n" + default.stderr
    return None


def main():
    qvad = Path(sys.argv[1]).resolve()
    work = Path(sys.argv[2]).resolve()
    shutil.rmtree(work, ignore_errors=True)
    passed = failed = 0
    for check in (script_changes_and_saves, script_ending_inside_a_command_fails, quit_discards, command_list):
        folder = work / check.__name__
        folder.mkdir(parents=True)
        problem = check(qvad, folder)
        if problem:
            failed += 1
            print(f"FAIL {check.__name__}: {problem}")
        else:
            passed += 1
            print(f"ok   {check.__name__}")
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
