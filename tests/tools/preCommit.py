#!/usr/bin/env python3
"""preCommit.py COMMAND HOOKS FOLDER: runs what .pre-commit-hooks.yaml defines, as pre-commit would, on files in FOLDER."""
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

TAKEN = {"map.asc": True, "sub/map.tab": True, "catalogue.json": True, "my_setups_2.json": True, "data.json": False,
         "map.asc.bak": False, "notes.txt": False}


def main():
    command, hooks, folder = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    hook = dict(re.findall(r"^(?:- |  )(\w+): (.*)$", hooks.read_text(encoding="utf-8"), re.M))
    assert hook["id"] == "rfutils-check" and hook["language"] == "system", hook
    pattern = re.compile(hook["files"].strip("'"))
    for name, is_taken in TAKEN.items():
        assert bool(pattern.search(name)) == is_taken, name

    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    (folder / "rfutils").symlink_to(command)
    environment = {**os.environ, "PATH": f"{folder}:{os.environ['PATH']}"}
    choice = '{"trigger": [{"label": "Free", "id": "free", "enum": 1, "dispSeq": 1}]}'
    for text, status in (choice, 0), (choice.replace("label", "lable"), 1):
        (folder / "catalogue.json").write_text(text)
        run = subprocess.run([*shlex.split(hook["entry"]), "catalogue.json"], cwd=folder, env=environment,
                             capture_output=True, text=True, check=False)
        assert run.returncode == status, (run.returncode, run.stdout, run.stderr)
        assert bool(run.stdout) == bool(status), run.stdout


main()
