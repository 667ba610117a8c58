"""One host process runs for a long time: its use of system resources must not grow."""

import re
import shutil

ALLOWED = 0.01
# A heap grows in steps. Only a long session can tell them from a leak.
HEAP_STEP_KB = 128
HELD = re.compile(r"held (\w+) (\d+) private (\d+) handles (\d+) gdi (\d+) user (\d+) windows (\d+)")
COUNTS = ("KB private memory", "handles", "GDI objects", "USER objects", "windows")


def play(run, report):
    count, starts = (10_000, 100) if run.long else (500, 20)
    run.sqlite.renew()
    shutil.copy(run.programs / "LongSession.exe", run.computer.host_folder)
    host = run.computer.run(
        r"C:\Kestra\LongSession.exe", run.sqlite.connection,
        run.computer.windows_path(run.computer.exchange), str(count), str(starts),
        plan="outcome=sent;caseid=77", bound=7200)
    report.check("the host process ends well", 0, host.status)
    if host.status:
        print("\n".join(host.lines), flush=True)
    held = {}
    for line in host.lines:
        if found := HELD.fullmatch(line):
            held.setdefault(found[1], []).append([int(number) for number in found.groups()[1:]])
    for phase, times in (("BVilnor", count), ("DBVilnor", count), ("trips", count), ("starts", starts)):
        counts = held.get(phase, [])
        report.check(f"{phase}: done", times, counts[-1][0] if counts else None)
        if not counts:
            continue
        for what, first, *_, last in zip(COUNTS, *(row[1:] for row in counts)):
            step = HEAP_STEP_KB if what == COUNTS[0] and not run.long else 0
            report.hold(f"{phase}, {times} times: {what}", last <= first * (1 + ALLOWED) + step,
                        f"{first} after {counts[0][0]}, {last} in the end")
        for done, *held_then in counts:
            print(f"{phase}, after {done}: " + ", ".join(
                f"{number} {what}" for what, number in zip(COUNTS, held_then)), flush=True)
    report.check("all references to objects are back", ["yes"], host.starting_with("unloadable "))
