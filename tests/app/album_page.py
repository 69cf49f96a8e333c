# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Takes a page of an album apart and prints what its script would find in it as JSON, with whether
# the policy lets just its own style and script be, and whether nothing in the data could end an
# element. Usage: album_page.py PAGE
import base64
import hashlib
import json
import re
import sys

with open(sys.argv[1], encoding="utf-8", newline="") as file:
    page = file.read()


def elements(attribute):
    return re.findall(f'<script type="application/json" {attribute}>(.*?)</script>', page, re.S)


def source(text):
    return "'sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode() + "'"


policy = re.search('http-equiv="Content-Security-Policy" content="([^"]*)"', page)[1]
wanted = "default-src 'none'; img-src data:; style-src {}; script-src {}; base-uri 'none'; " \
    "form-action 'none'; require-trusted-types-for 'script'; trusted-types 'none'"
style = re.search("<style>(.*?)</style>", page, re.S)[1]
scripts = re.findall("<script>(.*?)</script>", page, re.S)
data = [text for attribute in ('id="album"', 'class="records"', 'id="files"')
        for text in elements(attribute)]
found = {
    "policy": policy == wanted.format(source(style), source(scripts[0])) and len(scripts) == 1,
    "safe": not any("<" in text for text in data),
    "album": json.loads(elements('id="album"')[0]),
    "records": [record for text in elements('class="records"') for record in json.loads(text)],
    "files": [file for text in elements('id="files"') for file in json.loads(text)],
    "pictures": [[int(record), media, hashlib.sha256(base64.b64decode(text)).hexdigest()]
                 for record, media, text in re.findall(
                     '<script type="text/plain" class="picture" data-record="([0-9]+)" '
                     'data-type="([a-z/]+)">(.*?)</script>', page)]}
# A lone surrogate, which jq doesn't take, becomes a question mark.
sys.stdout.buffer.write(json.dumps(found, ensure_ascii=False).encode(errors="replace"))
