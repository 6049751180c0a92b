#!/usr/bin/env python3
"""Writes docs/performance.md from kavelin-bench's JSON output.

    scripts/performance-report.py RESULTS.json CMAKE_CACHE OUTPUT.md

scripts/perf.sh runs it; the prose below is the page's own text, so that
regenerating the page keeps it.
"""

import json
import math
import os
import platform
import subprocess
import sys

FRAME = 1 / 60  # one frame at 60 Hz: 16.7 ms
HOUR = 3600.0

# The repeating timers of the extension, in the order the page lists them:
# (benchmark, owner and work).
TICKS = [
    ("BM_Tick_Panel_Frame", "Panel frame timer: lays out again only when the orientation changed"),
    ("BM_Tick_MusicStrip", "Music strip: now-playing texts, artwork, play/pause glyph"),
    ("BM_Tick_MusicOverlay", "Music overlay (once opened): the same for its controls and slider"),
    ("BM_Tick_Panel_Second", "Panel second timer: visibility, clock and date, battery summary, alarm line, sections"),
    ("BM_Tick_AlarmTimerFeeder", "Alarm and timer overlay: feeds the panel the next alarm and the timer"),
    ("BM_Tick_AmperoCountDown", "Battery estimator count-down: the draining text"),
    ("BM_Tick_ScheduleReload", "Panel schedule timer: table reload and layout (lock screen, display on)"),
    ("BM_Tick_AmperoSample", "Battery estimator sample: registry reads, bolt, six texts"),
    ("BM_Tick_Panel_Weather", "Panel weather timer (\"weatherUpdateRate\", default 1,800 s): weather line"),
]

UNIT_SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}


def base_name(name):
    """BM_StartUp/iterations:1/repeats:1/manual_time -> BM_StartUp; arguments stay (BM_ScheduleReload/10)."""
    parts = name.split("/")
    return "/".join(p for p in parts if ":" not in p and p not in ("manual_time", "real_time"))


def load_results(path):
    """Median of each benchmark (or its only run), keyed by its name and arguments."""
    with open(path) as f:
        data = json.load(f)
    results = {}
    for run in data["benchmarks"]:
        name = base_name(run.get("run_name", run["name"]))
        if run.get("error_occurred"):
            results[name] = {"error": run.get("error_message", "failed")}
            continue
        kind = run.get("run_type", "iteration")
        if kind == "aggregate" and run.get("aggregate_name") not in ("median", "cv"):
            continue
        scale = UNIT_SECONDS[run.get("time_unit", "ns")]
        entry = results.setdefault(name, {})
        if kind == "aggregate" and run["aggregate_name"] == "cv":
            entry["cv"] = run["cpu_time"]
            continue
        if kind == "iteration" and "cpu" in entry and entry.get("aggregate"):
            continue
        entry.update(
            {
                "cpu": run["cpu_time"] * scale,
                "real": run["real_time"] * scale,
                "aggregate": kind == "aggregate",
                "repetitions": run.get("repetitions", 1),
            }
        )
        for key, value in run.items():
            if key not in entry and isinstance(value, (int, float)) and key not in ("iterations", "cpu_time", "real_time"):
                entry[key] = value
    return data.get("context", {}), results


def duration(seconds):
    if seconds is None:
        return "—"
    magnitude = abs(seconds)
    if magnitude < 1e-6:
        return f"{seconds * 1e9:.0f} ns"
    if magnitude < 1e-3:
        return f"{seconds * 1e6:.1f} µs" if magnitude < 1e-4 else f"{seconds * 1e6:.0f} µs"
    if magnitude < 1:
        return f"{seconds * 1e3:.2f} ms" if magnitude < 1e-2 else f"{seconds * 1e3:.1f} ms"
    return f"{seconds:.2f} s"


def percent(fraction):
    value = fraction * 100
    if value == 0:
        return "0 %"
    if abs(value) >= 10:
        return f"{value:.0f} %"
    if abs(value) >= 1:
        return f"{value:.1f} %"
    digits = 2
    while abs(value) < 10 ** -digits * 10 and digits < 7:
        digits += 1
    return f"{value:.{digits}f} %"


