"""Result files that are hostile by their size: none may be lost or stop the host. What they cost in time
and memory is printed."""

import time

MEGABYTE = 1_000_000


def play(run, report):
    size = 100 if run.long else 2
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
        print(f"{name}: {length / MEGABYTE:.1f} MB, {'entered' if entered else 'refused'} in "
              f"{seconds:.1f} s, {max(0, peak - usual) / length:.1f} bytes of memory for each of it",
              flush=True)
    after = run.sqlite.new_work()
    run.sqlite.put([after])
    run.sqlite.read([after])
    wrong = run.sqlite.unfinished([after], run.sqlite.rows())
    report.hold("the next result is entered", not wrong, "; ".join(wrong))


def fillers(size):
    """(what stands in front of the result's elements, document type) of so many megabytes."""
    length = size * MEGABYTE
    entity = '<!DOCTYPE Result [<!ENTITY x "' + "x" * MEGABYTE + '">]>'
    return {
        "one text": (f"<Note>{'x' * length}</Note>",),
        "texts of a megabyte": (f"<Note>{'x' * MEGABYTE}</Note>" * size,),
        "elements without content": ("<n/>" * (length // 4),),
        "references": (f"<Note>{'&#65;' * (length // 5)}</Note>",),
        "one comment": (f"<!--{'x' * length}-->",),
        "one attribute": (f'<Note a="{"x" * length}"/>',),
        "attributes": ("<Note " + " ".join(f'a{n}=""' for n in range(size * 1000)) + "/>",),
        "a megabyte's entity, used again and again":
            ("<Note>" + "&x;" * (size * 1000) + "</Note>", entity),
        "levels": ("<n>" * (size * 1000) + "</n>" * (size * 1000),),
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
