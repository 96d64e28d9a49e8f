"""What is found in files."""
from __future__ import annotations

import os
from typing import Iterable, List, NamedTuple, Optional, Sequence, Tuple, Union

from . import _core
from ._errors import note

Path = Union[str, "os.PathLike[str]"]


class Finding(NamedTuple):
    """What the library refuses, skips, cuts or misreads in a file."""

    file: str
    #: counted from 1; None where it is about the file as a whole
    line: Optional[int]
    #: in bytes, counted from 1; None where it is about the line as a whole
    column: Optional[int]
    #: "error" for what the library refuses or shows wrongly, "warning" for what it drops or alters, "note" for what may surprise
    severity: str
    #: the name of the rule
    rule: str
    message: str


class Rule(NamedTuple):
    """A rule that files are checked against."""

    name: str
    #: "error", "warning" or "note"
    severity: str
    #: of files that it is about; none where it is about files of no known kind
    kinds: Tuple[str, ...]
    explanation: str
    #: lines of a file that breaks it
    example: str
    #: what to do about it
    mend: str


def check(path: Union[Path, Sequence[Path]], *, kind: Optional[str] = None, ignore: Iterable[str] = ()) -> List[Finding]:
    """What the library refuses, skips, cuts or misreads in files, before they are on the instrument, `rfutils check`.

    >>> for finding in check("catalogue.json"):
    ...     print(f"{finding.file}:{finding.line}: {finding.severity}: {finding.message} [{finding.rule}]")
    catalogue.json:8: note: hidden: dispSeq is 0 [choice-hidden]
    >>> check(["terrain.asc", "catalogue.json"], ignore=["choice-hidden"])
    []

    `path` is a file or a list of them. A folder stands for the files below it that are of a known kind, and a map for the files
    that belong to it. `kind` says what the files are, whatever their names: "asc", "hdr", "bil", "clr", "tab", "catalogue",
    "setups" or "recording". Findings of the rules in `ignore` are left out, as those that a file `.rfutils-check` beside the
    checked ones names; one that names no rule is an `InputError`. Of each rule 200 findings in a file are listed, with a note of
    how many there are more. A `Note` names files in folders that end as those of a kind do and are none. A file that cannot be read
    is a finding too. Nothing is written.
    """
    paths = [path] if isinstance(path, (str, bytes, os.PathLike)) else list(path)
    rules_left_out = [ignore] if isinstance(ignore, str) else list(ignore)
    found, notes = _core.findings([os.fsencode(one) for one in paths], kind, rules_left_out)
    note(notes)
    return [Finding(*finding) for finding in found]


def rules() -> List[Rule]:
    """All rules of check(), `rfutils check --rules`.

    >>> [rule.mend for rule in rules() if rule.name == "cell-size"]
    ["Write the length of a cell's side, above 0."]
    """
    return [Rule(*rule) for rule in _core.rules()]