def number(value, digits=0):
    if value is None:
        return "—"
    return f"{value:,.{digits}f}"


def byte_size(value):
    if value is None:
        return "—"
    sign = "-" if value < 0 else ""
    value = abs(value)
    if value >= 1 << 20:
        return f"{sign}{value / (1 << 20):.1f} MiB"
    if value >= 1 << 10:
        return f"{sign}{value / 1024:.1f} KiB"
    return f"{sign}{value:.0f} bytes"


def spread(entry):
    cv = entry.get("cv")
    return f"±{cv * 100:.0f} %" if cv is not None else "one run"


def machine(context, cache_path):
    cache = {}
    try:
        with open(cache_path) as f:
            for line in f:
                if "=" in line and ":" in line.split("=", 1)[0]:
                    key, value = line.rstrip("\n").split("=", 1)
                    cache[key.split(":", 1)[0]] = value
    except OSError:
        pass
    model = "unknown processor"
    try:
        with open("/proc/cpuinfo") as f:
            for line in f:
                if line.startswith("model name"):
                    model = line.split(":", 1)[1].strip()
                    break
    except OSError:
        pass
    compiler = cache.get("CMAKE_CXX_COMPILER", "c++")
    try:
        version = subprocess.run([compiler, "--version"], capture_output=True, text=True).stdout.splitlines()[0]
    except (OSError, IndexError):
        version = compiler
    try:
        commit = subprocess.run(["git", "rev-parse", "--short", "HEAD"], capture_output=True, text=True).stdout.strip()
        if subprocess.run(["git", "status", "--porcelain", "--untracked-files=no"], capture_output=True, text=True).stdout.strip():
            commit += " with uncommitted changes in the tree"
    except OSError:
        commit = "unknown"
    load = context.get("load_avg") or []
    return [
        f"- Processor: {model}, {context.get('num_cpus', os.cpu_count())} logical cores"
        f" (load average {', '.join(f'{x:.1f}' for x in load[:3]) or 'unknown'} when the run ended)",
        f"- System: {platform.system()} {platform.release()}; compiler: {version}",
        f"- Build type: {cache.get('CMAKE_BUILD_TYPE', 'unknown')}; Google Benchmark built as"
        f" {context.get('library_build_type', 'unknown')}; commit {commit or 'unknown'}",
        f"- Run: {context.get('date', 'unknown date')}",
    ]


def periodic_section(results):
    lines = [
        "| Timer | Every | CPU per tick | Spread | Share of a 16.7 ms frame | Share of one core over an hour | Allocations per tick |",
        "|---|---|---|---|---|---|---|",
    ]
    periods = {}
    for name, label in TICKS:
        entry = results.get(name)
        if not entry or "error" in entry:
            lines.append(f"| {label} | | {entry['error'] if entry else 'not run'} | | | | |")
            continue
        period = entry["period_s"]
        periods.setdefault(period, []).append(entry)
        lines.append(
            f"| {label} | {number(period, 1 if period < 1 else 0)} s | {duration(entry['cpu'])} | {spread(entry)}"
            f" | {percent(entry['cpu'] / FRAME)} | {percent(entry['cpu'] / period)}"
            f" | {number(entry.get('allocations'), 1)} |"
        )
    lines += [
        "",
        "By period: everything the extension does when a tick of that period falls due (the sum of the",
        "timers above with that period), as a share of a frame and, since it recurs for as long as the",
        "phone is on, as a share of one core over an hour (per-tick cost × ticks per hour / 3,600 s).",
        "",
        "| Tick | CPU per tick | Share of a 16.7 ms frame | Ticks per hour | Share of one core over an hour | Allocations per tick |",
        "|---|---|---|---|---|---|",
    ]
    total_share = 0.0
    for period in sorted(periods):
        cost = sum(e["cpu"] for e in periods[period])
        allocations = sum(e.get("allocations", 0) for e in periods[period])
        total_share += cost / period
        lines.append(
            f"| {number(period, 1 if period < 1 else 0)} s | {duration(cost)} | {percent(cost / FRAME)}"
            f" | {number(HOUR / period)} | {percent(cost / period)} | {number(allocations, 1)} |"
        )
    lines.append(f"| **All timers** | | | | **{percent(total_share)}** | |")
    return lines, periods, total_share


