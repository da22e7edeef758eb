#!/usr/bin/env python3
"""schema_test.py QVDEVICE SCHEMA APPS SCENARIO: holds each line that --json prints against the schema."""
import json
import subprocess
import sys
import tempfile
from pathlib import Path

import jsonschema

qvdevice, schema, apps, scenario = sys.argv[1:]
validator = jsonschema.Draft202012Validator(json.loads(Path(schema).read_text()))
seen = set()
failures = 0


def check(*arguments):
    """Runs qvdevice and checks all lines that it prints."""
    global failures
    out = subprocess.run([qvdevice, *arguments], stdout=subprocess.PIPE, check=False).stdout
    lines = out.decode().splitlines()
    if not lines:
        failures += 1
        print("nothing was printed by", *arguments)
    for line in lines:
        record = json.loads(line)
        seen.add(record.get("kind"))
        for error in validator.iter_errors(record):
            failures += 1
            print(line[:300], "\n ", error.message[:300])


def must_refuse(record):
    """A line that the schema has to refuse."""
    global failures
    if validator.is_valid(record):
        failures += 1
        print("the schema takes", record)


with tempfile.TemporaryDirectory() as folder:
    events = Path(folder) / "events"
    events.write_text("windows\nrotate landscapeLeft\nopen notes://a from com.example.mail\nkeyboard show\ntype Milk\n"
                      "perform copy:\nask isPasscodeExtensionActive\nscreen Notes\nrefused tap Nowhere\n")
    check("play", "--json", "--report", folder + "/report", scenario)
    check("run", "--json", "--events", str(events), apps + "/Notes.app")
    events.write_text("tap Nowhere\n")
    check("run", "--json", "--no-library", "--events", str(events), apps + "/Notes.app")
    check("hooks", "--json", apps + "/Notes.app")
    check("effects", "--json", "-o", folder + "/sheet.png")

must_refuse({"kind": "unheard of"})
must_refuse({"kind": "end", "status": "0", "sentence": "x"})
must_refuse({"kind": "end", "status": 0})
must_refuse({"kind": "item", "path": "a", "protection": None, "more": 1})
must_refuse({"text": "without a kind"})
for kind in ("begin", "end", "event", "log", "decision", "protection", "item", "sheet", "screen", "played", "report",
             "windows", "rotation", "refused", "hook", "effects"):
    if kind not in seen:
        failures += 1
        print("no line of the kind", kind, "was seen")
sys.exit(1 if failures else 0)
