#!/usr/bin/env python3
"""run.py BUILD: measures what the sandbox costs and prints one table. BUILD is the folder of a finished build.

Exits with a status other than 0 when something could not be measured. A bound that is exceeded is said in the table and
fails nothing: times depend on the machine.
"""

import json
import os
import re
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

COUNTED_WRITES = 200

# Containers lie here unless TMPDIR says otherwise: what a disk does meanwhile would hide the rest. A file system in
# memory may be unable to hold a protection class; then they lie where temporary files do.
MEMORY = "/dev/shm"


def fail(sentence):
    sys.exit(f"bench: {sentence}")


def keeps_extended_attributes(folder):
    try:
        with tempfile.NamedTemporaryFile(dir=folder) as file:
            os.setxattr(file.name, "user.bench", b"yes")
        return True
    except OSError:
        return False


class Bench:
    def __init__(self, build):
        self.programs = build / "bin"
        self.library = build / "lib" / "libQVSandbox.so"
        self.results = build / "bench"
        self.environment = dict(os.environ)
        if "TMPDIR" not in self.environment and keeps_extended_attributes(MEMORY):
            self.environment["TMPDIR"] = MEMORY

    def in_container(self, *command, environment=None):
        """Runs a program in a container of its own and answers what it wrote to standard output."""
        command = [str(self.programs / "qvdevice"), "exec", "--", *map(str, command)]
        done = subprocess.run(command, stdout=subprocess.PIPE, text=True, env=environment or self.environment)
        if done.returncode != 0:
            fail(f"{' '.join(command)} ended with status {done.returncode}")
        return done.stdout

    def measure(self, program, environment=None, where=""):
        """Each benchmark of the program, with the counters of each of its repetitions."""
        print(" ".join(filter(None, [program, where, "..."])), file=sys.stderr, flush=True)
        text = self.in_container(self.programs / program, "--benchmark_format=json", environment=environment)
        # The SDK's log lines go to standard output too, before main.
        text = text[re.search(r"^\{", text, re.MULTILINE).start():]
        (self.results / f"{' '.join(filter(None, [program, where]))}.json").write_text(text)
        benchmarks = {}
        for run in json.loads(text)["benchmarks"]:
            if run.get("error_occurred"):
                fail(f"{program}: {run['name']}: {run['error_message']}")
            if run["run_type"] == "iteration":
                benchmarks.setdefault(run["name"].split("/iterations")[0], []).append(run)
        return benchmarks

    def system_calls(self, way):
        """System calls per write by name: what twice as many writes make more, start and end of the program left out."""
        def count(writes):
            report = self.results / f"calls.{way}.{writes}"
            self.in_container("strace", "-f", "-c", "-U", "name,calls", "-o", report,
                              self.programs / "bench_write_times", way, writes)
            # "name calls": what stands between the two rules.
            rows = re.findall(r"^(\w+) +(\d+)$", report.read_text(), re.MULTILINE)
            return {name: int(calls) for name, calls in rows if name != "total"}
        once, twice = count(COUNTED_WRITES), count(2 * COUNTED_WRITES)
        each = {name: (twice[name] - once.get(name, 0)) / COUNTED_WRITES for name in twice}
        return {name: calls for name, calls in each.items() if round(calls, 1) != 0}

    def initialisers(self):
        """The names of the functions that the loader runs when it loads the library, in their order."""
        sections = subprocess.check_output(["readelf", "-SW", self.library], text=True)
        start, size = re.search(r"\.init_array +INIT_ARRAY +(\w+) +\w+ +(\w+)", sections).groups()
        start, size = int(start, 16), int(size, 16)
        addends = {}
        for line in subprocess.check_output(["readelf", "-rW", self.library], text=True).splitlines():
            words = line.split()
            if len(words) >= 4 and re.fullmatch(r"[0-9a-f]+", words[0]) and words[2].startswith("R_"):
                addends[int(words[0], 16)] = words
        names = {}
        for line in subprocess.check_output(["nm", "-C", "--defined-only", self.library], text=True).splitlines():
            address, kind, name = line.split(maxsplit=2)
            if kind in "tT":
                names.setdefault(int(address, 16), name)
        found = []
        for slot in range(start, start + size, 8):
            relocation = addends[slot]
            if relocation[2].endswith("_RELATIVE"):
                found.append(names.get(int(relocation[3], 16), relocation[3]))
            else:
                found.append(relocation[4])
        return found


def middle(runs, value):
    return statistics.median(value(run) for run in runs)


