"""Result files that are hostile by their size: none may be lost or stop the host. What they cost in time
is printed; in memory it may not be more than ten times the file, but for what any host may spare."""

import time

MEGABYTE = 1_000_000
SPARE = 20 * MEGABYTE


def play(run, report):
    size = 64 if run.long else 2
    run.sqlite.renew()
    usual, _, _ = cost_of(run.sqlite, "")
    for name, filler in fillers(size).items():
        peak, seconds, work = cost_of(run.sqlite, *filler)
        length = len(text_of(work, *filler))
        rows = run.sqlite.rows()
        wrong = run.sqlite.wrong_with([work], rows)
        report.hold(f"{name}: nothing is lost", not wrong, "; ".join(wrong[:5]))
        entered = run.sqlite.is_entered(work, rows)
        report.hold(f"{name}: entered and deleted, or neither",
                    entered != run.sqlite.file(work).exists(), f"entered: {entered}")
        memory = max(0, peak - usual)
        report.hold(f"{name}: memory", memory <= 10 * length + SPARE, f"{memory} for {length} bytes")
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
    many_attributes = "<Note " + " ".join(f'a{n}=""' for n in range(9_990)) + "/>"
    return {
        "one text": (f"<Note>{'x' * length}</Note>",),
        "texts of a megabyte": (f"<Note>{'x' * MEGABYTE}</Note>" * size,),
        "texts beyond ASCII": (f"<Note>{'ö' * MEGABYTE}</Note>" * size,),
        "references to characters": (f"<Note>{'&#65;a' * (MEGABYTE // 6)}</Note>" * size,),
        "comments": (f"<!--{'x' * MEGABYTE}-->" * size,),
        "one attribute": (f'<Note a="{"x" * length}"/>',),
        "elements without content": ("<n/>" * (length // 4),),
        "as many elements as are read": ("".join(f"<n{n}/>" for n in range(99_900)),),
        "as many attributes as are read": (many_attributes,),
        "attributes": (many_attributes * size,),
        "as many namespaces as are read":
            ("<n " + " ".join(f'xmlns:a{n}="{n}"' for n in range(990)) + ">"
             + "<a0:n/>" * 97_000 + "</n>",),
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


def cost_of(clinic, *filler):
    """(peak of the host's memory in bytes, seconds, the work)."""
    work = clinic.new_work()
    clinic.file(work).write_text(text_of(work, *filler), "latin-1")
    host = clinic.start_reading([work])
    host.wait_for_work()
    peak = 0
    while not host.ended:
        peak = max(peak, host.peak_memory())
        time.sleep(0.005)
    host.finish()
    return peak, host.seconds_at_work, work
