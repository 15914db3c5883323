"""plddb: a database of programmable logic devices (CPLDs and FPGAs), for those who script JTAG.

    import plddb

    db = plddb.load()                        # the shipped descriptions, and one's own
    for position in db.identify([0x59604093, 0x0362D093]):
        print(position.id, position.match, position.ir_length)

A Database holds families, a Family devices, a Device packages, a Package adapters. Every field is a property, every lookup has
the library's name in snake_case. Records keep their database alive; one that was deleted raises DeletedError.

Texts are str. Bytes that are no UTF-8 come, and are taken back, by the error handler "surrogateescape".
A database may be used from several threads.
"""

from plddb import _plddb
from plddb._plddb import *  # noqa: F403
from plddb._plddb import __version__ as __version__

__all__ = sorted(name for name in vars(_plddb) if not name.startswith("_"))

_plddb._check_interpreter()


def _make(maker, *values):
    """A value that was pickled."""
    return getattr(_plddb, maker)(*values)
