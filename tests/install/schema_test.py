"""Validates what kavit-solve --json prints, of every status, against the schema that is installed,
and looks whether the manual knows every field of it.

    schema_test.py KAVIT-SOLVE SCHEMA MANUAL
"""
import json
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    import jsonschema
except ImportError:
    print("skipped: python3-jsonschema is missing")
    sys.exit(77)

program, schema_file, manual = sys.argv[1:]
schema = json.loads(Path(schema_file).read_text())
jsonschema.Draft7Validator.check_schema(schema)
validator = jsonschema.Draft7Validator(schema)

LEVELS = {
    "album.txt": "#####\n#@$.#\n#####\nTitle: \u00e9\nSolution: R\n\n######\n#@$ .#\n# $ .#\n######\n"
                 "Solution: RRlu\n",
    "solved.xsb": "#####\n#@* #\n#####\n",
    "open.xsb": "#####\n#@$.\n#####\n",
    "none.xsb": "##########\n#@ $ $ ..#\n##########\n",
    "wide.xsb": "#" * 20 + "\n",
    "endless.xsb": "#################\n#...............#\n#               #\n# $ $ $ $ $ $ $ #\n"
                   "#               #\n# $ $ $ $ $ $ $ #\n#               #\n#       $       #\n"
                   "#       @       #\n#################\n",
}
RUNS = [
    (["album.txt", "solved.xsb", "open.xsb", "none.xsb", "wide.xsb", "missing.xsb"],
     {"solved", "refused", "no-solution", "not-readable"}),
    (["--max-positions", "3", "--sol", "/proc/no/", "album.txt"], {"solved", "out-of-memory"}),
    (["--opt-level", "3", "--sol", "s/", "album.txt#2"], {"solved"}),
    (["--opt-level", "4", "--dump-position", "999", "album.txt#2"], {"solved"}),
    (["--max-time", "1", "--max-positions", "12000000", "endless.xsb"], {"stopped"}),
]

faults = 0
with tempfile.TemporaryDirectory() as folder:
    for name, text in LEVELS.items():
        (Path(folder) / name).write_text(text)
    for arguments, wanted in RUNS:
        out = subprocess.run([program, "--json", *arguments], cwd=folder, capture_output=True,
                             check=False).stdout.decode()
        objects = [json.loads(line) for line in out.splitlines()]
        if {found["status"] for found in objects} != wanted:
            faults += 1
            print(arguments, "gave", [found["status"] for found in objects])
        for found in objects:
            for error in validator.iter_errors(found):
                faults += 1
                print(found["level"], "/".join(map(str, error.path)), error.message)

text = Path(manual).read_text()
for field in schema["properties"]:
    if f"\n.B {field}\n" not in text and f".BR {field} " not in text:
        faults += 1
        print("the manual does not explain", field)
sys.exit(1 if faults else 0)