class Table:
    HEADINGS = ("what", "ours", "other", "ratio", "bound", "within")

    def __init__(self):
        self.rows = []

    def ratio(self, what, runs, ours, other, bound=None, unit="ns", scale=1.0):
        """The ratio is taken in each repetition, where the two were measured side by side; then the median."""
        ratio = middle(runs, lambda run: run[ours] / run[other])
        self.rows.append((what, f"{middle(runs, lambda r: r[ours]) * scale:.2f} {unit}",
                          f"{middle(runs, lambda r: r[other]) * scale:.2f} {unit}", f"{ratio:.3f}",
                          f"{bound:.2f}" if bound else "", self.verdict(ratio, bound) if bound else ""))

    def start(self, what, runs, ours, other):
        """By the clock and by the processor time, each with what the library adds and whether that is within 1 ms."""
        for how, suffix in (("", ""), (", processor time", "Processor")):
            added = middle(runs, lambda run: run[ours + suffix] - run[other + suffix]) / 1e6
            self.rows.append((what + how, f"{middle(runs, lambda r: r[ours + suffix]) / 1e6:.2f} ms",
                              f"{middle(runs, lambda r: r[other + suffix]) / 1e6:.2f} ms", f"{added:+.2f} ms", "+1.00 ms",
                              self.verdict(added, 1.0)))

    def value(self, what, ours, other="", bound=None, within=""):
        self.rows.append((what, ours, other, "", bound or "", within))

    @staticmethod
    def verdict(value, bound):
        return "yes" if value <= bound else "NO"

    def show(self):
        widths = [max(len(row[i]) for row in [self.HEADINGS, *self.rows]) for i in range(len(self.HEADINGS))]
        for row in [self.HEADINGS, tuple("-" * width for width in widths), *self.rows]:
            cells = [row[0].ljust(widths[0])] + [cell.rjust(width) for cell, width in zip(row[1:], widths[1:])]
            print("  ".join(cells).rstrip())


def calls_text(calls):
    return ", ".join(f"{name} {count:g}" for name, count in sorted(calls.items(), key=lambda entry: (-entry[1], entry[0])))


def image_effects(bench, table):
    """Three passes of the box blur and one of the colour matrix. Of the boxes, the one with the greatest ratio."""
    runs = bench.measure("bench_image_effects")
    milli = {"unit": "ms", "scale": 1e-6}
    boxes = (3, 31, 121)
    # How many times as long as copying: a small picture stays in the caches.
    copies = {"750/1334": 5.5, "1536/2048": None, "3840/2160": 2.5}
    for size, bound in copies.items():
        for threads in (1, 2):
            blurs = {box: runs[f"Blur/{size}/{box}/{threads}"] for box in boxes}
            # Processor time leaves out what other processes take, but says nothing of how well two threads share.
            clock = "Processor" if threads == 1 else ""
            what = f"blur of {size.replace('/', ' x ')}, {threads} thread{'s' if threads > 1 else ''}"

            def worst(text, ours, other, bound):
                ours, other = ours + clock, other + clock
                box = max(boxes, key=lambda box: middle(blurs[box], lambda run: run[ours] / run[other]))
                table.ratio(f"{what}, box {box} : {text}", blurs[box], ours, other, bound, **milli)

            worst("OpenCV", "best", "openCV", 0.5)
            if threads == 1:
                worst("libyuv", "best", "libyuv", 1.0)
            worst("six copies, AVX2", "avx2", "copies", bound)
            most, least = (middle(blurs[box], lambda run: run["bestProcessor"]) for box in (121, 3))
            table.rows.append(("  box 121 : box 3, processor time", f"{most * 1e-6:.2f} ms", f"{least * 1e-6:.2f} ms",
                               f"{most / least:.3f}", "1.20", table.verdict(most / least, 1.2)))
            table.ratio(f"matrix on {size.replace('/', ' x ')}, {threads} thread{'s' if threads > 1 else ''} : a copy, AVX2",
                        runs[f"Matrix/{size}/{threads}"], "avx2" + clock, "copy" + clock, 1.4, **milli)
    run = runs["Blur/3840/2160/121/2"][0]
    table.value("temporary buffer of the blur, 3840 x 2160, box 121 : image", f"{run['temporary'] / 2**20:.2f} MiB",
                f"{run['image'] / 2**20:.2f} MiB")


