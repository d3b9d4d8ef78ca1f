#!/usr/bin/python3
"""Input prompts from a script: host_input.py QVAD PROBE_MODULE WORKDIR

PROBEPOINT asks every kind of input in turn and records what the host
returned into the drawing. Answered right, every value must arrive as typed;
answered wrong first, each wrong answer must be refused with the same prompt
asked again, and the right answer after it must count.
"""
import math
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "host"))
import hostrun  # noqa: E402

NORMAL, NONE, KEYWORD = "5100", "5000", "-5005"


def check_good(host: hostrun.Host, checks: hostrun.Checks):
    run = host.run("probepoint_good", hostrun.script_lines("probepoint_good.scr"))
    checks.true("good answers: qvad succeeds", run.status == 0 and run.output.exists(), run.describe())
    if not run.output.exists():
        return
    r = hostrun.probe_records(run.output)
    checks.equal("point", (r.get("point.status"), r.get("point.value")), (NORMAL, "3,4,0"))
    checks.equal("corner", (r.get("corner.status"), r.get("corner.value")), (NORMAL, "12,24,0"))
    checks.equal("relative polar point", r.get("optional.value"), "12,29,0")
    checks.equal("distance from a point answer", r.get("dist.value"), "5")
    checks.true("angle in radians", math.isclose(float(r.get("angle.value", "nan")), math.pi / 2, rel_tol=1e-5),
                str(r.get("angle.value")))
    checks.equal("real", r.get("real.value"), "2.5")
    checks.equal("integer", r.get("int.value"), "7")
    checks.equal("word", r.get("word.value"), "one")
    checks.equal("sentence keeps its space", r.get("sentence.value"), "two words")
    checks.equal("keyword by short form", (r.get("kword.status"), r.get("kword.value")), (NORMAL, "Maybe"))
    checks.equal("free text", (r.get("arbitrary.status"), r.get("arbitrary.word")), (KEYWORD, "freetext"))
    checks.equal("ran to its end", r.get("probepoint"), "done")


# Prompt -> how often a person sees it for the wrong-answer script.
ASKED_AGAIN = {
    "Probe point [Left/Right]: ": 3,
    "Probe corner: ": 2,
    "Probe optional point: ": 1,
    "Probe distance: ": 3,
    "Probe real: ": 3,
    "Probe integer [Default]: ": 3,
    "Probe word: ": 1,
    "Probe choice [Yes/No/Maybe]: ": 2,
}


def check_bad(host: hostrun.Host, checks: hostrun.Checks):
    run = host.run("probepoint_bad", hostrun.script_lines("probepoint_bad.scr"))
    checks.true("wrong answers: qvad succeeds", run.status == 0 and run.output.exists(), run.describe())
    for prompt, times in ASKED_AGAIN.items():
        checks.equal(f"times asked {prompt!r}", run.times_asked(prompt), times)
    if not run.output.exists():
        return
    r = hostrun.probe_records(run.output)
    checks.equal("keyword after two refusals", (r.get("point.status"), r.get("point.word")), (KEYWORD, "Left"))
    checks.equal("corner after a refusal", r.get("corner.value"), "12,24,0")
    checks.equal("empty answer where allowed", (r.get("optional.status"), r.get("optional.value")), (NONE, None))
    checks.equal("distance after zero and negative", r.get("dist.value"), "2")
    checks.equal("real after a word and a negative", r.get("real.value"), "2.5")
    checks.equal("integer keyword", (r.get("int.status"), r.get("int.word"), r.get("int.value")),
                 (KEYWORD, "Default", None))
    checks.equal("keyword in lower case", r.get("kword.value"), "No")
    checks.equal("ran to its end", r.get("probepoint"), "done")


if __name__ == "__main__":
    sys.exit(hostrun.main(__doc__, "host_input", check_good, check_bad))
