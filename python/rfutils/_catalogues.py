"""Choices of settings and result setups."""
from __future__ import annotations

import os
from typing import Iterator, List, Mapping, NamedTuple, Sequence, Tuple, Union, overload

from . import _core
from ._errors import note

Path = Union[str, "os.PathLike[str]"]


class Choice(NamedTuple):
    """A choice of a setting."""

    item: str
    disp_seq: int
    #: the numeric code, "enum" in the file
    code: int
    id: str
    label: str

    @property
    def offered(self) -> bool:
        """Whether it has a place in the display."""
        return self.disp_seq != 0


class Choices(Sequence[Choice]):
    """The choices of an item, by display sequence, code and id; choices[0] is the first, choices["auto"] that of an id."""

    def __init__(self, item: str, choices: Sequence[Choice]) -> None:
        self.item = item
        self._choices = tuple(choices)

    @overload
    def __getitem__(self, place: Union[int, str]) -> Choice: ...
    @overload
    def __getitem__(self, place: slice) -> Tuple[Choice, ...]: ...
    def __getitem__(self, place: Union[int, str, slice]) -> Union[Choice, Tuple[Choice, ...]]:
        """Ids ignore the case of ASCII letters, as the library does."""
        if not isinstance(place, str):
            return self._choices[place]
        for choice in self._choices:
            if _folded(choice.id) == _folded(place):
                return choice
        raise KeyError(f"item {self.item!r} has no choice with id {place!r}")

    def __len__(self) -> int:
        return len(self._choices)

    def __repr__(self) -> str:
        return f"<rfutils.Choices of {self.item}: {', '.join(choice.id for choice in self)}>"

    def with_code(self, code: int) -> List[Choice]:
        """Those with a numeric code, of which there may be several."""
        return [choice for choice in self if choice.code == code]

    def with_label(self, label: str) -> List[Choice]:
        """Those with a label."""
        return [choice for choice in self if choice.label == label]


class Catalogue(Mapping[str, Choices]):
    """The choices of settings in one or several files, from the name of an item to its choices.

    >>> catalogue = Catalogue("catalogue.json")
    >>> catalogue["attenuation"]["auto"].label, catalogue["attenuation"].with_code(2)[0].id
    ('Auto', 'db10')
    """

    def __init__(self, *paths: Path) -> None:
        items: dict[str, List[Choice]] = {}
        for choice in _core.choices([os.fsencode(path) for path in paths]):
            items.setdefault(choice[0], []).append(Choice(*choice))
        self._items = {item: Choices(item, choices) for item, choices in items.items()}

    def __getitem__(self, item: str) -> Choices:
        return self._items[item]

    def __iter__(self) -> Iterator[str]:
        return iter(self._items)

    def __len__(self) -> int:
        return len(self._items)

    def __repr__(self) -> str:
        return f"<rfutils.Catalogue of {len(self)} items>"


class Setup(NamedTuple):
    """A result setup."""

    group: str
    id: str
    label: str


class Setups(Sequence[Setup]):
    """The result setups of a file, by the indices that the instrument gives them.

    >>> setups = Setups("setups.json")
    >>> len(setups), setups[0].label, setups["occupancy"].label
    (10, 'Drive test', 'Channel occupancy')

    Entries that lack a member are skipped, with a `Note`.
    """

    def __init__(self, path: Path) -> None:
        setups, skipped = _core.setups(os.fsencode(path))
        self._setups = tuple(Setup(*setup) for setup in setups)
        note(f"{os.fsdecode(path)}: a setup behind {after!r} has no {missing} and is skipped" for missing, after in skipped)

    @overload
    def __getitem__(self, place: Union[int, str]) -> Setup: ...
    @overload
    def __getitem__(self, place: slice) -> Tuple[Setup, ...]: ...
    def __getitem__(self, place: Union[int, str, slice]) -> Union[Setup, Tuple[Setup, ...]]:
        """The setup of an index, or the first one with an id."""
        if not isinstance(place, str):
            return self._setups[place]
        for setup in self._setups:
            if setup.id == place:
                return setup
        raise KeyError(f"there is no setup with id {place!r}")

    def __len__(self) -> int:
        return len(self._setups)

    def __repr__(self) -> str:
        return f"<rfutils.Setups: {', '.join(setup.id for setup in self)}>"


def _folded(text: str) -> str:
    return "".join(character.lower() if character.isascii() else character for character in text)
