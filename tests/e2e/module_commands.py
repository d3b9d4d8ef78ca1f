"""qvad loads QvTooldeck by itself and lists its 175 commands; a few module commands run from a script.

usage: module_commands.py QVAD COMMAND_LIST_INC WORK_FOLDER
"""

import os
import re
import shutil
import subprocess
import sys


def table_rows(command_list):
    rows = []
    with open(command_list, encoding="utf-8") as source:
        for line in source:
            if line.startswith("QV_COMMAND("):
                rows.append(tuple(re.findall(r'"([^"]*)"', line)[:3]))
    return rows


def run(qvad, work, *arguments):
    env = dict(os.environ, XDG_CONFIG_HOME=os.path.join(work, "config"))
    return subprocess.run([qvad, *arguments], capture_output=True, text=True, env=env, timeout=120,
                          stdin=subprocess.DEVNULL)


def main():
    qvad, command_list, work = sys.argv[1:4]
    shutil.rmtree(work, ignore_errors=True)
    os.makedirs(work)
    failures = []

    expected = table_rows(command_list)
    if len(expected) != 175:
        failures.append(f"the command table has {len(expected)} rows")
    listed = run(qvad, work, "--commands")
    if listed.returncode != 0:
        failures.append(f"--commands exited with {listed.returncode}: {listed.stderr}")
    groups = {"QvTooldeck", "quantitiestool", "OrmelCADtools"}
    ours = [tuple(line.split()) for line in listed.stdout.splitlines() if line.split()[:1] and line.split()[0] in groups]
    if ours != expected:
        missing = [row for row in expected if row not in ours]
        extra = [row for row in ours if row not in expected]
        failures.append(f"listed {len(ours)} module commands; missing {missing[:5]}, unexpected {extra[:5]}")
    counts = {group: sum(1 for row in ours if row[0] == group) for group in groups}
    if counts != {"QvTooldeck": 143, "quantitiestool": 12, "OrmelCADtools": 20}:
        failures.append(f"group sizes {counts}")

    script = os.path.join(work, "about.scr")
    with open(script, "w", encoding="utf-8") as text:
        text.write("sahttp\nShowWendal\n-xlist\n")
    ran = run(qvad, work, "-s", script)
    if ran.returncode != 0:
        failures.append(f"the script exited with {ran.returncode}: {ran.stderr}")
    for wanted in ("https://qvtooldeck.example.org", "QvTooldeck ", "-xlist: not available yet."):
        if wanted not in ran.stdout:
            failures.append(f"{wanted!r} not printed; output was {ran.stdout!r}")
    if "Can't load QvTooldeckRes.dll" in ran.stdout + ran.stderr:
        failures.append("the resource library was not found beside the module")

    for failure in failures:
        print("FAIL:", failure)
    if failures:
        sys.exit(1)
    print("module commands: 175 listed, script ran")


main()
