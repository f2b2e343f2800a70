"""Validates JSON documents with a JSON schema: SCHEMA DOCUMENT...

Every document must be valid, and no longer be so without any one of its members, with an unknown
one, or with a member that is null: a schema that takes these would not describe the document.
"""

import json
import sys

import jsonschema


def variants(node):
    """Yields copies of the node with one damage each, at any depth; of a list, in its first item."""
    if isinstance(node, dict):
        yield {**node, "unknown": 0}
        for name, value in node.items():
            if name not in ("text", "fault", "default"):  # may be absent
                yield {other: kept for other, kept in node.items() if other != name}
            yield {**node, name: None}
            for variant in variants(value):
                yield {**node, name: variant}
    elif isinstance(node, list) and node:
        for variant in variants(node[0]):
            yield [variant] + node[1:]


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    for path in sys.argv[2:]:
        with open(path, encoding="utf-8") as file:
            document = json.load(file)
        for error in validator.iter_errors(document):
            print(f"{path}: {jsonschema.exceptions.best_match([error]).message}")
        for damaged in variants(document):
            if validator.is_valid(damaged):
                print(f"{path}: valid, but should not be: {json.dumps(damaged)[:400]}")


main()
