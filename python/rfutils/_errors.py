"""The exceptions and warnings of the package."""
from __future__ import annotations

import inspect
import os
import warnings
from typing import Iterable

from . import _core


class InputError(Exception):
    """An input that cannot be used.

    `file` is its name, `line` the number of the line, counted from 1, or None where it is the file as a whole, `problem`
    what is wrong there.

    >>> import rfutils
    >>> try:
    ...     rfutils.Catalogue("levels.txt")
    ... except rfutils.InputError as error:
    ...     print(error.file, error.line, error.problem)
    levels.txt 1 illegal value
    """

    def __init__(self, file: str, line: int | None, problem: str) -> None:
        super().__init__(file, line, problem)
        self.file = file
        self.line = line or None
        self.problem = problem

    def __str__(self) -> str:
        place = self.file if self.line is None else f"{self.file}:{self.line}"
        return f"{place}: {self.problem}"


class Note(UserWarning):
    """What the command `rfutils` notes on standard error, as a warning: a line that was skipped, a recording that ends early, a
    text that leaves a large prefix out."""


def note(messages: Iterable[str]) -> None:
    """Warns of each message, in the name of who called the package."""
    own = os.path.dirname(__file__)
    for message in messages:
        level, frame = 1, inspect.currentframe()
        while frame is not None and os.path.dirname(frame.f_code.co_filename) == own:
            level, frame = level + 1, frame.f_back
        warnings.warn(message, Note, stacklevel=level)


_core.set_input_error(InputError)
