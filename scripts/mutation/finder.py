"""Where a C++ source can be changed, and into what: found in libclang's syntax tree."""

from conditions import Conditions
from constants import Constants
from operators import Operators
from returns import Returns
from statements import Statements


class Finder(Operators, Constants, Conditions, Statements, Returns):
    """The places of one file."""
