#!/usr/bin/env python3
"""Frames the demo's screenshots in a drawn phone for the README's gallery.

Usage: gallery.py SHOTS_DIR OUT_DIR [README]

With README, the table between its gallery markers is written again.

Each screenshot (taken at the device's scale, 2x for the demo's iPhone 6) is
placed in an SVG drawing of the phone at 1x and rendered to PNG with
rsvg-convert, so the gallery images stay small and need no image library.
"""
import base64
import pathlib
import subprocess
import sys
import struct

# Shown in this order; the caption is what the README says under each picture.
SCREENS = [
    ("lockscreen", "The panel on the lock screen"),
    ("lockscreen-landscape", "Landscape"),
    ("schedule-table", "Events, reminders and notifications by app"),
    ("notification-center", "In the notification centre"),
    ("search", "Taking over the search page"),
    ("clock-overlay", "Set an alarm or start a timer"),
    ("weather-overlay", "The full forecast"),
    ("battery-overlay", "Battery: time to empty and usage"),
    ("event-overlay", "An event in detail"),
    ("notification-overlay", "A notification in detail"),
    ("clear-all-overlay", "Clear all notifications"),
    ("music-overlay", "Now playing"),
    ("clock-overlay-landscape", "Clock overlay, landscape"),
    ("weather-overlay-landscape", "Weather overlay, landscape"),
    ("battery-overlay-landscape", "Battery overlay, landscape"),
    ("music-overlay-landscape", "Now playing, landscape"),
    ("notification-center-landscape", "Notification centre, landscape"),
]

SCALE = 2  # pixels per point in the demo's screenshots


def png_size(path):
    with open(path, "rb") as f:
        header = f.read(24)
    return struct.unpack(">II", header[16:24])


def phone_svg(png_path):
    width_px, height_px = png_size(png_path)
    w, h = width_px / SCALE, height_px / SCALE
    landscape = w > h
    # Bezel sizes of an iPhone 6 in points: thin sides, deep chin and forehead.
    side, end = 18, 80
    bw, bh = (w + 2 * end, h + 2 * side) if landscape else (w + 2 * side, h + 2 * end)
    sx, sy = (end, side) if landscape else (side, end)
    data = base64.b64encode(pathlib.Path(png_path).read_bytes()).decode()
    if landscape:
        button = f'<circle cx="{bw - end / 2}" cy="{bh / 2}" r="26" fill="none" stroke="#3a3a3c" stroke-width="2"/>'
        speaker = f'<rect x="{end / 2 - 3}" y="{bh / 2 - 26}" width="6" height="52" rx="3" fill="#3a3a3c"/>'
    else:
        button = f'<circle cx="{bw / 2}" cy="{bh - end / 2}" r="26" fill="none" stroke="#3a3a3c" stroke-width="2"/>'
        speaker = f'<rect x="{bw / 2 - 26}" y="{end / 2 - 3}" width="52" height="6" rx="3" fill="#3a3a3c"/>'
    pad = 12
    return f'''<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink"
     width="{bw + 2 * pad}" height="{bh + 2 * pad}" viewBox="{-pad} {-pad} {bw + 2 * pad} {bh + 2 * pad}">
  <defs>
    <linearGradient id="body" x1="0" y1="0" x2="1" y2="1">
      <stop offset="0" stop-color="#2c2c2e"/><stop offset="1" stop-color="#111113"/>
    </linearGradient>
  </defs>
  <rect x="-2" y="4" width="{bw + 4}" height="{bh}" rx="{min(bw, bh) * 0.14}" fill="#000" opacity="0.18"/>
  <rect x="0" y="0" width="{bw}" height="{bh}" rx="{min(bw, bh) * 0.14}" fill="url(#body)" stroke="#48484a" stroke-width="1.5"/>
  {speaker}
  {button}
  <image x="{sx}" y="{sy}" width="{w}" height="{h}" xlink:href="data:image/png;base64,{data}"/>
</svg>
'''


def main():
    shots, out = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    out.mkdir(parents=True, exist_ok=True)
    rows = []
    for name, caption in SCREENS:
        png = shots / f"{name}.png"
        if not png.exists():
            sys.exit(f"gallery: the demo wrote no {png}")
        svg = out / f"{name}.svg"
        svg.write_text(phone_svg(png))
        subprocess.run(["rsvg-convert", "-o", str(out / f"{name}.png"), str(svg)], check=True)
        svg.unlink()
        rows.append((name, caption))
    # The README's gallery table, three pictures to a row.
    lines = []
    for i in range(0, len(rows), 3):
        group = rows[i:i + 3]
        lines.append("| " + " | ".join(f'<img src="docs/gallery/{n}.png" width="250" alt="{c}">' for n, c in group) + " |")
        if i == 0:
            lines.append("|" + "---|" * len(group))
        lines.append("| " + " | ".join(c for _, c in group) + " |")
    if len(sys.argv) > 3:
        readme = pathlib.Path(sys.argv[3])
        text = readme.read_text()
        start, end = "<!-- gallery -->\n", "<!-- /gallery -->"
        if start not in text or end not in text:
            sys.exit(f"gallery: {readme} has no {start.strip()} ... {end} markers")
        head, rest = text.split(start, 1)
        readme.write_text(head + start + "\n".join(lines) + "\n" + end + rest.split(end, 1)[1])


if __name__ == "__main__":
    main()