def main(build):
    bench = Bench(build)
    table = Table()

    runs = bench.measure("bench_hook_call")["HookCall"]
    table.ratio("call through a hook : by hand in C", runs, "hooked", "byHand", 1.05)
    table.ratio("call through a hook : not hooked", runs, "hooked", "unhooked")
    table.ratio("hook by message forwarding : by hand in C", runs, "forwarded", "byHand")

    writes = bench.measure("bench_hooked_write")
    micro = {"unit": "us", "scale": 1e-3}
    runs = writes["HookedWrite"]
    table.ratio("hooked write of 1 KiB : by hand with Foundation", runs, "hooked", "byHand", 1.05, **micro)
    table.ratio("what follows the write : by hand with Foundation", writes["Raise"], "hooked", "byHand", 1.05, **micro)
    table.ratio("hooked write : write and three bare system calls", runs, "hooked", "bare", **micro)
    table.ratio("hooked write : write alone", runs, "hooked", "alone", **micro)
    steps = writes["Breakdown"]
    for step in ("write", "exists", "attributes", "decide", "copy", "set", "release"):
        table.value(f"  step by hand: {step}", f"{middle(steps, lambda run: run[step]) / 1000:.2f} us")
    table.ratio("device's data protection : stat, getxattr, setxattr", writes["DataProtection"], "device", "bare", 1.0, **micro)

    lists = bench.measure("bench_whitelist")
    for make, text in (("unrelated", "unrelated"), ("samePrefix", "of the same beginning"),
                       ("sameLengthAndEnd", "of its length and end"),
                       ("allButTheMiddle", "differing in the middle"), ("allButOneAnywhere", "differing anywhere"),
                       ("otherAlphabet", "in another alphabet")):
        table.ratio(f"1000 patterns, {text} : plain C loop", lists[f"Whitelist/{make}"], "asked", "plainC", 3.0, **micro)
    allocations = max(run["allocations"] for runs in lists.values() for run in runs)
    table.value("allocations of such a question", f"{allocations:g}")
    table.value("activity types excluded, 1000 patterns", f"{middle(lists['Whitelist/unrelated'], lambda r: r['merged']) / 1000:.2f} us")

    restores = bench.measure("bench_restore")
    for count in (10, 1000):
        table.ratio(f"restore of {count} pasteboard items : Foundation's sets", restores[f"Restore{count}"], "guard", "byHand", **micro)
    table.value("restore of 10000 pasteboard items", f"{middle(restores['Restore10000'], lambda r: r['guard']) / 1000:.2f} us")

    ways = bench.measure("bench_ways_out")
    runs = ways["Sheet"]
    table.ratio("share sheet of 200 activities, 1000 patterns : questions", runs, "filter", "questions", **micro)
    table.ratio("  400 activities : 200", runs, "twiceTheActivities", "filter", **micro)
    table.ratio("  2000 patterns : 1000", runs, "twiceThePatterns", "filter", **micro)
    runs = ways["Menu"]
    table.ratio("callout bar looks for a target : not hooked", runs, "target", "targetUnhooked")
    table.ratio("setMenuItems: with two items : not hooked", runs, "items", "itemsUnhooked")

    print("system calls ...", file=sys.stderr, flush=True)
    calls = {way: bench.system_calls(way) for way in ("alone", "bare", "byHand", "hooked")}
    total = {way: sum(each.values()) for way, each in calls.items()}
    table.value("system calls of a hooked write : by hand", f"{total['hooked']:g}", f"{total['byHand']:g}")
    table.value("system calls of a write alone : with bare calls", f"{total['alone']:g}", f"{total['bare']:g}")

    application = bench.measure("bench_application")
    runs = application["DelegateRequest"]
    table.ratio("request for the delegate by the host : not hooked", runs, "hooked", "unhooked")
    table.ratio("  the same 50 frames deeper : not hooked", runs, "hookedDeep", "unhooked")
    for step, what in (("callStack", "the call stack"), ("image", "the image of an address")):
        table.value(f"  its part: {what}", f"{middle(runs, lambda run: run[step]):.2f} ns")
    runs = application["EventDelivery"]
    table.ratio("event through sendEvent: : not hooked", runs, "hooked", "unhooked")
    table.ratio("  the same while the SDK is not ready : not hooked", runs, "hookedNotReady", "unhooked")

    # What a disk costs is part of a wipe; a file system in memory shows what the rest does.
    disk = {name: value for name, value in bench.environment.items() if name != "TMPDIR" or value != MEMORY}
    places = {"on disk": disk} | ({"in memory": bench.environment} if disk != bench.environment else {})
    for place, environment in places.items():
        wipes = bench.measure("bench_wipe", environment, place)
        bound = 1.3 if place == "on disk" else None
        for count in ("10000", "100000"):
            runs = wipes[f"Wipe{count}"]
            files = f"{int(count):,} files {place}"
            table.ratio(f"wipe of {files} : rm -rf", runs, "wipe", "rm", bound, **micro)
            table.ratio("  the same, processor time", runs, "wipeProcessor", "rmProcessor", bound, **micro)
            table.ratio(f"wipe of {files} : bare system calls", runs, "wipe", "bare", **micro)
            table.value("  peak memory", f"{middle(runs, lambda run: run['peakMiB']):.0f} MiB")

    image_effects(bench, table)

    runs = bench.measure("bench_start_up")["StartUp"]
    table.start("start to main, with library : without", runs, "withLibrary", "app")
    table.start("  the same with the SDK alone : without", runs, "withSDK", "app")
    table.start("start of an app that uses Foundation, with : without", runs, "usedWithLibrary", "usedApp")
    table.start("  the library's part: library and SDK : SDK alone", runs, "usedWithLibrary", "usedWithSDK")

    initialisers = bench.initialisers()
    own = [name for name in initialisers if name != "frame_dummy"]
    expected = ["(anonymous namespace)::load()", "QVSandboxInit"]
    table.value("dynamic initialisers of the library", str(len(own)), "", str(len(expected)),
                "yes" if own == expected else "NO")

    print(f"\nContainers in {bench.environment.get('TMPDIR', tempfile.gettempdir())}; load of the machine {os.getloadavg()[0]:.1f} on {os.cpu_count()} processors.\n")
    table.show()
    print("\nSystem calls of each write:")
    for way, each in calls.items():
        print(f"  {way:7} {calls_text(each)}")
    print(f"Initialisers, in the loader's order: {', '.join(initialisers)}")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: run.py BUILD")
    main(Path(sys.argv[1]).resolve())
