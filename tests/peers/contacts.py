# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
"""Cards for other programs to read, and the comparison of what they read with the records.

  contacts.py make COUNT           prints vCard 2.1 of so many odd contacts, always the same
  contacts.py compare FORM RECORDS PEER
      RECORDS is what inspect --json prints, PEER what a peer does; tells what differs.
"""

import json
import random
import re
import sys

TEL = ["work", "home", "voice", "fax", "msg", "cell", "pager", "bbs", "modem", "car", "assistant",
       "video", "internet", "ptt", "voip", "company", "android_other", "custom", "isdn",
       "callback", "main", "telex", "tty", "mms", "radio"]
ADR = ["dom", "intl", "postal", "parcel", "home", "work", "android_other", "custom"]
ADR_WORDS = ["other" if word == "android_other" else word for word in ADR] + ["pref"]
PREFERRED = 0x10000000
# What a form's words mean where they aren't 2.1's own.
SAME = {"main-number": "main", "textphone": "tty", "other": "android_other", "pref=1": "pref"}
EMAIL = {0: [], 1: ["work"], 2: ["home"], 3: ["x-other"], 4: ["x-custom"], 5: ["x-mobile"]}
URL = {0: [], 1: ["work"], 2: ["home"], 3: ["x-other"], 4: ["x-custom"]}
ORG = {0: [], 1: ["work"], 2: ["x-other"], 3: ["x-custom"]}
MESSENGER = [("", "im"), ("GoogleTalk", "xmpp"), ("AIM", "aim"), ("MSN", "msnim"),
             ("Yahoo", "ymsgr"), ("Jabber", "xmpp"), ("Skype", "skype"), ("QQ", "qq"),
             ("ICQ", "icq"), ("Other", "im"), ("Custom", "im")]
NAME = ["family_name", "given_name", "additional_name", "prefix_name", "suffix_name"]
PHONETIC = ["X-PHONETIC-LAST-NAME", "X-PHONETIC-FIRST-NAME", "X-PHONETIC-MIDDLE-NAME",
            "X-PHONETIC-PREFIX", "X-PHONETIC-SUFFIX"]
ADDRESS = ["post_office", "extended_address", "street", "locality", "region", "postal_code",
           "country"]

# --- Making cards ---

PARTS = ["plain words ", "x", "ü", "漢字かな", "😀", '"', "'", "\\", ";", ",", ":", "=", "\r\n",
         "\\n", "%41", "^n", "item1.TEL:1", "a-very-long-word" * 6, "\t", "é" * 50]


def made_text(rng):
    return "x" + "".join(rng.choice(PARTS) for _ in range(rng.randrange(8))) + "y"


def encoded(text):
    return "".join(chr(byte) if 33 <= byte < 127 and byte != 61 else "=%02X" % byte
                   for byte in text.encode())


def line(name, *parts):
    """A property; the parts of a structured one have their semicolons escaped."""
    values = [encoded(part) for part in parts]
    if len(parts) > 1:
        values = [value.replace("\\", "\\\\").replace(";", "\\;") for value in values]
    return f"{name};CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:{';'.join(values)}"


