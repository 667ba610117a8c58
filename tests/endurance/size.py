"""Result files of hostile size or form: none may be lost or stop the host. Their time is printed; their
memory must not exceed ten times the file, or what any host can spare."""

import time

from computer import BOUND

MEGABYTE = 1_000_000
SPARE = 20 * MEGABYTE


def play(run, report):
    size = 64 if run.long else 2
    run.sqlite.renew()
    usual, _ = cost_of(run.sqlite, run.sqlite.new_work(), "")
    for name, filler in fillers(size).items():
        work = run.sqlite.new_work()
        length = len(text_of(work, *filler))
        peak, seconds = cost_of(run.sqlite, work, *filler)
        report.hold(f"{name}: the host comes back", seconds is not None, f"in {BOUND} s")
        if seconds is None:
            continue
        rows = run.sqlite.rows()
        wrong = run.sqlite.wrong_with([work], rows)
        report.hold(f"{name}: nothing is lost", not wrong, "; ".join(wrong[:5]))
        entered = run.sqlite.is_entered(work, rows)
        report.hold(f"{name}: entered and deleted, or neither",
                    entered != run.sqlite.file(work).exists(), f"entered: {entered}")
        memory = max(0, peak - usual)
        report.hold(f"{name}: memory", memory <= max(10 * length, SPARE),
                    f"{memory} for {length} bytes")
        print(f"{name}: {length / MEGABYTE:.1f} MB, {'entered' if entered else 'refused'} in "
              f"{seconds:.1f} s, {memory / MEGABYTE:.1f} MB of memory", flush=True)
    after = run.sqlite.new_work()
    run.sqlite.put([after])
    run.sqlite.read([after])
    wrong = run.sqlite.unfinished([after], run.sqlite.rows())
    report.hold("the next result is entered", not wrong, "; ".join(wrong))


def fillers(size):
    """(what stands in front of the result's elements, document type) of so many megabytes, or as much of
    the kind as is read."""
    length = size * MEGABYTE
    many_attributes = "<Note " + " ".join(f'a{n}=""' for n in range(1_000)) + "/>"
    namespaces = " ".join(f'xmlns:a{n}="{n}"' for n in range(1_000))
    return {
        "one text": (f"<Note>{'x' * length}</Note>",),
        "texts of a megabyte": (f"<Note>{'x' * MEGABYTE}</Note>" * size,),
        "texts beyond ASCII": (f"<Note>{'ö' * MEGABYTE}</Note>" * size,),
        "references to characters": (f"<Note>{'&#65;a' * (MEGABYTE // 6)}</Note>" * min(size, 24),),
        "references within all attributes and levels that are read":
            ("<n>" * 250 + f"<n {namespaces}>" + "&#9;" * 77_000 + "</n>" + "</n>" * 250,),
        "ends of lines": (f"<Note>{'x' * 60}\r\n</Note>" * (length // 75),),
        "references that are none": ("&x;" * (length // 3),),
        "characters that are none": ("\x01" * length,),
        "comments that are none": (f"<!--{'-- ' * (length // 3)}-->",),
        "sections that are none": ("]]>" * (length // 3),),
        "comments": (f"<!--{'x' * MEGABYTE}-->" * size,),
        "one attribute": (f'<Note a="{"x" * length}"/>',),
        "elements without content": ("<n/>" * (length // 4),),
        "as many elements as are read": ("".join(f"<n{n}/>" for n in range(99_900)),),
        "as many attributes as are read": (many_attributes,),
        "attributes": (many_attributes * size,),
        "as many namespaces as are read":
            (f"<n {namespaces}>{'<a0:n/>' * 99_900}</n>",),
        "all at once":
            ("<n>" * 200 + f"<n {namespaces}>{'<a0:n/>' * 49_000}"
             + f"<Note>{'ö' * MEGABYTE}</Note>" * min(size, 18) + "</n>" + "</n>" * 200
             + "".join(f"<n{n}/>" for n in range(49_000)),),
        "a value of many sections":
            (f"<Id>{'<![CDATA[x]]>y' * (length // 14)}</Id>",),
        "a value of many elements": (f"<Id>{'<n>xxxx</n>' * 40_000}</Id>",),
        "a long value": (f"<Id>{'ö' * min(length, 9 * MEGABYTE)}</Id>",),
        "long values within each other":
            ("<UserDefData><Id><UserName>" + f"{'ö' * MEGABYTE}<n/>" * size
             + "</UserName></Id></UserDefData>",),
        "an entity, used again and again":
            (f"<Note>{'&x;' * 99_900}</Note>", f'<!DOCTYPE Result [<!ENTITY x "{"x" * 900}">]>'),
        "entities within each other":
            ("", "<!DOCTYPE Result [<!ENTITY % e0 ' '>" + "".join(
                f"<!ENTITY % e{n} '{f'&#37;e{n - 1};' * 10}'>" for n in range(1, 5)) + "%e4;]>"),
        "levels": ("<n>" * (size * 700) + "</n>" * (size * 700),),
        "more than is read": (" " * (65 * MEGABYTE + (3 << 20)),),
    }


def text_of(work, filler, document_type=""):
    return work.text().replace("<Result>", f"{document_type}<Result>{filler}")


def cost_of(clinic, work, *filler):
    """The host's peak memory in bytes and its seconds; None for a host that did not finish."""
    clinic.file(work).write_text(text_of(work, *filler), "latin-1")
    host = clinic.start_reading([work])
    host.wait_for_work()
    end = time.monotonic() + BOUND
    peak = 0
    while not host.ended and time.monotonic() < end:
        peak = max(peak, host.peak_memory())
        time.sleep(0.005)
    host.kill()
    return peak, host.seconds_at_work if host.count("return") else None
