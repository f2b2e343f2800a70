"""Checks a SARIF log for what the format, version 2.1.0, demands of it: LOG [FOLDER OF THE FILES].

Prints what is wrong.
"""

import json
import os
import sys
import urllib.parse

LEVELS = ("none", "note", "warning", "error")
wrong = []


def check(is_good, what):
    if not is_good:
        wrong.append(what)


def is_message(node):
    return set(node) == {"text"} and isinstance(node["text"], str) and node["text"] != ""


def check_region(region, uri, folder):
    check(region["startLine"] >= 1, f"region {region}")
    if "startColumn" not in region:
        check(set(region) == {"startLine"}, f"region {region}")
        return
    start = (region["startLine"], region["startColumn"])
    check(start[1] >= 1 and start <= (region["endLine"], region["endColumn"]), f"region {region}")
    with open(os.path.join(folder, urllib.parse.unquote(uri)), "rb") as file:
        before = file.read()[: region["byteOffset"]].decode("utf-8-sig")
    check(before.count("\n") + 1 == start[0], f"line of {region}")
    check(len(before) - before.rfind("\n") == start[1], f"column of {region}")


def check_location(location, folder):
    physical = location["physicalLocation"]
    uri = physical["artifactLocation"]["uri"]
    check(urllib.parse.quote(urllib.parse.unquote(uri)) == uri, f"URI {uri}")
    if "region" in physical:
        check_region(physical["region"], uri, folder)


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        log = json.load(file)
    folder = sys.argv[2]
    check(log["version"] == "2.1.0" and log["$schema"].endswith("sarif-2.1.0.json"), "version")
    (run,) = log["runs"]
    check(run["columnKind"] in ("utf16CodeUnits", "unicodeCodePoints"), "columnKind")
    driver = run["tool"]["driver"]
    check(driver["name"] == "vexorcfg", "name")
    rules = [rule["id"] for rule in driver["rules"]]
    check(len(rules) == len(set(rules)), "rules are not unique")
    for rule in driver["rules"]:
        check(is_message(rule["shortDescription"]) and is_message(rule["fullDescription"]), rule)
        check(rule["defaultConfiguration"]["level"] in LEVELS, rule)
    check(len(run["results"]) > 0, "no results")
    for result in run["results"]:
        check(rules[result["ruleIndex"]] == result["ruleId"], result)
        check(result["level"] in LEVELS and is_message(result["message"]), result)
        check(len(result["locations"]) == 1, result)
        check_location(result["locations"][0], folder)
        for suppression in result.get("suppressions", []):
            check(suppression["kind"] == "inSource", result)
    (invocation,) = run["invocations"]
    notes = invocation["toolExecutionNotifications"]
    check(invocation["executionSuccessful"] == (len(notes) == 0), "invocation")
    for note in notes:
        check(note["level"] in LEVELS and is_message(note["message"]), note)
        check_location(note["locations"][0], folder)
    suppressed = sum("suppressions" in result for result in run["results"])
    print(len(run["results"]), "results,", suppressed, "suppressed,", len(notes), "notifications")
    for what in wrong:
        print(what)


main()
