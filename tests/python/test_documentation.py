"""The examples of docstrings, of docs/python.md and of README.md do what they say."""

import doctest
import pathlib

import nfc_ndef


def test_docstrings():
    finder, tried = doctest.DocTestFinder(), 0
    for name, thing in [("nfc_ndef", nfc_ndef), *sorted(vars(nfc_ndef).items())]:
        if name.startswith("_") or not getattr(thing, "__doc__", None):
            continue
        for test in finder.find(thing, name, module=False, globs={"nfc_ndef": nfc_ndef}):
            result = doctest.DocTestRunner().run(test)
            assert result.failed == 0, name
            tried += result.attempted
    assert tried > 100


def test_each_class_of_values_has_an_example():
    for name, *_ in nfc_ndef._core._describe_classes():
        assert ">>>" in getattr(nfc_ndef, name).__doc__, name


def test_guides():
    for guide, at_least in (("docs/python.md", 20), ("README.md", 3)):
        path = pathlib.Path(__file__).parents[2] / guide
        result = doctest.testfile(str(path), module_relative=False)
        assert result.failed == 0 and result.attempted >= at_least