def made_card(rng):
    def texts(count):
        return [made_text(rng) if rng.randrange(3) else "" for _ in range(count)]

    def words(known):
        return "".join(";" + word.upper() for word in known if rng.randrange(5) == 0)

    def some():
        return range(rng.choice([0, 0, 1, 1, 2, 7]))

    yield line("N", *texts(5))
    yield from (line("FN", made_text(rng)) for _ in range(rng.randrange(2)))
    yield line("SOUND", *texts(5))
    yield from (line("NICKNAME", made_text(rng)) for _ in some())
    for name in ["BDAY", "X-ANNI", "X-EVENTDAY"]:
        for _ in range(rng.randrange(3)):
            yield f"{name}:{rng.randrange(1800, 2100)}{rng.randrange(1, 13):02}{rng.randrange(1, 29):02}"
    for _ in some():
        number = "".join(rng.choice("0123456789+-() ,;#*pw") for _ in range(12))
        yield f"TEL{words(TEL + ['pref'])}:{number.strip() or '1'}"
    for _ in some():
        yield line(f"EMAIL;{rng.choice(['Unknown', 'Work', 'Private', 'Other', 'Custom', 'Mobile'])}",
                   made_text(rng))
    for _ in some():
        yield line(f"X-CHATID;{rng.choice('GoogleTalk AIM Window Yahoo Jabber Skype QQ ICQ Other Custom'.split())}",
                   made_text(rng))
    for _ in some():
        yield line(f"URL;{rng.choice(['Unknown', 'Work', 'Private', 'Other', 'Custom'])}",
                   "http://example.com/?a=b;c,d&e=" + str(rng.randrange(1000)))
    yield from (line("ADR" + words(ADR_WORDS), *texts(7)) for _ in some())
    for name in ["NOTE", "TITLE", "ROLE", "X-HOBBY", "X-GROUP"]:
        count = rng.randrange(3) if name in ("NOTE", "X-GROUP") else rng.randrange(2)
        yield from (line(name, made_text(rng)) for _ in range(count))
    for _ in some():
        yield line(f"ORG;{rng.choice(['Unknown', 'Work', 'Other', 'Custom'])}",
                   *texts(rng.randrange(2, 5)))
    yield f"X-BLOOD:{rng.choice(['A', 'B', 'AB', 'O', ''])}"
    if rng.randrange(2):
        yield "X-FAVORITE:YES"
    if rng.randrange(20) == 0:
        yield "PHOTO;TYPE=JPEG;ENCODING=BASE64:/9j/4AAQSkZJRg==\r\n"


def make(count):
    rng = random.Random(17)
    for _ in range(count):
        card = "\r\n".join(["BEGIN:VCARD", "VERSION:2.1", *made_card(rng), "END:VCARD", ""])
        sys.stdout.buffer.write(card.encode())


# --- What a record is to be read as ---

def held(text):
    """What a card holds of a text: one kind of line end, and no control characters."""
    return re.sub(r"[\x00-\x08\x0b-\x1f\x7f]", "", re.sub(r"\r\n|\r|\n", "\n", text))


def mask_words(mask, known):
    words = {word for bit, word in enumerate(known) if mask & 1 << bit}
    return words | ({"pref"} if mask & PREFERRED else set())


def made_name(record):
    order = ["prefix_name", "given_name", "additional_name", "family_name", "suffix_name"]
    words = [record["name"][part] for part in order if record["name"][part]]
    if words:
        return " ".join(words)
    for entries, member in [("nicknames", None), ("organizations", "org_name"),
                            ("emails", "email_address"), ("telephones", "number")]:
        for entry in record[entries]:
            text = entry if member is None else entry[member]
            if text:
                return text
    return "?"


def event_days(record, kind):
    return [event["event_date"][:10] for event in record["events"]
            if event["event_type"] == kind and event["event_date"]]


def percent(text):
    return "".join(chr(byte) if re.match(rb"[A-Za-z0-9._~@+!$*'()=&-]", bytes([byte]))
                   else "%%%02X" % byte for byte in text.encode())


def bare_day(name, text):
    """Hyphens of dates come and go with the version."""
    return name, text.replace("-", "") if "DAY" in name or "ANNI" in name else text


def others(record, form):
    """The X- properties of a record, by their names."""
    found = [(name, held(record["phonetic"][part]))
             for name, part in zip(PHONETIC, NAME) if record["phonetic"][part]]
    days = {kind: event_days(record, kind) for kind in (1, 2, 3)}
    found += [("X-BDAY", day) for day in days[1][1:]]
    found += [("X-ANNIVERSARY", day) for day in days[2][1 if form == "vcard4" else 0:]]
    found += [("X-EVENTDAY", day) for day in days[3]]
    if record["blood_type"] > 0:
        found.append(("X-BLOOD", ["A", "B", "AB", "O"][record["blood_type"] - 1]))
    if record["favorite"]:
        found.append(("X-FAVORITE", "YES"))
    if form == "vcard3" and record["hobby"]:
        found.append(("X-HOBBY", held(record["hobby"])))
    return sorted(bare_day(*each) for each in found)


