# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
"""Reads the cards of a file with vobject and prints what it took of each, a line of JSON a card.

The keys are those of CardPeer.java, as far as vobject has them.
"""

import json
import sys

import vobject


def types(line):
    words = [word.lower() for value in line.params.get("TYPE", []) for word in value.split(",")]
    return words + ["pref=" + value for value in line.params.get("PREF", [])]


def text(value):
    if isinstance(value, bytes):
        return value.decode("utf-8")
    return ",".join(value) if isinstance(value, list) else value


def fields(card):
    def lines(name):
        return card.contents.get(name, [])

    name = card.n.value
    return {
        "version": card.version.value,
        "uid": card.uid.value,
        "fn": card.fn.value,
        "n": [text(part) for part in (name.family, name.given, name.additional, name.prefix,
                                      name.suffix)],
        "tel": [[types(line), line.value] for line in lines("tel")],
        "email": [[types(line), line.value] for line in lines("email")],
        "adr": [[types(line), [text(part) for part in (
            line.value.box, line.value.extended, line.value.street, line.value.city,
            line.value.region, line.value.code, line.value.country)]] for line in lines("adr")],
        "note": [line.value for line in lines("note")],
        "title": [line.value for line in lines("title")],
        "role": [line.value for line in lines("role")],
        "org": [[types(line), line.value] for line in lines("org")],
        "photo": [["", len(line.value)] for line in lines("photo")],
    }


def main():
    with open(sys.argv[1], encoding="utf-8", newline="") as file:
        for card in vobject.readComponents(file.read()):
            card.validate(raiseException=True)
            print(json.dumps(fields(card)))


main()
