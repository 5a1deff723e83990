"""Finds the places of a C++ source that can be changed, in libclang's syntax tree."""

from conditions import Conditions
from constants import Constants
from operators import Operators
from returns import Returns
from statements import Statements


class Finder(Operators, Constants, Conditions, Statements, Returns):
    """Finds all places of one file."""
