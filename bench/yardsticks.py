#!/usr/bin/env python3
"""Runs `daylark-tool bench decode|seek|step` and, beside each, ffmpeg or mpv on the same file: bench/yardsticks.py MOVIE... (see --help)"""

import argparse
import json
import os
import re
import socket
import subprocess
import tempfile
import time


def figures(milliseconds):
    ordered = sorted(milliseconds)
    return {"medianMs": ordered[len(ordered) // 2], "p95Ms": ordered[min(len(ordered) - 1, len(ordered) * 95 // 100)],
            "maxMs": ordered[-1]}


class Mpv:
    """mpv paused on a file, driven through its JSON socket; times are from the command to the picture being there."""

    def __init__(self, path):
        self.folder = tempfile.TemporaryDirectory()
        address = os.path.join(self.folder.name, "socket")
        self.process = subprocess.Popen(
            ["mpv", "--no-config", "--vo=null", "--ao=null", "--no-audio", "--hr-seek=yes", "--pause", "--keep-open=yes",
             "--really-quiet", "--input-ipc-server=" + address, path],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.socket = socket.socket(socket.AF_UNIX)
        for _ in range(500):
            try:
                self.socket.connect(address)
                break
            except OSError:
                time.sleep(0.01)
        self.lines = self.socket.makefile("r")
        time.sleep(1.0)  # the first picture is there
        self.get("time-pos")

    def send(self, *command):
        self.socket.sendall((json.dumps({"command": list(command)}) + "\n").encode())

    def get(self, name):
        self.send("get_property", name)
        while True:
            message = json.loads(self.lines.readline())
            if "event" not in message and "data" in message:
                return message["data"]

    def timed(self, *command):
        started = time.monotonic()
        self.send(*command)
        while json.loads(self.lines.readline()).get("event") != "playback-restart":
            pass
        return (time.monotonic() - started) * 1000

    def close(self):
        self.send("quit")
        self.process.wait()


def tool(program, *arguments):
    return json.loads(subprocess.run([program, "bench", *arguments], check=True, stdout=subprocess.PIPE).stdout)


def rate_of(path):
    text = subprocess.run(["ffprobe", "-v", "error", "-select_streams", "v:0", "-show_entries", "stream=r_frame_rate",
                           "-of", "csv=p=0", path], check=True, stdout=subprocess.PIPE, text=True).stdout
    above, below = re.match(r"(\d+)/(\d+)", text).groups()
    return int(above) / int(below)


def decode(program, path, rounds):
    """In turn, the best of each: what else the machine does falls on one as on the other."""
    ours, theirs = [], []
    for _ in range(rounds):
        started = time.monotonic()
        subprocess.run(["ffmpeg", "-v", "error", "-nostdin", "-threads", "2", "-i", path, "-map", "0:v:0", "-f", "null", "-"],
                       check=True)
        theirs.append(time.monotonic() - started)
        ours.append(tool(program, "decode", path))
    run = min(ours, key=lambda one: one["seconds"])
    return [("decode fps", run["fps"], run["frames"] / min(theirs), run["fps"] * min(theirs) / run["frames"], ">= 0.95")]


def best(runs, name):
    return min(run[name] for run in runs)


def seek(program, path, count, seed, rounds):
    """In turn and the best of each, as in decode."""
    ours, fresh, theirs, rate = [], [], [], rate_of(path)
    mpv = Mpv(path)
    for _ in range(rounds):
        ours.append(tool(program, "seek", path, "--count", str(count), "--seed", str(seed)))
        fresh.append(tool(program, "seek", path, "--count", str(count), "--seed", str(seed), "--fresh"))
        places = [(frame - 1) / rate for frame in ours[-1]["targets"]]  # the same ones
        theirs.append(figures([mpv.timed("seek", place, "absolute+exact") for place in places]))
    mpv.close()
    print("%-22s %-20s %10.2f" % (os.path.basename(path), "open to picture ms", best(ours, "firstPictureMs")))
    return [("seek%s %s" % (kind, name), best(runs, name), best(theirs, name), best(runs, name) / best(theirs, name), "<= 0.7")
            for kind, runs in (("", ours), (" fresh", fresh)) for name in ("medianMs", "p95Ms")]


def step(program, path, count, rounds):
    ours, theirs, rate = [], [], rate_of(path)
    mpv = Mpv(path)
    for _ in range(rounds):
        ours.append(tool(program, "step", path, "--count", str(count), "--from", "last", "--backward"))
        mpv.timed("seek", (ours[0]["frames"] - 1) / rate, "absolute+exact")
        theirs.append(figures([mpv.timed("frame-back-step") for _ in range(6)]))  # each takes as long as the last
    mpv.close()
    return [("step back " + name, best(ours, name), best(theirs, name), best(ours, name) / best(theirs, name),
             "<= 0.05" if name == "p95Ms" else "") for name in ("medianMs", "p95Ms", "maxMs")]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("movies", nargs="+")
    parser.add_argument("--tool", default="build/dev/bin/daylark-tool")
    parser.add_argument("--only", choices=["decode", "seek", "step"])
    parser.add_argument("--count", type=int, default=40)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--rounds", type=int, default=3)
    options = parser.parse_args()
    print("%-22s %-20s %10s %10s %8s  %s" % ("movie", "figure", "daylark", "yardstick", "ratio", "target"))
    for path in options.movies:
        rows = []
        if options.only in (None, "decode"):
            rows += decode(options.tool, path, options.rounds)
        if options.only in (None, "seek"):
            rows += seek(options.tool, path, options.count, options.seed, options.rounds)
        if options.only in (None, "step"):
            rows += step(options.tool, path, 60, options.rounds)
        for name, ours, theirs, ratio, target in rows:
            print("%-22s %-20s %10.2f %10.2f %8.3f  %s" % (os.path.basename(path), name, ours, theirs, ratio, target),
                  flush=True)


if __name__ == "__main__":
    main()
