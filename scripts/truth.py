#!/usr/bin/env python3
"""truth.py FOLDER OUT.md: puts together what scripts/truth.sh has gathered in a folder."""

import collections
import datetime
import json
import os
import re
import subprocess
import sys


def text_of(folder, name):
    path = os.path.join(folder, name)
    return open(path, encoding="utf-8").read() if os.path.exists(path) else ""


def table(head, rows):
    if not rows:
        return "Not measured yet.\n"
    lines = ["| " + " | ".join(head) + " |", "|" + "|".join("---" if i == 0 else "---:" for i in range(len(head))) + "|"]
    return "\n".join(lines + ["| " + " | ".join(str(cell) for cell in row) + " |" for row in rows]) + "\n"


def pictures(rows, key):
    sums = collections.OrderedDict()
    for row in sorted((r for r in rows if r["codec"]), key=lambda r: r[key]):
        so_far = sums.setdefault(row[key], [0, 0, 0, 0, 0])
        for i, value in enumerate((1, row["frames"], row["pictures"], row["free"], row["wrong"])):
            so_far[i] += value
    total = [sum(column) for column in zip(*sums.values())] if sums else [0] * 5
    return [[name] + values for name, values in sums.items()] + [["**all**"] + total]


def picture_section(folder):
    parts = []
    for suite, title in (("reader", "Read forwards, backwards and in 200 jumps"),
                         ("player", "In the player: by slider, steps and looped runs both ways")):
        raw = text_of(folder, "pictures-%s.json" % suite)
        if not raw:
            continue
        rows = json.loads(raw)
        parts.append("### %s\n" % title)
        for key in ("codec", "container"):
            parts.append(table([key, "clips", "frames", "pictures checked", "of these free", "wrong"], pictures(rows, key)))
        wrong = [row for row in rows if row["codec"] and row["wrong"]]
        if wrong:
            parts.append("Wrong in: " + ", ".join("%s (%d)" % (row["clip"], row["wrong"]) for row in wrong) + "\n")
    drawn = re.findall(r"^seed \d+: .*$", text_of(folder, "sound.log"), re.M)
    if drawn:
        parts.append("Files drawn at random: " + drawn[-1] + "\n")
    return "\n".join(parts)


def colour_section(folder):
    rows, name = [], ""
    for line in text_of(folder, "colour.log").splitlines():
        run = re.match(r"\[ RUN +\] .*/(\w+)", line)
        name = run.group(1) if run else name
        found = re.match(r"worst distance from the exact number: ([\d.]+) of 255, ([\d.]+) of 65535", line)
        if found:
            rows.append([name, found.group(1), found.group(2)])
    return table(["pixel formats", "worst of 255", "worst of 65535"], rows)


def sound_section(folder):
    rows = [[codec, container, late, told] for codec, container, late, told in
            re.findall(r"^sound (\S+) (\S+): (-?\d+) samples late, the container tells to (\d+)$",
                       text_of(folder, "sound.log"), re.M)]
    worst = collections.OrderedDict()
    for codec, container, late, told in sorted(rows):
        known = worst.setdefault((codec, container), [0, 0])
        if abs(int(late)) >= abs(known[0]):
            worst[(codec, container)] = [int(late), int(told)]
    return table(["codec", "container", "samples late (of 48000)", "as exact as the file tells"],
                 [[codec, container] + values for (codec, container), values in worst.items()])


def times_section(folder, old):
    log = text_of(folder, "times.log")
    if not log:
        found = re.search(r"^## Waiting$(.*)\Z", old, re.M | re.S)
        return found.group(1).strip() if found else "Not measured yet."
    date = datetime.date.today().isoformat()
    with open("/proc/cpuinfo", encoding="utf-8") as cpu:
        model = re.search(r"model name\s*:\s*(.*)", cpu.read())
    machine = "%s, %s cores" % (model.group(1) if model else "a processor", os.cpu_count())
    return "Measured %s (%s). Ratios below 1 are quicker than mpv; for decoding, above 1 than ffmpeg.\n\n```\n%s```" % (
        date, machine, log)


def main():
    folder, out = sys.argv[1:3]
    old = open(out, encoding="utf-8").read() if os.path.exists(out) else ""
    version = subprocess.run(["ffmpeg", "-version"], stdout=subprocess.PIPE, text=True).stdout.split(" Copyright")[0]
    text = """# What is shown is what is there

Written by `scripts/truth.sh`, which anyone can run again ({date}; {version}). Movies are made by the tests themselves, with the
number of each frame drawn into its picture as a bar code; what must be seen comes from how they were made. A picture is free
where damage leaves any picture right.

## Pictures

{pictures}
## Colours

Every pixel format, matrix, range, chroma place, turn and mirror against exact arithmetic, in steps of the result (half a step is
rounding).

{colours}
## Sound

Where the sound stands beside the pictures, sample by sample. Some codecs add a start that their container doesn't tell.

{sound}
## Waiting

{times}
""".format(date=datetime.date.today().isoformat(), version=version, pictures=picture_section(folder),
           colours=colour_section(folder), sound=sound_section(folder), times=times_section(folder, old))
    with open(out, "w", encoding="utf-8") as file:
        file.write(text)


if __name__ == "__main__":
    main()
