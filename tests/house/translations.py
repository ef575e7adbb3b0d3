#!/usr/bin/env python3
"""Every text for people has a translation in every language that is shipped, one that fits where the text stands: its
places (%1, %n), its line ends, its mnemonic, its dots, and not much longer. No translation is left over.
translations.py SOURCE_FOLDER LUPDATE [TABLE...]: tables are translations/*.ts unless named."""
import glob
import os
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml


def texts_of(table):
    found = {}
    for message in xml.parse(table).iter("message"):
        translation = message.find("translation")
        finished = translation is not None and translation.get("type") is None
        found[message.find("source").text or ""] = (translation.text or "") if finished else ""
    return found


def sources(folder, lupdate):
    with tempfile.TemporaryDirectory() as place:
        table = os.path.join(place, "all.ts")
        subprocess.run([lupdate, "-silent", "-no-obsolete", os.path.join(folder, "src"), "-ts", table], check=True,
                       stderr=subprocess.DEVNULL)
        return set(texts_of(table))


def words(folder):
    """What is shown of tables that are not marked as texts: quoted in the source as it is shown."""
    quoted = set()
    for place in ("src/app", "src/preferences", "src/review", "src/commands"):
        for path in glob.glob(os.path.join(folder, place, "**", "*.*"), recursive=True):
            with open(path, encoding="utf-8") as file:
                quoted.update(re.findall(r'"((?:[^"\\]|\\.)*)"', file.read()))
    return quoted


def places(text):
    return sorted(re.findall(r"%(?:\d|n)", text))


def most(source):
    """Room in a menu or beside a control; a sentence may take what it needs."""
    length = len(source)
    return 1.7 * length + 14 if length < 60 else 1.6 * length + 10


def faults(source, text):
    if not text:
        return ["nothing"]
    found = []
    if places(source) != places(text):
        found.append("other places")
    if source.count("\n") != text.count("\n"):
        found.append("other lines")
    mnemonic = len(re.findall(r"&(?=\w)", source)) if source not in ("Search Filepaths & Names",) else 0
    if mnemonic != len(re.findall(r"&(?=\w)", text)):
        found.append("mnemonic")
    if source.endswith(("...", "…")) != text.endswith(("...", "…")):
        found.append("dots")
    if source[:1].isspace() != text[:1].isspace() or source[-1:].isspace() != text[-1:].isspace():
        found.append("blanks")
    if len(text) > most(source):
        found.append("too long (%d for %d)" % (len(text), len(source)))
    return found


def main():
    folder, lupdate = sys.argv[1:3]
    tables = sys.argv[3:] or sorted(glob.glob(os.path.join(folder, "translations", "*.ts")))
    wanted, known = sources(folder, lupdate), words(folder)
    wrong = [] if len(tables) >= 2 and len(wanted) > 500 else ["no tables, or no texts"]
    for table in tables:
        texts = texts_of(table)
        name = os.path.basename(table)
        for source in sorted(wanted - set(texts)):
            wrong.append("%s: not translated: %r" % (name, source))
        for source, text in sorted(texts.items()):
            if source not in wanted and source not in known:
                wrong.append("%s: left over: %r" % (name, source))
            wrong += ["%s: %s: %r -> %r" % (name, fault, source, text) for fault in faults(source, text)]
    print("\n".join(wrong) or "%d texts in %d languages" % (len(wanted), len(tables)))
    return 1 if wrong else 0


sys.exit(main())
