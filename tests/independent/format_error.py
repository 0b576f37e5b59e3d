"""The one exception that every reader in this directory raises."""


class FormatError(ValueError):
    """A file, or a part of one, is not laid out as its format demands; the message says where and why."""