def music_share(results):
    share = 0.0
    for name in ("BM_Tick_MusicStrip", "BM_Tick_MusicOverlay"):
        entry = results.get(name)
        if entry and "error" not in entry:
            share += entry["cpu"] / entry["period_s"]
    return share


def music_note(results):
    strip = results.get("BM_Tick_MusicStrip")
    overlay = results.get("BM_Tick_MusicOverlay")
    if not strip or not overlay or "error" in strip or "error" in overlay:
        return []
    share = strip["cpu"] / strip["period_s"] + overlay["cpu"] / overlay["period_s"]
    return [
        f"The two music ticks take {duration(strip['cpu'])} and {duration(overlay['cpu'])} every half second",
        f"({percent(share)} of a core together while something plays): setting texts and glyphs that",
        "have not changed. Each tick sets its background from the artwork's merged colour; an image",
        "computes that colour when first asked and keeps it (its pixels never change), so a tick no",
        "longer averages the artwork's pixels. With nothing playing both ticks return at once.",
    ]


def virtual_time_section(results, periods):
    lines = [
        "| Stretch of virtual time | CPU | Share of one core over it | Predicted from the ticks | Allocations |",
        "|---|---|---|---|---|",
    ]
    for name, label in [
        ("BM_VirtualTime_10s", "10 s"),
        ("BM_VirtualTime_30s", "30 s"),
    ]:
        entry = results.get(name)
        if not entry or "error" in entry:
            continue
        span = entry["period_s"]
        predicted = sum(e["cpu"] * max(1, span // period) for period, es in periods.items() for e in es if period <= span)
        lines.append(
            f"| {label} | {duration(entry['cpu'])} | {percent(entry['cpu'] / span)} | {duration(predicted)}"
            f" | {number(entry.get('allocations'))} |"
        )
    return lines


def schedule_section(results):
    lines = [
        "| Items | Rows | Cells built | CPU per reload and layout | Spread | Share of a 16.7 ms frame"
        " | Share of one core, reloading every 10 s | Allocations | CPU per item | Growth from the size before |",
        "|---|---|---|---|---|---|---|---|---|---|",
    ]
    previous = None
    runs = sorted(
        ((int(name.split("/")[1]), entry) for name, entry in results.items() if name.startswith("BM_ScheduleReload/")),
        key=lambda pair: pair[0],
    )
    for size, entry in runs:
        if "error" in entry:
            lines.append(f"| {number(size)} | | | {entry['error']} | | | | | | |")
            continue
        growth = "—"
        if previous:
            growth = f"×{entry['cpu'] / previous[1]:.1f} time for ×{size / previous[0]:.0f} items"
        lines.append(
            f"| {number(size)} | {number(entry.get('rows'))} | {number(entry.get('cells'), 1)} | {duration(entry['cpu'])}"
            f" | {spread(entry)} | {percent(entry['cpu'] / FRAME)} | {percent(entry['cpu'] / 10)}"
            f" | {number(entry.get('allocations'))} | {duration(entry['cpu'] / size)} | {growth} |"
        )
        previous = (size, entry["cpu"])
    return lines


def startup_section(results):
    entry = results.get("BM_StartUp")
    if not entry or "error" in entry:
        return [f"Not measured: {entry['error'] if entry else 'not run'}."]
    hooks = int(entry.get("hooks", 0))
    rows = [
        ("Loading libKavelin.so (mapping, relocation, class registration), hooks excluded", entry["load_s"]),
        (f"Installing the {hooks} hooks (first to last, inside the load)", entry["hooks_s"]),
        ("Panel construction and first layout (host boot with the extension minus without)", entry["panel_s"]),
        ("**The extension's whole share of start-up**", entry["load_s"] + entry["hooks_s"] + entry["panel_s"]),
        ("For scale: the host's boot without the extension", entry["bootWithoutExtension_s"]),
        ("For scale: the host's boot with the extension", entry["bootWithExtension_s"]),
    ]
    lines = [
        "| Phase | CPU | In 16.7 ms frames | Share of one core over the first hour |",
        "|---|---|---|---|",
    ]
    for label, seconds in rows:
        lines.append(f"| {label} | {duration(seconds)} | {seconds / FRAME:.2f} | {percent(seconds / HOUR)} |")
    return lines


def startup_verdict(results):
    entry = results.get("BM_StartUp")
    if not entry or "error" in entry or not entry.get("bootWithoutExtension_s"):
        return []
    ratio = entry["bootWithExtension_s"] / entry["bootWithoutExtension_s"]
    return [
        "Loading and hooking are cheap; building the panel (its sections, the table controller, the",
        f"launcher, the music strip, their images) makes the host's boot {ratio:.2f} times as long on this",
        "machine. Images are decoded when first drawn, as UIKit does, so the some forty icons the panel",
        "loads (22 battery steps, two sets of glyphs) cost a file read each, and only those on screen",
        "are decoded, at the first picture. What remains is mostly the overlays made at start-up and",
        "the first date and battery texts.",
    ]


# A virtual hour ends with a few dozen bytes more or less on the heap (maps
# and vectors keep their capacity, strings their buffers); a week of hours
# that only reuse what exists stays within this.
SECOND_WEEK_NOISE_BYTES = 512


def memory_section(results):
    week = results.get("BM_Memory_Week")
    visits = results.get("BM_Memory_OverlayThousandVisits")
    lines = []
    if week and "error" not in week:
        growth = week["growthBytes_1h_to_168h"]
        lines += [
            "| After | Live heap | Resident size |",
            "|---|---|---|",
            f"| 1 virtual hour | {byte_size(week['liveBytes_1h'])} | {byte_size(week['residentBytes_1h'])} |",
            f"| 24 virtual hours | {byte_size(week['liveBytes_24h'])} | |",
            f"| 168 virtual hours | {byte_size(week['liveBytes_168h'])} | {byte_size(week['residentBytes_168h'])} |",
            f"| **Growth from 1 to 168 hours** | **{byte_size(growth)}** ({byte_size(growth / 167)} an hour)"
            f" | {byte_size(week['residentBytes_168h'] - week['residentBytes_1h'])} |",
        ]
        if "growthBytes_168h_to_336h" in week:
            lines.append(f"| **Growth over a second week, 168 to 336 hours** | **{byte_size(week['growthBytes_168h_to_336h'])}** | |")
    else:
        lines.append(f"The week was not measured: {week['error'] if week else 'not run'}.")
    if visits and "error" not in visits:
        lines += [
            "",
            f"A thousand openings and closings of the battery overlay grow the live heap by"
            f" {byte_size(visits['visitsGrowthBytes'])}; the same thousand virtual seconds left idle grow it by"
            f" {byte_size(visits['idleGrowthBytes'])} (`BM_Memory_OverlayThousandVisits`).",
        ]
    return lines


def memory_verdict(results):
    week = results.get("BM_Memory_Week")
    if not week or "error" in week:
        return []
    growth = week["growthBytes_1h_to_168h"]
    lines = [
        "Nothing is released during the process's life by design (the panel, the overlays and their",
        "timers live as long as the host); what must not happen is growth with time. The table",
        "controller replaces its dictionaries whole at each reload, the overlays are made once and",
        "reused, and the timers allocate only what they release by the next tick.",
    ]
    second = week.get("growthBytes_168h_to_336h")
    if growth <= 0:
        lines += [
            f"The heap does not grow over the week; it shrinks by {byte_size(-growth)} because the typical",
            "morning's two events and two reminders pass during the first two days and leave the table",
            "(the heap after 24 hours, when some of them have passed, lies between the two).",
        ]
    elif second is not None and second <= SECOND_WEEK_NOISE_BYTES:
        lines += [
            f"The heap grew by {byte_size(growth)} over the first week, a few hundred bytes at each midnight:",
            "the panel shows each weekday's name for the first time, and the text measurement caches",
            "(at most 4,096 and 1,024 texts) keep each new text once. The second week brings no new",
            f"text and the heap changes by {byte_size(second)} over it, so nothing grows with time.",
        ]
    else:
        lines += [
            f"**The heap grew by {byte_size(growth)} over the week: this run needs looking into.**",
        ]
    if second is not None and second > SECOND_WEEK_NOISE_BYTES:
        lines += [
            f"**The heap grew by {byte_size(second)} over the second week: something accumulates with time.**",
        ]
    return lines


def small_section(results):
    lines = ["| Piece | CPU | Spread |", "|---|---|---|"]
    for name, label in [
        ("BM_SettingsRead", "One settings read (a runtime message, a dictionary look-up, a conversion)"),
        ("BM_DateFormat", "One date format with a cached ICU formatter"),
    ]:
        entry = results.get(name)
        if entry and "error" not in entry:
            lines.append(f"| {label} | {duration(entry['cpu'])} | {spread(entry)} |")
    return lines


def reload_cpu(results, size):
    entry = results.get(f"BM_ScheduleReload/{size}")
    return None if not entry or "error" in entry else entry["cpu"]


def ratios_section(results):
    """The three figures kept as ratios within one run, each with its bound."""
    lines = ["| Figure | Measured | Ratio | Bound |", "|---|---|---|---|"]
    start = results.get("BM_StartUp")
    if start and "error" not in start and start.get("bootWithoutExtension_s"):
        lines.append(
            f"| Panel construction and first layout, against the host's own boot | {duration(start['panel_s'])}"
            f" against {duration(start['bootWithoutExtension_s'])} | {start['panel_s'] / start['bootWithoutExtension_s']:.2f}"
            " | at most 0.25 |"
        )
    shot = results.get("BM_Screenshot_LockScreen")
    if shot and "error" not in shot:
        lines.append(
            f"| One full-screen picture of the lock screen, against a 16.7 ms frame | {duration(shot['cpu'])}"
            f" | {shot['cpu'] / FRAME:.2f} | at most 15 ms |"
        )
    small, large = reload_cpu(results, 10), reload_cpu(results, 10000)
    if small and large:
        nlogn = (10000 * math.log(10000)) / (10 * math.log(10))
        lines.append(
            f"| A reload with 10,000 items against one with 10 | {duration(large)} against {duration(small)}"
            f" | {large / small:.1f} | at most 15; n log n would allow {nlogn:,.0f} |"
        )
    return lines


def pictures_section(results):
    rows = [
        ("BM_Screenshot_LockScreen", "The lock screen with the panel over its blurred wallpaper"),
        ("BM_Screenshot_Overlay", "The battery overlay open over it (a second blur)"),
        ("BM_Screenshot_WritePNG", "Writing the lock screen's picture as a PNG file"),
    ]
    lines = ["| Picture | CPU | Spread | In 16.7 ms frames |", "|---|---|---|---|"]
    for name, label in rows:
        entry = results.get(name)
        if not entry or "error" in entry:
            continue
        lines.append(f"| {label} | {duration(entry['cpu'])} | {spread(entry)} | {entry['cpu'] / FRAME:.2f} |")
    return lines


def render(context, results, cache_path):
    periodic, periods, total_share = periodic_section(results)
    out = [
        "# Performance",
        "",
        "<!-- Written by scripts/performance-report.py from kavelin-bench's results: edit the prose there. -->",
        "",
        "The extension has no thread of its own: every timer, hook and gesture runs on the host's main",
        "thread, between the frames of the phone's user interface. What it costs is therefore measured",
        "as CPU time on that thread, and each figure is given two ways: as a share of one 16.7 ms frame",
        "(what a single tick takes away from the frame it lands in) and as a share of one core over an",
        "hour (what a repeating task costs all the time the phone is on: per-tick cost × ticks per hour",
        "/ 3,600 s). None of the timers is ever stopped, so the second figure is paid for as long as the",
        "host runs.",
        "",
        "Reproduce the page with one command (it builds `kavelin-bench` in Release in `build-perf`, or",
        "in the build folder given, runs it and writes this file):",
        "",
        "```sh",
        "scripts/perf.sh [BUILD_DIR]",
        "```",
        "",
        "The benchmark program boots the same host as `kavelin-sim` in its own process: the lock screen",
        "with the extension loaded, a typical morning on it (an alarm, a running timer, weather, music",
        "playing, two events, two reminders, three notifications), and measures in that process. Timed",
        "figures are the median of the repetitions, with their spread (coefficient of variation); the",
        "long runs (a virtual week, start-up) are run once, start-up as seven fresh processes each way.",
        "",
        "## Machine",
        "",
        *machine(context, cache_path),
        "",
        "The figures were taken on a shared 2-core development machine while other builds ran on it",
        "(load average above ten): CPU times are steadier than wall times under such load but still",
        "carry noise of tens of per cent, more for the short ticks. Compare orders of magnitude, not",
        "the last digit. Debian's Google Benchmark library is a debug build; that slows only the",
        "harness's own loop, which matters for nothing but the 40-nanosecond frame tick.",
        "",
        "## Three ratios",
        "",
        "Each figure against what it is measured by, in the same run, so that the machine's load",
        "cancels out:",
        "",
        *ratios_section(results),
        "",
        "## Periodic work",
        "",
        "Each repeating timer of the extension, fired once per iteration on the idle lock screen:",
        "",
        *periodic,
        "",
        f"All the extension's timers together keep {percent(total_share)} of one core busy while music plays,"
        f" {percent(total_share - music_share(results))} when nothing plays.",
        "The frame timer does nothing but compare the orientation when it has not changed (no layout,",
        "no allocation); the one-second work is the clock, the date, the battery summary and the alarm",
        "line being formatted and set; the ten-second tick is the table reload, which grows with what",
        "is on the phone (next section); the thirty-second tick is the battery sample. Nothing else",
        "runs at 10 s or 30 s.",
        "",
        *music_note(results),
        "",
        "The same timers as the run loop really fires them, with the host's own timers (its minute",
        "tick, the status bar) and the run loop's bookkeeping, over whole stretches of virtual time on",
        "the lock screen with music playing and the music overlay opened once before (so that both",
        "music timers do their work). \"Predicted\" adds up the ticks above that fall due in the",
        "stretch:",
        "",
        *virtual_time_section(results, periods),
        "",
        "## Schedule reload and table layout",
        "",
        "One forced reload of the schedule and notifications table (reminders on a global queue, the",
        "calendar store's queue, then events, notifications, sections and the table on the main queue)",
        "and the table's layout, as the phone fills up. Items are a quarter events and a quarter",
        "reminders over the coming week and half notifications, twenty per app. The table keeps at most",
        "99 events and 99 reminders (the defaults of \"calveraMaxEvents\" and \"calveraMaxReminders\"),",
        "so past 400 items the rows grow with the notifications alone, while the fetch, the filter",
        "and the sort still see every item. Only the rows on screen get cells, so the cells built never",
        "exceed what the screen holds, whatever the size.",
        "",
        *schedule_section(results),
        "",
        "The ten-second timer runs this on the lock screen while the display is on and the device",
        "locked; the \"share of one core\" column is what that costs at each size. A frame share above",
        "100 % means the reload that lands in a frame makes it late.",
        "",
        "Up to a few hundred items the cost is mostly fixed rather than per item: the section headers",
        "and cells on screen are built again at every reload, with their texts and images. No image",
        "is decoded again: `imageWithContentsOfFile:` still looks at the file each time, but a file",
        "unchanged since it was decoded (same size and modification time) answers the image decoded",
        "then, SpringBoard keeps the app icons it made, and an image keeps its merged colour. Which",
        "rows and sections are on screen decides most of that cost, and the screen holds about ten",
        "of them whatever the size.",
        "",
        "From 1,000 items on, the per-item work takes over. The bulletin board used to walk its whole",
        "store for each app's section, and SpringBoard its whole app list for each app, which made the",
        "notifications quadratic; it now keeps its sections and bulletins until the store changes and",
        "finds apps through an index, and a calendar fetch shares one calendar object per title. What",
        "is left grows linearly (the growth column stays at or under ten for ten times the items, far",
        "inside n log n). The calendar store keeps one event or reminder object per item until an",
        "event, reminder or calendar is added (each reload still opens a new store, as on the phone,",
        "and EventKit, too, answers the objects it has loaded until its database changes), and the",
        "maker library keeps the row it made for each bulletin while the board still lists it (rows",
        "record a bulletin, which never changes once delivered; the table's cells are still built anew",
        "on request). Per item a reload now filters and sorts the items, copies them into the",
        "table's dictionaries, and the table asks the height of every row and the rows of every",
        "section, as UIKit does at each `reloadData`; the section questions read the settings each",
        "time, so that a changed setting shows at once.",
    ]
    out += [
        "",
        "## Pictures",
        "",
        "One full-screen picture as `kavelin-sim`'s `shot` draws it (every window back to front at",
        "the device scale), taken again and again of an unchanged screen, as the gallery and a live",
        "preview take them. A blur view keeps its last result and reuses it when the backdrop's pixels",
        "are the same; a big opaque image (the wallpaper) stretched into a box of whole pixels copies",
        "back what it left there the time before. Both give the same bytes as drawing afresh (every",
        "demo and scenario picture compared before and after); the first picture after a change pays",
        "for the blur and the resampling, about ten times a repeat.",
        "",
        *pictures_section(results),
        "",
        "Writing the PNG (zlib at its default level, which fixes the file's bytes) now costs more",
        "than drawing the picture.",
    ]
    out += [
        "",
        "## Start-up",
        "",
        "A host boots once per process, so each measurement is a fresh process (`kavelin-bench",
        "--startup-probe with|without`) that prepares the device, boots the host at the lock screen",
        "with or without the extension, and reports the CPU time of each phase. The hooks are timed",
        "inside the load from the first to the last `MSHookMessageEx` (the benchmark program puts its",
        "own in front of the runtime's). The panel is built by the lock screen's hook while the host",
        "boots, so its construction is the difference between the two boots. The panel's full",
        "`update`, five seconds after construction, is not part of start-up (it is a schedule reload",
        "and a weather read, measured above).",
        "",
        *startup_section(results),
        "",
        "Start-up is paid once per launch of the host; the last column spreads it over the first hour.",
        *startup_verdict(results),
        "",
        "## Memory",
        "",
        "The live heap is what `operator new` holds at that moment (the C++ objects of the host, the",
        "platform and the extension; C libraries that call `malloc` themselves, such as ICU, Cairo and",
        "fontconfig, are not counted), measured by the benchmark program's counting allocator. The",
        "resident size of the process is given beside it for scale. The phone lives through a virtual",
        "week of hours spent as most are, dark: every virtual hour the display comes on for two",
        "minutes, the alarm is set again, a 20-minute timer starts (it runs out later in the hour), a",
        "song plays for ten seconds, the phone is turned and turned back, a call comes and goes, the",
        "charger is plugged in and out, the battery overlay is opened and closed, and the display goes",
        "off for the rest of the hour. All the while every timer runs, and the ten-second table reload",
        "whenever the display is on. Every hour ends in the same state, so the heap at the end of the",
        "first hour and at the end of the week can be compared, and a second week follows, which",
        "tells growth with time from caches that fill once during the first.",
        "Notifications are left alone: the simulated host keeps a record of every removal (the",
        "simulator's dump lists them), which would grow the heap by itself.",
        "",
        *memory_section(results),
        "",
        *memory_verdict(results),
        "",
        "## Small pieces",
        "",
        *small_section(results),
        "",
    ]
    return "\n".join(out)


# Sections measured outside the benchmark program (the live preview in a browser) follow this
# line in the page; writing the page again keeps them as they are.
KEPT_MARKER = "<!-- Measured outside kavelin-bench: kept as it is when this page is written again. -->"


def kept_sections(path):
    try:
        with open(path) as f:
            old = f.read()
    except FileNotFoundError:
        return ""
    at = old.find(KEPT_MARKER)
    return "" if at < 0 else "\n" + old[at:]


def main():
    if len(sys.argv) != 4:
        sys.exit("usage: performance-report.py RESULTS.json CMAKE_CACHE OUTPUT.md")
    context, results = load_results(sys.argv[1])
    text = render(context, results, sys.argv[2]) + kept_sections(sys.argv[3])
    with open(sys.argv[3], "w") as f:
        f.write(text)


if __name__ == "__main__":
    main()