def org_parts(organization):
    parts = [organization["org_name"], organization["org_position"],
             *filter(None, organization["org_additional"])]
    return [held(part) for part in (parts[:1] if not any(parts[1:]) else parts)]


def expected(record, form):
    v4 = form == "vcard4"
    return {
        "version": "4.0" if v4 else "3.0",
        "fn": held(record["formatted_name"] or made_name(record)),
        "n": [held(record["name"][part]) for part in NAME],
        "nickname": [held(name) for name in record["nicknames"] if name],
        "bday": event_days(record, 1)[:1],
        "anniversary": event_days(record, 2)[:1] if v4 else [],
        "tel": [[mask_words(each["number_type"], TEL), held(each["number"])]
                for each in record["telephones"] if each["number"]],
        "email": [[set(EMAIL[each["email_type"]]), held(each["email_address"])]
                  for each in record["emails"] if each["email_address"]],
        "impp": [[MESSENGER[each["messenger_type"]][0], MESSENGER[each["messenger_type"]][1] + ":"
                  + percent(each["messenger_address"])]
                 for each in record["messengers"] if each["messenger_address"]],
        "url": [[URL[each["url_type"]], held(each["url_address"])]
                for each in record["urls"] if each["url_address"]],
        "adr": [[mask_words(each["address_type"], ADR), [held(each[part]) for part in ADDRESS]]
                for each in record["addresses"] if any(each[part] for part in ADDRESS)],
        "note": [held(note) for note in record["comments"] if note],
        "title": [held(record["org_title"])] if record["org_title"] else [],
        "role": [held(record["org_role"])] if record["org_role"] else [],
        "hobby": [held(record["hobby"])] if v4 and record["hobby"] else [],
        "org": [[ORG[each["org_type"]], org_parts(each)] for each in record["organizations"]
                if any(org_parts(each))],
        "photo": 1 if record["photo"] else 0,
        "categories": [held(group) for group in record["groups"] if group],
        "other": others(record, form),
        "kind": "", "member": [], "warnings": [],
    }


# --- What a peer read, in the same form ---

# vCard 3.0 lets a TYPE be any registered word, and these two are; all address books write them.
KNOWN_WARNING = re.compile(
    r"(\[Email\] \| W09: TYPE parameter value \(\"(work|home)\"\) is not supported by this property "
    r"in this vCard version\.\n)+")


def type_words(words):
    words = {re.sub("^x-", "", word) for word in words}
    return {SAME.get(word, word) for word in words}


def unescaped(text):
    return re.sub(r"\\(.)", lambda match: "\n" if match[1] in "nN" else match[1], text)


def read_value(key, value):
    if key in ("tel", "adr"):
        return [[type_words(words), text] for words, text in value]
    if key == "email":
        return [[set(words) - {"internet"}, text] for words, text in value]
    if key == "photo":
        return len(value)
    if key == "warnings":
        return [warning for warning in value if not KNOWN_WARNING.fullmatch(warning)]
    if key == "other":
        return sorted(bare_day(name.upper(), unescaped(text)) for name, text in value)
    return value


def compare(form, records, peer):
    with open(records, encoding="utf-8") as file:
        records = json.load(file)["contacts"]
    with open(peer, encoding="utf-8") as file:
        cards = [json.loads(card) for card in file]
    problems = []
    if len(records) != len(cards):
        problems.append(f"{len(records)} records, {len(cards)} cards")
    for number, (record, card) in enumerate(zip(records, cards)):
        want = expected(record, form)
        for key, value in card.items():
            if key == "uid":
                if not re.fullmatch("urn:uuid:[0-9a-f-]{36}", value):
                    problems.append(f"{number}: uid {value!r}")
            elif read_value(key, value) != want[key]:
                problems.append(f"{number}: {key}: {value!r}\n    instead of {want[key]!r}")
    for problem in problems[:20]:
        print(problem)
    sys.exit(1 if problems else 0)


if sys.argv[1] == "make":
    make(int(sys.argv[2]))
else:
    compare(*sys.argv[2:])
