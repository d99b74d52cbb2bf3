#!/usr/bin/env python3
"""Registers and unregisters the Outlook stand-in's class, and compares what the registry holds: class_test.py program"""
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
from wine import added, registry, run  # noqa: E402

OWN = re.compile(r"\\(OutlookStandIn\.Application|CLSID\\\{4E7A2D10-9B3C-4F65-A158-0C6D37E294B8\})(\\(CLSID|ProgID))?$")
program = sys.argv[1]
failures = []


def expect(what, as_expected):
    if not as_expected:
        failures.append(what)


run(program, "/unregserver")  # of a test that was stopped
before = registry()
expect("the stand-in registers its class", run(program, "/regserver")[0] == 0)
registered = {key.replace("\\Wow6432Node", "") for key in added(before, registry())}
expect(f"only the stand-in's own names are added: {sorted(registered)}",
       len(registered) == 4 and all(OWN.search(key) for key in registered))
expect("the stand-in unregisters its class", run(program, "/unregserver")[0] == 0)
after = registry()
expect(f"nothing is left behind: {sorted(added(before, after)) + sorted(added(after, before))}", after == before)
expect("a second unregistration succeeds", run(program, "/unregserver")[0] == 0)
for failure in failures:
    print(f"not so: {failure}")
sys.exit(1 if failures else 0)
