"""Many workstations enter results at the same time."""

WORKSTATIONS = 8
FEW = 10


def play(run, report):
    each = 250 if run.long else FEW
    for clinic in run.clinics:
        work_together(clinic, each, report, clinic.product)
    usual, run.sqlite.connection = run.sqlite.connection, f"{run.sqlite.connection};Timeout=1"
    work_together(run.sqlite, FEW, report, "sqlite without patience")
    run.sqlite.connection = usual


def work_together(clinic, each, report, name):
    name = f"{name}, {WORKSTATIONS} workstations with {each} new cases each"
    clinic.renew()
    works = [[clinic.new_work(bid=100 + station, rid=200 + station, user=f"user{station}")
              for _ in range(each)] for station in range(WORKSTATIONS)]
    everything = sum(works, [])
    clinic.put(everything)
    hosts = [clinic.start_reading(of_station) for of_station in works]
    for host in hosts:
        host.finish()
    refused = sum(len(host.boxes) for host in hosts)
    print(f"{name}: {len(everything)} cases, {refused} refused by a lock at first", flush=True)
    if clinic.product == "postgresql":
        report.check(f"{name}: none is refused", 0, refused)
    left, wrong = look_at_refusals(clinic, everything, refused)
    report.hold(f"{name}: what is refused is told of and keeps its file", not wrong,
                "; ".join(wrong[:5]))
    if left:
        clinic.read_waiting()
    rows = clinic.rows()
    report.check(f"{name}: in the end as many links as cases", len(everything),
                 sum(int(link["PID"]) >= everything[0].pid for link in rows.links))
    wrong = clinic.unfinished(everything, rows)
    report.hold(f"{name}: each with its own journal line and values", not wrong,
                "; ".join(wrong[:5]))


def look_at_refusals(clinic, works, refused):
    rows = clinic.rows()
    wrong = clinic.wrong_with(works, rows)
    left = [work for work in works if clinic.waits(work)]
    # A result may show two boxes: its existence test and its insert can both be refused.
    if not len(left) <= refused <= 2 * len(left):
        wrong.append(f"{refused} boxes, but {len(left)} files")
    return left, wrong
