#!/usr/bin/python3
"""Host commands run from a module: host_commands.py QVAD PROBE_MODULE WORKDIR

PROBECMD runs -LAYER, SETVAR (from a built list), CECOLOR and an unknown
command through the host, opens an undo group of its own, and queues
keystrokes that must run only once it has ended. --commands must list the
probe's commands under their group.
"""
import subprocess
import sys
from pathlib import Path

import ezdxf

sys.path.insert(0, str(Path(__file__).resolve().parent / "host"))
import hostrun  # noqa: E402

NORMAL = "5100"
PROBE_COMMANDS = ("PROBEPOINT", "PROBESELECT", "PROBEPICK", "PROBECMD", "PROBEEDIT")


def check_probecmd(host: hostrun.Host, checks: hostrun.Checks):
    run = host.run("probecmd", hostrun.script_lines("probecmd.scr"))
    checks.true("PROBECMD: qvad succeeds", run.status == 0 and run.output.exists(), run.describe())
    if not run.output.exists():
        return
    r = hostrun.probe_records(run.output)
    checks.equal("-layer make", (r.get("layer.status"), r.get("layer.clayer")), (NORMAL, "NEWLAYER"))
    checks.equal("undo group inside", (r.get("group.begin"), r.get("group.layer"), r.get("group.end")),
                 (NORMAL, NORMAL, NORMAL))
    checks.equal("layer made inside the group", r.get("group.exists"), "1")
    checks.equal("command from a built list", (r.get("cmd.status"), r.get("cmd.useri1")), (NORMAL, "42"))
    checks.equal("cecolor", (r.get("cecolor.status"), r.get("cecolor.value")), (NORMAL, "1"))
    checks.true("unknown command refused", r.get("unknown.status") not in (None, NORMAL),
                str(r.get("unknown.status")))
    checks.equal("queued keys wait for the command's end", (r.get("sendmessage.status"),
                                                             r.get("sendmessage.useri2.now")), (NORMAL, "0"))
    checks.equal("ran to its end", r.get("probecmd"), "done")

    doc = ezdxf.readfile(str(run.output))
    checks.equal("saved current layer", doc.header.get("$CLAYER"), "NEWLAYER")
    checks.true("saved layers", all(name in doc.layers for name in ("NEWLAYER", "GROUPED")))
    checks.equal("saved USERI1", doc.header.get("$USERI1"), 42)
    checks.equal("queued keys ran after the command", doc.header.get("$USERI2"), 7)
    checks.equal("saved CECOLOR", doc.header.get("$CECOLOR"), 1)


def check_command_list(host: hostrun.Host, checks: hostrun.Checks):
    proc = subprocess.run([host.qvad, "--module", host.probe, "--commands"], capture_output=True, text=True,
                          timeout=hostrun.QVAD_TIMEOUT, stdin=subprocess.DEVNULL)
    checks.equal("--commands exit status", proc.returncode, 0)
    rows = [line.split() for line in proc.stdout.splitlines() if line.strip()]
    for name in PROBE_COMMANDS:
        checks.true(f"--commands lists {name}", ["HOSTPROBE", name, name] in rows, proc.stdout)
    checks.true("--commands lists the built-ins", any(row[:1] == ["QVAD"] for row in rows), proc.stdout)
    checks.true("--commands rows are GROUP GLOBAL LOCAL", all(len(row) == 3 for row in rows), proc.stdout)


if __name__ == "__main__":
    sys.exit(hostrun.main(__doc__, "host_commands", check_command_list, check_probecmd))
